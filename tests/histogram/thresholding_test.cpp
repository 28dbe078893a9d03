// SPDX-License-Identifier: Apache-2.0
// What a lookup sees, thresholds of images without a source, and surfaces of flat images.
#include <gtest/gtest.h>

#include <climits>
#include <vector>

#include "lxpic/lxpic.h"
#include "support/filled.h"
#include "support/outcome_text.h"

namespace lx::test {
namespace {

constexpr auto kHalf = PIC_THRESHOLD_RELATIVE;

// Gives the n-th colour that it is asked for the level n, and remembers them all.
struct CountingLookup : LxColorLookup {
  std::vector<int> seen;

  void Transform(LxC24 colour, LxC24& result) override {
    seen.push_back(colour.c2);
    const auto n = static_cast<std::uint8_t>(seen.size());
    result = {n, n, n};
  }
};

TEST(ColourThreshold, AsksALookupOnceForEachPixelInTheOrderOfRows) {
  constexpr LxC24 kFirst = {5, 5, 5};
  constexpr LxC24 kLast = {8, 8, 8};
  LxImage<LxC24> colours(5, 2);
  LxImage<LxBW8> levels(5, 2);
  std::vector<int> expected;
  for (int i = 0; i < 10; ++i) {
    colours.SetPixel({0, 0, static_cast<std::uint8_t>(7 * i)}, i % 5, i / 5);
    expected.push_back(7 * i);
  }
  for (const int fast : {0, 1}) {
    LxSetMMX(fast);
    CountingLookup lookup;
    PicThreshold(&colours, &levels, kFirst, kLast, &lookup, LxBW8(1), LxBW8(2));
    EXPECT_EQ(TakeOutcome(), "0");
    EXPECT_EQ(lookup.seen, expected);
    for (int i = 0; i < 10; ++i) {
      EXPECT_EQ(levels.GetPixel(i % 5, i / 5).value, i >= 4 && i <= 7 ? 2 : 1) << i;
    }
  }
}

TEST(AutoThreshold, ReturnsAThresholdWithoutLookingAtTheSource) {
  LxROI<LxBW8>* const none = nullptr;
  LxROI<LxBW16>* const noWords = nullptr;
  EXPECT_EQ(PicAutoThreshold(none, static_cast<PIC_THRESHOLD_MODES>(128)), 128U);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(PicAutoThreshold(noWords, static_cast<PIC_THRESHOLD_MODES>(256)), 256U);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(PicAutoThreshold(none, kHalf), 0xFDU);
  EXPECT_EQ(TakeOutcome(), "1613 PicHistogramThreshold");
  EXPECT_EQ(PicAutoThreshold(noWords, kHalf), 0xFFFDU);
  EXPECT_EQ(TakeOutcome(), "1613 PicHistogramThreshold (BW16)");
}

TEST(AutoThreshold, WrapsTheThresholdBeyondTheLargest) {
  Filled<LxBW8> bytes(4, 4, LxBW8(9));
  Filled<LxBW16> words(4, 4, LxBW16(9));
  EXPECT_EQ(PicAutoThreshold(&bytes, kHalf, 1), 0U);
  EXPECT_EQ(PicAutoThreshold(&words, kHalf, 1), 0U);
  EXPECT_EQ(TakeOutcome(), "0");
}

// Runs that have left the region are refused by who follows them, and only then.
TEST(Threshold, FollowsRunsOnlyToSelect) {
  Filled<LxBW8> source(4, 4, LxBW8(9));
  Filled<LxBW8> destination(4, 4, LxBW8(1));
  source.AddRun(0, 3, 4);
  source.SetSize(4, 3);
  destination.SetSize(4, 3);
  PicCopy(LxBW8(9), &source);
  PicCopy(LxBW8(1), &destination);
  PicThreshold(&source, &destination, PIC_THRESHOLD_ISODATA, LxBW8(5), LxBW8(6));
  EXPECT_EQ(TakeOutcome(), "1007 PicHistogram < PicThreshold");
  EXPECT_EQ(destination.GetPixel(0, 0).value, 1);
  PicThreshold(&source, &destination, 9, LxBW8(5), LxBW8(6));
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(destination.GetPixel(0, 0).value, 6);
}

// One level is nothing to split: the nodes hold the isodata value, which is that level.
TEST(AdaptiveThreshold, OfAFlatImageIsItsLevel) {
  Filled<LxBW8> flat(20, 10, LxBW8(200));
  LxImage<LxBW8> surface(20, 10);
  for (const auto mode :
       {PIC_THRESHOLD_ISODATA, PIC_THRESHOLD_MAX_ENTROPY, PIC_THRESHOLD_MIN_RESIDUE}) {
    for (const int tile : {7, INT_MAX}) {
      PicAutoAdaptiveThreshold(&flat, &surface, mode, tile, 0);
      EXPECT_EQ(TakeOutcome(), "0");
      EXPECT_EQ(surface.GetPixel(0, 0).value, surface.GetPixel(19, 9).value);
      LxBWHistogramVector histogram(256);
      PicHistogram(&flat, &histogram);
      EXPECT_EQ(surface.GetPixel(10, 5).value, PicIsodataThreshold(&histogram, 0, 255));
    }
  }
}

// Between nodes it is interpolated: dark tiles on the left, bright ones on the right.
TEST(AdaptiveThreshold, RisesWithTheImage) {
  LxImage<LxBW8> halves(100, 100);
  LxImage<LxBW8> surface(100, 100);
  for (int y = 0; y < 100; ++y) {
    for (int x = 0; x < 100; ++x) {
      const int level = x < 50 ? 20 : 200;
      halves.SetPixel(static_cast<std::uint8_t>(level + (x + y) % 2 * 20), x, y);
    }
  }
  PicAutoAdaptiveThreshold(&halves, &surface, PIC_THRESHOLD_ISODATA, 20, 0);
  EXPECT_EQ(surface.GetPixel(0, 50).value, 30);
  EXPECT_EQ(surface.GetPixel(99, 50).value, 210);
  for (int x = 1; x < 100; ++x) {
    EXPECT_GE(surface.GetPixel(x, 50).value, surface.GetPixel(x - 1, 50).value) << x;
  }
}

TEST(AdaptiveThreshold, RefusesAThreshold) {
  LxImage<LxBW8> image(4, 4);
  PicAutoAdaptiveThreshold(&image, &image, static_cast<PIC_THRESHOLD_MODES>(128), 0, -1);
  EXPECT_EQ(TakeOutcome(), "1012 PicAutoAdaptiveThreshold");
}

}  // namespace
}  // namespace lx::test
