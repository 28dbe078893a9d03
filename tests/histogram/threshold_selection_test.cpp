// SPDX-License-Identifier: Apache-2.0
#include "lxpic/histogram/threshold_selection.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "support/outcome_text.h"

namespace lx::test {
namespace {

using Filling = std::vector<std::pair<unsigned, unsigned>>;

class Histogram : public LxBWHistogramVector {
 public:
  explicit Histogram(const Filling& counts, unsigned bins = 256) : LxBWHistogramVector(bins) {
    SetNumElements(bins);
    Clear();
    for (const auto& [bin, count] : counts) (*this)[bin] = count;
  }
};

struct Outcome {
  unsigned threshold;
  float below;
  float above;

  bool operator==(const Outcome& other) const {
    return threshold == other.threshold && below == other.below && above == other.above;
  }
};
std::ostream& operator<<(std::ostream& stream, const Outcome& outcome) {
  return stream << outcome.threshold << ": " << outcome.below << ", " << outcome.above;
}

Outcome Select(const Filling& counts, unsigned mode, float relative = -1, unsigned first = 0,
               unsigned last = 255) {
  Histogram histogram(counts);
  Outcome outcome{mode, -1, -1};
  PicHistogramThreshold(&histogram, outcome.threshold, outcome.below, outcome.above, relative,
                        first, last);
  EXPECT_EQ(TakeOutcome(), "0");
  return outcome;
}

TEST(HistogramThreshold, TwoPopulations) {
  const Filling two = {{50, 10}, {200, 10}};
  EXPECT_EQ(Select(two, PIC_THRESHOLD_MIN_RESIDUE), (Outcome{51, 50, 200}));
  EXPECT_EQ(Select(two, PIC_THRESHOLD_ISODATA), (Outcome{125, 50, 200}));
  EXPECT_EQ(Select({{0, 4}, {255, 9}}, PIC_THRESHOLD_MIN_ABSOLUTE_DEVIATION),
            (Outcome{254, 0, 255}));
  EXPECT_EQ(Select(two, 50), (Outcome{50, 0, 125}));
  EXPECT_EQ(Select(two, 51), (Outcome{51, 50, 200}));
  EXPECT_EQ(Select(two, 10, -1, 10, 90), (Outcome{10, 10, 50}));
}

TEST(HistogramThreshold, RelativeShares) {
  const Filling levels = {{10, 1}, {20, 1}, {30, 2}};
  constexpr unsigned kMode = PIC_THRESHOLD_RELATIVE;
  EXPECT_EQ(Select(levels, kMode, 0.0F), (Outcome{10, 0, 22.5F}));
  EXPECT_EQ(Select(levels, kMode, 0.24F), (Outcome{10, 0, 22.5F}));
  EXPECT_EQ(Select(levels, kMode, 0.25F), (Outcome{20, 10, 80 / 3.0F}));
  EXPECT_EQ(Select(levels, kMode, 0.5F), (Outcome{30, 15, 30}));
  EXPECT_EQ(Select(levels, kMode, 0.99F), (Outcome{30, 15, 30}));
  EXPECT_EQ(Select(levels, kMode, 1.0F), (Outcome{256, 22.5F, 256}));
  EXPECT_EQ(Select({}, kMode, 0.5F), (Outcome{256, 0, 256}));
  // The product is truncated, not what single precision makes of the count.
  EXPECT_EQ(Select({{0, 16777217}, {1, 1}}, kMode, 1.0F, 0, 1), (Outcome{2, 1 / 16777218.0F, 2}));
}

TEST(HistogramThreshold, OneFilledBinCannotBeSplit) {
  for (const unsigned mode :
       {PIC_THRESHOLD_ISODATA, PIC_THRESHOLD_MAX_ENTROPY, PIC_THRESHOLD_MIN_RESIDUE}) {
    EXPECT_EQ(Select({{100, 5}}, mode, -1, 20, 200), (Outcome{0, 20, 201}));
    EXPECT_EQ(Select({}, mode), (Outcome{0, 0, 256}));
  }
  EXPECT_EQ(Select({}, PIC_THRESHOLD_MIN_SQUARED_DEVIATION), (Outcome{255, 0, 256}));
}

// Totals beyond 32 bits, and costs near 64.
TEST(HistogramThreshold, HugeCounts) {
  const Filling huge = {{0, 4000000000U}, {128, 4000000000U}, {255, 4000000000U}};
  EXPECT_EQ(Select(huge, PIC_THRESHOLD_MIN_SQUARED_DEVIATION), (Outcome{127, 0, 191.5F}));
  EXPECT_EQ(Select(huge, PIC_THRESHOLD_MIN_RESIDUE), (Outcome{1, 0, 191.5F}));
  EXPECT_EQ(Select(huge, PIC_THRESHOLD_RELATIVE, 0.5F).threshold, 128U);
  Histogram wide({{0, 3000000000U}, {30000, 7}, {65535, 3000000000U}}, 65536);
  unsigned threshold = PIC_THRESHOLD_MIN_SQUARED_DEVIATION;
  float below = -1;
  float above = -1;
  PicHistogramThresholdBW16(&wide, threshold, below, above, -1, 0, 65535);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(threshold, 65534U);
  EXPECT_EQ(above, 65535.0F);
}

TEST(HistogramThreshold, ChecksItsArgumentsInOrder) {
  Histogram histogram({{1, 1}});
  Histogram wide({}, 65536);
  Histogram odd({}, 255);
  constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
  struct Row {
    LxBWHistogramVector* histogram;
    unsigned threshold;
    float relative;
    unsigned first;
    unsigned last;
    const char* code;
  };
  constexpr unsigned kRelative = PIC_THRESHOLD_RELATIVE;
  const std::vector<Row> rows = {{nullptr, 999, 2, 256, 256, "1601"},
                                 {&odd, 999, 2, 256, 256, "1613"},
                                 {&histogram, 999, 2, 256, 256, "1015"},
                                 {&histogram, 999, 2, 255, 256, "1016"},
                                 {&histogram, 999, 2, 255, 255, "1007"},
                                 {&histogram, 999, 2, 9, 8, "1007"},
                                 {&histogram, kRelative, 1.0001F, 0, 255, "1015"},
                                 {&histogram, kRelative, -0.0001F, 0, 255, "1015"},
                                 {&histogram, kRelative, kNan, 0, 255, "1015"},
                                 {&histogram, 256, 2, 0, 255, "1012"},
                                 {&histogram, 9, 2, 10, 20, "1012"},
                                 {&histogram, 21, 2, 10, 20, "1012"},
                                 {&histogram, 0xFFFFFFF7, 2, 0, 255, "1012"},
                                 {&histogram, 0xFFFFFFFE, 2, 0, 255, "1012"}};
  for (const Row& row : rows) {
    for (const bool words : {false, true}) {
      LxBWHistogramVector* const subject =
          words && row.histogram == &histogram ? &wide : row.histogram;
      const unsigned limit = words ? 65536 - 256 : 0;
      unsigned threshold = row.threshold;
      if (words && threshold == 256) threshold = 65536;
      const unsigned before = threshold;
      float below = -1;
      float above = -2;
      const auto scaled = [&](unsigned bin) { return bin >= 255 ? bin + limit : bin; };
      (words ? PicHistogramThresholdBW16 : PicHistogramThreshold)(
          subject, threshold, below, above, row.relative, scaled(row.first), scaled(row.last));
      EXPECT_EQ(TakeOutcome(), std::string(row.code) + (words ? " PicHistogramThreshold (BW16)"
                                                              : " PicHistogramThreshold"));
      EXPECT_EQ(threshold, before);
      EXPECT_EQ(below, -1.0F);
      EXPECT_EQ(above, -2.0F);
    }
  }
}

TEST(IsodataThreshold, Converges) {
  Histogram two({{20, 5}, {220, 9}});
  EXPECT_EQ(PicIsodataThreshold(&two, 0, 255), 120U);
  EXPECT_EQ(TakeOutcome(), "0");
  // Empty classes have the middle of their bins.
  Histogram low({{3, 5}});
  EXPECT_EQ(PicIsodataThreshold(&low, 0, 255), 87U);
  Histogram none({});
  EXPECT_EQ(PicIsodataThreshold(&none, 10, 20), 15U);
}

TEST(IsodataThreshold, ChecksItsArgumentsInOrder) {
  constexpr const char* kTyped = " PicIsodataThreshold ( LxBWHistogramVector)";
  constexpr const char* kUntyped = " PicIsodataThreshold ( LxVector)";
  Histogram histogram({{1, 1}});
  Histogram wide({}, 65536);
  LxVector vector;
  LxVector* const noVector = nullptr;
  LxBWHistogramVector* const none = nullptr;
  const auto expect = [](unsigned threshold, const std::string& outcome) {
    EXPECT_EQ(threshold, 0U);
    EXPECT_EQ(TakeOutcome(), outcome);
  };
  expect(PicIsodataThreshold(none, 256, 256), std::string("1601") + kTyped);
  expect(PicIsodataThreshold(&wide, 256, 256), std::string("1613") + kTyped);
  expect(PicIsodataThreshold(&histogram, 256, 256), std::string("1012") + kTyped);
  expect(PicIsodataThreshold(&histogram, 255, 256), std::string("1013") + kTyped);
  expect(PicIsodataThreshold(&histogram, 255, 255), std::string("1007") + kTyped);
  expect(PicIsodataThresholdBW16(none, 0, 1), std::string("1601") + kTyped);
  expect(PicIsodataThresholdBW16(&histogram, 0, 1), std::string("1613") + kTyped);
  expect(PicIsodataThresholdBW16(&wide, 65536, 1), std::string("1012") + kTyped);
  expect(PicIsodataThresholdBW16(&wide, 0, 65536), std::string("1013") + kTyped);
  expect(PicIsodataThreshold(noVector, 256, 0), std::string("1012") + kUntyped);
  expect(PicIsodataThreshold(noVector, 0, 256), std::string("1013") + kUntyped);
  expect(PicIsodataThreshold(noVector, 5, 5), std::string("1007") + kUntyped);
  expect(PicIsodataThreshold(noVector, 0, 255), std::string("1601") + kUntyped);
  expect(PicIsodataThreshold(&vector, 0, 255), std::string("1607") + kUntyped);
  vector.SetType(LX_VECTOR_HISTOGRAM, 1, 0);
  expect(PicIsodataThreshold(&vector, 0, 255), std::string("1601") + kUntyped);
  vector.SetType(LX_VECTOR_HISTOGRAM, 1, 255);
  expect(PicIsodataThreshold(&vector, 0, 255), std::string("1613") + kUntyped);
}

TEST(SplitThresholds, LeaveMeansAloneWithoutAGain) {
  for (const auto select : {&PicMinResidueThreshold, &PicMaxEntropyThreshold}) {
    for (const Filling& filling : {Filling{}, Filling{{77, 5}}, Filling{{0, 1}}}) {
      Histogram histogram(filling);
      float below = -1;
      float above = -2;
      EXPECT_EQ(select(&histogram, below, above), 0);
      EXPECT_EQ(TakeOutcome(), "0");
      EXPECT_EQ(below, -1.0F);
      EXPECT_EQ(above, -2.0F);
    }
  }
  float below = -1;
  float above = -2;
  Histogram wide({}, 65536);
  EXPECT_EQ(PicMinResidueThreshold(nullptr, below, above), 0);
  EXPECT_EQ(TakeOutcome(), "1601 PicMinResidueThreshold");
  EXPECT_EQ(PicMinResidueThreshold(&wide, below, above), 0);
  EXPECT_EQ(TakeOutcome(), "1613 PicMinResidueThreshold");
  EXPECT_EQ(PicMaxEntropyThreshold(nullptr, below, above), 0);
  EXPECT_EQ(TakeOutcome(), "1601 PicMaxEntropyThreshold");
  EXPECT_EQ(PicMaxEntropyThreshold(&wide, below, above), 0);
  EXPECT_EQ(TakeOutcome(), "1613 PicMaxEntropyThreshold");
  EXPECT_EQ(below, -1.0F);
  Histogram two({{50, 3}, {200, 9}});
  EXPECT_EQ(PicMinResidueThreshold(&two, below, above), 51);
  EXPECT_EQ(below, 50.0F);
  EXPECT_EQ(above, 200.0F);
}

}  // namespace
}  // namespace lx::test
