// SPDX-License-Identifier: Apache-2.0
// What morphological operations work on, whatever the pixels are.
#pragma once

#include "foundation/neighbourhood.h"

namespace lx::morphology {

enum class Extreme {
  kMinimum,
  kMaximum
};

// Elements of 1 or 2 bytes, from a source to a destination that may be the same.
struct Plane : Neighbourhood {
  std::size_t elementBytes = 1;

  std::size_t Width() const { return elements / stride; }
};

template <class T>
Plane PlaneOf(const LxROI<T>* destination, const LxROI<T>* source) {
  return {NeighbourhoodOf(destination, source), sizeof(T) == 2 ? std::size_t{2} : std::size_t{1}};
}

}  // namespace lx::morphology
