// SPDX-License-Identifier: Apache-2.0
// Sums over the bins of a class are differences of sums that start with the first bin.
#include "histogram/references.h"

#include <cmath>
#include <limits>

namespace lx::test {

namespace {

using Wide = long double;

// Sums of weight(j) times the count over bins.
class Sums {
 public:
  template <class Weight>
  Sums(const BinRange& range, Weight weight) : first(range.first), upTo(1) {
    for (unsigned j = range.first; j <= range.last; ++j) {
      upTo.push_back(upTo.back() + weight(std::uint64_t{j}) * range.counts[j]);
    }
  }
  std::uint64_t Between(unsigned from, unsigned end) const {
    return upTo[end - first] - upTo[from - first];
  }

 private:
  unsigned first;
  std::vector<std::uint64_t> upTo;
};

// What is known of the pixels of a class of bins.
struct Classes : BinRange {
  Sums pixels, sums;

  explicit Classes(const BinRange& range)
      : BinRange(range),
        pixels(range, [](std::uint64_t) { return std::uint64_t{1}; }),
        sums(range, [](std::uint64_t j) { return j; }) {}

  std::uint64_t Pixels(unsigned from, unsigned end) const { return pixels.Between(from, end); }
  std::uint64_t Sum(unsigned from, unsigned end) const { return sums.Between(from, end); }
  float Mean(unsigned from, unsigned end, unsigned none) const {
    const std::uint64_t n = Pixels(from, end);
    return static_cast<float>(n == 0 ? Wide(none) : Wide(Sum(from, end)) / Wide(n));
  }
  // The means on both sides of the first bright bin.
  ExpectedThreshold At(unsigned threshold, unsigned bright) const {
    return {threshold, Mean(first, bright, first), Mean(bright, last + 1, last + 1)};
  }
};

ExpectedThreshold Deviation(const Classes& c, int power, unsigned white) {
  const auto distance = [power](std::uint64_t d) { return power == 1 ? d : d * d; };
  const Sums toBlack(c, distance);
  const Sums toWhite(c, [&](std::uint64_t j) { return distance(white - j); });
  unsigned best = 0;
  std::uint64_t bestCost = std::numeric_limits<std::uint64_t>::max();
  for (unsigned t = c.first; t <= c.last; ++t) {
    const std::uint64_t cost = toBlack.Between(c.first, t + 1) + toWhite.Between(t + 1, c.last + 1);
    if (cost <= bestCost) best = t, bestCost = cost;
  }
  return c.At(best, best + 1);
}

ExpectedThreshold Relative(const Classes& c, float relative) {
  const std::uint64_t n = c.Pixels(c.first, c.last + 1);
  const auto most = static_cast<std::uint64_t>(std::floor(Wide(n) * relative));
  unsigned t = c.last + 1;
  if (most < n) --t;
  while (t > c.first && c.Pixels(c.first, t) > most) --t;
  return c.At(t, t);
}

// Sums of h ln h of the classes of each threshold from the first, rounded as they grow and shrink.
template <typename Real>
struct Weighted {
  std::vector<Real> dark, bright;

  explicit Weighted(const Classes& c) : dark(1), bright(1) {
    const auto term = [&c](unsigned j) -> Wide {
      const unsigned h = c.counts[j];
      return h == 0 ? 0 : Wide(h) * std::log(Wide(static_cast<Real>(h)));
    };
    for (unsigned j = c.last + 1; j-- > c.first;) {
      bright[0] = static_cast<Real>(bright[0] + term(j));
    }
    for (unsigned j = c.first; j <= c.last; ++j) {
      dark.push_back(static_cast<Real>(dark.back() + term(j)));
      bright.push_back(static_cast<Real>(bright.back() - term(j)));
    }
  }
};

template <typename Real>
Wide Entropy(std::uint64_t n, Real weighted) {
  return std::log(Wide(static_cast<Real>(n))) - Wide(weighted) / Wide(n);
}

template <typename Real>
Wide SquareOverCount(std::uint64_t s, std::uint64_t n) {
  return Wide(static_cast<Real>(static_cast<Real>(s) * static_cast<Real>(s))) / Wide(n);
}

// The value that the mode minimises at a threshold whose classes both hold pixels.
template <typename Real>
Wide Criterion(const Classes& c, const Weighted<Real>& weighted, unsigned mode, unsigned t) {
  const std::uint64_t nDark = c.Pixels(c.first, t), nBright = c.Pixels(t, c.last + 1);
  const std::uint64_t sDark = c.Sum(c.first, t), sBright = c.Sum(t, c.last + 1);
  if (mode == PIC_THRESHOLD_ISODATA) {
    return std::fabs(0.5L * Wide(sDark) / Wide(nDark) + 0.5L * Wide(sBright) / Wide(nBright) -
                     Wide(t));
  }
  if (mode == PIC_THRESHOLD_MAX_ENTROPY) {
    return -(Entropy(nDark, weighted.dark[t - c.first]) +
             Entropy(nBright, weighted.bright[t - c.first]));
  }
  return -SquareOverCount<Real>(sDark, nDark) - SquareOverCount<Real>(sBright, nBright);
}

// The lowest threshold with the least criterion below `limit`, or `none`.
template <typename Real>
ExpectedThreshold BestSplit(const Classes& c, const Weighted<Real>& weighted, unsigned mode,
                            Real limit, ExpectedThreshold none) {
  unsigned best = c.last + 1;
  for (unsigned t = c.first; t <= c.last; ++t) {
    if (c.Pixels(c.first, t) == 0 || c.Pixels(t, c.last + 1) == 0) continue;
    const auto value = static_cast<Real>(Criterion(c, weighted, mode, t));
    if (value < limit) best = t, limit = value;
  }
  return best > c.last ? none : c.At(best, best);
}

template <typename Real>
ExpectedThreshold Split(const Classes& c, unsigned mode) {
  return BestSplit(c, Weighted<Real>(c), mode, std::numeric_limits<Real>::max(),
                   {0, static_cast<float>(c.first), static_cast<float>(c.last + 1)});
}

void SelectThreshold(const Arguments& call, Outcome& outcome, unsigned bins) {
  const auto mode = static_cast<unsigned>(call.Number(1));
  const auto relative = static_cast<float>(call.Number(4));
  const auto first = static_cast<unsigned>(call.Number(5));
  const auto last = static_cast<unsigned>(call.Number(6));
  if (first >= bins) return outcome.Refuse(LX_ERROR_ARGUMENT_5_OUT_OF_RANGE);
  if (last >= bins) return outcome.Refuse(LX_ERROR_ARGUMENT_6_OUT_OF_RANGE);
  if (first >= last) return outcome.Refuse(LX_ERROR_INCONSISTENT_ARGUMENTS);
  if (mode == PIC_THRESHOLD_RELATIVE && (relative < 0 || relative > 1)) {
    return outcome.Refuse(LX_ERROR_ARGUMENT_5_OUT_OF_RANGE);
  }
  if (mode < PIC_THRESHOLD_MIN_SQUARED_DEVIATION && (mode < first || mode > last)) {
    return outcome.Refuse(LX_ERROR_ARGUMENT_2_OUT_OF_RANGE);
  }
  const auto counts = CountsOf(outcome);
  const auto expected = ExpectedOf({counts.data(), first, last}, bins, mode, relative);
  outcome.Number(1) = expected.threshold;
  outcome.Number(2) = expected.below;
  outcome.Number(3) = expected.above;
}

Reference SelectionReference(std::string_view signature, unsigned bins) {
  return Measured(signature, [bins](const Arguments& call, Outcome& outcome) {
    SelectThreshold(call, outcome, bins);
  });
}

Reference IsodataReference(std::string_view signature, unsigned bins, bool untyped = false) {
  return Measured(signature, [bins, untyped](const Arguments& call, Outcome& outcome) {
    const auto first = static_cast<unsigned>(call.Number(1));
    const auto last = static_cast<unsigned>(call.Number(2));
    outcome.Number(3) = 0;
    if (first >= bins) return outcome.Refuse(LX_ERROR_ARGUMENT_2_OUT_OF_RANGE);
    if (last >= bins) return outcome.Refuse(LX_ERROR_ARGUMENT_3_OUT_OF_RANGE);
    if (first >= last) return outcome.Refuse(LX_ERROR_INCONSISTENT_ARGUMENTS);
    if (untyped && !IsHistogram(outcome, LX_ERROR_VECTOR_CONTENT)) return;
    const auto counts = CountsOf(outcome);
    outcome.Number(3) = ExpectedIsodata({counts.data(), first, last});
  });
}

Reference GainReference(std::string_view signature, unsigned mode) {
  return Measured(signature, [mode](const Arguments& call, Outcome& outcome) {
    const auto counts = CountsOf(outcome);
    const auto expected =
        ExpectedGain(counts.data(), mode, static_cast<float>(call.NumberBefore(1)),
                     static_cast<float>(call.NumberBefore(2)));
    outcome.Number(1) = expected.below;
    outcome.Number(2) = expected.above;
    outcome.Number(3) = expected.threshold;
  });
}

}  // namespace

std::ostream& operator<<(std::ostream& stream, const ExpectedThreshold& each) {
  return stream << each.threshold << ": " << each.below << ", " << each.above;
}

ExpectedThreshold ExpectedOf(const BinRange& range, unsigned bins, unsigned mode, float relative) {
  const Classes c(range);
  switch (mode) {
    case PIC_THRESHOLD_MIN_SQUARED_DEVIATION:
      return Deviation(c, 2, bins - 1);
    case PIC_THRESHOLD_MIN_ABSOLUTE_DEVIATION:
      return Deviation(c, 1, bins - 1);
    case PIC_THRESHOLD_RELATIVE:
      return Relative(c, relative);
    case PIC_THRESHOLD_ISODATA:
    case PIC_THRESHOLD_MAX_ENTROPY:
    case PIC_THRESHOLD_MIN_RESIDUE:
      return bins == 256 ? Split<float>(c, mode) : Split<double>(c, mode);
    default:
      return c.At(mode, mode);
  }
}

unsigned ExpectedIsodata(const BinRange& range) {
  const Classes c(range);
  std::uint64_t t = (c.first + c.last + 1) / 2;
  for (int update = 0; update < 16; ++update) {
    const auto split = static_cast<unsigned>(t) + 1;
    const std::uint64_t nDark = c.Pixels(c.first, split), nBright = c.Pixels(split, c.last + 1);
    const std::uint64_t dark = nDark ? c.Sum(c.first, split) / nDark : (c.first + t) / 2;
    const std::uint64_t bright =
        nBright ? c.Sum(split, c.last + 1) / nBright : (c.last + 1 + t) / 2;
    if ((dark + bright) / 2 == t) break;
    t = (dark + bright) / 2;
  }
  return static_cast<unsigned>(t);
}

ExpectedThreshold ExpectedGain(const unsigned* counts, unsigned mode, float below, float above) {
  const Classes c(BinRange{counts, 0, 255});
  const std::uint64_t n = c.Pixels(0, 256);
  const Weighted<float> weighted(c);
  const Wide whole = mode == PIC_THRESHOLD_MIN_RESIDUE ? SquareOverCount<float>(c.Sum(0, 256), n)
                                                       : Entropy(n, weighted.bright[0]);
  return BestSplit(c, weighted, mode, static_cast<float>(-whole), {0, below, above});
}

std::vector<Reference> ThresholdReferences() {
  const std::string range = "(LxBWHistogramVector*, unsigned int, unsigned int)";
  const std::string selection =
      "(LxBWHistogramVector*, unsigned int&, float&, float&, float, unsigned int, unsigned int)";
  const std::string means = "(LxBWHistogramVector*, float&, float&)";
  return {SelectionReference("PicHistogramThreshold" + selection, 256),
          SelectionReference("PicHistogramThresholdBW16" + selection, 65536),
          IsodataReference("PicIsodataThreshold" + range, 256),
          IsodataReference("PicIsodataThresholdBW16" + range, 65536),
          IsodataReference("PicIsodataThreshold(LxVector*, unsigned int, unsigned int)", 256, true),
          GainReference("PicMinResidueThreshold" + means, PIC_THRESHOLD_MIN_RESIDUE),
          GainReference("PicMaxEntropyThreshold" + means, PIC_THRESHOLD_MAX_ENTROPY)};
}

}  // namespace lx::test
