// SPDX-License-Identifier: Apache-2.0
// The path that a call takes: the same kernels, compiled for the baseline or for the best
// instruction set of the processor.
#pragma once

#include "lxpic/base/settings.h"

namespace lx {

enum class Path {
  kPlain,
  kFast
};

// What the switch says now. It may change at any time: what describes the work of a call holds the
// path that was read for it, so that all steps of the call take the same one.
inline Path CurrentPath() { return LxGetMMX() != 0 ? Path::kFast : Path::kPlain; }

}  // namespace lx

// The kernel `name` for a path.
#define LX_KERNEL(path, name) \
  ((path) == ::lx::Path::kFast ? HWY_DYNAMIC_DISPATCH(name) : &HWY_STATIC_DISPATCH(name))

// Calls that kernel.
#define LX_CALL(path, name, ...) LX_KERNEL(path, name)(__VA_ARGS__)
