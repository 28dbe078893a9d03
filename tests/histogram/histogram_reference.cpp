// SPDX-License-Identifier: Apache-2.0
// Histograms, equalization and analysis: counts of single pixels, and sums over single bins.
#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include "histogram/references.h"
#include "lxpic/histogram/analysis.h"

namespace lx::test {

// Each pixel once for each of its runs, where there are any that count.
std::vector<double> CountPixels(const Picture& picture, std::size_t bins, bool followRuns) {
  std::vector<double> counts(bins, 0.0);
  const auto selected = Selected(picture);
  for (std::size_t i = 0; i < selected.size(); ++i) {
    counts[static_cast<std::size_t>(picture.values[i])] += followRuns ? selected[i] : 1;
  }
  return counts;
}

namespace {

void CountBytes(const Arguments& /*call*/, Outcome& outcome) {
  outcome.Vector(1).values = CountPixels(outcome.Image(0), 256, true);
}

// Lays an untyped vector out anew, as one group. Only its use stays.
void LayOut(Elements& vector, int kind, int dataSize, std::vector<double> values) {
  const int length = static_cast<int>(values.size());
  vector = {std::move(values), kind, dataSize, LX_DATA_UNSIGNED, length, vector.use};
}

void CountIntoUntyped(const Arguments& /*call*/, Outcome& outcome) {
  Elements& vector = outcome.Vector(1);
  if (vector.kind != LX_VECTOR_HISTOGRAM || vector.values.size() < 256) {
    LayOut(vector, LX_VECTOR_HISTOGRAM, LX_DATA_SIZE_32, std::vector<double>(256));
  }
  std::ranges::copy(CountPixels(outcome.Image(0), 256, false), vector.values.begin());
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
  if (!IsHistogram(outcome, LX_ERROR_EQUALIZE_SETUP)) return;
  const auto entries = EqualizationTable(outcome.Vector(0).values, 256);
  if (entries.empty()) return outcome.Refuse(LX_ERROR_EMPTY_HISTOGRAM);
  // The vectors that are drawn are no tables.
  LayOut(outcome.Vector(1), LX_VECTOR_TABLE, LX_DATA_SIZE_8, entries);
}

// Each pixel becomes the entry of its level.
void LookUp(const std::vector<double>& table, const Picture& source, Picture& destination) {
  for (std::size_t i = 0; i < source.values.size(); ++i) {
    destination.values[i] = static_cast<Value>(table[static_cast<std::size_t>(source.values[i])]);
  }
}

void EqualizeBytes(const Arguments& /*call*/, Outcome& outcome) {
  const Picture& source = outcome.Image(0);
  if (source.values.empty()) return;
  const auto table = EqualizationTable(CountPixels(source, 256, true), 255);
  if (table.empty()) {
    return outcome.Refuse(LX_ERROR_EMPTY_HISTOGRAM, {"PicSetupEqualize ( LxBWHistogramVector)"});
  }
  LookUp(table, source, outcome.Image(1));
}

void EqualizeWords(const Arguments& /*call*/, Outcome& outcome) {
  auto table = CountPixels(outcome.Image(0), 65536, false);
  std::partial_sum(table.begin(), table.end(), table.begin());
  const double pixels = table.back();
  for (double& upTo : table) upTo = upTo * 65535 / pixels;
  LookUp(table, outcome.Image(0), outcome.Image(1));
}

double FeatureOf(const std::vector<unsigned>& counts, unsigned feature, int from, int to) {
  double most = 0, mostBin = 0, least = -1, leastBin = 0, lowest = to + 1, highest = from - 1;
  double pixels = 0, sum = 0;
  float count = 0, first = 0, second = 0;  // rounded whenever they grow
  for (int bin = from; bin <= to; ++bin) {
    const double h = counts[static_cast<std::size_t>(bin)];
    if (h == 0) continue;
    pixels += h;
    sum += bin * h;
    count = static_cast<float>(count + h);
    first = static_cast<float>(first + bin * h);
    second = static_cast<float>(second + static_cast<double>(bin) * bin * h);
    highest = bin;
    if (lowest > to) lowest = bin;
    if (h > most) most = h, mostBin = bin;
    if (least == -1 || h < least) least = h, leastBin = bin;
  }
  if (pixels == 0) return std::array<double, 9>{0, 0, 0, -1, lowest, highest}[feature];
  const double mean = static_cast<double>(first) / count;
  const double variance = static_cast<double>(second) / count - mean * mean;
  const auto deviation = static_cast<float>(std::sqrt(std::fabs(variance)));
  const auto average = static_cast<float>(sum / pixels);
  return std::array<double, 9>{mostBin, most,   leastBin, least,    lowest,
                               highest, pixels, average,  deviation}[feature];
}

template <int kBins>
void Analyse(const Arguments& call, Outcome& outcome) {
  const auto first = static_cast<int>(call.Number(2));
  const auto last = static_cast<int>(call.Number(3));
  outcome.Number(4) = 0;
  if (first < 0) return outcome.Refuse(LX_ERROR_ARGUMENT_3_OUT_OF_RANGE);
  if (last >= kBins) return outcome.Refuse(LX_ERROR_ARGUMENT_4_OUT_OF_RANGE);
  if (first > last) return outcome.Refuse(LX_ERROR_INCONSISTENT_ARGUMENTS);
  const auto feature = static_cast<unsigned>(call.Number(1));
  outcome.Number(4) = static_cast<float>(FeatureOf(CountsOf(outcome), feature, first, last));
}

// The forms for whole and for real numbers leave alone what is the other's.
template <bool whole, int lowest, int highest>
void AnalyseUntyped(const Arguments& call, Outcome& outcome) {
  if (!IsHistogram(outcome, LX_ERROR_WRONG_VECTOR_KIND)) return;
  const auto feature = static_cast<int>(call.Number(3));
  if (feature < lowest || feature > highest) return;
  const int first = std::clamp(static_cast<int>(call.Number(1)), 0, 256);
  const int last = std::clamp(static_cast<int>(call.Number(2)), first - 1, 255);
  const double value = FeatureOf(CountsOf(outcome), static_cast<unsigned>(feature), first, last);
  // Counts of 32 bits keep their bits.
  outcome.Number(4) = whole ? static_cast<int>(static_cast<Value>(value)) : value;
}

// Mean and, where there are two results, variance.
template <bool centred>
void MeasureMoments(const Arguments& call, Outcome& outcome) {
  const auto counts = CountsOf(outcome);
  const double first = call.Number(centred ? 3 : 2);
  const double last = call.Number(centred ? 4 : 3);
  long double sum0 = 0, sum1 = 0, sum2 = 0;  // exact
  for (unsigned i = 0; i < 256; ++i) {
    if (i < first || i > last) continue;
    sum0 += counts[i];
    sum1 += static_cast<long double>(i) * counts[i];
    sum2 += static_cast<long double>(i) * i * counts[i];
  }
  if (sum0 == 0) return outcome.Refuse(LX_ERROR_EMPTY_HISTOGRAM);
  const auto m0 = static_cast<double>(sum0);
  const double mean = static_cast<double>(sum1) / m0;
  outcome.Number(1) = static_cast<float>(mean);
  if (centred) {
    outcome.Number(2) = static_cast<float>(static_cast<double>(sum2) / m0 - mean * mean);
  }
}

}  // namespace

std::vector<Reference> HistogramReferences() {
  const std::string bins = ", LxBWHistogramVector*, unsigned int, unsigned int, int)";
  return {
      Measured("PicHistogram(LxROI<LxBW8>*, LxBWHistogramVector*)", CountBytes),
      Measured("PicHistogram(LxROI<LxBW8>*, LxVector*)", CountIntoUntyped),
      BinsReference("PicHistogram(LxROI<LxBW16>*" + bins, 16),
      BinsReference("PicHistogram(LxROI<LxBW32>*" + bins, 32),
      Measured("PicSetupEqualize(LxBWHistogramVector*, LxBW8Vector*)", SetUp),
      Measured("PicSetupEqualize(LxVector*, LxVector*)", SetUpUntyped),
      Measured("PicEqualize(LxROI<LxBW8>*, LxROI<LxBW8>*)", EqualizeBytes),
      Measured("PicEqualize(LxROI<LxBW16>*, LxROI<LxBW16>*)", EqualizeWords),
      Measured("PicAnalyseHistogram(LxBWHistogramVector*, PIC_HISTOGRAM_FEATURE, int, int)",
               Analyse<256>),
      Measured("PicAnalyseHistogramBW16(LxBWHistogramVector*, PIC_HISTOGRAM_FEATURE, int, int)",
               Analyse<65536>),
      Measured("PicAnalyseHistogram(LxVector*, int, int, int, int&)", AnalyseUntyped<true, 0, 6>),
      Measured("PicAnalyseHistogram(LxVector*, int, int, int, float&)",
               AnalyseUntyped<false, 7, 8>),
      Measured("PicHistogramMoments(LxBWHistogramVector*, float&, unsigned int, unsigned int)",
               MeasureMoments<false>),
      Measured("PicHistogramCenteredMoments(LxBWHistogramVector*, float&, float&, unsigned int, "
               "unsigned int)",
               MeasureMoments<true>)};
}

}  // namespace lx::test
