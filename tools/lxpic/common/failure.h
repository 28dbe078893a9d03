// SPDX-License-Identifier: Apache-2.0
// How the tool fails: a message and the exit code that goes with it.
#pragma once

#include <stdexcept>
#include <string>

namespace lx::tool {

enum ExitCode : int {
  kFine = 0,
  kOperationFailed = 1,
  kWrongUsage = 2,
  kFileFailed = 3
};

class Failure : public std::runtime_error {
 public:
  Failure(ExitCode exitCode, const std::string& message)
      : std::runtime_error(message), code(exitCode) {}

  ExitCode Code() const { return code; }

  /// The same failure, with "`subject`: " before its message.
  Failure Of(const std::string& subject) const { return {code, subject + ": " + what()}; }

 private:
  ExitCode code;
};

}  // namespace lx::tool
