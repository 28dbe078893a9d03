// SPDX-License-Identifier: Apache-2.0
// The recursive average: a step of a filter for each pixel.
#pragma once

#include "foundation/pixel_map.h"

namespace lx::sequence {

inline constexpr int kLargestStep = 4095;
inline constexpr unsigned kSteps = 2 * kLargestStep + 1;

// Source 0 are bytes and source 1 the state, which is updated; `steps` are kSteps signed words at
// any address.
void AverageRecursively(const PixelMap& map, const std::uint8_t* steps);

}  // namespace lx::sequence
