// SPDX-License-Identifier: Apache-2.0
// Sums are made anew for each threshold.
#include "histogram/threshold_reference.h"

#include <cmath>
#include <limits>

#include "support/reference.h"

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

ExpectedThreshold WithMeans(const Counts& c, unsigned threshold, unsigned bright, unsigned first,
                            unsigned last) {
  return {threshold, c.Mean(first, bright, first), c.Mean(bright, last + 1, last + 1)};
}

ExpectedThreshold Deviation(const Counts& c, int power, unsigned white, unsigned first,
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

ExpectedThreshold Relative(const Counts& c, float relative, unsigned first, unsigned last) {
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
ExpectedThreshold Split(const Counts& c, unsigned mode, unsigned first, unsigned last) {
  const Weighted<Real> weighted(c, first, last);
  const unsigned best = BestSplit(c, weighted, mode, first, last, std::numeric_limits<Real>::max());
  if (best > last) return {0, static_cast<float>(first), static_cast<float>(last + 1)};
  return WithMeans(c, best, best, first, last);
}

}  // namespace

ExpectedThreshold ExpectedOf(const unsigned* counts, unsigned bins, unsigned mode, float relative,
                             unsigned first, unsigned last) {
  const Counts c{counts};
  switch (mode) {
    case PIC_THRESHOLD_MIN_SQUARED_DEVIATION:
      return Deviation(c, 2, bins - 1, first, last);
    case PIC_THRESHOLD_MIN_ABSOLUTE_DEVIATION:
      return Deviation(c, 1, bins - 1, first, last);
    case PIC_THRESHOLD_RELATIVE:
      return Relative(c, relative, first, last);
    case PIC_THRESHOLD_ISODATA:
    case PIC_THRESHOLD_MAX_ENTROPY:
    case PIC_THRESHOLD_MIN_RESIDUE:
      return bins == 256 ? Split<float>(c, mode, first, last) : Split<double>(c, mode, first, last);
    default:
      return WithMeans(c, mode, mode, first, last);
  }
}

unsigned ExpectedIsodata(const unsigned* counts, unsigned first, unsigned last) {
  const Counts c{counts};
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

ExpectedThreshold ExpectedGain(const unsigned* counts, unsigned mode, float below, float above) {
  const Counts c{counts};
  const std::uint64_t n = c.Pixels(0, 256);
  if (n == 0) return {0, below, above};
  const Weighted<float> weighted(c, 0, 255);
  const Wide whole = mode == PIC_THRESHOLD_MIN_RESIDUE ? SquareOverCount<float>(c.Sum(0, 256), n)
                                                       : weighted.Whole(n);
  const unsigned best = BestSplit(c, weighted, mode, 0, 255, static_cast<float>(-whole));
  if (best == 256) return {0, below, above};
  return WithMeans(c, best, best, 0, 255);
}

namespace {

std::vector<unsigned> CountsOf(const Elements& histogram) {
  return {histogram.values.begin(), histogram.values.end()};
}

void Set(Outcome& outcome, std::size_t index, double value) { outcome.Number(index) = value; }

void SelectThreshold(const Arguments& call, Outcome& outcome) {
  const auto counts = CountsOf(outcome.Vector(0));
  const auto mode = static_cast<unsigned>(call.Number(1));
  const auto relative = static_cast<float>(call.Number(4));
  const auto first = static_cast<unsigned>(call.Number(5));
  const auto last = static_cast<unsigned>(call.Number(6));
  if (first > 255) return outcome.Refuse(LX_ERROR_ARGUMENT_5_OUT_OF_RANGE);
  if (last > 255) return outcome.Refuse(LX_ERROR_ARGUMENT_6_OUT_OF_RANGE);
  if (first >= last) return outcome.Refuse(LX_ERROR_INCONSISTENT_ARGUMENTS);
  if (mode == PIC_THRESHOLD_RELATIVE && (relative < 0 || relative > 1)) {
    return outcome.Refuse(LX_ERROR_ARGUMENT_5_OUT_OF_RANGE);
  }
  if (mode < PIC_THRESHOLD_MIN_SQUARED_DEVIATION && (mode < first || mode > last)) {
    return outcome.Refuse(LX_ERROR_ARGUMENT_2_OUT_OF_RANGE);
  }
  const auto expected = ExpectedOf(counts.data(), 256, mode, relative, first, last);
  Set(outcome, 1, expected.threshold);
  Set(outcome, 2, expected.below);
  Set(outcome, 3, expected.above);
}

// `checkVector` refuses untyped vectors that are no histogram, after the range.
template <class CheckVector>
Reference IsodataReference(std::string_view signature, unsigned bins, CheckVector checkVector) {
  return Measured(signature, [bins, checkVector](const Arguments& call, Outcome& outcome) {
    const auto first = static_cast<unsigned>(call.Number(1));
    const auto last = static_cast<unsigned>(call.Number(2));
    Set(outcome, 3, 0);
    if (first >= bins) return outcome.Refuse(LX_ERROR_ARGUMENT_2_OUT_OF_RANGE);
    if (last >= bins) return outcome.Refuse(LX_ERROR_ARGUMENT_3_OUT_OF_RANGE);
    if (first >= last) return outcome.Refuse(LX_ERROR_INCONSISTENT_ARGUMENTS);
    if (!checkVector(outcome)) return;
    const auto counts = CountsOf(outcome.Vector(0));
    Set(outcome, 3, ExpectedIsodata(counts.data(), first, last));
  });
}

bool IsHistogram(Outcome& outcome) {
  const Elements& vector = outcome.Vector(0);
  if (vector.kind != LX_VECTOR_HISTOGRAM) {
    outcome.Refuse(LX_ERROR_VECTOR_CONTENT);
  } else if (vector.values.size() < 256) {
    outcome.Refuse(LX_ERROR_WRONG_VECTOR_SIZE);
  }
  return outcome.error == LX_OK;
}

Reference GainReference(std::string_view signature, unsigned mode) {
  return Measured(signature, [mode](const Arguments& call, Outcome& outcome) {
    const auto counts = CountsOf(outcome.Vector(0));
    const auto expected =
        ExpectedGain(counts.data(), mode, static_cast<float>(call.NumberBefore(1)),
                     static_cast<float>(call.NumberBefore(2)));
    Set(outcome, 1, expected.below);
    Set(outcome, 2, expected.above);
    Set(outcome, 3, expected.threshold);
  });
}

}  // namespace

std::vector<Reference> ThresholdReferences() {
  return {
      Measured("PicHistogramThreshold(LxBWHistogramVector*, unsigned int&, float&, float&, float, "
               "unsigned int, unsigned int)",
               SelectThreshold),
      IsodataReference("PicIsodataThreshold(LxBWHistogramVector*, unsigned int, unsigned int)", 256,
                       [](const Outcome&) { return true; }),
      IsodataReference("PicIsodataThresholdBW16(LxBWHistogramVector*, unsigned int, unsigned int)",
                       65536, [](const Outcome&) { return true; }),
      IsodataReference("PicIsodataThreshold(LxVector*, unsigned int, unsigned int)", 256,
                       IsHistogram),
      GainReference("PicMinResidueThreshold(LxBWHistogramVector*, float&, float&)",
                    PIC_THRESHOLD_MIN_RESIDUE),
      GainReference("PicMaxEntropyThreshold(LxBWHistogramVector*, float&, float&)",
                    PIC_THRESHOLD_MAX_ENTROPY)};
}

}  // namespace lx::test
