// SPDX-License-Identifier: Apache-2.0
#include "lxpic/measure/moments.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "support/filled.h"
#include "support/outcome_text.h"

namespace lx::test {
namespace {

// The sum of x^p, x below `count`.
long double PowerSum(int count, int p) {
  long double sum = 0;
  for (int x = 0; x < count; ++x) sum += std::pow(static_cast<long double>(x), p);
  return sum;
}

// Moments of constant images are products of sums of powers. Rows longer than any block.
template <class T>
void ExpectConstant(int width, int height, unsigned value) {
  Filled<T> image(width, height, T(static_cast<decltype(T::value)>(value)));
  for (const int fast : {1, 0}) {
    LxSetMMX(fast);
    float m[15];
    PicWeightedMoments(&image, m[0], m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8], m[9], m[10],
                       m[11], m[12], m[13], m[14]);
    const float* next = m;
    for (int order = 0; order <= 4; ++order) {
      for (int q = 0; q <= order; ++q) {
        const long double sum = value * PowerSum(width, order - q) * PowerSum(height, q);
        EXPECT_NEAR(static_cast<double>(*next++ / sum), 1.0, 1e-7) << order << ' ' << q;
      }
    }
  }
  LxSetMMX(1);
}

TEST(Moments, OfWhiteImagesDoNotWrap) {
  ExpectConstant<LxBW8>(20000, 7, 255);
  ExpectConstant<LxBW8>(3, 2500, 255);
  ExpectConstant<LxBW16>(20000, 3, 65535);
  ExpectConstant<LxBW16>(5, 3000, 65535);
}

// So wide that moments of the fourth order may leave 128 bits.
TEST(Moments, OfHugeRowsKeepTheirLeadingDigits) {
  constexpr int kWidth = 1 << 24;
  LxImage<LxBW8> image(kWidth, 1);
  ASSERT_EQ(TakeOutcome(), "0");
  auto* const row = static_cast<std::uint8_t*>(image.GetPixelPtr(0, 0));
  std::fill_n(row, kWidth, std::uint8_t{0});
  std::fill_n(row, 300, std::uint8_t{255});
  row[kWidth - 1] = 255;
  float m[15];
  PicWeightedMoments(&image, m[0], m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8], m[9], m[10],
                     m[11], m[12], m[13], m[14]);
  EXPECT_EQ(m[0], 301 * 255.0F);
  EXPECT_EQ(m[10], static_cast<float>(255 * std::pow(kWidth - 1.0L, 4)));
}

TEST(Moments, OfSmallObjects) {
  LxImage<LxBW8> image(9, 9);
  for (int y = 0; y < 9; ++y) {
    for (int x = 0; x < 9; ++x) image.SetPixel(LxBW8(20), x, y);
  }
  image.SetPixel(LxBW8(100), 3, 5);
  float m[6];
  PicBinaryMoments(&image, 100, m[0], m[1], m[2], m[3], m[4], m[5]);
  EXPECT_EQ(std::vector(m, m + 6), (std::vector{1.0F, 3.0F, 5.0F, 9.0F, 15.0F, 25.0F}));
  float x = 7;
  float y = 7;
  PicGravityCenter(&image, 100, x, y);
  EXPECT_EQ(x, 3.0F);
  EXPECT_EQ(y, 5.0F);
  PicGravityCenter(&image, 101, x, y);
  EXPECT_EQ(x, 0.0F);
  EXPECT_EQ(y, 0.0F);
  LxBW8Vector weights(256, 1);
  PicCentroid(&image, x, y, &weights);
  EXPECT_EQ(x, 0.0F);
  weights[100] = LxBW8(1);
  PicCentroid(&image, x, y, &weights);
  EXPECT_EQ(x, 3.0F);
  EXPECT_EQ(y, 5.0F);
}

TEST(Moments, InertiaOfSquares) {
  Filled<LxBW8> image(300, 300, LxBW8(255));
  float i[5];
  unsigned count = 0;
  PicInertia(&image, 255, i[0], i[1], i[2], &i[3], &i[4], &count);
  EXPECT_EQ(i[0], static_cast<float>((300.0 * 300 - 1) / 12));
  EXPECT_EQ(i[1], 0.0F);
  EXPECT_EQ(i[2], i[0]);
  EXPECT_EQ(i[3], 149.5F);
  EXPECT_EQ(i[4], 149.5F);
  EXPECT_EQ(count, 90000U);
  // Nothing weighs: nothing is written, and that is no error.
  i[0] = 7;
  PicInertia(&image, 256, i[0], i[1], i[2], nullptr, nullptr, &count);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(i[0], 7.0F);
  EXPECT_EQ(count, 90000U);
}

// A wide step of one bright pixel: products of sums lose all their digits in double.
TEST(Moments, InertiaFarFromTheOrigin) {
  Filled<LxBW8> image(60000, 60, LxBW8(0));
  for (int y = 50; y < 52; ++y) {
    for (int x = 59990; x < 59994; ++x) image.SetPixel(LxBW8(255), x, y);
  }
  float i[5];
  PicInertia(&image, i[0], i[1], i[2], &i[3], &i[4], nullptr, nullptr);
  EXPECT_EQ(i[0], 1.25F);
  EXPECT_EQ(i[1], 0.0F);
  EXPECT_EQ(i[2], 0.25F);
  EXPECT_EQ(i[3], 59991.5F);
  EXPECT_EQ(i[4], 50.5F);
}

TEST(Moments, PixelsWeighOnceForEachRun) {
  Filled<LxBW8> image(100, 10, LxBW8(50));
  image.AddRun(10, 2, 40);
  image.AddRun(20, 2, 1);
  image.AddRun(99, 9, 1);
  float x = 0;
  float y = 0;
  PicGravityCenter(&image, 50, x, y);
  EXPECT_EQ(x, static_cast<float>((40 * 29.5 + 20 + 99) / 42));
  EXPECT_EQ(y, static_cast<float>((41 * 2 + 9) / 42.0));
  LxBW8Vector table(255, 1);
  PicCentroid(&image, x, y, &table);
  EXPECT_EQ(TakeOutcome(), "1613 PicCentroid");
}

}  // namespace
}  // namespace lx::test
