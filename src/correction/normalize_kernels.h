// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/pixel_map.h"

namespace lx::correction {

// gain * v + rise - fall, in this order.
struct Line {
  double gain;
  double rise;
  double fall;

  double At(double v) const { return gain * v + rise - fall; }
};

// 16-bit pixels: destination = line(source), truncated and clamped.
void MapWords(const PixelMap& map, const Line& line);

}  // namespace lx::correction
