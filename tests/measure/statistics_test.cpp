// SPDX-License-Identifier: Apache-2.0
#include "lxpic/measure/statistics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "support/execution_path.h"
#include "support/filled.h"
#include "support/outcome_text.h"

namespace lx::test {
namespace {

// Sums of a whole row of white pixels, which no lane of 32 bits holds.
TEST(Statistics, WhiteRowsDoNotWrap) {
  Filled<LxBW8> bytes(70000, 3, LxBW8(255));
  Filled<LxBW16> words(140000, 3, LxBW16(65535));
  Filled<LxC24> colours(70000, 3, LxC24{255, 255, 0});
  for (const int fast : {1, 0}) {
    LxSetMMX(fast);
    float variance = -1;
    float average = -1;
    PicPixelVariance(&bytes, variance, average);
    EXPECT_EQ(variance, 0.0F);
    EXPECT_EQ(average, 255.0F);
    PicPixelVariance(&words, variance, average);
    EXPECT_EQ(variance, 0.0F);
    EXPECT_EQ(average, 65535.0F);
    float v[9];
    PicPixelStdDev(&colours, v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8]);
    EXPECT_EQ(std::count(v, v + 6, 0.0F), 6);
    EXPECT_EQ(v[6] + v[7] + v[8], 510.0F);
    LxBW16 least(7);
    PicPixelMin(&words, least);
    EXPECT_EQ(least.value, 65535);
    int area = 0;
    PicArea(&words, LxBW16(65535), area);
    EXPECT_EQ(area, 420000);
  }
  LxSetMMX(1);
}

// Lanes that count up to 255 or 65535 are emptied in time, in one row and over many.
TEST(Statistics, CountsPastNarrowLanes) {
  Filled<LxBW8> row(300001, 1, LxBW8(100));
  LxImage<LxBW8> parent(600, 900);
  LxROI<LxBW8> rows(&parent, 1, 0, 599, 900);
  for (int y = 0; y < 900; ++y) {
    for (int x = 0; x < 599; ++x) rows.SetPixel(LxBW8(x % 2 == 0 ? 100 : 101), x, y);
  }
  EXPECT_EQ(PicArea(&row, 99), 300001U);
  EXPECT_EQ(PicArea(&row, 100), 0U);
  EXPECT_EQ(PicArea(&rows, 100U), 299U * 900);
  int below = 0;
  int between = 0;
  int above = 0;
  PicPixelCount(&rows, LxBW8(100), LxBW8(101), below, between, above);
  EXPECT_EQ(std::vector({below, between, above}), std::vector({0, 300 * 900, 299 * 900}));
  Filled<LxBW8> other(300001, 1, LxBW8(101));
  EXPECT_EQ(PicPixelCompare(&row, &other), 300001U);
}

// Components that are x, 2x and 255 - x.
TEST(Statistics, KnownCovariances) {
  LxImage<LxC24> image(101, 7);
  for (int y = 0; y < 7; ++y) {
    for (int x = 0; x <= 100; ++x) {
      const auto byte = [](int v) { return static_cast<std::uint8_t>(v); };
      image.SetPixel({byte(255 - x), byte(2 * x), byte(x)}, x, y);
    }
  }
  float v[9];
  PicPixelVariance(&image, v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8]);
  const std::vector expected = {850.0F,  3400.0F, 850.0F, 1700.0F, -1700.0F,
                                -850.0F, 50.0F,   100.0F, 205.0F};
  EXPECT_EQ(std::vector(v, v + 9), expected);
  PicPixelStdDev(&image, v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8]);
  EXPECT_FLOAT_EQ(v[3], 1.0F);
  EXPECT_FLOAT_EQ(v[4], -1.0F);
  EXPECT_FLOAT_EQ(v[5], -1.0F);
}

TEST(Statistics, FollowsManyShortRuns) {
  Filled<LxBW8> image(300, 100, LxBW8(9));
  unsigned pixels = 0;
  unsigned bright = 0;
  for (int i = 0; i < 20000; ++i) {
    const int x = i * 7 % 291;
    const int y = i * 13 % 100;
    const int length = i / 7 % 5;
    image.AddRun(x, y, length);
    pixels += static_cast<unsigned>(length);
  }
  image.SetPixel(LxBW8(200), 17, 31);
  for (const LxRun& run : image.GetRuns()) {
    const unsigned x = run.position & 0xFFFF;
    const unsigned y = run.position >> 16;
    if (y == 31 && x <= 17 && 17 < x + (run.end - run.start)) ++bright;
  }
  ASSERT_GT(bright, 1U);
  EXPECT_EQ(PicArea(&image), pixels);
  EXPECT_EQ(PicArea(&image, 100U), bright);
  unsigned count = 0;
  EXPECT_EQ(PicAverage(&image, &count),
            static_cast<float>((9.0 * (pixels - bright) + 200.0 * bright) / pixels));
  EXPECT_EQ(count, pixels);
  EXPECT_EQ(PicMinimum(&image), 9U);
  EXPECT_EQ(PicMaximum(&image), 200U);
  PicPixelCompare(&image, &image);
  EXPECT_EQ(TakeOutcome(), "0");
}

// In the order of the checks, and with the names of what is called inside.
TEST(Statistics, Refusals) {
  LxROI<LxBW8> none;
  LxImage<LxBW8> empty(0, 5);
  LxImage<LxC24> emptyColour(5, 0);
  float f[9] = {7, 7, 7, 7, 7, 7, 7, 7, 7};
  int area = 7;
  LxBW8 low(7);
  LxBW8 high(7);
  unsigned whole = 7;
  const auto runs = [&] {
    LxImage<LxBW8> image(5, 5);
    image.AddRun(2, 2, 0);
    EXPECT_EQ(PicArea(&image), 0U);
    EXPECT_EQ(PicMinimum(&image), 255U);
    EXPECT_EQ(PicAverage(&image, &whole), 0.0F);
  };
  const std::vector<std::pair<std::string, std::function<void()>>> rows = {
      {"1400 PicPixelVariance ( BW8) < PicPixelStdDev", [&] { PicPixelStdDev(&none, *f, *f); }},
      {"1400 PicPixelCount < PicArea", [&] { PicArea(&none, low, area); }},
      {"1400 PicPixelCount < PicAreaDoubleThreshold",
       [&] { PicAreaDoubleThreshold(&none, low, high, area); }},
      {"1400 PicHistogram", [&] { EXPECT_EQ(PicVariance(&none, f, &whole), 0.0F); }},
      {"1051 PicHistogramCenteredMoments ( 2)",
       [&] { EXPECT_EQ(PicVariance(&empty, f, &whole), 0.0F); }},
      {"1051 PicPixelVariance ( C24) < PicPixelStdDev",
       [&] { PicPixelStdDev(&emptyColour, f[0], f[1], f[2], f[3], f[4], f[5], f[6], f[7], f[8]); }},
      {"1051 PicPixelStat", [&] { PicPixelStat(&empty, low, high, *f); }},
      {"1051 PicAverage", runs},
      {"1012 PicCount ( BW8)",
       [&] {
         LxImage<LxBW8> image(5, 5);
         EXPECT_EQ(PicCount(&image, nullptr), 0U);
       }},
      {"1400 PicMinimum", [&] { EXPECT_EQ(PicMinimum(&none), 255U); }}};
  for (const auto& [outcome, call] : rows) {
    call();
    EXPECT_EQ(TakeOutcome(), outcome);
  }
  EXPECT_EQ(std::count(f, f + 9, 7.0F), 9);
  EXPECT_EQ(area + low + high + static_cast<int>(whole), 28);
  PicPixelMin(&empty, low);
  PicPixelMax(&empty, high);
  EXPECT_EQ(low.value, 255);
  EXPECT_EQ(high.value, 0);
}

std::vector<int> visited;

int Visit(LxBW16& pixel) {
  visited.push_back(pixel);
  pixel = LxBW16(static_cast<std::uint16_t>(pixel + 1));
  return pixel % 2;
}

// Each pixel once, in order, by reference, at even and at odd addresses.
TEST(Statistics, PredicatesSeeThePixelsOfTheImage) {
  for (const int offset : {0, 1}) {
    alignas(2) std::uint8_t memory[32] = {};
    LxImage<LxBW16> image;
    image.Attach(memory + offset, 3, 2, 9);
    for (int i = 0; i < 6; ++i) {
      const auto value = static_cast<std::uint16_t>(0x0100 + i);
      std::copy_n(reinterpret_cast<const std::uint8_t*>(&value), 2,
                  memory + offset + i / 3 * 9 + i % 3 * 2);
    }
    visited.clear();
    EXPECT_EQ(PicCount(&image, &Visit), 3U);
    EXPECT_EQ(visited, std::vector({0x100, 0x101, 0x102, 0x103, 0x104, 0x105}));
    visited.clear();
    EXPECT_EQ(PicCount(&image, &Visit), 3U);
    EXPECT_EQ(visited, std::vector({0x101, 0x102, 0x103, 0x104, 0x105, 0x106}));
  }
}

}  // namespace
}  // namespace lx::test
