// SPDX-License-Identifier: Apache-2.0
// The documents of the project, and what their code blocks hold.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace lx::test {

/// Lines without what surrounds their text.
using Lines = std::vector<std::string>;

/// A block between ``` fences.
struct CodeBlock {
  std::string place;     ///< file and line, for messages
  std::string language;  ///< behind the opening fence
  Lines lines;
};

struct Document {
  std::filesystem::path path;
  Lines lines;  ///< outside of code blocks
  std::vector<CodeBlock> blocks;
};

/// The README and everything under docs/.
std::vector<Document> Documents();

/// The lines of a file.
Lines LinesOf(const std::filesystem::path& file);

/// Whether `part` stands in `whole` as consecutive lines.
bool Contains(const Lines& whole, const Lines& part);

}  // namespace lx::test
