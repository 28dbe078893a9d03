// SPDX-License-Identifier: Apache-2.0
// Commands that draw: test pictures, and the demonstration on them.
#pragma once

#include <string>
#include <vector>

#include "tools/lxpic/common/failure.h"

namespace lx::tool {

/// They throw Failure.
ExitCode RunSynth(const std::vector<std::string>& arguments);
ExitCode RunDemoCommand(const std::vector<std::string>& arguments);

}  // namespace lx::tool
