// SPDX-License-Identifier: Apache-2.0
// The median of 3 × 3 pixels.
#pragma once

#include "foundation/neighbourhood.h"

namespace lx::morphology {

// Bytes of scratch memory for elements of 1 or 2 bytes.
inline std::size_t MedianScratch(const Neighbourhood& map, std::size_t elementBytes) {
  return PassLayout(map, elementBytes, 3).Bytes();
}

// Images are not empty, and `scratch` has MedianScratch() bytes. Colours are bytes too.
void MedianBytes(const Neighbourhood& map, std::uint8_t* scratch);
void MedianWords(const Neighbourhood& map, std::uint8_t* scratch);

}  // namespace lx::morphology
