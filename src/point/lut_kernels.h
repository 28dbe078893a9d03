// SPDX-License-Identifier: Apache-2.0
// Maps through tables.
#pragma once

#include <cstdint>

#include "foundation/pixel_map.h"

namespace lx::point {

using ByteTableData = std::uint8_t[256];

// destination = table[source], bytes.
void LookUpBytes(const PixelMap& map, const std::uint8_t* table);

// Colour pixels, each component through its own table; the map counts pixels.
void LookUpComponents(const PixelMap& map, const ByteTableData (&tables)[3]);

// destination = table[source], words; the table has 65536 entries.
void LookUpWords(const PixelMap& map, const std::uint16_t* table);

// destination = table[(source >> shift) & mask]; the table has mask + 1 entries.
void LookUpBits(const PixelMap& map, const std::uint8_t* table, unsigned shift, unsigned mask);

}  // namespace lx::point
