// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include "support/trial/arguments.h"

namespace lx::test {

/// Calls check(operation, choice) for every choice of every operation.
template <class Check>
void ForEveryOperation(const Check& check) {
  for (const Operation& operation : catalogue::All()) {
    for (const int choice : ChoicesOf(operation)) {
      SCOPED_TRACE(operation.signature + ChoiceText(operation, choice));
      check(operation, choice);
    }
  }
}

}  // namespace lx::test
