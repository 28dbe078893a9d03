// SPDX-License-Identifier: Apache-2.0
// The command line.
#pragma once

#include <string>
#include <vector>

namespace lx::tool {

/// Does what the arguments behind the program's name say, and returns the exit code. Failures are
/// reported on stderr.
int RunTool(const std::vector<std::string>& arguments);

}  // namespace lx::tool
