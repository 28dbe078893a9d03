// SPDX-License-Identifier: Apache-2.0
// Squared differences of images, summed.
#pragma once

#include <cstdint>

#include "foundation/pixel_map.h"

namespace lx::measure {

// Sums over all pixels of the first source of a map.
struct Powers {
  std::uint64_t signal;      // of its squares, where they are asked for
  std::uint64_t difference;  // of its squared differences from the second source
};

Powers PowersOfBytes(const PixelMap& map, bool signal);
Powers PowersOfWords(const PixelMap& map, bool signal);
// Of bytes; the second source has words, which are shifted right by the first constant.
Powers PowersOfSums(const PixelMap& map, bool signal);

// The sum of the squared differences of the first source from the second and from the third.
std::uint64_t GradientOfBytes(const PixelMap& map);
std::uint64_t GradientOfWords(const PixelMap& map);

}  // namespace lx::measure
