// SPDX-License-Identifier: Apache-2.0
// Who may include whom, and how long a file may be.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace lx::test {
namespace {

namespace fs = std::filesystem;

const fs::path kRoot = LXPIC_SOURCE_DIR;
constexpr int kLongestFile = 600;

using Names = std::set<std::string>;

// What each layer may use, from the table that the build is made of: layers, itself among them, and
// single headers of others.
std::map<std::string, Names> ReadTable() {
  std::map<std::string, Names> table;
  std::ifstream stream(LXPIC_LAYER_TABLE);
  for (std::string line; std::getline(stream, line);) {
    std::istringstream words(line);
    std::string layer;
    words >> layer;
    table[layer] = {std::istream_iterator<std::string>(words), {}};
    table[layer].insert(layer);
  }
  return table;
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

bool MayInclude(const std::string& layer, const std::string& path) {
  static const auto table = ReadTable();
  const auto row = table.find(layer);
  if (row == table.end()) return false;
  return row->second.count(LayerOf(path)) != 0 || row->second.count(path) != 0;
}

TEST(Architecture, LayersIncludeWhatTheirTableAllows) {
  std::size_t checked = 0;
  for (const std::string folder : {"src", "include/lxpic"}) {
    for (const fs::path& file : CodeUnder(folder)) {
      const std::string layer = LayerOf(fs::relative(file, kRoot / folder).generic_string());
      if (layer == "lxpic.h") continue;
      for (const std::string& include : IncludesOf(file)) {
        if (include.front() != '"') continue;
        EXPECT_TRUE(MayInclude(layer, include.substr(1, include.size() - 2)))
            << file << " includes " << include;
        ++checked;
      }
    }
  }
  EXPECT_GT(checked, 50U);
}

TEST(Architecture, LayerTableRefusesWhatItDoesNotName) {
  EXPECT_TRUE(MayInclude("point", "base/failure.h")) << "through the layers between";
  EXPECT_FALSE(MayInclude("point", "lxpic/convolution/kernel.h")) << "upwards";
  EXPECT_FALSE(MayInclude("geometry", "convolution/box.h")) << "sideways";
  EXPECT_FALSE(MayInclude("base", "hwy/highway.h"));
  // Structuring elements and profile kernels are kernels; nothing else of the convolutions is.
  for (const std::string layer : {"morphology", "profile"}) {
    EXPECT_TRUE(MayInclude(layer, "lxpic/convolution/kernel.h"));
    EXPECT_FALSE(MayInclude(layer, "lxpic/convolution/filters.h"));
    EXPECT_FALSE(MayInclude(layer, "convolution/box.h"));
  }
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
       {"src", "include", "common", "catalogue", "tools", "tests", "bench", "examples"}) {
    for (const fs::path& file : CodeUnder(folder)) {
      std::ifstream stream(file);
      const auto lines = std::count(std::istreambuf_iterator<char>(stream), {}, '\n');
      EXPECT_LE(lines, kLongestFile) << file;
    }
  }
}

}  // namespace
}  // namespace lx::test
