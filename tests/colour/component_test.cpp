// SPDX-License-Identifier: Apache-2.0
#include "lxpic/colour/component.h"

#include <gtest/gtest.h>

namespace lx::test {
namespace {

TEST(ColorLookup, IsTheIdentityUnlessOverridden) {
  LxColorLookup identity;
  LxC24 result{};
  identity.Transform({1, 2, 3}, result);
  EXPECT_EQ(result, (LxC24{1, 2, 3}));
}

}  // namespace
}  // namespace lx::test
