// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "lxpic/base/errors.h"

namespace lx {

/// Reports the failure `code` of the member or operation `name`.
inline void Fail(LX_ERRORS code, const char* name) {
  LxSetError(code);
  LxTraceError(name);
}

}  // namespace lx
