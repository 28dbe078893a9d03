// SPDX-License-Identifier: Apache-2.0
#include "lxpic/frequency/complex.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "foundation/frame.h"
#include "foundation/scratch.h"
#include "frequency/complex_kernels.h"

namespace {

using namespace lx;
using namespace lx::frequency;

Scale ScaleOf(float gain, int logarithmic, float logGain) {
  return {double{gain}, logarithmic != 0, double{logGain}};
}

std::uint8_t AngleCode(LxComplex64 pixel, std::size_t /*column*/) {
  constexpr float kTurnsPerRadian = 0.15915494F;
  if (pixel.re == 0 && pixel.im == 0) return 0;
  const auto angle = static_cast<float>(std::atan2(double{pixel.im}, double{pixel.re}));
  float turns = angle * kTurnsPerRadian;
  if (turns < 0) turns += 1;
  const float code = 256 * turns;
  return code < 256 ? static_cast<std::uint8_t>(code) : std::uint8_t{255};
}

bool HoldsEnergies(const LxVector& energy) {
  return Require(energy.IsSameVectType(LX_VECTOR_DISC_ENERGY) != 0, LX_ERROR_VECTOR_CONTENT) &&
         Require(energy.GetDataType() == LX_DATA_FLOAT, LX_ERROR_UNSUPPORTED_DATA_TYPE) &&
         Require(energy.GetDataSize() == LX_DATA_SIZE_32, LX_ERROR_UNSUPPORTED_DATA_SIZE) &&
         Require(energy.GetGroupLength() == 1, LX_ERROR_DISC_ENERGY);
}

// The distance of a place from the centre, cut to an integer.
std::size_t RadiusOf(double across, double down) {
  return static_cast<std::size_t>(std::sqrt(across * across + down * down));
}

// Adds the energy of every pixel to the sum of its radius, in order.
void SumRings(const LxROI<LxComplex64>* source, double centreX, double centreY, double* sums) {
  const Rows rows = RowsOf(source);
  for (std::size_t y = 0; y < source->GetHeight(); ++y) {
    const double down = static_cast<double>(y) - centreY;
    const auto* const from = rows.Row<const std::uint8_t>(y);
    for (std::size_t x = 0; x < source->GetWidth(); ++x) {
      LxComplex64 pixel;
      std::memcpy(&pixel, from + x * sizeof(pixel), sizeof(pixel));
      const double re = double{pixel.re};
      const double im = double{pixel.im};
      sums[RadiusOf(static_cast<double>(x) - centreX, down)] += im * im + re * re;
    }
  }
}

// Running sums without the centre.
void StoreDiscs(const double* rings, std::size_t count, float* to) {
  to[0] = 0;
  double sum = 0;
  for (std::size_t r = 1; r < count; ++r) {
    sum += rings[r];
    to[r] = static_cast<float>(sum);
  }
}

}  // namespace

void PicComplexModulus(LxROI<LxComplex64>* source, LxROI<LxBW8>* destination, float gain,
                       int logarithmic, float logGain) {
  RunOperation("PicComplexModulus", [&] {
    if (!Usable({source, destination})) return;
    RenderModuli(MapOf(destination, source), ScaleOf(gain, logarithmic, logGain));
  });
}

void PicComplexRescaledModulus(LxROI<LxComplex64>* source, LxROI<LxBW8>* destination, float gain,
                               int logarithmic, float logGain) {
  RunOperation("PicComplexRescaledModulus", [&] {
    if (!Usable({source, destination})) return;
    PixelMap map = MapOf(destination, source);
    map.width = source->GetWidth();
    map.height = source->GetHeight();
    RenderWeightedModuli(map, ScaleOf(gain, logarithmic, logGain));
  });
}

void PicComplexArgument(LxROI<LxComplex64>* source, LxROI<LxBW8>* destination) {
  RunOperation("PicComplexArgument", [&] {
    if (!Usable({source, destination})) return;
    MapEach<LxComplex64, std::uint8_t>(MapOf(destination, source), AngleCode);
  });
}

void PicComplexDiscEnergy(LxROI<LxComplex64>* source, LxVector* energy) {
  RunOperation("PicComplexDiscEnergy", [&] {
    if (!Attached({source}) || !Require(energy != nullptr, LX_ERROR_VECTOR_NO_DATA) ||
        !HoldsEnergies(*energy)) {
      return;
    }
    const double centreX = 0.5 * source->GetWidth();
    const double centreY = 0.5 * source->GetHeight();
    const std::size_t count = RadiusOf(centreX, centreY) + 1;
    const Scratch<double> rings(count);
    if (!rings) return;
    std::fill_n(rings.get(), count, 0.0);
    SumRings(source, centreX, centreY, rings.get());
    const auto groups = static_cast<int>(count);
    if (energy->GetNbGroup() < groups) energy->SetType(LX_VECTOR_DISC_ENERGY, groups, 0);
    if (LxGetError() != LX_OK) return;
    if (!Require(energy->GetDataPtr() != nullptr, LX_ERROR_VECTOR_NO_DATA)) return;
    StoreDiscs(rings.get(), count, static_cast<float*>(energy->GetDataPtr()));
  });
}
