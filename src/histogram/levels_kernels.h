// SPDX-License-Identifier: Apache-2.0
// Images of few levels.
#pragma once

#include <algorithm>
#include <cstdint>

#include "foundation/bit_map.h"
#include "foundation/pixel_map.h"

namespace lx::histogram {

// What takes a pixel type's values from `threshold` on, and no others, to the upper half of the
// range, by saturating sums: bytes and words know no other comparison that is as fast. Any
// threshold is allowed; one beyond the largest value lets none pass.
struct Cut {
  std::uint16_t up = 0;    // added, and then
  std::uint16_t down = 0;  // taken away

  static constexpr Cut At(std::uint64_t threshold, unsigned largest) {
    const unsigned middle = largest / 2 + 1;
    const auto cut = static_cast<unsigned>(std::min(threshold, std::uint64_t{2} * middle));
    return cut < middle ? Cut{static_cast<std::uint16_t>(middle - cut), 0}
                        : Cut{0, static_cast<std::uint16_t>(cut - middle)};
  }
};

struct TwoLevels {
  Cut cut;
  std::uint16_t low;
  std::uint16_t high;
};

// `high` from the upper cut on, wherever the lower one lies.
struct ThreeLevels {
  Cut lower;
  Cut upper;
  std::uint16_t low;
  std::uint16_t middle;
  std::uint16_t high;
};

void MapToTwoBytes(const PixelMap& map, const TwoLevels& levels);
void MapToTwoWords(const PixelMap& map, const TwoLevels& levels);
void MapToThreeBytes(const PixelMap& map, const ThreeLevels& levels);
void MapToThreeWords(const PixelMap& map, const ThreeLevels& levels);

// A set bit from the cut on.
void MapBytesToBits(const BitMap& map, Cut cut);
void MapWordsToBits(const BitMap& map, Cut cut);
// `high` where a bit is set.
void MapBitsToBytes(const BitMap& map, std::uint8_t low, std::uint8_t high);

// Colours whose components all lie within bounds.
struct ColourBox {
  std::uint8_t lowest[3];
  std::uint8_t extent[3];  // highest - lowest
  std::uint8_t outside;
  std::uint8_t inside;
};

void MapColourBox(const PixelMap& map, const ColourBox& box);

}  // namespace lx::histogram
