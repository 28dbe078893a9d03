// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "catalogue/catalogue.h"
#include "tools/lxpic/common/failure.h"

namespace lx::tool {

/// Throws Failure with the error of the last operation, if it failed.
inline void CheckOperation(const std::string& subject) {
  if (LxGetError() == LX_OK) return;
  throw Failure(kOperationFailed, subject + ": " + catalogue::ErrorName(LxGetError()));
}

}  // namespace lx::tool
