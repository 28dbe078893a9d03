// SPDX-License-Identifier: Apache-2.0
// Sharp edges of corrections.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "lxpic/lxpic.h"

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

template <class T>
void FillRamp(LxImage<T>& image) {
  for (int x = 0; x < static_cast<int>(image.GetWidth()); ++x) {
    image.SetPixel(T(static_cast<std::uint8_t>(x)), x, 0);
  }
}

// A source with the mean and deviation that are asked for keeps its levels.
TEST(Normalize, WhatIsNormalStaysAsItIs) {
  LxImage<LxBW8> image(3, 1);
  FillRamp(image);
  float deviation = 0;
  float mean = 0;
  PicPixelStdDev(&image, deviation, mean);
  PicNormalize(&image, &image, mean, deviation);
  EXPECT_EQ(LxGetError(), LX_OK);
  for (int x = 0; x < 3; ++x) EXPECT_EQ(image.GetPixel(x, 0), x);
}

template <class T>
void ExpectLevels(float average, float deviation, int low, int middle, int high) {
  LxImage<T> source(3, 1);
  FillRamp(source);
  LxImage<T> destination(3, 1);
  PicNormalize(&source, &destination, average, deviation);
  EXPECT_EQ(LxGetError(), LX_OK);
  EXPECT_EQ(destination.GetPixel(0, 0), low);
  EXPECT_EQ(destination.GetPixel(1, 0), middle);
  EXPECT_EQ(destination.GetPixel(2, 0), high);
}

TEST(Normalize, TargetsThatAreNoUsualNumbers) {
  const float nan = std::nanf("");
  ExpectLevels<LxBW8>(100, kInfinity, 0, 0, 255);  // the average is lost in what is so far above
  ExpectLevels<LxBW16>(7, nan, 7, 7, 7);
  ExpectLevels<LxBW8>(nan, 0, 0, 0, 0);
  ExpectLevels<LxBW8>(kInfinity, 1, 255, 255, 255);
  ExpectLevels<LxBW16>(-kInfinity, 1, 0, 0, 0);
}

}  // namespace
