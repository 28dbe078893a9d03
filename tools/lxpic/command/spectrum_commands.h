// SPDX-License-Identifier: Apache-2.0
// Spectra and gradients as pictures.
#pragma once

#include "tools/lxpic/command/parsing.h"
#include "tools/lxpic/common/failure.h"

namespace lx::tool {

ExitCode RunFourier(const Arguments& arguments);
ExitCode RunGradient(const Arguments& arguments);

}  // namespace lx::tool
