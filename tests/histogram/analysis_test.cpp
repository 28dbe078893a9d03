// SPDX-License-Identifier: Apache-2.0
#include "lxpic/histogram/analysis.h"

#include <gtest/gtest.h>

#include <climits>
#include <vector>

#include "support/outcome_text.h"
#include "vectors/histograms.h"

namespace lx::test {
namespace {

TEST(Analyse, KnownHistograms) {
  const auto expect = [](const Filling& filling, const std::vector<float>& features) {
    auto histogram = HistogramWith(filling);
    for (unsigned feature = 0; feature < 9; ++feature) {
      const auto known = static_cast<PIC_HISTOGRAM_FEATURE>(feature);
      EXPECT_EQ(PicAnalyseHistogram(&histogram, known, 10, 20), features[feature]) << feature;
      EXPECT_EQ(TakeOutcome(), "0");
    }
  };
  expect({{9, 5}, {21, 5}}, {0, 0, 0, -1, 21, 9, 0, 0, 0});
  expect({{9, 5}, {10, 2}, {12, 2}, {20, 4}}, {20, 4, 10, 2, 10, 20, 8, 15.5F, 4.5552168F});
  // Counts and their total beyond what 31 and 32 bits hold.
  constexpr unsigned kMost = 0xFFFFFFFF;
  constexpr float kPixels = 4294967296.0F;
  expect({{15, kMost}, {16, kMost}}, {15, kPixels, 15, kPixels, 15, 16, 2 * kPixels, 15.5F, 0.5F});
}

TEST(Analyse, UntypedVectorsClipAnyRange) {
  LxVector vector;
  vector.SetType(LX_VECTOR_HISTOGRAM, 0, 0);
  static_cast<unsigned*>(vector.GetDataPtr())[0] = 3;
  static_cast<unsigned*>(vector.GetDataPtr())[255] = 4;
  const auto least = [&vector](int first, int last) {
    int result = 12345;
    PicAnalyseHistogram(&vector, first, last, PIC_HIST_LEAST_FREQUENT_COUNT, result);
    return result;
  };
  EXPECT_EQ(least(INT_MIN, INT_MAX), 3);
  EXPECT_EQ(least(INT_MIN, -1), -1);
  EXPECT_EQ(least(256, INT_MAX), -1);
  EXPECT_EQ(least(INT_MAX, INT_MIN), -1);
}

TEST(Moments, OfKnownHistograms) {
  auto histogram = HistogramWith({{10, 1}, {20, 3}, {200, 4000000000U}, {202, 4000000000U}});
  float mean = -1;
  float variance = -1;
  PicHistogramCenteredMoments(&histogram, mean, variance, 0, 100);
  EXPECT_EQ(mean, 17.5F);
  EXPECT_EQ(variance, 18.75F);
  // What no bin has is left out.
  PicHistogramCenteredMoments(&histogram, mean, variance, 100, 0xFFFFFFFF);
  EXPECT_EQ(mean, 201.0F);
  EXPECT_EQ(variance, 1.0F);
  PicHistogramMoments(&histogram, mean, 100, 0xFFFFFFFF);
  EXPECT_EQ(mean, 201.0F);
  EXPECT_EQ(TakeOutcome(), "0");
}

}  // namespace
}  // namespace lx::test
