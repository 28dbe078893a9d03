// SPDX-License-Identifier: Apache-2.0
// One chain over one image file or many.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/report/table.h"

namespace lx::tool {

struct BatchOptions {
  /// Image files, then the steps of the chain.
  std::vector<std::string> words;
  /// A file, or a folder for one file for each input; "" writes nothing.
  std::string output;
  /// The extension of what `output` is to be written as; "" takes it from the name.
  std::string outputFormat;
  /// As `output`, for a drawing of the last vector.
  std::string plot;
  /// The file for the numbers; "" prints them.
  std::string values;
  /// Of the numbers; left out it is the one that the extension of `values` names, or text.
  std::optional<TableFormat> format;
  /// Whether to print the time of each step.
  bool time = false;
  int repeat = 1;
  /// How many files are worked on at once.
  std::size_t jobs = 1;
};

/// Runs the chain. What fails on one of several inputs is reported on stderr and does not stop the
/// others; the code of the first failure is returned. A wrong command line throws Failure before
/// anything runs.
ExitCode RunBatch(const BatchOptions& options);

/// "lxpic: " and the message on stderr. It needs no memory.
void ReportFailure(const char* message) noexcept;

}  // namespace lx::tool
