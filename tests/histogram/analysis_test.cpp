// SPDX-License-Identifier: Apache-2.0
#include "lxpic/histogram/analysis.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <vector>

#include "histogram/feature_reference.h"
#include "support/execution_path.h"
#include "support/outcome_text.h"

namespace lx::test {
namespace {

using Counts = std::vector<unsigned>;

// Mostly empty bins, small counts that meet each other, or counts of all sizes.
Counts RandomCounts(std::size_t bins, int kind, std::mt19937& random) {
  Counts counts(bins);
  for (unsigned& count : counts) {
    const auto bits = static_cast<unsigned>(random());
    if (kind == 0) count = bits % 100 == 0 ? 1 + bits / 100 % 3 : 0;
    if (kind == 1) count = bits % 8;
    if (kind == 2) count = bits >> (random() % 32);
  }
  return counts;
}

void Fill(LxBWHistogramVector& histogram, const Counts& counts) {
  histogram.SetNumElements(static_cast<unsigned>(counts.size()));
  std::copy(counts.begin(), counts.end(), histogram.begin());
}

using Analyser = float (*)(LxBWHistogramVector*, PIC_HISTOGRAM_FEATURE, int, int);

void ExpectFeatures(Analyser analyse, int bins, int rounds) {
  std::mt19937 random(7);
  LxBWHistogramVector histogram(0);
  for (int round = 0; round < rounds; ++round) {
    const Counts counts = RandomCounts(static_cast<unsigned>(bins), round % 3, random);
    Fill(histogram, counts);
    const int a = static_cast<int>(random() % static_cast<unsigned>(bins));
    const int b = static_cast<int>(random() % static_cast<unsigned>(bins));
    const int first = round < 3 ? 0 : std::min(a, b);
    const int last = round < 3 ? bins - 1 : std::max(a, b);
    for (unsigned feature = 0; feature < 9; ++feature) {
      EXPECT_EQ(analyse(&histogram, static_cast<PIC_HISTOGRAM_FEATURE>(feature), first, last),
                static_cast<float>(FeatureOf(counts, feature, first, last)))
          << feature << " of " << first << ".." << last << " round " << round;
      EXPECT_EQ(TakeOutcome(), "0");
    }
  }
}

TEST(Analyse, EveryFeatureOnEveryPath) {
  for (const ExecutionPath& path : ExecutionPaths()) {
    SCOPED_TRACE(path.name);
    const PathScope scope(path);
    ExpectFeatures(&PicAnalyseHistogram, 256, 120);
    ExpectFeatures(&PicAnalyseHistogramBW16, 65536, 12);
  }
}

TEST(Analyse, EmptyAndHugeBins) {
  LxBWHistogramVector histogram(0);
  Counts counts(256);
  counts[9] = counts[21] = 5;
  Fill(histogram, counts);
  const std::vector<float> empty = {0, 0, 0, -1, 21, 9, 0, 0, 0};
  for (unsigned feature = 0; feature < 9; ++feature) {
    EXPECT_EQ(PicAnalyseHistogram(&histogram, static_cast<PIC_HISTOGRAM_FEATURE>(feature), 10, 20),
              empty[feature])
        << feature;
  }
  histogram[15] = 0xFFFFFFFF;
  EXPECT_EQ(PicAnalyseHistogram(&histogram, PIC_HIST_LEAST_FREQUENT_COUNT, 10, 20), 4294967296.0F);
  EXPECT_EQ(PicAnalyseHistogram(&histogram, PIC_HIST_LEAST_FREQUENT_VALUE, 10, 20), 15);
  histogram[16] = 0xFFFFFFFF;
  EXPECT_EQ(PicAnalyseHistogram(&histogram, PIC_HIST_PIXEL_COUNT, 10, 20), 8589934592.0F);
  EXPECT_EQ(PicAnalyseHistogram(&histogram, PIC_HIST_AVERAGE_VALUE, 10, 20), 15.5F);
}

TEST(Analyse, ChecksItsArgumentsInOrder) {
  LxBWHistogramVector histogram(0);
  Fill(histogram, Counts(256, 1));
  LxBWHistogramVector wide(0);
  Fill(wide, Counts(65536, 1));
  constexpr auto kCount = PIC_HIST_PIXEL_COUNT;
  const auto expect = [](float result, const char* outcome) {
    EXPECT_EQ(result, 0.0F);
    EXPECT_EQ(TakeOutcome(), outcome);
  };
  expect(PicAnalyseHistogram(nullptr, kCount, -1, 256), "1601 PicAnalyseHistogram");
  expect(PicAnalyseHistogram(&wide, kCount, -1, 256), "1613 PicAnalyseHistogram");
  expect(PicAnalyseHistogram(&histogram, kCount, -1, 256), "1013 PicAnalyseHistogram");
  expect(PicAnalyseHistogram(&histogram, kCount, 300, 256), "1014 PicAnalyseHistogram");
  expect(PicAnalyseHistogram(&histogram, kCount, 300, 255), "1007 PicAnalyseHistogram");
  expect(PicAnalyseHistogram(&histogram, kCount, 0, INT_MIN), "1007 PicAnalyseHistogram");
  expect(PicAnalyseHistogramBW16(nullptr, kCount, 0, 1), "1601 PicAnalyseHistogram (BW16)");
  expect(PicAnalyseHistogramBW16(&histogram, kCount, 0, 1), "1613 PicAnalyseHistogram (BW16)");
  expect(PicAnalyseHistogramBW16(&wide, kCount, 0, 65536), "1014 PicAnalyseHistogram (BW16)");
  // A feature that does not exist is traced, in one form, and no error.
  for (const unsigned feature : {9U, 10U, 0xFFFFFFFFU}) {
    const auto unknown = static_cast<PIC_HISTOGRAM_FEATURE>(feature);
    expect(PicAnalyseHistogram(&histogram, unknown, 0, 255), "0 PicAnalyseHistogram");
    expect(PicAnalyseHistogram(&histogram, unknown, -1, 255), "1013 PicAnalyseHistogram");
    expect(PicAnalyseHistogramBW16(&wide, unknown, 0, 255), "0");
  }
}

class Legacy : public testing::Test {
 protected:
  Legacy() { vector.SetType(LX_VECTOR_HISTOGRAM, 0, 0); }

  unsigned* Entries() { return static_cast<unsigned*>(vector.GetDataPtr()); }
  int Whole(int feature, int first, int last) {
    int result = 12345;
    PicAnalyseHistogram(&vector, first, last, feature, result);
    return result;
  }
  float Real(int feature, int first, int last) {
    float result = 12345;
    PicAnalyseHistogram(&vector, first, last, feature, result);
    return result;
  }

  LxVector vector;
};

TEST_F(Legacy, FormsHaveTheirOwnFeatures) {
  std::mt19937 random(3);
  const Counts counts = RandomCounts(256, 1, random);
  std::copy(counts.begin(), counts.end(), Entries());
  for (int feature = -2; feature < 12; ++feature) {
    const bool whole = feature >= 0 && feature <= 6;
    const bool real = feature == 7 || feature == 8;
    const auto expected =
        static_cast<float>(FeatureOf(counts, static_cast<unsigned>(feature), 30, 200));
    EXPECT_EQ(Whole(feature, 30, 200), whole ? static_cast<int>(expected) : 12345) << feature;
    EXPECT_EQ(Real(feature, 30, 200), real ? expected : 12345) << feature;
    EXPECT_EQ(TakeOutcome(), "0");
  }
}

TEST_F(Legacy, RangesAreClipped) {
  Entries()[0] = 3;
  Entries()[255] = 4;
  EXPECT_EQ(Whole(PIC_HIST_PIXEL_COUNT, INT_MIN, INT_MAX), 7);
  EXPECT_EQ(Whole(PIC_HIST_LOWEST_VALUE, -5, 300), 0);
  EXPECT_EQ(Whole(PIC_HIST_HIGHEST_VALUE, -5, 300), 255);
  // Nothing is left of these.
  for (const auto& [first, last] : {std::pair{300, 400}, {-9, -1}, {20, 10}, {INT_MAX, INT_MIN}}) {
    EXPECT_EQ(Whole(PIC_HIST_PIXEL_COUNT, first, last), 0) << first;
    EXPECT_EQ(Whole(PIC_HIST_LEAST_FREQUENT_COUNT, first, last), -1) << first;
    EXPECT_EQ(Whole(PIC_HIST_MOST_FREQUENT_VALUE, first, last), 0) << first;
    EXPECT_EQ(Real(PIC_HIST_AVERAGE_VALUE, first, last), 0.0F) << first;
    EXPECT_EQ(Real(PIC_HIST_STANDARD_DEVIATION, first, last), 0.0F) << first;
  }
  // Counts of 32 bits keep their bits.
  Entries()[7] = 0xFFFFFFFE;
  EXPECT_EQ(Whole(PIC_HIST_MOST_FREQUENT_COUNT, 0, 255), -2);
}

TEST_F(Legacy, Refusals) {
  const auto expect = [this](const char* outcome) {
    EXPECT_EQ(Whole(PIC_HIST_PIXEL_COUNT, 0, 255), 12345);
    EXPECT_EQ(TakeOutcome(), outcome);
    EXPECT_EQ(Real(PIC_HIST_AVERAGE_VALUE, 0, 255), 12345.0F);
    EXPECT_EQ(TakeOutcome(), outcome);
  };
  vector.SetType(LX_VECTOR_HISTOGRAM, 1, 255);
  expect("1613 PicAnalyseHistogram");
  vector.SetType(LX_VECTOR_HISTOGRAM, 1, 0);
  expect("1601 PicAnalyseHistogram");
  vector.SetStructure(LX_DATA_SIZE_32, 1, 256, LX_DATA_UNSIGNED);
  expect("1602 PicAnalyseHistogram");
  int result = 5;
  PicAnalyseHistogram(static_cast<LxVector*>(nullptr), 0, 1, 0, result);
  EXPECT_EQ(TakeOutcome(), "1601 PicAnalyseHistogram");
  EXPECT_EQ(result, 5);
}

TEST(Moments, OfARange) {
  LxBWHistogramVector histogram(0);
  Counts counts(256);
  counts[10] = 1;
  counts[20] = 3;
  counts[200] = 4000000000U;
  counts[202] = 4000000000U;
  Fill(histogram, counts);
  float mean = -1;
  float variance = -1;
  PicHistogramMoments(&histogram, mean, 0, 100);
  EXPECT_EQ(mean, 17.5F);
  PicHistogramCenteredMoments(&histogram, mean, variance, 0, 100);
  EXPECT_EQ(mean, 17.5F);
  EXPECT_EQ(variance, 18.75F);
  // What no bin has is left out.
  PicHistogramCenteredMoments(&histogram, mean, variance, 100, 0xFFFFFFFF);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(mean, 201.0F);
  EXPECT_EQ(variance, 1.0F);
}

TEST(Moments, Refusals) {
  LxBWHistogramVector histogram(0);
  Fill(histogram, Counts(256, 0));
  histogram[7] = 1;
  LxBWHistogramVector shorter(0);
  Fill(shorter, Counts(255, 1));
  float mean = -1;
  float variance = -2;
  const auto expect = [&](LxBWHistogramVector* from, unsigned first, unsigned last,
                          const std::string& code) {
    PicHistogramMoments(from, mean, first, last);
    EXPECT_EQ(TakeOutcome(), code + " PicHistogramMoments ( 1)");
    PicHistogramCenteredMoments(from, mean, variance, first, last);
    EXPECT_EQ(TakeOutcome(), code + " PicHistogramCenteredMoments ( 2)");
    EXPECT_EQ(mean, -1.0F);
    EXPECT_EQ(variance, -2.0F);
  };
  expect(nullptr, 0, 255, "1601");
  expect(&shorter, 0, 254, "1613");
  expect(&histogram, 8, 255, "1051");
  expect(&histogram, 8, 6, "1051");
  expect(&histogram, 300, 0xFFFFFFFF, "1051");
}

}  // namespace
}  // namespace lx::test
