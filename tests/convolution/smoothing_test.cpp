// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <vector>

#include "convolution/chosen_case.h"
#include "support/failing.h"
#include "support/filled.h"

namespace lx::test {
namespace {

constexpr unsigned kMost = 0xFFFFFFFF;

TEST(Smoothing, KnownResults) {
  Filled<LxBW8> bright(6, 6, 255);
  Filled<LxBW8> result(6, 6, 0);
  const auto corner = [&result] { return int{result.GetPixel(0, 5).value}; };
  PicConvolUniform(&bright, &result, 2, 2);
  EXPECT_EQ(corner(), 254);
  PicConvolUniform(&bright, &result, 1, 0);
  EXPECT_EQ(corner(), 254);
  PicConvolUniform(&bright, &result, 1);
  EXPECT_EQ(corner(), 251);
  PicConvolUniform(&bright, &result, 0);
  EXPECT_EQ(corner(), 255);
  PicConvolGaussian(&bright, &result, 3);
  EXPECT_EQ(corner(), 255);
  PicLocalDeviation(&bright, &result, 2);
  EXPECT_EQ(corner(), 0);

  Filled<LxBW8> row(3, 1, 0);
  LxImage<LxBW8> deviation(3, 1);
  row.SetPixel(255, 2, 0);
  PicLocalDeviation(&row, &deviation, 1, 0);
  EXPECT_EQ(deviation.GetPixel(1, 0), 120);
  EXPECT_EQ(deviation.GetPixel(0, 0), 0);
}

TEST(Smoothing, LargeBoxesAreRefusedInPlaceEvenWhereTheyAreCut) {
  Filled<LxBW8> one(1, 1, 9);
  PicConvolUniform(&one, &one, 5);
  EXPECT_EQ(TakeOutcome(), "1413 PicConvolUniform");
}

TEST(Smoothing, EachStepHasItsName) {
  Filled<LxBW8> grey(6, 6, 9);
  Filled<LxBW16> deep(6, 6, 9);
  EXPECT_EQ(FailingOutcome([&] { PicConvolUniform(&grey, &grey, 1, 0); }),
            "1303 PicConvolUniformX (BW8) < PicConvolUniform");
  EXPECT_EQ(FailingOutcome([&] { PicConvolUniform(&deep, &deep, 0, 1); }),
            "1303 ConvolUniformY (BW16) < PicConvolUniform (BW16)");
  EXPECT_EQ(FailingOutcome([&] { PicConvolGaussian(&grey, &grey, 2, 0); }),
            "1303 PicConvolGaussianX (BW8) < PicConvolGaussian");
}

// Passes run in batches, and now and then one looks whether there is still something to do.
TEST(Gaussian, ManyPasses) {
  for (const char* const pixel : {"LxBW8", "LxBW16", "LxC24"}) {
    const Operation& gaussian = OperationOn("PicConvolGaussian", pixel);
    for (const double passes : {63, 64, 65, 66, 72, 128, 131}) {
      for (const Onto onto : {Onto::kNone, Onto::kFirst}) {
        EXPECT_EQ(NumbersFailure(gaussian, {passes, passes}, {37, 11}, Content::kNoise, onto), "");
      }
      EXPECT_EQ(NumbersFailure(gaussian, {passes, 3}, {41, 5}), "");
      EXPECT_EQ(NumbersFailure(gaussian, {0, passes}, {3, 41}), "");
    }
  }
}

std::vector<int> Levels(LxImage<LxBW16>& image) {
  std::vector<int> levels;
  for (int i = 0; i < 60; ++i) levels.push_back(image.GetPixel(i % 12, i / 12).value);
  return levels;
}

// Single passes until they change nothing any more, which is what all further ones would do.
void Settle(LxImage<LxBW16>& image, unsigned halfX, unsigned halfY) {
  std::vector<int> before;
  while (before != Levels(image)) {
    before = Levels(image);
    PicConvolGaussian(&image, &image, halfX, halfY);
  }
}

// Passes that change nothing in most of the image still change the rest.
TEST(Gaussian, GoesOnWhileOneCornerChanges) {
  LxImage<LxBW16> image(400, 3);
  LxImage<LxBW16> once(400, 3);
  for (int i = 0; i < 1200; ++i) {
    const int level = i % 400 < 380 ? 9 : i * 54321 % 65536;
    image.SetPixel(static_cast<std::uint16_t>(level), i % 400, i / 400);
  }
  PicConvolGaussian(&image, &once, 200);
  for (int i = 0; i < 200; ++i) PicConvolGaussian(&image, &image, 1);
  for (int i = 0; i < 1200; ++i)
    ASSERT_EQ(once.GetPixel(i % 400, i / 400), image.GetPixel(i % 400, i / 400));
}

TEST(Gaussian, HasItsMemoryBeforeItWrites) {
  Filled<LxBW8> image(9, 9, 1);
  image.SetPixel(255, 4, 4);
  const auto scene = [&image] { PicConvolGaussian(&image, &image, 70, 66); };
  const int failures = FailEachAllocation(scene, [&] { ASSERT_EQ(image.GetPixel(4, 4), 255); });
  EXPECT_GE(failures, 2);
}

TEST(Gaussian, BillionsOfPassesEnd) {
  LxImage<LxBW16> image(12, 5);
  LxImage<LxBW16> expected(12, 5);
  for (int i = 0; i < 60; ++i) {
    image.SetPixel(static_cast<std::uint16_t>(i * 54321 % 65536), i % 12, i / 12);
  }
  LxImage<LxBW16> result(12, 5);
  PicConvolGaussian(&image, &result, kMost - 1, 4000000000U);
  EXPECT_EQ(TakeOutcome(), "0");
  PicCopy(&image, &expected);
  Settle(expected, 1, 1);
  Settle(expected, 1, 0);
  EXPECT_EQ(Levels(result), Levels(expected));

  PicCopy(&image, &expected);
  Settle(expected, 0, 1);
  PicConvolGaussian(&image, nullptr, 0, kMost - 1);
  EXPECT_EQ(Levels(image), Levels(expected));
}

// A window that covers every pixel from everywhere: each row and column once, and those of the edge
// again for every step beyond it.
template <class T>
void ExpectWholeMean(int size) {
  LxImage<T> image(size, size);
  LxImage<T> result(size, size);
  const auto level = [](int x, int y) { return std::int64_t{(x * 7919 + y * 104729) % 251}; };
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      image.SetPixel(static_cast<decltype(T::value)>(level(x, y)), x, y);
    }
  }
  PicConvolUniform(&image, &result, kMost, 100000);
  const std::int64_t count = std::int64_t{2 * size - 1} * (2 * size - 1);
  ASSERT_GT(count, 1 << 24);
  for (const auto& [x, y] : {std::pair{0, 0}, std::pair{size - 1, 0}, std::pair{5, size / 2},
                             std::pair{size / 3, size - 1}}) {
    std::int64_t sum = 0;
    for (int j = 0; j < size; ++j) {
      const int rows = 1 + (j == 0 ? size - 1 - y : 0) + (j == size - 1 ? y : 0);
      for (int i = 0; i < size; ++i) {
        const int columns = 1 + (i == 0 ? size - 1 - x : 0) + (i == size - 1 ? x : 0);
        sum += level(i, j) * rows * columns;
      }
    }
    EXPECT_EQ(result.GetPixel(x, y).value, sum / count) << x << " " << y;
  }
}

TEST(Uniform, WindowsOfMoreThanSixteenMillionPixels) {
  ExpectWholeMean<LxBW8>(2049);
  ExpectWholeMean<LxBW16>(2049);
}

// Sums that only just fit their lanes, and some that do not: windows below, at and above the pixel
// counts 255, 257, 2896, 2^16 and 2^17, and columns of 257 and 259.
TEST(Uniform, WindowsOnTheEdgeOfTheirSums) {
  using Halves = std::pair<int, int>;
  for (const auto& [x, y] : {Halves{7, 7},
                             {7, 8},
                             {8, 8},
                             {128, 0},
                             {129, 0},
                             {0, 128},
                             {0, 129},
                             {26, 26},
                             {26, 27},
                             {127, 128},
                             {128, 128},
                             {180, 180},
                             {180, 181},
                             {181, 181}}) {
    for (const char* const pixel : {"LxBW8", "LxBW16"}) {
      for (const char* const function : {"PicConvolUniform", "PicLocalDeviation"}) {
        const Operation& operation = OperationOn(function, pixel);
        for (const Content content : {Content::kLargest, Content::kExtremes, Content::kEdges}) {
          EXPECT_EQ(NumbersFailure(operation, {double(x), double(y)}, {x + 3, y + 4}, content), "");
        }
      }
    }
  }
}

// In place rows are gone before they leave the window.
TEST(Uniform, LargeWindowsOfColoursInPlace) {
  const Operation& operation = OperationOn("PicConvolUniform", "LxC24");
  for (const double half : {20, 128, 129}) {
    EXPECT_EQ(NumbersFailure(operation, {half, half}, {140, 133}, Content::kNoise, Onto::kNone),
              "");
    EXPECT_EQ(NumbersFailure(operation, {half, half}, {140, 133}, Content::kNoise, Onto::kFirst),
              "");
  }
}

// Half of the pixels 0 and half the largest value: the greatest deviation there is.
TEST(Deviation, Greatest) {
  Filled<LxBW16> image(100, 1, 0);
  LxImage<LxBW16> result(100, 1);
  for (int x = 50; x < 100; ++x) image.SetPixel(65535, x, 0);
  PicLocalDeviation(&image, &result, 1, 0);
  // sqrt(3 * 65535^2 - 65535^2) / 3
  EXPECT_EQ(result.GetPixel(50, 0), 30893);
  PicLocalDeviation(&image, &result, 49, 0);
  EXPECT_EQ(result.GetPixel(49, 0), 32765);
}

}  // namespace
}  // namespace lx::test
