// SPDX-License-Identifier: Apache-2.0
// Histograms, equalization and analysis: counts of single pixels, and sums over single bins.
#include <algorithm>
#include <cmath>
#include <numeric>

#include "histogram/feature_reference.h"
#include "support/reference.h"

namespace lx::test {

namespace {

std::vector<double> CountPixels(const Picture& picture, std::size_t bins) {
  std::vector<double> counts(bins, 0.0);
  const auto selected = Selected(picture);
  for (std::size_t i = 0; i < selected.size(); ++i) {
    counts[static_cast<std::size_t>(picture.values[i])] += selected[i];
  }
  return counts;
}

Picture WithoutRuns(Picture picture) {
  picture.runs.clear();
  return picture;
}

void CountBytes(const Arguments& /*call*/, Outcome& outcome) {
  outcome.Vector(1).values = CountPixels(outcome.Image(0), 256);
}

void CountIntoUntyped(const Arguments& /*call*/, Outcome& outcome) {
  Elements& vector = outcome.Vector(1);
  if (vector.kind != LX_VECTOR_HISTOGRAM || vector.values.size() < 256) {
    const int use = vector.use;
    vector = {};
    vector.use = use;
    vector.kind = LX_VECTOR_HISTOGRAM;
    vector.dataSize = LX_DATA_SIZE_32;
    vector.dataType = LX_DATA_UNSIGNED;
    vector.groupLength = 256;
    vector.values.resize(256);
  }
  const auto counts = CountPixels(WithoutRuns(outcome.Image(0)), 256);
  std::copy(counts.begin(), counts.end(), vector.values.begin());
}

// The bits of a pixel are numbered from 0.
Reference BinsReference(std::string_view signature, int depth) {
  return Measured(signature, [depth](const Arguments& call, Outcome& outcome) {
    const auto msb = static_cast<int>(call.Number(2));
    const auto bits = static_cast<int>(call.Number(3));
    if (msb >= depth) return outcome.Refuse(LX_ERROR_ARGUMENT_3_OUT_OF_RANGE);
    if (bits > msb + 1 || bits > 24) return outcome.Refuse(LX_ERROR_ARGUMENT_4_OUT_OF_RANGE);
    const double bins = std::exp2(bits);
    std::vector<double> counts(static_cast<std::size_t>(bins), 0.0);
    for (const Value value : outcome.Image(0).values) {
      double bin = std::floor(static_cast<double>(value) / std::exp2(msb + 1 - bits));
      if (bin >= bins && call.Number(4) == 0) continue;
      if (bin >= bins) bin = bins - 1;
      ++counts[static_cast<std::size_t>(bin)];
    }
    outcome.Vector(1).values = counts;
  });
}

// scale times the share of darker pixels, truncated to bytes; empty without any pixel.
std::vector<double> EqualizationTable(const std::vector<double>& counts, double scale) {
  const double total = std::accumulate(counts.begin(), counts.begin() + 256, 0.0);
  std::vector<double> table;
  double darker = 0;
  for (std::size_t v = 0; v < 256 && total > 0; ++v) {
    table.push_back(std::fmod(std::floor(scale * darker / total), 256.0));
    darker += counts[v];
  }
  return table;
}

void SetUp(const Arguments& /*call*/, Outcome& outcome) {
  const auto table = EqualizationTable(outcome.Vector(0).values, 255);
  if (table.empty()) return outcome.Refuse(LX_ERROR_EMPTY_HISTOGRAM);
  outcome.Vector(1).values = table;
}

void SetUpUntyped(const Arguments& /*call*/, Outcome& outcome) {
  const Elements& histogram = outcome.Vector(0);
  Elements& table = outcome.Vector(1);
  if (histogram.kind != LX_VECTOR_HISTOGRAM) return outcome.Refuse(LX_ERROR_EQUALIZE_SETUP);
  if (histogram.values.size() < 256) return outcome.Refuse(LX_ERROR_WRONG_VECTOR_SIZE);
  const auto entries = EqualizationTable(histogram.values, 256);
  if (entries.empty()) return outcome.Refuse(LX_ERROR_EMPTY_HISTOGRAM);
  // The vectors that are drawn are no tables.
  const int use = table.use;
  table = {};
  table.use = use;
  table.kind = LX_VECTOR_TABLE;
  table.dataSize = LX_DATA_SIZE_8;
  table.dataType = LX_DATA_UNSIGNED;
  table.groupLength = 256;
  table.values = entries;
}

void EqualizeBytes(const Arguments& /*call*/, Outcome& outcome) {
  const Picture source = outcome.Image(0);
  if (source.values.empty()) return;
  const auto table = EqualizationTable(CountPixels(source, 256), 255);
  if (table.empty()) {
    return outcome.Refuse(LX_ERROR_EMPTY_HISTOGRAM, {"PicSetupEqualize ( LxBWHistogramVector)"});
  }
  Picture& destination = outcome.Image(1);
  for (std::size_t i = 0; i < source.values.size(); ++i) {
    destination.values[i] = static_cast<Value>(table[static_cast<std::size_t>(source.values[i])]);
  }
}

void EqualizeWords(const Arguments& /*call*/, Outcome& outcome) {
  const Picture source = outcome.Image(0);
  auto upTo = CountPixels(WithoutRuns(source), 65536);
  std::partial_sum(upTo.begin(), upTo.end(), upTo.begin());
  Picture& destination = outcome.Image(1);
  for (std::size_t i = 0; i < source.values.size(); ++i) {
    const double share = upTo[static_cast<std::size_t>(source.values[i])] * 65535 / upTo.back();
    destination.values[i] = static_cast<Value>(share);
  }
}

std::vector<unsigned> CountsOf(const Elements& histogram) {
  return {histogram.values.begin(), histogram.values.end()};
}

template <int kBins>
void Analyse(const Arguments& call, Outcome& outcome) {
  const auto first = static_cast<int>(call.Number(2));
  const auto last = static_cast<int>(call.Number(3));
  outcome.Number(4) = 0;
  if (first < 0) return outcome.Refuse(LX_ERROR_ARGUMENT_3_OUT_OF_RANGE);
  if (last >= kBins) return outcome.Refuse(LX_ERROR_ARGUMENT_4_OUT_OF_RANGE);
  if (first > last) return outcome.Refuse(LX_ERROR_INCONSISTENT_ARGUMENTS);
  outcome.Number(4) = static_cast<float>(
      FeatureOf(CountsOf(outcome.Vector(0)), static_cast<unsigned>(call.Number(1)), first, last));
}

// The forms for whole and for real numbers leave alone what is the other's.
template <typename Result, int lowest, int highest>
void AnalyseUntyped(const Arguments& call, Outcome& outcome) {
  const Elements& histogram = outcome.Vector(0);
  if (histogram.kind != LX_VECTOR_HISTOGRAM) return outcome.Refuse(LX_ERROR_WRONG_VECTOR_KIND);
  if (histogram.values.size() < 256) return outcome.Refuse(LX_ERROR_WRONG_VECTOR_SIZE);
  const auto feature = static_cast<int>(call.Number(3));
  if (feature < lowest || feature > highest) return;
  const int first = std::clamp(static_cast<int>(call.Number(1)), 0, 256);
  const int last = std::clamp(static_cast<int>(call.Number(2)), first - 1, 255);
  const double value = FeatureOf(CountsOf(histogram), static_cast<unsigned>(feature), first, last);
  outcome.Number(4) = std::is_same_v<Result, int>
                          ? static_cast<double>(static_cast<int>(static_cast<Value>(value)))
                          : value;
}

// Mean and, where there are two results, variance.
void MeasureMoments(const Arguments& call, Outcome& outcome, bool centred) {
  const auto counts = CountsOf(outcome.Vector(0));
  const double first = call.Number(centred ? 3 : 2);
  const double last = call.Number(centred ? 4 : 3);
  std::uint64_t sum0 = 0;
  std::uint64_t sum1 = 0;
  std::uint64_t sum2 = 0;
  for (std::uint64_t i = 0; i < 256; ++i) {
    if (static_cast<double>(i) < first || static_cast<double>(i) > last) continue;
    sum0 += counts[i];
    sum1 += i * counts[i];
    sum2 += i * i * counts[i];
  }
  const auto m0 = static_cast<double>(sum0);
  const auto m1 = static_cast<double>(sum1);
  const auto m2 = static_cast<double>(sum2);
  if (m0 == 0) return outcome.Refuse(LX_ERROR_EMPTY_HISTOGRAM);
  outcome.Number(1) = static_cast<float>(m1 / m0);
  if (centred) outcome.Number(2) = static_cast<float>(m2 / m0 - m1 / m0 * (m1 / m0));
}

}  // namespace

std::vector<Reference> HistogramReferences() {
  return {
      Measured("PicHistogram(LxROI<LxBW8>*, LxBWHistogramVector*)", CountBytes),
      Measured("PicHistogram(LxROI<LxBW8>*, LxVector*)", CountIntoUntyped),
      BinsReference("PicHistogram(LxROI<LxBW16>*, LxBWHistogramVector*, unsigned int, unsigned "
                    "int, int)",
                    16),
      BinsReference("PicHistogram(LxROI<LxBW32>*, LxBWHistogramVector*, unsigned int, unsigned "
                    "int, int)",
                    32),
      Measured("PicSetupEqualize(LxBWHistogramVector*, LxBW8Vector*)", SetUp),
      Measured("PicSetupEqualize(LxVector*, LxVector*)", SetUpUntyped),
      Measured("PicEqualize(LxROI<LxBW8>*, LxROI<LxBW8>*)", EqualizeBytes),
      Measured("PicEqualize(LxROI<LxBW16>*, LxROI<LxBW16>*)", EqualizeWords),
      Measured("PicAnalyseHistogram(LxBWHistogramVector*, PIC_HISTOGRAM_FEATURE, int, int)",
               Analyse<256>),
      Measured("PicAnalyseHistogramBW16(LxBWHistogramVector*, PIC_HISTOGRAM_FEATURE, int, int)",
               Analyse<65536>),
      Measured("PicAnalyseHistogram(LxVector*, int, int, int, int&)", AnalyseUntyped<int, 0, 6>),
      Measured("PicAnalyseHistogram(LxVector*, int, int, int, float&)",
               AnalyseUntyped<float, 7, 8>),
      Measured(
          "PicHistogramMoments(LxBWHistogramVector*, float&, unsigned int, unsigned int)",
          [](const Arguments& call, Outcome& outcome) { MeasureMoments(call, outcome, false); }),
      Measured(
          "PicHistogramCenteredMoments(LxBWHistogramVector*, float&, float&, unsigned int, "
          "unsigned int)",
          [](const Arguments& call, Outcome& outcome) { MeasureMoments(call, outcome, true); })};
}

}  // namespace lx::test
