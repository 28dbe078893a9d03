// SPDX-License-Identifier: Apache-2.0
#include "lxpic/histogram/analysis.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "foundation/frame.h"
#include "histogram/analysis_kernels.h"
#include "histogram/bins.h"
#include "histogram/legacy_vectors.h"

namespace {

// The bins first..last of a histogram; none when `last` is first - 1.
struct Bins {
  const std::uint32_t* counts;  // of bin 0
  std::int64_t first;
  std::int64_t last;

  const std::uint32_t* begin() const { return counts + first; }
  const std::uint32_t* end() const { return counts + last + 1; }
  std::size_t size() const { return static_cast<std::size_t>(last + 1 - first); }
};

// The part of first..last that a histogram of `bins` bins has.
Bins PartOf(const std::uint32_t* counts, std::int64_t bins, std::int64_t first, std::int64_t last) {
  first = std::clamp<std::int64_t>(first, 0, bins);
  return {counts, first, std::clamp<std::int64_t>(last, first - 1, bins - 1)};
}

std::int64_t LargestOf(const Bins& bins) {
  return lx::histogram::LargestCount(bins.begin(), bins.size());
}

std::int64_t SmallestOf(const Bins& bins) {
  const std::int64_t smallest = lx::histogram::SmallestCount(bins.begin(), bins.size());
  return smallest == 0 ? -1 : smallest;
}

std::int64_t TotalOf(const Bins& bins) {
  return static_cast<std::int64_t>(lx::histogram::TotalCount(bins.begin(), bins.size()));
}

// The first bin of `count` pixels, which there is unless the count says that all are empty.
std::int64_t BinOf(const Bins& bins, std::int64_t count) {
  if (count <= 0) return 0;
  return std::find(bins.begin(), bins.end(), static_cast<std::uint32_t>(count)) - bins.counts;
}

bool IsFilled(std::uint32_t count) { return count != 0; }

std::int64_t LowestOf(const Bins& bins) {
  return std::find_if(bins.begin(), bins.end(), IsFilled) - bins.counts;
}

std::int64_t HighestOf(const Bins& bins) {
  std::int64_t bin = bins.last;
  while (bin >= bins.first && bins.counts[bin] == 0) --bin;
  return bin;
}

// By feature, from PIC_HIST_MOST_FREQUENT_VALUE to PIC_HIST_PIXEL_COUNT.
constexpr std::array<std::int64_t (*)(const Bins&), 7> kWholeFeatures = {
    [](const Bins& bins) { return BinOf(bins, LargestOf(bins)); },
    &LargestOf,
    [](const Bins& bins) { return BinOf(bins, SmallestOf(bins)); },
    &SmallestOf,
    &LowestOf,
    &HighestOf,
    &TotalOf};

// Sums over pixels of the powers of their bins.
struct Moments {
  std::uint64_t count = 0;
  std::uint64_t sum = 0;

  explicit Moments(const Bins& bins) {
    for (std::int64_t i = bins.first; i <= bins.last; ++i) {
      count += bins.counts[i];
      sum += static_cast<std::uint64_t>(i) * bins.counts[i];
    }
  }
  double Mean() const { return static_cast<double>(sum) / static_cast<double>(count); }
};

float AverageOf(const Bins& bins) {
  const Moments moments(bins);
  return moments.count == 0 ? 0.0F : static_cast<float>(moments.Mean());
}

// Each sum is rounded to single precision whenever it grows.
float DeviationOf(const Bins& bins) {
  float count = 0.0F;
  float sum = 0.0F;
  float squares = 0.0F;
  for (std::int64_t i = bins.first; i <= bins.last; ++i) {
    const double h = bins.counts[i];
    const auto bin = static_cast<double>(i);
    count = static_cast<float>(count + h);
    sum = static_cast<float>(sum + bin * h);
    squares = static_cast<float>(squares + bin * bin * h);
  }
  if (count == 0.0F) return 0.0F;
  const double mean = static_cast<double>(sum) / count;
  return static_cast<float>(
      std::sqrt(std::fabs(squares / static_cast<double>(count) - mean * mean)));
}

constexpr unsigned kFirstReal = PIC_HIST_AVERAGE_VALUE;
constexpr std::array<float (*)(const Bins&), 2> kRealFeatures = {&AverageOf, &DeviationOf};

// The feature, 0 after an error or when there is no such feature. Returns whether there is.
bool Analyse(const char* trace, int bins, const LxBWHistogramVector* histogram, unsigned feature,
             int first, int last, float& result) {
  result = 0.0F;
  lx::RunOperation(trace, [&] {
    if (!lx::histogram::HasBins(histogram, static_cast<unsigned>(bins)) ||
        !lx::Require(first >= 0, LX_ERROR_ARGUMENT_3_OUT_OF_RANGE) ||
        !lx::Require(last < bins, LX_ERROR_ARGUMENT_4_OUT_OF_RANGE) ||
        !lx::Require(first <= last, LX_ERROR_INCONSISTENT_ARGUMENTS)) {
      return;
    }
    const Bins range{histogram->GetDataPtr(), first, last};
    if (feature < kWholeFeatures.size()) {
      result = static_cast<float>(kWholeFeatures[feature](range));
    } else if (feature - kFirstReal < kRealFeatures.size()) {
      result = kRealFeatures[feature - kFirstReal](range);
    }
  });
  return feature < kFirstReal + kRealFeatures.size();
}

// result = features[feature](range) for the features that the table has, from number `lowest`.
template <typename Result, class Features>
void AnalyseLegacy(const LxVector* histogram, int first, int last, unsigned feature,
                   const Features& features, unsigned lowest, Result& result) {
  lx::RunOperation("PicAnalyseHistogram", [&] {
    const auto* const counts = lx::histogram::CountsToRead(histogram, LX_ERROR_WRONG_VECTOR_KIND);
    if (counts == nullptr || feature - lowest >= features.size()) return;
    const Bins range = PartOf(counts, lx::histogram::kLegacyEntries, first, last);
    result = static_cast<Result>(features[feature - lowest](range));
  });
}

// Runs body(range) on the pixels of a range that has any.
template <class Body>
void MeasureMoments(const char* trace, const LxBWHistogramVector* histogram, unsigned first,
                    unsigned last, const Body& body) {
  lx::RunOperation(trace, [&] {
    if (!lx::histogram::HasBins(histogram, 256)) return;
    const Bins range = PartOf(histogram->GetDataPtr(), 256, first, last);
    const Moments moments(range);
    if (lx::Require(moments.count != 0, LX_ERROR_EMPTY_HISTOGRAM)) body(range, moments);
  });
}

}  // namespace

float PicAnalyseHistogram(LxBWHistogramVector* histogram, PIC_HISTOGRAM_FEATURE feature, int first,
                          int last) {
  constexpr const char* kTrace = "PicAnalyseHistogram";
  float result = 0.0F;
  const bool known = Analyse(kTrace, 256, histogram, feature, first, last, result);
  if (!known && LxGetError() == LX_OK) LxTraceError(kTrace);
  return result;
}

float PicAnalyseHistogramBW16(LxBWHistogramVector* histogram, PIC_HISTOGRAM_FEATURE feature,
                              int first, int last) {
  float result = 0.0F;
  Analyse("PicAnalyseHistogram (BW16)", 65536, histogram, feature, first, last, result);
  return result;
}

void PicAnalyseHistogram(LxVector* histogram, int first, int last, int feature, int& result) {
  AnalyseLegacy(histogram, first, last, static_cast<unsigned>(feature), kWholeFeatures, 0, result);
}

void PicAnalyseHistogram(LxVector* histogram, int first, int last, int feature, float& result) {
  AnalyseLegacy(histogram, first, last, static_cast<unsigned>(feature), kRealFeatures, kFirstReal,
                result);
}

void PicHistogramMoments(LxBWHistogramVector* histogram, float& mean, unsigned first,
                         unsigned last) {
  MeasureMoments(
      "PicHistogramMoments ( 1)", histogram, first, last,
      [&](const Bins&, const Moments& moments) { mean = static_cast<float>(moments.Mean()); });
}

void PicHistogramCenteredMoments(LxBWHistogramVector* histogram, float& mean, float& variance,
                                 unsigned first, unsigned last) {
  MeasureMoments("PicHistogramCenteredMoments ( 2)", histogram, first, last,
                 [&](const Bins& range, const Moments& moments) {
                   std::uint64_t squares = 0;
                   for (std::int64_t i = range.first; i <= range.last; ++i) {
                     squares += static_cast<std::uint64_t>(i * i) * range.counts[i];
                   }
                   const double average = moments.Mean();
                   const double meanSquare =
                       static_cast<double>(squares) / static_cast<double>(moments.count);
                   mean = static_cast<float>(average);
                   variance = static_cast<float>(meanSquare - average * average);
                 });
}
