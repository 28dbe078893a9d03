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

/// One file for each of `inputs`, "" being none: `output` itself, or files in it where it is a
/// folder, which is made; "" for each when nothing is to be written. `option` is the word for
/// messages: "-o". Throws Failure before anything is overwritten by mistake.
std::vector<std::string> ChooseOutputs(const std::string& option, const std::string& output,
                                       const std::vector<std::string>& inputs);

}  // namespace lx::tool
