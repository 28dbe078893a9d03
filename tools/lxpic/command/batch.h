// SPDX-License-Identifier: Apache-2.0
// One chain over one image file or many.
#pragma once

#include <string>
#include <vector>

#include "tools/lxpic/common/failure.h"

namespace lx::tool {

struct BatchOptions {
  /// Image files, then the steps of the chain.
  std::vector<std::string> words;
  /// A file, or a folder for one file for each input; "" writes nothing.
  std::string output;
  /// Whether to print the time of each step.
  bool time = false;
  int repeat = 1;
};

/// The words up to the first step, and the rest.
struct SplitWords {
  std::vector<std::string> inputs;
  std::vector<std::string> steps;
};
/// Throws Failure when a word is neither a file nor the name of a step.
SplitWords SplitInputs(const std::vector<std::string>& words);

/// Runs the chain. What fails on one of several inputs is reported on stderr and does not stop the
/// others; the code of the first failure is returned. A wrong command line throws Failure before
/// anything runs.
ExitCode RunBatch(const BatchOptions& options);

/// "lxpic: " and the message on stderr.
void ReportFailure(const std::string& message);

}  // namespace lx::tool
