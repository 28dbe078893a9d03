// SPDX-License-Identifier: Apache-2.0
#include "docs/document.h"

#include <algorithm>
#include <fstream>

namespace lx::test {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kFence = "```";

std::string Trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  const std::size_t last = text.find_last_not_of(" \r");
  return first == std::string::npos ? "" : text.substr(first, last - first + 1);
}

Document Read(const fs::path& path) {
  Document document;
  document.path = path;
  bool inBlock = false;
  int number = 0;
  for (const std::string& line : LinesOf(path)) {
    ++number;
    if (line.starts_with(kFence)) {
      inBlock = !inBlock;
      if (inBlock) {
        document.blocks.push_back({path.filename().string() + ":" + std::to_string(number),
                                   line.substr(kFence.size()),
                                   {}});
      }
    } else {
      (inBlock ? document.blocks.back().lines : document.lines).push_back(line);
    }
  }
  return document;
}

}  // namespace

Lines LinesOf(const fs::path& file) {
  Lines lines;
  std::ifstream stream(file);
  for (std::string line; std::getline(stream, line);) lines.push_back(Trimmed(line));
  return lines;
}

bool Contains(const Lines& whole, const Lines& part) {
  return std::search(whole.begin(), whole.end(), part.begin(), part.end()) != whole.end();
}

std::vector<Document> Documents() {
  const fs::path root = LXPIC_SOURCE_DIR;
  std::vector<Document> documents = {Read(root / "README.md")};
  for (const auto& entry : fs::recursive_directory_iterator(root / "docs")) {
    if (entry.path().extension() == ".md") documents.push_back(Read(entry.path()));
  }
  return documents;
}

}  // namespace lx::test
