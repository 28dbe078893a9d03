// SPDX-License-Identifier: Apache-2.0
#include "lxpic/measure/statistics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

#include "foundation/frame.h"
#include "lxpic/histogram/analysis.h"
#include "lxpic/histogram/histogram.h"
#include "measure/statistics_kernels.h"
#include "measure/wide_integers.h"

namespace {

using namespace lx;
using namespace lx::measure;

// The kernels of a pixel type.
template <class T>
struct KernelsOf;

template <>
struct KernelsOf<LxBW8> {
  static constexpr auto kSum = &SumOfBytes;
  static constexpr auto kSums = &SumsOfBytes;
  static constexpr auto kSummary = &SummaryOfBytes;
  static constexpr auto kCount = &CountBytes;
};

template <>
struct KernelsOf<LxBW16> {
  static constexpr auto kSum = &SumOfWords;
  static constexpr auto kSums = &SumsOfWords;
  static constexpr auto kSummary = &SummaryOfWords;
  static constexpr auto kCount = &CountWords;
};

template <class T>
Spans AllOf(const LxROI<T>* source) {
  return {source, RunLists::kIgnore};
}

template <typename Count>
Count Saturated(std::uint64_t count) {
  return static_cast<Count>(
      std::min(count, static_cast<std::uint64_t>(std::numeric_limits<Count>::max())));
}

template <class T>
T Pixel(unsigned value) {
  return T(static_cast<decltype(T::value)>(value));
}

// Runs body(pixels) on an attached region.
template <class T, class Body>
void Measure(const char* trace, LxROI<T>* source, const Body& body) {
  RunOperation(trace, [&] {
    if (Attached({source})) body(AllOf(source));
  });
}

// Runs body(pixels, count) on a region of any pixels.
template <class T, class Body>
void MeasureSome(const char* trace, LxROI<T>* source, const Body& body) {
  Measure(trace, source, [&](const Spans& pixels) {
    const std::uint64_t count = pixels.CountPixels();
    if (Require(count != 0, LX_ERROR_EMPTY_HISTOGRAM)) body(pixels, count);
  });
}

// body(pixels) of a region confined to its runs, or `otherwise` after an error.
template <typename Result, class Body>
Result MeasureRuns(const char* trace, LxROI<LxBW8>* source, Result otherwise, const Body& body) {
  Result result = otherwise;
  RunOperation(trace, [&] {
    if (!Attached({source})) return;
    const Spans pixels(source, RunLists::kFollow);
    if (pixels) result = body(pixels);
  });
  return result;
}

template <class T>
unsigned CountDifferent(const char* trace, LxROI<T>* source, LxROI<T>* other,
                        std::uint64_t (*count)(const PixelMap&)) {
  unsigned differing = 0;
  RunOperation(trace, [&] {
    if (!Usable({source, other})) return;
    differing = Saturated<unsigned>(count(MapOfPair(source, other)));
  });
  return differing;
}

// A function of the application gets the pixel of the image where that is possible.
template <class T>
bool Matches(int (*predicate)(T&), std::uint8_t* pixel) {
  if (reinterpret_cast<std::uintptr_t>(pixel) % alignof(T) == 0) {
    return predicate(*reinterpret_cast<T*>(pixel)) != 0;
  }
  T copy;
  std::memcpy(&copy, pixel, sizeof(T));
  const T before = copy;
  const bool matches = predicate(copy) != 0;
  if (copy != before) std::memcpy(pixel, &copy, sizeof(T));
  return matches;
}

template <class T>
unsigned CountMatches(const char* trace, LxROI<T>* source, int (*predicate)(T&)) {
  std::uint64_t count = 0;
  bool done = false;
  RunOperation(trace, [&] {
    if (!Attached({source})) return;
    if (!Require(predicate != nullptr, LX_ERROR_ARGUMENT_2_OUT_OF_RANGE)) return;
    const PixelMap map = MapOf(source);
    for (std::size_t y = 0; y < map.height; ++y) {
      auto* const row = map.destination.Row<std::uint8_t>(y);
      for (std::size_t x = 0; x < map.width; ++x) {
        count += Matches(predicate, row + x * sizeof(T)) ? 1 : 0;
      }
    }
    done = true;
  });
  return done ? Saturated<unsigned>(count) : 0;
}

template <class T>
void FindAverage(const char* trace, LxROI<T>* source, float& average) {
  MeasureSome(trace, source, [&](const Spans& pixels, std::uint64_t count) {
    average = Quotient(KernelsOf<T>::kSum(pixels), count);
  });
}

template <class T>
void FindVariance(const char* trace, LxROI<T>* source, float& variance, float& average) {
  MeasureSome(trace, source, [&](const Spans& pixels, std::uint64_t count) {
    const auto [sum, squares] = KernelsOf<T>::kSums(pixels);
    average = Quotient(sum, count);
    variance = Covariance(count, sum, sum, squares);
  });
}

float Root(float variance) { return static_cast<float>(std::sqrt(double{variance})); }

template <class T>
void FindDeviation(LxROI<T>* source, float& deviation, float& average) {
  RunOperation("PicPixelStdDev", [&] {
    PicPixelVariance(source, deviation, average);
    if (LxGetError() == LX_OK) deviation = Root(deviation);
  });
}

template <class T>
void Summarize(const char* trace, LxROI<T>* source, T& minimum, T& maximum, float& average) {
  MeasureSome(trace, source, [&](const Spans& pixels, std::uint64_t count) {
    const auto [extremes, sum] = KernelsOf<T>::kSummary(pixels);
    minimum = Pixel<T>(extremes.minimum);
    maximum = Pixel<T>(extremes.maximum);
    average = Quotient(sum, count);
  });
}

template <class T>
void CountBands(const char* trace, LxROI<T>* source, T low, T high, int& below, int& between,
                int& above) {
  Measure(trace, source, [&](const Spans& pixels) {
    const Reaching reaching = KernelsOf<T>::kCount(pixels, low, std::max<unsigned>(low, high));
    below = Saturated<int>(pixels.CountPixels() - reaching.low);
    between = Saturated<int>(reaching.low - reaching.high);
    above = Saturated<int>(reaching.high);
  });
}

// One of the three counts of PicPixelCount().
template <class T>
void CountBand(const char* trace, LxROI<T>* source, T low, T high, std::size_t band, int& area) {
  RunOperation(trace, [&] {
    std::array<int, 3> counts{};
    PicPixelCount(source, low, high, counts[0], counts[1], counts[2]);
    if (LxGetError() == LX_OK) area = counts[band];
  });
}

constexpr std::size_t kBetween = 1;
constexpr std::size_t kAbove = 2;

// 0 where one of the deviations is.
float Correlation(float covariance, float deviationA, float deviationB) {
  const double scale = double{deviationA} * deviationB;
  return scale > 0 ? static_cast<float>(covariance / scale) : 0.0F;
}

}  // namespace

unsigned PicPixelCompare(LxROI<LxBW8>* source, LxROI<LxBW8>* other) {
  return CountDifferent("PicPixelCompare ( BW8)", source, other, &DifferentBytes);
}
unsigned PicPixelCompare(LxROI<LxBW16>* source, LxROI<LxBW16>* other) {
  return CountDifferent("PicPixelCompare ( BW16)", source, other, &DifferentWords);
}
unsigned PicPixelCompare(LxROI<LxC24>* source, LxROI<LxC24>* other) {
  return CountDifferent("PicPixelCompare ( C24)", source, other, &DifferentColours);
}

void PicPixelMin(LxROI<LxBW8>* source, LxBW8& minimum) {
  Measure("PicPixelMin", source,
          [&](const Spans& pixels) { minimum = Pixel<LxBW8>(ExtremesOfBytes(pixels).minimum); });
}
void PicPixelMin(LxROI<LxBW16>* source, LxBW16& minimum) {
  Measure("PicPixelMin (BW16)", source,
          [&](const Spans& pixels) { minimum = Pixel<LxBW16>(ExtremesOfWords(pixels).minimum); });
}
void PicPixelMax(LxROI<LxBW8>* source, LxBW8& maximum) {
  Measure("PicPixelMax", source,
          [&](const Spans& pixels) { maximum = Pixel<LxBW8>(ExtremesOfBytes(pixels).maximum); });
}
void PicPixelMax(LxROI<LxBW16>* source, LxBW16& maximum) {
  Measure("PicPixelMax (BW16)", source,
          [&](const Spans& pixels) { maximum = Pixel<LxBW16>(ExtremesOfWords(pixels).maximum); });
}

unsigned PicMinimum(LxROI<LxBW8>* source) {
  return MeasureRuns("PicMinimum", source, 255U,
                     [](const Spans& pixels) { return ExtremesOfBytes(pixels).minimum; });
}
unsigned PicMaximum(LxROI<LxBW8>* source) {
  return MeasureRuns("PicMaximum", source, 0U,
                     [](const Spans& pixels) { return ExtremesOfBytes(pixels).maximum; });
}

unsigned PicCount(LxROI<LxBW8>* source, int (*predicate)(LxBW8&)) {
  return CountMatches("PicCount ( BW8)", source, predicate);
}
unsigned PicCount(LxROI<LxBW16>* source, int (*predicate)(LxBW16&)) {
  return CountMatches("PicCount ( BW16)", source, predicate);
}
unsigned PicCount(LxROI<LxC24>* source, int (*predicate)(LxC24&)) {
  return CountMatches("PicCount ( C24)", source, predicate);
}

void PicPixelAverage(LxROI<LxBW8>* source, float& average) {
  FindAverage("PicPixelAverage ( BW8)", source, average);
}
void PicPixelAverage(LxROI<LxBW16>* source, float& average) {
  FindAverage("PicPixelAverage ( BW16)", source, average);
}
void PicPixelAverage(LxROI<LxC24>* source, float& average0, float& average1, float& average2) {
  MeasureSome("PicPixelAverage ( C24)", source, [&](const Spans& pixels, std::uint64_t count) {
    const auto sums = SumsOfComponents(pixels);
    average0 = Quotient(sums[2], count);
    average1 = Quotient(sums[1], count);
    average2 = Quotient(sums[0], count);
  });
}

float PicAverage(LxROI<LxBW8>* source, unsigned* count) {
  return MeasureRuns("PicAverage", source, 0.0F, [&](const Spans& pixels) {
    const std::uint64_t all = pixels.CountPixels();
    if (!Require(all != 0, LX_ERROR_EMPTY_HISTOGRAM)) return 0.0F;
    if (count != nullptr) *count = Saturated<unsigned>(all);
    return Quotient(SumOfBytes(pixels), all);
  });
}

void PicPixelVariance(LxROI<LxBW8>* source, float& variance, float& average) {
  FindVariance("PicPixelVariance ( BW8)", source, variance, average);
}
void PicPixelVariance(LxROI<LxBW16>* source, float& variance, float& average) {
  FindVariance("PicPixelVariance ( BW16)", source, variance, average);
}
void PicPixelVariance(LxROI<LxC24>* source, float& variance0, float& variance1, float& variance2,
                      float& covariance01, float& covariance12, float& covariance20,
                      float& average0, float& average1, float& average2) {
  MeasureSome("PicPixelVariance ( C24)", source, [&](const Spans& pixels, std::uint64_t count) {
    const auto [s, squares, products] = SumsOfColours(pixels);
    average0 = Quotient(s[2], count);
    average1 = Quotient(s[1], count);
    average2 = Quotient(s[0], count);
    variance0 = Covariance(count, s[2], s[2], squares[2]);
    variance1 = Covariance(count, s[1], s[1], squares[1]);
    variance2 = Covariance(count, s[0], s[0], squares[0]);
    covariance01 = Covariance(count, s[2], s[1], products[1]);
    covariance12 = Covariance(count, s[1], s[0], products[0]);
    covariance20 = Covariance(count, s[0], s[2], products[2]);
  });
}

float PicVariance(LxROI<LxBW8>* source, float* average, unsigned* truncatedAverage) {
  float variance = 0.0F;
  RunOperation(nullptr, [&] {
    LxBWHistogramVector histogram(256);
    if (LxGetError() == LX_OK) PicHistogram(source, &histogram);
    if (LxGetError() != LX_OK) return;
    float mean = 0.0F;
    PicHistogramCenteredMoments(&histogram, mean, variance, 0, 255);
    if (LxGetError() != LX_OK) return;
    if (average != nullptr) *average = mean;
    if (truncatedAverage != nullptr) *truncatedAverage = static_cast<unsigned>(mean);
  });
  return variance;
}

void PicPixelStdDev(LxROI<LxBW8>* source, float& deviation, float& average) {
  FindDeviation(source, deviation, average);
}
void PicPixelStdDev(LxROI<LxBW16>* source, float& deviation, float& average) {
  FindDeviation(source, deviation, average);
}
void PicPixelStdDev(LxROI<LxC24>* source, float& deviation0, float& deviation1, float& deviation2,
                    float& correlation01, float& correlation12, float& correlation20,
                    float& average0, float& average1, float& average2) {
  RunOperation("PicPixelStdDev", [&] {
    PicPixelVariance(source, deviation0, deviation1, deviation2, correlation01, correlation12,
                     correlation20, average0, average1, average2);
    if (LxGetError() != LX_OK) return;
    for (float* const each : {&deviation0, &deviation1, &deviation2}) *each = Root(*each);
    correlation01 = Correlation(correlation01, deviation0, deviation1);
    correlation12 = Correlation(correlation12, deviation1, deviation2);
    correlation20 = Correlation(correlation20, deviation2, deviation0);
  });
}

void PicPixelStat(LxROI<LxBW8>* source, LxBW8& minimum, LxBW8& maximum, float& average) {
  Summarize("PicPixelStat", source, minimum, maximum, average);
}
void PicPixelStat(LxROI<LxBW16>* source, LxBW16& minimum, LxBW16& maximum, float& average) {
  Summarize("PicPixelStat (BW16)", source, minimum, maximum, average);
}

void PicPixelCount(LxROI<LxBW8>* source, LxBW8 low, LxBW8 high, int& below, int& between,
                   int& above) {
  CountBands("PicPixelCount", source, low, high, below, between, above);
}
void PicPixelCount(LxROI<LxBW16>* source, LxBW16 low, LxBW16 high, int& below, int& between,
                   int& above) {
  CountBands("PicPixelCount (BW16)", source, low, high, below, between, above);
}

void PicArea(LxROI<LxBW8>* source, LxBW8 threshold, int& area) {
  CountBand("PicArea", source, LxBW8(0), threshold, kAbove, area);
}
void PicArea(LxROI<LxBW16>* source, LxBW16 threshold, int& area) {
  CountBand("PicArea (BW16)", source, LxBW16(0), threshold, kAbove, area);
}
void PicAreaDoubleThreshold(LxROI<LxBW8>* source, LxBW8 low, LxBW8 high, int& area) {
  CountBand("PicAreaDoubleThreshold", source, low, high, kBetween, area);
}
void PicAreaDoubleThreshold(LxROI<LxBW16>* source, LxBW16 low, LxBW16 high, int& area) {
  CountBand("PicAreaDoubleThreshold (BW16)", source, low, high, kBetween, area);
}

unsigned PicArea(LxROI<LxBW8>* source) {
  return MeasureRuns("PicArea ( all pixels)", source, 0U,
                     [](const Spans& pixels) { return Saturated<unsigned>(pixels.CountPixels()); });
}
unsigned PicArea(LxROI<LxBW8>* source, unsigned threshold) {
  return MeasureRuns("PicArea ( binarized)", source, 0U, [=](const Spans& pixels) {
    if (threshold >= 255) return 0U;
    return Saturated<unsigned>(CountBytes(pixels, 0, threshold + 1).high);
  });
}
