// SPDX-License-Identifier: Apache-2.0
// Boxes whose minima or maxima are taken, and the memory that it takes.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "foundation/scratch.h"

namespace lx {

// Boxes of 2 * halfX + 1 columns and 2 * halfY + 1 rows over rows of `elements` elements; neighbours
// in a row are `stride` elements apart. What lies outside of the image changes nothing.
struct ExtremeBox {
  std::size_t elements;
  std::size_t elementBytes;
  std::size_t stride;
  std::size_t height;
  std::size_t halfX;
  std::size_t halfY;
  std::size_t beyond = 0;  // rows and columns outside, on all sides, that have results too

  std::size_t ResultElements() const { return elements + 2 * beyond * stride; }
  std::size_t ResultRows() const { return height + 2 * beyond; }
  // Rows that are taken together down the image.
  std::size_t BlockRows() const { return 2 * halfY; }
};

// Scratch memory of a sweep over boxes, in bytes.
struct BoxLayout {
  static constexpr std::size_t kRows = 4;           // that are worked on together
  static constexpr std::size_t kMostDoublings = 5;  // of windows in registers, a vector each

  std::size_t margin;    // before the first pixel of a row with room for windows beyond its ends
  std::size_t row;       // from one such row to the next
  std::size_t line;      // from one row without that room to the next
  std::size_t suffixes;  // lines of a block
  std::size_t blocks;    // that are kept

  explicit BoxLayout(const ExtremeBox& box)
      : margin(WholeVectors((box.halfX + box.beyond) * box.stride * box.elementBytes) +
               (kMostDoublings + 1) * kLargestVector),
        row(2 * margin + WholeVectors(box.elements * box.elementBytes)),
        line(WholeVectors(box.elements * box.elementBytes) + kLargestVector),
        suffixes(std::min(box.BlockRows(), box.ResultRows()) + 1),
        blocks(box.BlockRows() < box.ResultRows() ? 2 : 1) {}

  // The rows, two steps of windows over them, the blocks, a prefix, and a line that changes nothing.
  std::size_t Bytes() const { return 3 * kRows * row + (blocks * suffixes + 2) * line; }
};

}  // namespace lx
