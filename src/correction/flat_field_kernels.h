// SPDX-License-Identifier: Apache-2.0
// Flat-field correction of elements of 8 or 16 bits, which are grey pixels or components.
#pragma once

#include <array>
#include <cstdint>

#include "foundation/pixel_map.h"

namespace lx::correction {

// What the references are taken to, by component; all equal for grey pixels.
struct Levels {
  std::array<std::uint16_t, 3> light;  // that of an only reference
  std::array<std::uint16_t, 3> dark{};
};

// destination = source + level - reference, with the reference as source 1.
void OffsetBytes(const PixelMap& map, const Levels& levels);
void OffsetWords(const PixelMap& map, const Levels& levels);
// destination = source * level / reference, the largest value where that is 0.
void ScaleBytes(const PixelMap& map, const Levels& levels);
void ScaleWords(const PixelMap& map, const Levels& levels);
// The line through the levels of a light reference, source 1, and a dark one, source 2.
void StretchBytes(const PixelMap& map, const Levels& levels);
void StretchWords(const PixelMap& map, const Levels& levels);

// A gain with 12 fractional bits and an offset, for an element of a row.
struct ColumnLine {
  std::int64_t gain;
  std::int64_t offset;
};

// destination = ((source * gain) >> 12) + offset, clamped, with a line for each element of a row.
// LX_ERROR_ALLOCATION_FAILED without memory.
void CorrectBytes(const PixelMap& map, const ColumnLine* lines);
void CorrectWords(const PixelMap& map, const ColumnLine* lines);

}  // namespace lx::correction
