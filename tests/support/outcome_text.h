// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "lxpic/base/errors.h"

namespace lx::test {

/// The error state and the trace of the thread in one line, for instance
/// "1303 LxVector::SetMaxElements", and "0" when all is well. Clears both.
inline std::string TakeOutcome() {
  std::string outcome = std::to_string(LxGetError());
  const char* separator = " ";
  for (int i = 0; i < LxGetTraceCount(); ++i) {
    outcome += separator;
    outcome += LxGetTrace(i);
    separator = " < ";
  }
  LxOk();
  return outcome;
}

}  // namespace lx::test
