// SPDX-License-Identifier: Apache-2.0
// Gain and offset: of grey pixels with five fractional bits, of colour pixels in floating point.
#pragma once

#include <array>
#include <cstdint>

#include "foundation/pixel_map.h"

namespace lx::point {

// destination = ((source * gain) >> 5) + offset, clamped to the range of the pixels.
void ScaleBytes(const PixelMap& map, std::int64_t gain, std::int64_t offset);
void ScaleWords(const PixelMap& map, std::int64_t gain, std::int64_t offset);

// What becomes of the components of colour pixels.
struct ColourScale {
  struct Component {
    double gain;
    double offset;
  };
  std::array<Component, 3> components;
};

// Components: destination = trunc(source * gain + offset), clamped to 0..255. The map counts pixels.
void ScaleColours(const PixelMap& map, const ColourScale& scale);

}  // namespace lx::point
