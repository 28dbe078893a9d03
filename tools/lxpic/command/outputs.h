// SPDX-License-Identifier: Apache-2.0
// Which files a command line reads and writes.
#pragma once

#include <string>
#include <vector>

namespace lx::tool {

/// The words up to the first step, and the rest.
struct SplitWords {
  std::vector<std::string> inputs;
  std::vector<std::string> steps;
};
/// Throws Failure when a word is neither a file nor the name of a step.
SplitWords SplitInputs(const std::vector<std::string>& words);

/// What an option says is written, and how.
struct OutputOption {
  const char* name;    ///< for messages: "-o"
  std::string path;    ///< a file, or a folder; "" for nothing
  std::string format;  ///< the extension of what is written; "" for that of the file's name
};

/// Whether the option names a folder for one file for each input.
bool NamesFolder(const OutputOption& option, const std::vector<std::string>& inputs);

/// One file for each of `inputs`, "" being none: `option.path` itself, or files in it where it is a
/// folder; "" for each when nothing is to be written. Throws Failure.
std::vector<std::string> ChooseOutputs(const OutputOption& option,
                                       const std::vector<std::string>& inputs);

}  // namespace lx::tool
