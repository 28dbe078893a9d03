// SPDX-License-Identifier: Apache-2.0
#include "lxpic/histogram/threshold_selection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "histogram/references.h"
#include "support/outcome_text.h"
#include "vectors/histograms.h"

namespace lx::test {
namespace {

// Holds the library and the definition to what is known.
template <unsigned bins = 256>
void ExpectSelected(const Filling& filling, unsigned mode, const ExpectedThreshold& known,
                    float relative = -1, unsigned first = 0, unsigned last = 255) {
  auto histogram = HistogramWith(filling, bins);
  ExpectedThreshold seen{mode, -1, -1};
  (bins == 256 ? PicHistogramThreshold : PicHistogramThresholdBW16)(
      &histogram, seen.threshold, seen.below, seen.above, relative, first, last);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(seen, known) << std::hex << mode << ' ' << relative;
  EXPECT_EQ(ExpectedOf({histogram.GetDataPtr(), first, last}, bins, mode, relative), known);
}

TEST(HistogramThreshold, OfKnownHistograms) {
  constexpr unsigned kSquared = PIC_THRESHOLD_MIN_SQUARED_DEVIATION;
  const Filling two = {{50, 10}, {200, 10}};
  ExpectSelected(two, PIC_THRESHOLD_MIN_RESIDUE, {51, 50, 200});
  ExpectSelected(two, PIC_THRESHOLD_ISODATA, {125, 50, 200});
  ExpectSelected({{0, 4}, {255, 9}}, PIC_THRESHOLD_MIN_ABSOLUTE_DEVIATION, {254, 0, 255});
  ExpectSelected(two, 50, {50, 0, 125});
  ExpectSelected(two, 51, {51, 50, 200});
  ExpectSelected(two, 10, {10, 10, 50}, -1, 10, 90);
  // One filled bin cannot be split.
  for (const unsigned mode :
       {PIC_THRESHOLD_ISODATA, PIC_THRESHOLD_MAX_ENTROPY, PIC_THRESHOLD_MIN_RESIDUE}) {
    ExpectSelected({{100, 5}}, mode, {0, 20, 201}, -1, 20, 200);
    ExpectSelected({}, mode, {0, 0, 256});
  }
  ExpectSelected({}, kSquared, {255, 0, 256});
  // Totals beyond 32 bits, and costs of almost 64.
  const Filling huge = {{0, 4000000000U}, {128, 4000000000U}, {255, 4000000000U}};
  ExpectSelected(huge, kSquared, {127, 0, 191.5F});
  ExpectSelected(huge, PIC_THRESHOLD_MIN_RESIDUE, {1, 0, 191.5F});
  ExpectSelected(huge, PIC_THRESHOLD_RELATIVE, {128, 0, 191.5F}, 0.5F);
  ExpectSelected<65536>({{65000, 2000000000U}, {65100, 7}, {65535, 2000000000U}}, kSquared,
                        {65099, 65000, 65535}, -1, 65000, 65535);
}

TEST(HistogramThreshold, OfRelativeShares) {
  constexpr unsigned kRelative = PIC_THRESHOLD_RELATIVE;
  const Filling levels = {{10, 1}, {20, 1}, {30, 2}};
  ExpectSelected(levels, kRelative, {10, 0, 22.5F}, 0);
  ExpectSelected(levels, kRelative, {10, 0, 22.5F}, 0.24F);
  ExpectSelected(levels, kRelative, {20, 10, 80 / 3.0F}, 0.25F);
  ExpectSelected(levels, kRelative, {30, 15, 30}, 0.99F);
  ExpectSelected(levels, kRelative, {256, 22.5F, 256}, 1);
  ExpectSelected({}, kRelative, {256, 0, 256}, 0.5F);
  // The product is truncated, not what single precision makes of the count.
  ExpectSelected({{0, 16777217}, {1, 2}}, kRelative, {2, 0x1.FFFFFAp-24F, 2}, 1, 0, 1);
}

// The sweep has the form for bytes only.
TEST(HistogramThreshold, RefusesWhatIsNeitherAThresholdNorAMode) {
  auto words = HistogramWith({{1, 1}}, 65536);
  const auto expect = [](const char* code, LxBWHistogramVector& histogram, unsigned mode,
                         float relative, unsigned first, unsigned last) {
    ExpectedThreshold seen{mode, -1, -2};
    PicHistogramThresholdBW16(&histogram, seen.threshold, seen.below, seen.above, relative, first,
                              last);
    EXPECT_EQ(TakeOutcome(), std::string(code) + " PicHistogramThreshold (BW16)");
    EXPECT_EQ(seen, (ExpectedThreshold{mode, -1, -2}));
  };
  for (const float relative : {1.0001F, -0.0001F, std::numeric_limits<float>::quiet_NaN()}) {
    expect("1015", words, PIC_THRESHOLD_RELATIVE, relative, 0, 65535);
  }
  for (const unsigned mode : {9U, 21U, 65536U, 0xFFFFFFF7U, 0xFFFFFFFEU}) {
    expect("1012", words, mode, 2, 10, 20);
  }
}

TEST(IsodataThreshold, Converges) {
  const auto of = [](const Filling& filling, unsigned first, unsigned last) {
    auto histogram = HistogramWith(filling);
    return PicIsodataThreshold(&histogram, first, last);
  };
  EXPECT_EQ(of({{20, 5}, {220, 9}}, 0, 255), 120U);
  // Empty classes have the middle of their bins.
  EXPECT_EQ(of({{3, 5}}, 0, 255), 87U);
  EXPECT_EQ(of({}, 10, 20), 15U);
}

// Two levels have two classes of no entropy, and one of some.
TEST(SplitThresholds, LeaveMeansAloneWithoutAGain) {
  auto two = HistogramWith({{50, 3}, {200, 9}});
  ExpectedThreshold seen{0, -1, -2};
  seen.threshold = PicMaxEntropyThreshold(&two, seen.below, seen.above);
  EXPECT_EQ(seen, (ExpectedThreshold{0, -1, -2}));
  seen.threshold = PicMinResidueThreshold(&two, seen.below, seen.above);
  EXPECT_EQ(seen, (ExpectedThreshold{51, 50, 200}));
  EXPECT_EQ(TakeOutcome(), "0");
}

// The forms that compare with no split at all.
void CompareGains(LxBWHistogramVector& histogram) {
  for (const unsigned mode : {PIC_THRESHOLD_MIN_RESIDUE, PIC_THRESHOLD_MAX_ENTROPY}) {
    const auto expected = ExpectedGain(histogram.GetDataPtr(), mode, -1, -2);
    ExpectedThreshold seen{0, -1, -2};
    const bool residue = mode == PIC_THRESHOLD_MIN_RESIDUE;
    const auto select = residue ? &PicMinResidueThreshold : &PicMaxEntropyThreshold;
    seen.threshold = select(&histogram, seen.below, seen.above);
    EXPECT_EQ(seen, expected) << residue;
  }
}

// One depth of histogram.
struct Depth {
  unsigned bins;
  void (*select)(LxBWHistogramVector*, unsigned&, float&, float&, float, unsigned, unsigned);
  unsigned (*isodata)(LxBWHistogramVector*, unsigned, unsigned);

  void Compare(LxBWHistogramVector& histogram, unsigned mode, float relative, unsigned first,
               unsigned last) const {
    ExpectedThreshold seen{mode, -1, -1};
    select(&histogram, seen.threshold, seen.below, seen.above, relative, first, last);
    const auto expected = ExpectedOf({histogram.GetDataPtr(), first, last}, bins, mode, relative);
    EXPECT_EQ(LxGetError(), LX_OK);
    EXPECT_EQ(seen, expected) << std::hex << mode << std::dec << " of " << first << ".." << last
                              << ", counts "
                              << testing::PrintToString(std::vector(
                                     &histogram[first], &histogram[std::min(last, first + 8)] + 1));
  }

  void CompareAll(LxBWHistogramVector& histogram, unsigned first, unsigned last) const {
    for (unsigned mode = PIC_THRESHOLD_MIN_SQUARED_DEVIATION; mode < PIC_THRESHOLD_RELATIVE;
         ++mode) {
      Compare(histogram, mode, -1, first, last);
    }
    for (const float relative : {0.0F, 0.3F, 0.5F, 1.0F}) {
      Compare(histogram, PIC_THRESHOLD_RELATIVE, relative, first, last);
    }
    Compare(histogram, (first + last) / 2, -1, first, last);
    EXPECT_EQ(isodata(&histogram, first, last),
              ExpectedIsodata({histogram.GetDataPtr(), first, last}));
  }

  // All histograms that hold none, one, two or `many` pixels in each of five bins from `lowest` on.
  void CompareSmallOnes(unsigned lowest, unsigned many = 5) const {
    auto histogram = HistogramWith({}, bins);
    for (unsigned code = 0; code < 1024 && !testing::Test::HasFailure(); ++code) {
      for (unsigned i = 0; i < 5; ++i) {
        histogram[lowest + i] = std::array{0U, 1U, 2U, many}[code >> (2 * i) & 3];
      }
      if (bins == 256) CompareGains(histogram);
      for (unsigned first = lowest - 1; first < lowest + 5; ++first) {
        for (unsigned last = first + 1; last <= lowest + 5; ++last) {
          CompareAll(histogram, first, last);
        }
      }
    }
  }
};

constexpr Depth kBytes = {256, &PicHistogramThreshold, &PicIsodataThreshold};
constexpr Depth kWords = {65536, &PicHistogramThresholdBW16, &PicIsodataThresholdBW16};

TEST(Threshold, EverySmallHistogram) {
  kBytes.CompareSmallOnes(1);
  kBytes.CompareSmallOnes(126, 70000);
  kWords.CompareSmallOnes(65530);
}

// Counts of all sizes, whose sums are rounded at every step.
TEST(Threshold, LargeCounts) {
  std::mt19937 random(11);
  auto histogram = HistogramWith({});
  auto words = HistogramWith({}, 65536);
  for (int round = 0; round < 200 && !testing::Test::HasFailure(); ++round) {
    const int shift = round % 32;
    for (unsigned i = 0; i < 256; ++i) {
      histogram[i] = words[40000 + i] = static_cast<unsigned>(random()) >> (random() % 32) >> shift;
    }
    const auto first = static_cast<unsigned>(random() % 100);
    const auto last = static_cast<unsigned>(255 - random() % 100);
    CompareGains(histogram);
    kBytes.CompareAll(histogram, first, last);
    kWords.CompareAll(words, 40000 + first, 40000 + last);
  }
}

}  // namespace
}  // namespace lx::test
