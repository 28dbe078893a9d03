// SPDX-License-Identifier: Apache-2.0
// Commands that make several images of one, or work on the frames of a camera.
#pragma once

#include <string>
#include <vector>

#include "tools/lxpic/common/failure.h"

namespace lx::tool {

/// They throw Failure.
ExitCode RunPyramid(const std::vector<std::string>& arguments);
ExitCode RunNoise(const std::vector<std::string>& arguments);
ExitCode RunAverage(const std::vector<std::string>& arguments);

}  // namespace lx::tool
