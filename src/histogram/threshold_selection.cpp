// SPDX-License-Identifier: Apache-2.0
#include "lxpic/histogram/threshold_selection.h"

#include <array>

#include "foundation/frame.h"
#include "histogram/bins.h"
#include "histogram/legacy_vectors.h"
#include "histogram/split.h"

namespace {

using lx::histogram::ClassOf;
using lx::histogram::PixelClass;
using lx::histogram::Range;

PixelClass AllOf(const Range& range) { return ClassOf(range.counts, range.first, range.last + 1); }

// A threshold and the first bin of its bright class. Both classes are empty when nothing was found.
struct Selection {
  unsigned threshold = 0;
  unsigned bright = 0;
  bool found = true;
};

Selection Before(unsigned bin) { return {bin, bin, true}; }

constexpr std::uint64_t Power(std::uint64_t base, int exponent) {
  return exponent == 1 ? base : base * base;
}

// The highest last dark bin with the least sum of powers of the distances from black and white.
template <unsigned kBins, int exponent>
Selection LeastDeviation(const Range& range, float /*relative*/) {
  std::uint64_t cost = 0;
  for (unsigned bin = range.first; bin <= range.last; ++bin) {
    cost += Power(bin, exponent) * range.counts[bin];
  }
  std::uint64_t best = cost;
  unsigned threshold = range.last;
  // Bin by bin becomes bright.
  for (unsigned bin = range.last; bin > range.first; --bin) {
    cost += (Power(kBins - 1 - bin, exponent) - Power(bin, exponent)) * range.counts[bin];
    if (cost < best) {
      best = cost;
      threshold = bin - 1;
    }
  }
  return {threshold, threshold + 1, true};
}

template <typename Real, template <typename> class Criterion>
Selection BestOf(const Range& range, float /*relative*/) {
  const auto threshold =
      lx::histogram::BestSplit<Real>(range, AllOf(range), Criterion<Real>(range));
  return threshold ? Before(*threshold) : Selection{0, 0, false};
}

// The highest bin with at most the fraction `relative` of the pixels below.
Selection Relative(const Range& range, float relative) {
  const std::uint64_t count = AllOf(range).count;
  const auto below = static_cast<std::uint64_t>(static_cast<long double>(count) * relative);
  std::uint64_t above = 0;
  unsigned bin = range.last + 1;
  while (above < count - below && bin > range.first) above += range.counts[--bin];
  return Before(bin);
}

using Selector = Selection (*)(const Range& range, float relative);

// By mode, from PIC_THRESHOLD_MIN_SQUARED_DEVIATION to PIC_THRESHOLD_RELATIVE.
template <typename Real, unsigned kBins>
constexpr std::array<Selector, 6> kSelectors = {
    &LeastDeviation<kBins, 2>,
    &LeastDeviation<kBins, 1>,
    &BestOf<Real, lx::histogram::MidpointDistance>,
    &BestOf<Real, lx::histogram::NegativeEntropies>,
    &BestOf<Real, lx::histogram::NegativeBetweenSquares>,
    &Relative};

template <unsigned kBins>
bool HasRange(unsigned first, unsigned last, LX_ERRORS badFirst, LX_ERRORS badLast) {
  return lx::Require(first < kBins, badFirst) && lx::Require(last < kBins, badLast) &&
         lx::Require(first < last, LX_ERROR_INCONSISTENT_ARGUMENTS);
}

template <typename Real, unsigned kBins>
void Select(const char* trace, const LxBWHistogramVector* histogram, unsigned& threshold,
            float& averageBelow, float& averageAbove, float relative, unsigned first,
            unsigned last) {
  lx::RunOperation(trace, [&] {
    if (!lx::histogram::HasBins(histogram, kBins) ||
        !HasRange<kBins>(first, last, LX_ERROR_ARGUMENT_5_OUT_OF_RANGE,
                         LX_ERROR_ARGUMENT_6_OUT_OF_RANGE)) {
      return;
    }
    // Not a number is in no range either.
    if (threshold == PIC_THRESHOLD_RELATIVE &&
        !lx::Require(relative >= 0.0F && relative <= 1.0F, LX_ERROR_ARGUMENT_5_OUT_OF_RANGE)) {
      return;
    }
    const unsigned mode = threshold - PIC_THRESHOLD_MIN_SQUARED_DEVIATION;
    const bool automatic = mode < kSelectors<Real, kBins>.size();
    if (!lx::Require(automatic || (threshold >= first && threshold <= last),
                     LX_ERROR_ARGUMENT_2_OUT_OF_RANGE)) {
      return;
    }
    const Range range{histogram->GetDataPtr(), first, last};
    const Selection selection =
        automatic ? kSelectors<Real, kBins>[mode](range, relative) : Before(threshold);
    threshold = selection.threshold;
    PixelClass dark;
    PixelClass bright;
    if (selection.found) {
      dark = ClassOf(range.counts, first, selection.bright);
      bright = ClassOf(range.counts, selection.bright, last + 1);
    }
    averageBelow = dark.MeanOr(first);
    averageAbove = bright.MeanOr(last + 1);
  });
}

constexpr int kMostUpdates = 16;

// Moves the threshold, the last dark bin, to the midpoint of the class means until it stays.
unsigned IterateIsodata(const Range& range) {
  const PixelClass all = AllOf(range);
  unsigned threshold = (range.first + range.last + 1) / 2;
  PixelClass dark = ClassOf(range.counts, range.first, threshold + 1);
  for (int update = 0; update < kMostUpdates; ++update) {
    const std::uint64_t brightCount = all.count - dark.count;
    const std::uint64_t darkMean =
        dark.count != 0 ? dark.sum / dark.count : (range.first + threshold) / 2;
    const std::uint64_t brightMean =
        brightCount != 0 ? (all.sum - dark.sum) / brightCount : (range.last + 1 + threshold) / 2;
    const auto midpoint = static_cast<unsigned>((darkMean + brightMean) / 2);
    if (midpoint == threshold) break;
    for (; threshold < midpoint; ++threshold) {
      dark.Add(threshold + 1, range.counts[threshold + 1]);
    }
    for (; threshold > midpoint; --threshold) dark.Remove(threshold, range.counts[threshold]);
  }
  return threshold;
}

constexpr const char* kIsodataTrace = "PicIsodataThreshold ( LxBWHistogramVector)";

template <unsigned kBins>
unsigned SelectIsodata(const LxBWHistogramVector* histogram, unsigned first, unsigned last) {
  unsigned threshold = 0;
  lx::RunOperation(kIsodataTrace, [&] {
    if (lx::histogram::HasBins(histogram, kBins) &&
        HasRange<kBins>(first, last, LX_ERROR_ARGUMENT_2_OUT_OF_RANGE,
                        LX_ERROR_ARGUMENT_3_OUT_OF_RANGE)) {
      threshold = IterateIsodata({histogram->GetDataPtr(), first, last});
    }
  });
  return threshold;
}

// The best split if it is better than one class of all pixels.
template <class Criterion>
unsigned char SelectSplit(const char* trace, const LxBWHistogramVector* histogram,
                          float& averageBelow, float& averageAbove) {
  unsigned threshold = 0;
  lx::RunOperation(trace, [&] {
    if (!lx::histogram::HasBins(histogram, 256)) return;
    const Range range{histogram->GetDataPtr(), 0, 255};
    const PixelClass all = AllOf(range);
    if (all.count == 0) return;
    const Criterion criterion(range);
    const auto found = lx::histogram::BestSplit(range, all, criterion, criterion.Whole(all));
    if (!found) return;
    threshold = *found;
    averageBelow = ClassOf(range.counts, 0, threshold).MeanOr(0);
    averageAbove = ClassOf(range.counts, threshold, 256).MeanOr(0);
  });
  return static_cast<unsigned char>(threshold);
}

}  // namespace

void PicHistogramThreshold(LxBWHistogramVector* histogram, unsigned& threshold, float& averageBelow,
                           float& averageAbove, float relative, unsigned first, unsigned last) {
  Select<float, 256>("PicHistogramThreshold", histogram, threshold, averageBelow, averageAbove,
                     relative, first, last);
}

void PicHistogramThresholdBW16(LxBWHistogramVector* histogram, unsigned& threshold,
                               float& averageBelow, float& averageAbove, float relative,
                               unsigned first, unsigned last) {
  Select<double, 65536>("PicHistogramThreshold (BW16)", histogram, threshold, averageBelow,
                        averageAbove, relative, first, last);
}

unsigned PicIsodataThreshold(LxBWHistogramVector* histogram, unsigned first, unsigned last) {
  return SelectIsodata<256>(histogram, first, last);
}

unsigned PicIsodataThreshold(LxVector* histogram, unsigned first, unsigned last) {
  unsigned threshold = 0;
  lx::RunOperation("PicIsodataThreshold ( LxVector)", [&] {
    if (!HasRange<256>(first, last, LX_ERROR_ARGUMENT_2_OUT_OF_RANGE,
                       LX_ERROR_ARGUMENT_3_OUT_OF_RANGE)) {
      return;
    }
    const auto* const counts = lx::histogram::CountsToRead(histogram, LX_ERROR_VECTOR_CONTENT);
    if (counts != nullptr) threshold = IterateIsodata({counts, first, last});
  });
  return threshold;
}

unsigned PicIsodataThresholdBW16(LxBWHistogramVector* histogram, unsigned first, unsigned last) {
  return SelectIsodata<65536>(histogram, first, last);
}

unsigned char PicMinResidueThreshold(LxBWHistogramVector* histogram, float& averageBelow,
                                     float& averageAbove) {
  return SelectSplit<lx::histogram::NegativeBetweenSquares<float> >(
      "PicMinResidueThreshold", histogram, averageBelow, averageAbove);
}

unsigned char PicMaxEntropyThreshold(LxBWHistogramVector* histogram, float& averageBelow,
                                     float& averageAbove) {
  return SelectSplit<lx::histogram::NegativeEntropies<float> >("PicMaxEntropyThreshold", histogram,
                                                               averageBelow, averageAbove);
}
