// SPDX-License-Identifier: Apache-2.0
// Counts of pairs of grey levels.
#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/pixel_map.h"

namespace lx::measure {

inline constexpr std::size_t kLevels = 256;
inline constexpr std::size_t kPairs = kLevels * kLevels;

// Two tables take turns.
inline constexpr std::size_t kPairPlaces = 2 * (kPairs + 16);

// counts[256 * b + a] = the positions where the sources of the map hold the bytes a and b. Counts
// saturate. There are kPairPlaces of them, which are 0 at first; those beyond the pairs are scratch.
void CountPairs(const PixelMap& map, std::uint8_t* counts);
void CountPairs(const PixelMap& map, std::uint16_t* counts);

}  // namespace lx::measure
