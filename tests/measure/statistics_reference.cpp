// SPDX-License-Identifier: Apache-2.0
// Pixel statistics and moments: sums over single pixels in long integers.
#include <algorithm>
#include <array>
#include <cmath>

#include "support/reference.h"

namespace lx::test {

namespace {

__extension__ using Whole128 = __int128;

// Visits each pixel as often as it counts: step(x, y, times).
template <class Step>
void VisitPixels(const Picture& picture, bool followRuns, const Step& step) {
  const auto selected = Selected(picture);
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const int times =
          followRuns
              ? selected[picture.Index(x, y, 0) / static_cast<std::size_t>(picture.components)]
              : 1;
      if (times > 0) step(x, y, times);
    }
  }
}

// Sums of the products of components i and j of colours, or of levels.
struct PixelSums {
  Value count = 0, minimum = 0, maximum = 0;
  std::array<Value, 3> sums{};
  std::array<std::array<Value, 3>, 3> products{};

  PixelSums(const Picture& picture, bool followRuns) {
    minimum = picture.pixel == Pixel::kBW16 ? 65535 : 255;
    VisitPixels(picture, followRuns, [&](int x, int y, int times) {
      count += times;
      const Value level = picture.At(x, y);
      minimum = std::min(minimum, level);
      maximum = std::max(maximum, level);
      for (int i = 0; i < picture.components; ++i) {
        const auto a = static_cast<std::size_t>(picture.components - 1 - i);
        sums[a] += times * picture.At(x, y, i);
        for (int j = 0; j < picture.components; ++j) {
          const auto b = static_cast<std::size_t>(picture.components - 1 - j);
          products[a][b] += times * picture.At(x, y, i) * picture.At(x, y, j);
        }
      }
    });
  }
  float Average(std::size_t k) const {
    return static_cast<float>(static_cast<long double>(sums[k]) / static_cast<long double>(count));
  }
  float Covariance(std::size_t i, std::size_t j) const {
    const Whole128 whole = Whole128{count} * products[i][j] - Whole128{sums[i]} * sums[j];
    const double pixels = static_cast<double>(count);
    return static_cast<float>(static_cast<double>(whole) / (pixels * pixels));
  }
};

// A rule that sees the sums of an image that has pixels.
template <class Rule>
Reference Some(const std::string& signature, const Rule& rule,
               const std::vector<std::string>& inner = {}) {
  return Measured(signature, [=](const Arguments&, Outcome& outcome) {
    const PixelSums sums(outcome.Image(0), false);
    if (sums.count == 0) return outcome.Refuse(LX_ERROR_EMPTY_HISTOGRAM, inner);
    rule(sums, outcome);
  });
}

// The same of runs, whatever there is; the result of a refusal is 0.
template <class Rule>
Reference OfRuns(const std::string& signature, const Rule& rule) {
  return Measured(signature, [=](const Arguments& call, Outcome& outcome) {
    rule(PixelSums(outcome.Image(0), true), call, outcome);
  });
}

void Compare(const Arguments& /*call*/, Outcome& outcome) {
  const Picture& a = outcome.Image(0);
  const Picture& b = outcome.Image(1);
  outcome.Number(2) = 0;
  VisitPixels(a, false, [&](int x, int y, int) {
    bool differs = false;
    for (int k = 0; k < a.components; ++k) differs = differs || a.At(x, y, k) != b.At(x, y, k);
    if (differs) ++outcome.Number(2);
  });
}

// Calls the function with each pixel.
template <class T, class Predicate>
void CountMatches(const Arguments& call, Outcome& outcome) {
  const Picture& picture = outcome.Image(0);
  const auto predicate = std::get<Predicate>(call.values[1]);
  outcome.Number(2) = 0;
  VisitPixels(picture, false, [&](int x, int y, int) {
    T pixel;
    if constexpr (std::is_same_v<T, LxC24>) {
      const auto byte = [&](int k) { return static_cast<std::uint8_t>(picture.At(x, y, k)); };
      pixel = {byte(0), byte(1), byte(2)};
    } else {
      pixel = T(static_cast<decltype(T::value)>(picture.At(x, y)));
    }
    if (predicate(pixel) != 0) ++outcome.Number(2);
  });
}

template <int kFirst>
void CountBands(const Arguments& call, Outcome& outcome) {
  const auto low = call.Component(1, 0);
  const auto high = call.Component(2, 0);
  std::array<double, 3> counts{};
  for (const Value v : outcome.Image(0).values) ++counts[v < low ? 0 : v >= high ? 2 : 1];
  if (kFirst == 1) {
    outcome.Number(3) = counts[1];
    return;
  }
  for (std::size_t i = 0; i < 3; ++i) outcome.Number(3 + i) = counts[i];
}

void CountFrom(const Arguments& call, Outcome& outcome) {
  const auto& values = outcome.Image(0).values;
  const auto reaches = [&](Value v) { return v >= call.Component(1, 0); };
  outcome.Number(2) = static_cast<double>(std::ranges::count_if(values, reaches));
}

void CountAbove(const Arguments& call, Outcome& outcome) {
  const Picture& picture = outcome.Image(0);
  outcome.Number(2) = 0;
  VisitPixels(picture, true, [&](int x, int y, int times) {
    if (static_cast<double>(picture.At(x, y)) > call.Number(1)) outcome.Number(2) += times;
  });
}

void WriteVariances(const PixelSums& sums, Outcome& outcome) {
  for (std::size_t i = 0; i < 3; ++i) {
    outcome.Number(1 + i) = sums.Covariance(i, i);
    outcome.Number(4 + i) = sums.Covariance(i, (i + 1) % 3);
    outcome.Number(7 + i) = sums.Average(i);
  }
}

float Root(double variance) { return static_cast<float>(std::sqrt(variance)); }

void WriteDeviations(const PixelSums& sums, Outcome& outcome) {
  WriteVariances(sums, outcome);
  for (std::size_t i = 1; i <= 3; ++i) outcome.Number(i) = Root(outcome.Number(i));
  for (std::size_t i = 0; i < 3; ++i) {
    const double scale = outcome.Number(1 + i) * outcome.Number(1 + (i + 1) % 3);
    double& covariance = outcome.Number(4 + i);
    covariance = scale > 0 ? static_cast<float>(covariance / scale) : 0.0F;
  }
}

void HistogramVariance(const PixelSums& sums, const Arguments& /*call*/, Outcome& outcome) {
  outcome.Number(3) = 0;
  if (sums.count == 0) {
    return outcome.Refuse(LX_ERROR_EMPTY_HISTOGRAM, {"PicHistogramCenteredMoments ( 2)"});
  }
  const auto count = static_cast<double>(sums.count);
  const double mean = static_cast<double>(sums.sums[0]) / count;
  outcome.Offer(1, static_cast<float>(mean));
  outcome.Offer(2, std::trunc(static_cast<float>(mean)));
  outcome.Number(3) =
      static_cast<float>(static_cast<double>(sums.products[0][0]) / count - mean * mean);
}

void RunAverage(const PixelSums& sums, const Arguments& /*call*/, Outcome& outcome) {
  outcome.Number(2) = 0;
  if (sums.count == 0) return outcome.Refuse(LX_ERROR_EMPTY_HISTOGRAM);
  outcome.Offer(1, static_cast<double>(sums.count));
  outcome.Number(2) = sums.Average(0);
}

std::vector<Reference> LevelReferences(const std::string& type, const std::string& roi) {
  const auto inner = std::vector<std::string>{"PicPixelVariance ( " + type.substr(2) + ")"};
  const auto minimum = [](const Arguments&, Outcome& outcome) {
    outcome.Number(1) = static_cast<double>(PixelSums(outcome.Image(0), false).minimum);
  };
  const auto maximum = [](const Arguments&, Outcome& outcome) {
    outcome.Number(1) = static_cast<double>(PixelSums(outcome.Image(0), false).maximum);
  };
  const auto average = [](const PixelSums& s, Outcome& o) { o.Number(1) = s.Average(0); };
  const auto variance = [](const PixelSums& s, Outcome& o) {
    o.Number(1) = s.Covariance(0, 0);
    o.Number(2) = s.Average(0);
  };
  const auto deviation = [](const PixelSums& s, Outcome& o) {
    o.Number(1) = Root(s.Covariance(0, 0));
    o.Number(2) = s.Average(0);
  };
  const auto summary = [](const PixelSums& s, Outcome& o) {
    o.Number(1) = static_cast<double>(s.minimum);
    o.Number(2) = static_cast<double>(s.maximum);
    o.Number(3) = s.Average(0);
  };
  return {Measured("PicPixelCompare(" + roi + ", " + roi + ")", Compare),
          Measured("PicPixelMin(" + roi + ", " + type + "&)", minimum),
          Measured("PicPixelMax(" + roi + ", " + type + "&)", maximum),
          Some("PicPixelAverage(" + roi + ", float&)", average),
          Some("PicPixelVariance(" + roi + ", float&, float&)", variance),
          Some("PicPixelStdDev(" + roi + ", float&, float&)", deviation, inner),
          Some("PicPixelStat(" + roi + ", " + type + "&, " + type + "&, float&)", summary),
          Measured("PicPixelCount(" + roi + ", " + type + ", " + type + ", int&, int&, int&)",
                   CountBands<0>),
          Measured("PicArea(" + roi + ", " + type + ", int&)", CountFrom),
          Measured("PicAreaDoubleThreshold(" + roi + ", " + type + ", " + type + ", int&)",
                   CountBands<1>)};
}

}  // namespace

std::vector<Reference> StatisticsReferences() {
  const std::string byte = "LxROI<LxBW8>*";
  const std::string colour = "LxROI<LxC24>*";
  const std::string nine =
      ", float&, float&, float&, float&, float&, float&, float&, float&, float&)";
  std::vector<Reference> all = {
      Measured("PicPixelCompare(" + colour + ", " + colour + ")", Compare),
      Measured("PicCount(" + byte + ", int (*)(LxBW8&))",
               CountMatches<LxBW8, catalogue::BytePredicate>),
      Measured("PicCount(LxROI<LxBW16>*, int (*)(LxBW16&))",
               CountMatches<LxBW16, catalogue::WordPredicate>),
      Measured("PicCount(" + colour + ", int (*)(LxC24&))",
               CountMatches<LxC24, catalogue::ColourPredicate>),
      Some("PicPixelAverage(" + colour + ", float&, float&, float&)",
           [](const PixelSums& s, Outcome& o) {
             for (std::size_t i = 0; i < 3; ++i) o.Number(1 + i) = s.Average(i);
           }),
      Some("PicPixelVariance(" + colour + nine, WriteVariances),
      Some("PicPixelStdDev(" + colour + nine, WriteDeviations, {"PicPixelVariance ( C24)"}),
      OfRuns("PicArea(" + byte + ")",
             [](const PixelSums& s, const Arguments&, Outcome& o) {
               o.Number(1) = static_cast<double>(s.count);
             }),
      Measured("PicArea(" + byte + ", unsigned int)", CountAbove),
      OfRuns("PicAverage(" + byte + ", unsigned int*)", RunAverage),
      OfRuns("PicMinimum(" + byte + ")",
             [](const PixelSums& s, const Arguments&, Outcome& o) {
               o.Number(1) = static_cast<double>(s.minimum);
             }),
      OfRuns("PicMaximum(" + byte + ")",
             [](const PixelSums& s, const Arguments&, Outcome& o) {
               o.Number(1) = static_cast<double>(s.maximum);
             }),
      OfRuns("PicVariance(" + byte + ", float*, unsigned int*)", HistogramVariance)};
  for (const char* const type : {"LxBW8", "LxBW16"}) {
    for (Reference& each : LevelReferences(type, std::string("LxROI<") + type + ">*")) {
      all.push_back(std::move(each));
    }
  }
  for (Reference& each : MomentReferences()) all.push_back(std::move(each));
  return all;
}

}  // namespace lx::test
