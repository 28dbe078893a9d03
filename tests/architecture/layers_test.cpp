// SPDX-License-Identifier: Apache-2.0
// Who may include whom, and how long a file may be.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace lx::test {
namespace {

namespace fs = std::filesystem;

const fs::path kRoot = LXPIC_SOURCE_DIR;
constexpr int kLongestFile = 600;

using Layers = std::set<std::string>;

// What each layer may use beside itself. Layers that do not stand here are families, which stand on
// the lower ones and on nothing else.
const Layers kBase = {"base"};
const Layers kFoundation = {"base", "foundation"};
const Layers kColour = {"base", "foundation", "colour"};
const Layers kVectors = {"base", "foundation", "colour", "vectors"};
const std::map<std::string, Layers> kMayUse = {{"base", {}},
                                               {"foundation", kBase},
                                               {"colour", kFoundation},
                                               {"vectors", kColour},
                                               {"point", kVectors}};

Layers AllowedFor(const std::string& layer) {
  const auto found = kMayUse.find(layer);
  Layers allowed = kVectors;
  allowed.insert("point");
  if (found != kMayUse.end()) allowed = found->second;
  allowed.insert(layer);
  return allowed;
}

bool IsCode(const fs::path& path) { return path.extension() == ".h" || path.extension() == ".cpp"; }

std::vector<fs::path> CodeUnder(const std::string& folder) {
  std::vector<fs::path> files;
  if (!fs::exists(kRoot / folder)) return files;
  for (const auto& entry : fs::recursive_directory_iterator(kRoot / folder)) {
    if (entry.is_regular_file() && IsCode(entry.path())) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::vector<std::string> IncludesOf(const fs::path& file) {
  static const std::regex kInclude(R"rule(^\s*#\s*include\s*([<"][^>"]+[>"]))rule");
  std::vector<std::string> includes;
  std::ifstream stream(file);
  std::smatch match;
  for (std::string line; std::getline(stream, line);) {
    if (std::regex_search(line, match, kInclude)) includes.push_back(match[1]);
  }
  return includes;
}

// "base" of "lxpic/base/roi.h" and of "base/failure.h"; the name of the file when it lies in no
// folder.
std::string LayerOf(std::string path) {
  constexpr std::string_view kPublic = "lxpic/";
  if (path.compare(0, kPublic.size(), kPublic) == 0) path.erase(0, kPublic.size());
  return path.substr(0, path.find('/'));
}

// Layers, the declaration order of public headers too, run downwards only.
TEST(Architecture, LayersIncludeDownwardsOnly) {
  std::size_t checked = 0;
  for (const std::string folder : {"src", "include/lxpic"}) {
    for (const fs::path& file : CodeUnder(folder)) {
      const std::string layer = LayerOf(fs::relative(file, kRoot / folder).generic_string());
      if (layer == "lxpic.h") continue;
      const Layers allowed = AllowedFor(layer);
      for (const std::string& include : IncludesOf(file)) {
        if (include.front() != '"') continue;
        const std::string path = include.substr(1, include.size() - 2);
        if (LayerOf(path) == "hwy") continue;
        EXPECT_EQ(allowed.count(LayerOf(path)), 1U) << file << " includes " << include;
        ++checked;
      }
    }
  }
  EXPECT_GT(checked, 50U);
}

TEST(Architecture, PublicHeadersIncludeOnlyEachOtherAndTheStandardLibrary) {
  static const std::regex kStandard("<[a-z_]+>");
  static const std::regex kOwn(R"rule("lxpic/[a-z0-9_/]+\.h")rule");
  for (const fs::path& file : CodeUnder("include")) {
    for (const std::string& include : IncludesOf(file)) {
      EXPECT_TRUE(std::regex_match(include, kStandard) || std::regex_match(include, kOwn))
          << file << " includes " << include;
    }
  }
}

TEST(Architecture, FilesStayReadable) {
  for (const std::string folder :
       {"src", "include", "catalogue", "tools", "tests", "bench", "examples"}) {
    for (const fs::path& file : CodeUnder(folder)) {
      std::ifstream stream(file);
      const auto lines = std::count(std::istreambuf_iterator<char>(stream), {}, '\n');
      EXPECT_LE(lines, kLongestFile) << file;
    }
  }
}

}  // namespace
}  // namespace lx::test
