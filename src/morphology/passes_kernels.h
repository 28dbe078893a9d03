// SPDX-License-Identifier: Apache-2.0
// Minimum and maximum over the smallest structuring elements, from which larger ones are made.
#pragma once

#include "morphology/plane.h"

namespace lx::morphology {

enum class Pass {
  kSquare,  // 3 × 3
  kCross,   // its centre and the four pixels beside it
  kLine,    // 3 × 1
  kColumn,  // 1 × 3
};

// No pass keeps more than two planes.
inline std::size_t PassScratch(const Plane& plane, std::size_t passes) {
  return passes * PassLayout(plane, plane.elementBytes, 2).Bytes();
}

// Runs up to kMostPasses passes side by side; the image is not empty and `scratch` has PassScratch()
// bytes.
void RunPasses(Extreme extreme, Pass pass, const Plane& plane, std::size_t passes,
               std::uint8_t* scratch);

}  // namespace lx::morphology
