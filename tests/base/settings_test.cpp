// SPDX-License-Identifier: Apache-2.0
#include "lxpic/base/settings.h"

#include <gtest/gtest.h>

#include <thread>

#include "base/thread_block.h"
#include "lxpic/base/dimensional_value.h"
#include "support/outcome_text.h"

namespace {

using lx::test::TakeOutcome;

TEST(Settings, FastPathsAreOnUntilSwitchedOffForAllThreads) {
  EXPECT_EQ(LxGetMMX(), 1);
  LxSetMMX(0);
  int seen = -1;
  std::thread([&seen] { seen = LxGetMMX(); }).join();
  EXPECT_EQ(seen, 0);
  LxSetMMX(-5);
  EXPECT_NE(LxGetMMX(), 0);
}

TEST(Settings, AnglesFollowTheUnit) {
  LxOk();
  EXPECT_EQ(LxGetAngleUnit(), LX_ANGLE_UNIT_DEGREES);
  struct Row {
    LX_ANGLE_UNITS unit;
    float quarterTurn;
  };
  constexpr float kQuarterTurn = 1.57079632679489662F;
  for (const Row row :
       {Row{LX_ANGLE_UNIT_RADIANS, kQuarterTurn}, Row{LX_ANGLE_UNIT_REVOLUTIONS, 0.25F},
        Row{LX_ANGLE_UNIT_GRADS, 100.0F}, Row{LX_ANGLE_UNIT_DEGREES, 90.0F}}) {
    LxSetAngleUnit(row.unit);
    EXPECT_EQ(LxGetAngleUnit(), row.unit);
    EXPECT_EQ(LxToRadians(row.quarterTurn), kQuarterTurn) << row.unit;
    EXPECT_EQ(LxToRadians(-4 * row.quarterTurn), -4 * kQuarterTurn) << row.unit;
    EXPECT_EQ(LxFromRadians(kQuarterTurn), row.quarterTurn) << row.unit;
  }
  LxSetAngleUnit(LX_ANGLE_UNIT_GRADS);
  EXPECT_EQ(TakeOutcome(), "0");
  for (const int unit : {-1, 4}) {
    LxSetAngleUnit(static_cast<LX_ANGLE_UNITS>(unit));
    EXPECT_EQ(TakeOutcome(), "1011 LxSetAngleUnit");
    EXPECT_EQ(LxGetAngleUnit(), LX_ANGLE_UNIT_GRADS);
  }
  LxSetAngleUnit(LX_ANGLE_UNIT_DEGREES);
}

TEST(Settings, EveryThreadHasItsOwnBlock) {
  auto* const mine = static_cast<lx::ThreadBlock*>(LxGetTLSPtr());
  EXPECT_EQ(mine->overlayColour, (LxC24{0, 0, 255}));
  mine->overlayColour = {1, 2, 3};
  std::thread([] {
    auto* const theirs = static_cast<lx::ThreadBlock*>(LxGetTLSPtr());
    EXPECT_EQ(theirs->overlayColour, (LxC24{0, 0, 255}));
    theirs->overlayColour = {4, 5, 6};
  }).join();
  EXPECT_EQ(LxGetTLSPtr(), mine);
  EXPECT_EQ(mine->overlayColour, (LxC24{1, 2, 3}));
  mine->overlayColour = {0, 0, 255};
}

TEST(DimensionalValue, NeverHasANullUnit) {
  EXPECT_STREQ(LxDimensionalValue().GetUnit(), "");
  EXPECT_STREQ(LxDimensionalValue(2.5, nullptr).GetUnit(), "");
  const LxDimensionalValue length(12.5, "mm");
  EXPECT_EQ(length.GetValue(), 12.5);
  EXPECT_STREQ(length.GetUnit(), "mm");
}

}  // namespace
