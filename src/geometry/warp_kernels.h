// SPDX-License-Identifier: Apache-2.0
// Pixels fetched through maps.
#pragma once

#include "foundation/path.h"
#include "foundation/rows.h"

namespace lx::geometry {

// What a warp works on; the source is not empty.
struct Warp {
  Rows source;
  std::int32_t sourceWidth;
  std::int32_t sourceHeight;
  Rows destination;
  std::size_t width;
  std::size_t height;
  Rows xMap;  // or the packed map
  Rows yMap;
  std::int32_t xOffset;
  std::int32_t yOffset;
  Path path = CurrentPath();
};

void WarpBytes(const Warp& warp);
void WarpColours(const Warp& warp);
// False when an entry lies outside the source; the pixels before it are written.
bool WarpPacked(const Warp& warp);

}  // namespace lx::geometry
