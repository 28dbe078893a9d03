// SPDX-License-Identifier: Apache-2.0
// Every histogram of a few bins with small counts, every range and every way to choose a threshold,
// against sums that are made anew for each threshold.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "support/outcome_text.h"
#include "lxpic/histogram/threshold_selection.h"

namespace lx::test {
namespace {

using Wide = long double;

// The counts of a histogram by bin, and what is known of a class of its pixels.
struct Counts {
  const unsigned* h;

  std::uint64_t Pixels(unsigned from, unsigned end) const {
    std::uint64_t n = 0;
    for (unsigned j = from; j < end; ++j) n += h[j];
    return n;
  }
  std::uint64_t Sum(unsigned from, unsigned end) const {
    std::uint64_t s = 0;
    for (unsigned j = from; j < end; ++j) s += std::uint64_t{j} * h[j];
    return s;
  }
  float Mean(unsigned from, unsigned end, unsigned none) const {
    const std::uint64_t n = Pixels(from, end);
    return static_cast<float>(n == 0 ? Wide(none) : Wide(Sum(from, end)) / Wide(n));
  }
};

struct Expected {
  unsigned threshold;
  float below;
  float above;
};

Expected WithMeans(const Counts& c, unsigned threshold, unsigned bright, unsigned first,
                   unsigned last) {
  return {threshold, c.Mean(first, bright, first), c.Mean(bright, last + 1, last + 1)};
}

Expected ExpectedDeviation(const Counts& c, int power, unsigned white, unsigned first,
                           unsigned last) {
  const auto distance = [power](std::uint64_t d) { return power == 1 ? d : d * d; };
  unsigned best = 0;
  std::uint64_t bestCost = std::numeric_limits<std::uint64_t>::max();
  for (unsigned t = first; t <= last; ++t) {
    std::uint64_t cost = 0;
    for (unsigned j = first; j <= last; ++j) cost += distance(j <= t ? j : white - j) * c.h[j];
    if (cost <= bestCost) best = t, bestCost = cost;
  }
  return WithMeans(c, best, best + 1, first, last);
}

Expected ExpectedRelative(const Counts& c, float relative, unsigned first, unsigned last) {
  const std::uint64_t n = c.Pixels(first, last + 1);
  const auto most = static_cast<std::uint64_t>(std::floor(Wide(n) * relative));
  for (unsigned t = last; most < n; --t) {
    if (c.Pixels(first, t) <= most || t == first) return WithMeans(c, t, t, first, last);
  }
  return WithMeans(c, last + 1, last + 1, first, last);
}

// Sums of h ln h of the classes of each threshold, rounded as they grow and shrink.
template <typename Real>
class Weighted {
 public:
  Weighted(const Counts& c, unsigned first, unsigned last)
      : dark_(last - first + 1), bright_(last - first + 1), first_(first) {
    const auto term = [&](unsigned j) {
      return c.h[j] == 0 ? Wide(0) : Wide(c.h[j]) * std::log(Wide(static_cast<Real>(c.h[j])));
    };
    Real bright = 0;
    for (unsigned j = last; j != first - 1; --j) bright = static_cast<Real>(bright + term(j));
    Real dark = 0;
    for (unsigned t = first; t <= last; ++t) {
      dark_[t - first] = dark;
      bright_[t - first] = bright;
      dark = static_cast<Real>(dark + term(t));
      bright = static_cast<Real>(bright - term(t));
    }
  }
  static Wide Entropy(std::uint64_t n, Real weighted) {
    return std::log(Wide(static_cast<Real>(n))) - Wide(weighted) / Wide(n);
  }
  Wide Dark(unsigned t, std::uint64_t n) const { return Entropy(n, dark_[t - first_]); }
  Wide Bright(unsigned t, std::uint64_t n) const { return Entropy(n, bright_[t - first_]); }
  Wide Whole(std::uint64_t n) const { return Entropy(n, bright_[0]); }

 private:
  std::vector<Real> dark_;
  std::vector<Real> bright_;
  unsigned first_;
};

template <typename Real>
Wide SquareOverCount(std::uint64_t s, std::uint64_t n) {
  const Real sum = static_cast<Real>(s);
  return Wide(static_cast<Real>(sum * sum)) / Wide(n);
}

// The value that the mode minimises at a threshold whose classes both hold pixels.
template <typename Real>
Real Criterion(const Counts& c, const Weighted<Real>& weighted, unsigned mode, unsigned first,
               unsigned last, unsigned t) {
  const std::uint64_t nDark = c.Pixels(first, t), nBright = c.Pixels(t, last + 1);
  const std::uint64_t sDark = c.Sum(first, t), sBright = c.Sum(t, last + 1);
  if (mode == PIC_THRESHOLD_ISODATA) {
    return static_cast<Real>(std::fabs(0.5L * Wide(sDark) / Wide(nDark) +
                                       0.5L * Wide(sBright) / Wide(nBright) - Wide(t)));
  }
  if (mode == PIC_THRESHOLD_MAX_ENTROPY) {
    return static_cast<Real>(-(weighted.Dark(t, nDark) + weighted.Bright(t, nBright)));
  }
  return static_cast<Real>(-SquareOverCount<Real>(sDark, nDark) -
                           SquareOverCount<Real>(sBright, nBright));
}

// The lowest threshold with the least criterion below `limit`; `last` + 1 when there is none.
template <typename Real>
unsigned BestSplit(const Counts& c, const Weighted<Real>& weighted, unsigned mode, unsigned first,
                   unsigned last, Real limit) {
  unsigned best = last + 1;
  for (unsigned t = first; t <= last; ++t) {
    if (c.Pixels(first, t) == 0 || c.Pixels(t, last + 1) == 0) continue;
    const Real value = Criterion(c, weighted, mode, first, last, t);
    if (value < limit) best = t, limit = value;
  }
  return best;
}

template <typename Real>
Expected ExpectedSplit(const Counts& c, unsigned mode, unsigned first, unsigned last) {
  const Weighted<Real> weighted(c, first, last);
  const unsigned best = BestSplit(c, weighted, mode, first, last, std::numeric_limits<Real>::max());
  if (best > last) return {0, static_cast<float>(first), static_cast<float>(last + 1)};
  return WithMeans(c, best, best, first, last);
}

template <typename Real>
Expected ExpectedOf(const Counts& c, unsigned mode, float relative, unsigned white, unsigned first,
                    unsigned last) {
  switch (mode) {
    case PIC_THRESHOLD_MIN_SQUARED_DEVIATION:
      return ExpectedDeviation(c, 2, white, first, last);
    case PIC_THRESHOLD_MIN_ABSOLUTE_DEVIATION:
      return ExpectedDeviation(c, 1, white, first, last);
    case PIC_THRESHOLD_RELATIVE:
      return ExpectedRelative(c, relative, first, last);
    case PIC_THRESHOLD_ISODATA:
    case PIC_THRESHOLD_MAX_ENTROPY:
    case PIC_THRESHOLD_MIN_RESIDUE:
      return ExpectedSplit<Real>(c, mode, first, last);
    default:
      return WithMeans(c, mode, mode, first, last);
  }
}

unsigned ExpectedIsodata(const Counts& c, unsigned first, unsigned last) {
  std::uint64_t t = (first + last + 1) / 2;
  for (int update = 0; update < 16; ++update) {
    const auto split = static_cast<unsigned>(t) + 1;
    const std::uint64_t nDark = c.Pixels(first, split), nBright = c.Pixels(split, last + 1);
    const std::uint64_t dark = nDark ? c.Sum(first, split) / nDark : (first + t) / 2;
    const std::uint64_t bright = nBright ? c.Sum(split, last + 1) / nBright : (last + 1 + t) / 2;
    if ((dark + bright) / 2 == t) break;
    t = (dark + bright) / 2;
  }
  return static_cast<unsigned>(t);
}

// One depth of histogram.
template <typename Real>
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
    const Expected expected =
        ExpectedOf<Real>({histogram.GetDataPtr()}, mode, relative, bins - 1, first, last);
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
              ExpectedIsodata({histogram.GetDataPtr()}, first, last));
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

constexpr Depth<float> kBytes = {256, &PicHistogramThreshold, &PicIsodataThreshold};
constexpr Depth<double> kWords = {65536, &PicHistogramThresholdBW16, &PicIsodataThresholdBW16};

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

// The two forms that compare with no split at all.
void CompareSplits(LxBWHistogramVector& histogram) {
  const Counts c{histogram.GetDataPtr()};
  const std::uint64_t n = c.Pixels(0, 256);
  const Weighted<float> weighted(c, 0, 255);
  for (const unsigned mode : {PIC_THRESHOLD_MIN_RESIDUE, PIC_THRESHOLD_MAX_ENTROPY}) {
    const bool residue = mode == PIC_THRESHOLD_MIN_RESIDUE;
    unsigned expected = 256;
    if (n != 0) {
      const Wide whole = residue ? SquareOverCount<float>(c.Sum(0, 256), n) : weighted.Whole(n);
      expected = BestSplit(c, weighted, mode, 0, 255, static_cast<float>(-whole));
    }
    float below = -1;
    float above = -2;
    const unsigned threshold = residue ? PicMinResidueThreshold(&histogram, below, above)
                                       : PicMaxEntropyThreshold(&histogram, below, above);
    EXPECT_EQ(threshold, expected == 256 ? 0 : expected) << residue;
    EXPECT_EQ(below, expected == 256 ? -1 : c.Mean(0, expected, 0)) << residue;
    EXPECT_EQ(above, expected == 256 ? -2 : c.Mean(expected, 256, 0)) << residue;
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
    CompareSplits(histogram);
  }
  std::mt19937 random(5);
  for (int round = 0; round < 50 && !testing::Test::HasFailure(); ++round) {
    for (unsigned& count : histogram) count = static_cast<unsigned>(random()) >> (random() % 32);
    CompareSplits(histogram);
  }
}

}  // namespace
}  // namespace lx::test
