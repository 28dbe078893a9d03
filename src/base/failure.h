// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <new>

#include "lxpic/base/errors.h"

namespace lx {

/// Reports the failure `code` of the member or operation `name`.
inline void Fail(LX_ERRORS code, const char* name) {
  LxSetError(code);
  LxTraceError(name);
}

/// Runs `body`, which may call functions of the application: what these throw ends it and becomes
/// an error code.
template <class Body>
void RunGuarded(const Body& body) noexcept {
  try {
    body();
  } catch (const std::bad_alloc&) {
    LxSetError(LX_ERROR_ALLOCATION_FAILED);
  } catch (...) {
    LxSetError(LX_ERROR_INTERNAL);
  }
}

}  // namespace lx
