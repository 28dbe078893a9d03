// SPDX-License-Identifier: Apache-2.0
// Projections, focus, noise, correlation.
#include <algorithm>
#include <cmath>

#include "support/reference.h"

namespace lx::test {

namespace {

// The sums of the columns or the rows, component by component.
std::vector<double> SumsOf(const Picture& s, bool ofColumns) {
  const int count = ofColumns ? s.width : s.height;
  std::vector<double> sums(static_cast<std::size_t>(count * s.components));
  for (int y = 0; y < s.height; ++y) {
    for (int x = 0; x < s.width; ++x) {
      for (int k = 0; k < s.components; ++k) {
        sums[static_cast<std::size_t>((ofColumns ? x : y) * s.components + k)] +=
            static_cast<double>(s.At(x, y, k));
      }
    }
  }
  return sums;
}

Reference Sums(const std::string& function, const std::string& region, bool ofColumns) {
  return Measured(function + "(" + region + ", LxBW32Vector*)",
                  [ofColumns](const Arguments& /*call*/, Outcome& outcome) {
                    outcome.Vector(1).values = SumsOf(outcome.Image(0), ofColumns);
                  });
}

Reference UntypedSums(const std::string& function, bool ofColumns) {
  return Measured(function + "(LxROI<LxBW8>*, LxVector*)",
                  [ofColumns](const Arguments& /*call*/, Outcome& outcome) {
                    Elements& vector = outcome.Vector(1);
                    vector.values = SumsOf(outcome.Image(0), ofColumns);
                    vector.kind = LX_VECTOR_HISTOGRAM;
                    vector.dataSize = LX_DATA_SIZE_32;
                    vector.dataType = LX_DATA_UNSIGNED;
                    vector.groupLength = std::max(static_cast<int>(vector.values.size()), 1);
                  });
}

Reference Averages(const std::string& function, const std::string& arguments, bool ofColumns) {
  return Measured(function + "(" + arguments + ")",
                  [ofColumns](const Arguments& /*call*/, Outcome& outcome) {
                    const Picture& s = outcome.Image(0);
                    auto values = SumsOf(s, ofColumns);
                    const int pixels = ofColumns ? s.height : s.width;
                    if (pixels == 0 && !values.empty()) {
                      return outcome.Refuse(LX_ERROR_EMPTY_HISTOGRAM);
                    }
                    for (double& value : values) value = std::floor(value / pixels);
                    outcome.Vector(1).values = values;
                  });
}

void Focus(const Arguments& /*call*/, Outcome& outcome) {
  const Picture& s = outcome.Image(0);
  outcome.Number(1) = 0;
  if (s.values.empty()) return outcome.Refuse(LX_ERROR_EMPTY_HISTOGRAM);
  double sum = 0;
  for (int y = 0; y < s.height - 1; ++y) {
    for (int x = 0; x < s.width - 1; ++x) {
      for (int k = 0; k < s.components; ++k) {
        const Value right = s.At(x, y, k) - s.At(x + 1, y, k);
        const Value below = s.At(x, y, k) - s.At(x, y + 1, k);
        sum += static_cast<double>(right * right + below * below);
      }
    }
  }
  outcome.Number(1) = static_cast<float>(std::sqrt(sum / static_cast<double>(s.values.size())));
}

void Correlogram(const Arguments& /*call*/, const std::vector<Picture>& sources,
                 std::vector<Picture>& destinations) {
  Picture& d = destinations.front();
  const Value most = FormatOf(d.pixel).maximum;
  std::ranges::fill(d.values, 0);
  for (std::size_t i = 0; i < sources[0].values.size(); ++i) {
    Value& cell =
        d.At(static_cast<int>(sources[0].values[i]), 255 - static_cast<int>(sources[1].values[i]));
    cell = std::min(cell + 1, most);
  }
}

void Regression(const Arguments& call, Outcome& outcome) {
  const auto& first = outcome.Image(0).values;
  const auto& second = outcome.Image(1).values;
  double n = 0, sa = 0, sb = 0, saa = 0, sab = 0, sbb = 0;
  for (std::size_t i = 0; i < first.size(); ++i) {
    const auto a = static_cast<double>(first[i]);
    const auto b = static_cast<double>(second[i]);
    if (call.Number(5) != 0 && (a == 0 || a == 255 || b == 0 || b == 255)) continue;
    ++n, sa += a, sb += b, saa += a * a, sab += a * b, sbb += b * b;
  }
  if (n == 0) return outcome.Refuse(LX_ERROR_EMPTY_HISTOGRAM);
  const double ma = sa / n;
  const double mb = sb / n;
  const double vaa = saa / n - ma * ma;
  const double vab = sab / n - ma * mb;
  const double vbb = sbb / n - mb * mb;
  if (vaa == 0) outcome.Refuse(LX_ERROR_EMPTY_HISTOGRAM);
  const double slope = vaa == 0 ? 0 : vab / vaa;
  outcome.Number(2) = static_cast<float>(slope);
  outcome.Number(3) = static_cast<float>(mb - slope * ma);
  outcome.Number(4) = static_cast<float>(vaa * vbb > 0 ? vab / std::sqrt(vaa * vbb) : 0);
}

// The arguments behind the regions are the frames, in the forms that have them, and the noise.
void Noise(const Arguments& call, Outcome& outcome, bool sum, bool decibels) {
  const std::size_t result = sum ? 4 : 3;
  const double frames = sum ? call.Number(2) : 1;
  const double noise = call.Number(result - 1);
  const auto& source = outcome.Image(0).values;
  outcome.Number(result) = 0;
  const bool isPower = frames > 0 && frames <= 256 && std::fmod(256.0, frames) == 0;
  if (!isPower || (noise == 2 && frames == 1)) {
    return outcome.Refuse(LX_ERROR_ARGUMENT_3_OUT_OF_RANGE);
  }
  const auto pixels = static_cast<double>(outcome.Image(0).width) * outcome.Image(0).height;
  if (pixels == 0 && !decibels) return outcome.Refuse(LX_ERROR_EMPTY_HISTOGRAM);
  double power = 0;
  double difference = 0;
  for (std::size_t i = 0; i < source.size(); ++i) {
    const auto s = static_cast<double>(source[i]);
    const double r = std::floor(static_cast<double>(outcome.Image(1).values[i]) / frames);
    power += s * s;
    difference += (s - r) * (s - r);
  }
  const double factor = noise == 1 ? 1 + 1 / frames : noise == 2 ? 1 - 1 / frames : 1;
  if (!decibels) {
    outcome.Number(result) = static_cast<float>(std::sqrt(difference / factor / pixels));
  } else if (difference != 0) {
    outcome.Number(result) = static_cast<float>(10 * std::log10(power / difference) +
                                                (factor == 1 ? 0 : 10 * std::log10(factor)));
  }
}

Reference NoiseReference(const std::string& function, const std::string& arguments) {
  const bool sum = arguments.find("unsigned") != std::string::npos;
  const bool decibels = function == "PicSignalNoiseRatio";
  return Measured(function + "(" + arguments + ", PIC_REFERENCE_NOISE)",
                  [sum, decibels](const Arguments& call, Outcome& outcome) {
                    Noise(call, outcome, sum, decibels);
                  });
}

}  // namespace

std::vector<Reference> MeasureReferences() {
  std::vector<Reference> made = {
      Measured("PicLinearRegression(LxROI<LxBW8>*, LxROI<LxBW8>*, float&, float&, float&, int)",
               Regression)};
  for (const bool onRow : {true, false}) {
    const std::string function = onRow ? "PicProjectOnARow" : "PicProjectOnAColumn";
    made.push_back(Sums(function, "LxROI<LxBW8>*", onRow));
    made.push_back(Sums(function, "LxROI<LxBW16>*", onRow));
    made.push_back(UntypedSums(function, onRow));
    for (const std::string pixel : {"BW8", "BW16", "C24"}) {
      made.push_back(Averages(function, "LxROI<Lx" + pixel + ">*, Lx" + pixel + "Vector*", onRow));
    }
  }
  for (const std::string region : {"LxROI<LxBW8>*", "LxROI<LxBW16>*", "LxROI<LxC24>*"}) {
    made.push_back(Measured("PicFocusing(" + region + ")", Focus));
    for (const char* const function : {"PicRmsNoise", "PicSignalNoiseRatio"}) {
      made.push_back(NoiseReference(function, region + ", " + region));
    }
  }
  for (const char* const function : {"PicRmsNoise", "PicSignalNoiseRatio"}) {
    made.push_back(NoiseReference(function, "LxROI<LxBW8>*, LxROI<LxBW16>*, unsigned int"));
  }
  for (const std::string pixel : {"LxBW8", "LxBW16"}) {
    made.push_back(Whole("PicCorrelogram(LxROI<LxBW8>*, LxROI<LxBW8>*, LxImage<" + pixel + ">*)",
                         Correlogram));
  }
  return made;
}

}  // namespace lx::test
