// SPDX-License-Identifier: Apache-2.0
// The sums that a regression is made of.
#pragma once

#include <cstdint>

#include "foundation/pixel_map.h"

namespace lx::measure {

// Over pairs of grey levels a and b.
struct PairSums {
  std::uint64_t count;
  std::uint64_t a;
  std::uint64_t b;
  std::uint64_t aa;
  std::uint64_t ab;
  std::uint64_t bb;
};

// Over the pixels of the first and of the second source, which are bytes; without those pairs of
// which one is 0 or 255, when these are left out.
PairSums SumPairs(const PixelMap& map, bool excludeSaturated);

}  // namespace lx::measure
