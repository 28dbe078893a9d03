// SPDX-License-Identifier: Apache-2.0
// No run writes over a file that is still read.
#pragma once

#include <string>
#include <vector>

namespace lx::tool {

/// The files of one run of the chain; "" for none.
struct RunFiles {
  std::string input;
  std::string output;
  std::string plot;
};

/// What a command reads and writes.
struct CommandFiles {
  std::vector<RunFiles> runs;
  /// Words of the steps, of which some may name files that every run reads.
  std::vector<std::string> steps;
  /// The file for the numbers, or "".
  std::string values;
  /// Whether the only run may write over what it has read.
  bool mayReplace = false;
};

/// Throws Failure when two results go to one file, or one to a file that is read, under whatever
/// names.
void CheckClashes(const CommandFiles& files);

}  // namespace lx::tool
