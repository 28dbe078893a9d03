// SPDX-License-Identifier: Apache-2.0
// Every histogram of a few bins with small counts, every range and every way to choose a threshold,
// against its definition.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "histogram/threshold_reference.h"
#include "support/outcome_text.h"

namespace lx::test {
namespace {

// One depth of histogram.
struct Depth {
  unsigned bins;
  void (*select)(LxBWHistogramVector*, unsigned&, float&, float&, float, unsigned, unsigned);
  unsigned (*isodata)(LxBWHistogramVector*, unsigned, unsigned);

  void Compare(LxBWHistogramVector& histogram, unsigned mode, float relative, unsigned first,
               unsigned last) const {
    unsigned threshold = mode;
    float below = -1;
    float above = -1;
    select(&histogram, threshold, below, above, relative, first, last);
    const auto expected = ExpectedOf(histogram.GetDataPtr(), bins, mode, relative, first, last);
    if (LxGetError() == LX_OK && threshold == expected.threshold && below == expected.below &&
        above == expected.above) {
      return;
    }
    std::string counts;
    for (unsigned j = first; j <= last && j < first + 9; ++j) {
      counts += ' ' + std::to_string(histogram[j]);
    }
    ADD_FAILURE() << TakeOutcome() << " mode " << std::hex << mode << std::dec << " range " << first
                  << ".." << last << ": " << threshold << ' ' << below << ' ' << above
                  << " instead of " << expected.threshold << ' ' << expected.below << ' '
                  << expected.above << ", counts from the first bin" << counts;
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
              ExpectedIsodata(histogram.GetDataPtr(), first, last));
  }

  // All histograms that hold 0, 1, 2 or 5 pixels in each of five bins from `lowest` on.
  void CompareSmallOnes(unsigned lowest) const {
    LxBWHistogramVector histogram(0);
    histogram.SetNumElements(bins);
    histogram.Clear();
    for (unsigned code = 0; code < 1024 && !testing::Test::HasFailure(); ++code) {
      for (unsigned i = 0; i < 5; ++i) {
        histogram[lowest + i] = std::vector{0U, 1U, 2U, 5U}[code >> (2 * i) & 3];
      }
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
  kBytes.CompareSmallOnes(126);
}

TEST(Threshold, EverySmallHistogramOfWords) { kWords.CompareSmallOnes(65530); }

// Counts of all sizes, whose sums are rounded at every step.
TEST(Threshold, LargeCounts) {
  std::mt19937 random(11);
  LxBWHistogramVector histogram(256);
  LxBWHistogramVector words(65536);
  histogram.SetNumElements(256);
  words.SetNumElements(65536);
  words.Clear();
  for (int round = 0; round < 200 && !testing::Test::HasFailure(); ++round) {
    const int shift = round % 32;
    for (unsigned i = 0; i < 256; ++i) {
      histogram[i] = words[40000 + i] = static_cast<unsigned>(random()) >> (random() % 32) >> shift;
    }
    const auto first = static_cast<unsigned>(random() % 100);
    const auto last = static_cast<unsigned>(255 - random() % 100);
    kBytes.CompareAll(histogram, first, last);
    kWords.CompareAll(words, 40000 + first, 40000 + last);
  }
}

void CompareGains(LxBWHistogramVector& histogram) {
  for (const unsigned mode : {PIC_THRESHOLD_MIN_RESIDUE, PIC_THRESHOLD_MAX_ENTROPY}) {
    const auto expected = ExpectedGain(histogram.GetDataPtr(), mode, -1, -2);
    float below = -1;
    float above = -2;
    const bool residue = mode == PIC_THRESHOLD_MIN_RESIDUE;
    const auto select = residue ? &PicMinResidueThreshold : &PicMaxEntropyThreshold;
    EXPECT_EQ(select(&histogram, below, above), expected.threshold) << residue;
    EXPECT_EQ(below, expected.below) << residue;
    EXPECT_EQ(above, expected.above) << residue;
  }
}

TEST(Threshold, SplitsThatBeatTheWhole) {
  LxBWHistogramVector histogram(256);
  histogram.SetNumElements(256);
  histogram.Clear();
  for (unsigned code = 0; code < 1024 && !testing::Test::HasFailure(); ++code) {
    for (unsigned i = 0; i < 5; ++i) {
      histogram[40 * i + 20] = std::vector{0U, 1U, 3U, 70000U}[code >> (2 * i) & 3];
    }
    CompareGains(histogram);
  }
  std::mt19937 random(5);
  for (int round = 0; round < 50 && !testing::Test::HasFailure(); ++round) {
    for (unsigned& count : histogram) count = static_cast<unsigned>(random()) >> (random() % 32);
    CompareGains(histogram);
  }
}

}  // namespace
}  // namespace lx::test
