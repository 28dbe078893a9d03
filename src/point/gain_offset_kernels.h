// SPDX-License-Identifier: Apache-2.0
// Gain and offset on grey pixels, with five fractional bits.
#pragma once

#include <cstdint>

#include "foundation/pixel_map.h"

namespace lx::point {

// destination = ((source * gain) >> 5) + offset, clamped to the range of the pixels.
void ScaleBytes(const PixelMap& map, std::int64_t gain, std::int64_t offset);
void ScaleWords(const PixelMap& map, std::int64_t gain, std::int64_t offset);

}  // namespace lx::point
