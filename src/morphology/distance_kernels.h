// SPDX-License-Identifier: Apache-2.0
// Chessboard distances that start from every pixel's own value.
#pragma once

#include <cstdint>

#include "foundation/path.h"
#include "foundation/rows.h"
#include "foundation/scratch.h"

namespace lx::morphology {

struct DistanceMap {
  Rows destination;  // of 16-bit pixels
  Rows source;       // of 8-bit pixels
  std::size_t width = 0;
  std::size_t height = 0;
  // What pixels outside have. No distance exceeds its pixel, so that more than 255 makes no
  // difference.
  std::uint8_t outside = 0;
  Path path = CurrentPath();
};

// Elements from one scratch row to the next: what lies beyond either end is read too.
inline std::size_t DistancePitch(const DistanceMap& map) {
  return WholeVectors(map.width) + 3 * kLargestVector;
}
// Two rows.
inline std::size_t DistanceScratch(const DistanceMap& map) { return 2 * DistancePitch(map); }

// The image is not empty, and `scratch` has DistanceScratch() bytes.
void MapDistances(const DistanceMap& map, std::uint8_t* scratch);

}  // namespace lx::morphology
