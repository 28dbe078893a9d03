// SPDX-License-Identifier: Apache-2.0
// Rows of interlaced frames, exchanged and compared.
#pragma once

#include "foundation/pixel_map.h"

namespace lx::sequence {

// Rows 2i and 2i + 1 of the source arrive crosswise in the destination; `map.width` counts bytes.
void CrossPairs(const PixelMap& map);

// Two rows of elements of 8 or 16 bits, of which the second is tried at several shifts.
struct RowMatch {
  const std::uint8_t* upper;
  const std::uint8_t* lower;
  std::int64_t first;  // of the elements of the upper row that are compared
  std::int64_t end;
  int stride;  // elements of a pixel
  int lowest;  // in pixels
  int highest;
  Path path = CurrentPath();
};

// The shift of the least sum of squared differences, the lowest of several.
int BestShiftOfBytes(const RowMatch& match);
int BestShiftOfWords(const RowMatch& match);

}  // namespace lx::sequence
