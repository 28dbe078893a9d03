// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "support/allocation_failure.h"
#include "support/outcome_text.h"

namespace lx::test {

/// What a call comes to whose first allocation fails.
template <class Call>
std::string FailingOutcome(const Call& call) {
  const FailAllocation guard(0);
  call();
  EXPECT_TRUE(guard.Fired());
  return TakeOutcome();
}

}  // namespace lx::test
