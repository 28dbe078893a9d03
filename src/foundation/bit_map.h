// SPDX-License-Identifier: Apache-2.0
// What a map between a binary image and another one works on.
#pragma once

#include <cstddef>

#include "foundation/path.h"
#include "foundation/rows.h"

namespace lx {

struct BitMap {
  Rows bits;
  std::size_t firstBit = 0;  // of each row in its first byte, 0 the most significant
  Rows pixels;
  std::size_t width = 0;
  std::size_t height = 0;
  Path path = CurrentPath();
};

// The map over these regions, which have the same size. Regions without gaps between their rows
// become one long row.
template <class T>
BitMap BitMapOf(const LxROI<int>* bits, const LxROI<T>* pixels) {
  BitMap map;
  map.bits = RowsOf(bits);
  map.firstBit = static_cast<std::size_t>(bits->GetBitPosition(0, 0));
  map.pixels = RowsOf(pixels);
  map.width = bits->GetWidth();
  map.height = bits->GetHeight();
  const auto bytes = static_cast<std::ptrdiff_t>(map.width / 8);
  const bool tight = map.firstBit == 0 && map.width % 8 == 0 && map.bits.pitch == bytes;
  if (tight && map.height != 0 && IsContiguous(pixels)) {
    map.width *= map.height;
    map.height = 1;
  }
  return map;
}

}  // namespace lx
