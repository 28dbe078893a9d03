// SPDX-License-Identifier: Apache-2.0
// Gradients through lookup images, spectra as images.
#include <algorithm>
#include <bit>
#include <cmath>
#include <complex>

#include "support/reference.h"

namespace lx::test {

namespace {

using Pictures = std::vector<Picture>;
using Complex = std::complex<double>;

double Real(const Arguments& call, const char* name) {
  return double{static_cast<float>(call.Number(name))};
}

Value LowByte(double whole) {
  const double rest = std::fmod(whole, 256);
  return static_cast<Value>(rest < 0 ? rest + 256 : rest);
}

void MakeMagnitudes(const Arguments& call, const Pictures& /*sources*/, Pictures& destinations) {
  for (int y = 0; y < 512; ++y) {
    for (int x = 0; x < 512; ++x) {
      const double value = std::hypot(x - 256, y - 256) * Real(call, "gain") + 0.5;
      destinations[0].At(x, y) = static_cast<Value>(std::trunc(std::clamp(value, 0.0, 255.0)));
    }
  }
}

void MakeDirections(const Arguments& call, const Pictures& /*sources*/, Pictures& destinations) {
  const float period = LxToRadians(static_cast<float>(call.Number("period")));
  const float k = period == 0 ? 40.7436637878418F : 256 / period;
  for (int y = 0; y < 512; ++y) {
    for (int x = 0; x < 512; ++x) {
      const double angle = std::atan2(y - 256, x - 256);
      const double code = std::trunc(angle * double{k} + (call.Number("origin") + 256.5));
      const bool fits = std::abs(code) < 9223372036854775808.0;
      destinations[0].At(x, y) = fits ? LowByte(code) : 255;
    }
  }
  destinations[0].At(256, 256) = 0;
}

struct Differences {
  int across;
  int down;
};

Differences DifferencesAt(const Picture& s, int x, int y) {
  const auto at = [&s](int column, int row) {
    return static_cast<int>(
        s.At(std::clamp(column, 0, s.width - 1), std::clamp(row, 0, s.height - 1)));
  };
  return {at(x - 1, y) - at(x + 1, y), at(x, y - 1) - at(x, y + 1)};
}

void FindVectors(const Arguments& /*call*/, const Pictures& sources, Pictures& destinations) {
  for (int y = 0; y < sources[0].height; ++y) {
    for (int x = 0; x < sources[0].width; ++x) {
      const auto [across, down] = DifferencesAt(sources[0], x, y);
      destinations[0].At(x, y) = (across + 65536) % 65536 + (down + 65536) % 65536 * Value{65536};
    }
  }
}

void LookUp(const Arguments& /*call*/, Outcome& outcome) {
  const Picture s = outcome.Image(0);
  const Picture table = outcome.Image(2);
  if (table.width != 512 || table.height != 512) {
    return outcome.Refuse(LX_ERROR_ARGUMENT_3_OUT_OF_RANGE);
  }
  const auto half = [](Value word) {
    return static_cast<int>(std::clamp<Value>(word < 32768 ? word : word - 65536, -256, 255));
  };
  for (int y = 0; y < s.height; ++y) {
    for (int x = 0; x < s.width; ++x) {
      Differences d{};
      if (s.pixel == Pixel::kBW8) {
        d = DifferencesAt(s, x, y);
      } else {
        d = {half(s.At(x, y) % 65536), half(s.At(x, y) / 65536)};
      }
      outcome.Image(1).At(x, y) = table.At(d.across + 256, d.down + 256);
    }
  }
}

Complex ComplexAt(const Picture& s, int x, int y) {
  const auto part = [&](int k) {
    return double{std::bit_cast<float>(static_cast<std::uint32_t>(s.At(x, y, k)))};
  };
  return {part(0), part(1)};
}

double SquaredDistance(const Picture& s, int x, int y) {
  const double across = x - s.width / 2.0;
  const double down = y - s.height / 2.0;
  return across * across + down * down;
}

template <bool kWeighted>
void Render(const Arguments& call, const Pictures& sources, Pictures& destinations) {
  const Picture& s = sources[0];
  for (int y = 0; y < s.height; ++y) {
    for (int x = 0; x < s.width; ++x) {
      const double squared = std::norm(ComplexAt(s, x, y));
      const double gain = Real(call, "gain");
      const double m =
          kWeighted
              ? std::sqrt(squared) * (SquaredDistance(s, x, y) * (gain / SquaredDistance(s, 0, 0)))
              : std::sqrt(double{static_cast<float>(squared)}) * gain;
      const bool logarithmic = call.Number("logarithmic") != 0;
      const double v = std::trunc(logarithmic ? std::log(1 + m) * Real(call, "log-gain") : m);
      destinations[0].At(x, y) = v >= 0 && v <= 255 ? static_cast<Value>(v) : 255;
    }
  }
}

void Turn(const Arguments& /*call*/, const Pictures& sources, Pictures& destinations) {
  for (int y = 0; y < sources[0].height; ++y) {
    for (int x = 0; x < sources[0].width; ++x) {
      const Complex z = ComplexAt(sources[0], x, y);
      const auto angle = static_cast<float>(z == 0.0 ? 0 : std::arg(z));
      float t = angle * 0.15915494F;
      if (t < 0) t = t + 1;
      destinations[0].At(x, y) = std::min<Value>(static_cast<Value>(256 * t), 255);
    }
  }
}

void SumDiscs(const Arguments& /*call*/, Outcome& outcome) {
  const Picture s = outcome.Image(0);
  Elements& energy = outcome.Vector(1);
  if (energy.kind != LX_VECTOR_DISC_ENERGY) return outcome.Refuse(LX_ERROR_VECTOR_CONTENT);
  const auto n = static_cast<std::size_t>(std::sqrt(SquaredDistance(s, 0, 0))) + 1;
  std::vector<double> rings(n, 0.0);
  for (int y = 0; y < s.height; ++y) {
    for (int x = 0; x < s.width; ++x) {
      const auto r = static_cast<std::size_t>(std::sqrt(SquaredDistance(s, x, y)));
      rings[r] += std::norm(ComplexAt(s, x, y));
    }
  }
  energy.values.resize(std::max(n, energy.values.size()));
  double sum = 0;
  for (std::size_t r = 0; r < n; ++r) {
    sum += r == 0 ? 0 : rings[r];
    energy.values[r] = double{static_cast<float>(sum)};
  }
}

}  // namespace

std::vector<Reference> GradientImageReferences() {
  const std::string scalar = ", LxROI<LxBW8>*, LxROI<LxBW8>*)";
  const std::string scales = "(LxROI<LxComplex64>*, LxROI<LxBW8>*, float, int, float)";
  // Tables are large.
  return {Whole("PicModulusImage(LxImage<LxBW8>*, float)", MakeMagnitudes).InRounds(1),
          Whole("PicArgumentImage(LxImage<LxBW8>*, LxBW8, float)", MakeDirections).InRounds(1),
          Whole("PicGradientVector(LxROI<LxBW8>*, LxROI<LxBW32>*)", FindVectors),
          Measured("PicGradientScalar(LxROI<LxBW8>*" + scalar, LookUp).InRounds(2),
          Measured("PicGradientScalar(LxROI<LxBW32>*" + scalar, LookUp).InRounds(2),
          Whole("PicComplexModulus" + scales, Render<false>),
          Whole("PicComplexRescaledModulus" + scales, Render<true>),
          Whole("PicComplexArgument(LxROI<LxComplex64>*, LxROI<LxBW8>*)", Turn),
          Measured("PicComplexDiscEnergy(LxROI<LxComplex64>*, LxVector*)", SumDiscs)};
}

}  // namespace lx::test
