// SPDX-License-Identifier: Apache-2.0
// Convolution kernels from words of the command line.
#pragma once

#include <memory>
#include <string>

#include "lxpic/lxpic.h"

namespace lx::tool {

/// Text for the help: the forms that ReadKernel understands.
inline constexpr const char* kKernelForms =
    "rows like 1,2,1/2,4,2/1,2,1, or a preset like gaussian or sobel-x; behind it, where wanted, "
    ":gain=G :offset=N :rectifier=R (none, negative, positive, absolute) :outside=N";

/// Rows of coefficients with "/" between them, or the name of a preset, and settings behind colons:
/// "-1,0,1:gain=0.5:rectifier=absolute". Throws Failure.
std::shared_ptr<LxKernel> ReadKernel(const std::string& word);

}  // namespace lx::tool
