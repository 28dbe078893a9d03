// SPDX-License-Identifier: Apache-2.0
// The commands about what lies along a line of a picture, and about outlines.
#pragma once

#include "tools/lxpic/command/parsing.h"
#include "tools/lxpic/common/failure.h"

namespace lx::tool {

ExitCode RunProfile(const Arguments& arguments);
ExitCode RunPeaks(const Arguments& arguments);
ExitCode RunTransitions(const Arguments& arguments);
ExitCode RunContour(const Arguments& arguments);

}  // namespace lx::tool
