// SPDX-License-Identifier: Apache-2.0
// Minimum and maximum over the smallest structuring elements, from which larger ones are made.
#pragma once

#include "foundation/neighbourhood.h"

namespace lx::morphology {

enum class Extreme {
  kMinimum,
  kMaximum
};

enum class Pass {
  kSquare,  // 3 × 3
  kCross,   // its centre and the four pixels beside it
  kLine,    // 3 × 1
  kColumn,  // 1 × 3
};

// A neighbourhood and the bytes of its elements, 1 or 2.
struct PassMap : Neighbourhood {
  std::size_t elementBytes = 1;
};

template <class T>
PassMap PassMapOf(const LxROI<T>* destination, const LxROI<T>* source) {
  return {NeighbourhoodOf(destination, source), sizeof(T) == 2 ? std::size_t{2} : std::size_t{1}};
}

// No pass keeps more than two planes.
inline std::size_t PassScratch(const PassMap& map, std::size_t passes) {
  return passes * PassLayout(map, map.elementBytes, 2).Bytes();
}

// Runs up to kMostPasses passes side by side; the image is not empty and `scratch` has PassScratch()
// bytes.
void RunPasses(Extreme extreme, Pass pass, const PassMap& map, std::size_t passes,
               std::uint8_t* scratch);

}  // namespace lx::morphology
