// SPDX-License-Identifier: Apache-2.0
// Frames and averages over time at their edges.
#include <gtest/gtest.h>

#include <cmath>

#include "lxpic/lxpic.h"
#include "sequence/moving_average_kernels.h"
#include "support/filled.h"

namespace lx::test {
namespace {

TEST(MovingAverage, DivisionIsExact) {
  for (unsigned count = 2; count <= sequence::ByteAverage::kMost; ++count) {
    const auto average = sequence::ByteAverage::Of(count);
    for (unsigned sum = 0; sum <= 255 * count; ++sum) {
      const unsigned more = (sum + average.more) & 0xFFFF;
      ASSERT_EQ((more * average.multiplier >> 16) >> average.shift, sum / count) << count;
    }
  }
}

TEST(MovingAverage, ForgetsWhatIsOlderThanThePeriod) {
  LxMovingAverage average(4, 40, 3, 0);
  Filled<LxBW8> to(40, 3, 0);
  const auto next = [&](std::uint8_t level) {
    Filled<LxBW8> from(40, 3, level);
    average.Average(&from, &to);
    EXPECT_EQ(LxGetError(), LX_OK);
    return int{to.GetPixel(39, 2).value};
  };
  for (int i = 0; i < 4; ++i) EXPECT_EQ(next(8), 8);
  EXPECT_EQ(next(40), 16);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(next(8), 16);
  EXPECT_EQ(next(8), 8);
  average.Reset();
  EXPECT_EQ(next(200), 200);
}

TEST(MovingAverage, TheLargestSum) {
  LxMovingAverage average(257, 1, 1, 0);
  Filled<LxBW8> image(1, 1, 255);
  for (int i = 0; i < 600; ++i) {
    average.Average(&image, &image);
    ASSERT_EQ(image.GetPixel(0, 0), 255) << i;
  }
}

TEST(MovingAverage, BuffersThatTheApplicationResized) {
  LxMovingAverage average(2, 9, 5, 1);
  Filled<LxBW8> to(9, 5, 7);
  average.GetSrcImage()->SetSize(9, 4);
  average.Average(&to);
  EXPECT_EQ(LxGetError(), LX_ERROR_SIZE_MISMATCH);
  EXPECT_EQ(to.GetPixel(0, 0), 7);
  LxImage<LxBW8>* const same = average.GetSrcImage();
  same->SetSize(9, 5);
  average.Average(&to);
  EXPECT_EQ(LxGetError(), LX_OK);
  EXPECT_NE(average.GetSrcImage(), same);
}

TEST(MatchFrames, SumsBeyond32Bits) {
  constexpr int kWidth = 66157;
  LxImage<LxBW8> image(kWidth, 2);
  // Every pixel of shift takes 255^2 off the sum, which passes 2^32 after the fifth.
  for (int x = 0; x < kWidth; ++x) {
    image.SetPixel(255, x, 0);
    image.SetPixel(static_cast<std::uint8_t>(x < 100 ? 255 : 0), x, 1);
  }
  int best = 9;
  PicMatchFrames(&image, 0, 0, 50, best);
  EXPECT_EQ(LxGetError(), LX_OK);
  EXPECT_EQ(best, 50);
  PicMatchFrames(&image, 0, kWidth, 2 * kWidth, best);  // no column is in both
  EXPECT_EQ(best, kWidth);
  PicMatchFrames(&image, 0, INT32_MIN, INT32_MAX, best);
  EXPECT_EQ(LxGetError(), LX_ERROR_INCONSISTENT_ARGUMENTS);
  EXPECT_EQ(best, kWidth);
}

TEST(RecursiveAverage, TablesOfNoNumbers) {
  LxBW16Vector table(3, 1);
  PicSetRecursiveAverageLUT(&table, NAN, INFINITY);
  EXPECT_EQ(LxGetError(), LX_ERROR_ARGUMENT_2_OUT_OF_RANGE);
  PicSetRecursiveAverageLUT(&table, 3, -INFINITY);
  EXPECT_EQ(LxGetError(), LX_ERROR_ARGUMENT_3_OUT_OF_RANGE);
  EXPECT_EQ(table.GetNumElements(), 3U);
}

TEST(RecursiveAverage, ReproducesItsInputWithoutReduction) {
  LxBW16Vector table;
  PicSetRecursiveAverageLUT(&table, 1, 0);
  Filled<LxBW16> state(40, 2, 16 * 10);
  for (const int level : {10, 255, 0, 77}) {
    Filled<LxBW8> image(40, 2, static_cast<std::uint8_t>(level));
    PicRecursiveAverage(&image, &state, &image, &table);
    EXPECT_EQ(image.GetPixel(39, 1), level);
  }
  PicSetRecursiveAverageLUT(&table, 3, 0);
  EXPECT_EQ(table[4095 + 16], 3);
  EXPECT_EQ(table[4095 - 16], 0xFFFD);
}

}  // namespace
}  // namespace lx::test
