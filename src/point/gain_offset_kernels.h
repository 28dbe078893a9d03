// SPDX-License-Identifier: Apache-2.0
// Gain and offset on 16-bit pixels.
#pragma once

#include <cstdint>

#include "foundation/pixel_map.h"

namespace lx::point {

// destination = ((source * gain) >> 5) + offset, clamped to 0..65535.
void ScaleWords(const PixelMap& map, std::int64_t gain, std::int64_t offset);

}  // namespace lx::point
