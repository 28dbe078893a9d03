// SPDX-License-Identifier: Apache-2.0
// What a neighbourhood filter works on, and the passes it is made of.
#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/path.h"
#include "foundation/rows.h"
#include "foundation/scratch.h"

namespace lx {

// What stands for pixels outside the region.
enum class Border {
  kReplicate,  // the nearest pixel of the region
  kZero,
};

// A filter from a source to a destination, which may be the same pixels. Rows hold `elements`
// elements; neighbours in a row are `stride` elements apart: 3 for interleaved colours, whose
// components then never mix.
struct Neighbourhood {
  Rows destination;
  Rows source;
  std::size_t elements = 0;
  std::size_t stride = 1;
  std::size_t height = 0;
  Border border = Border::kReplicate;
  Path path = CurrentPath();
};

template <class T>
Neighbourhood NeighbourhoodOf(const LxROI<T>* destination, const LxROI<T>* source) {
  Neighbourhood made;
  made.destination = RowsOf(destination);
  made.source = RowsOf(source);
  made.stride = sizeof(T) == 3 ? 3 : 1;
  made.elements = destination->GetWidth() * made.stride;
  made.height = destination->GetHeight();
  return made;
}

// The most passes that run side by side.
inline constexpr std::size_t kMostPasses = 8;

// The scratch memory of one 3 × 3 pass: two rows of up to `planes` values per element, in lanes
// twice as wide, and two rows of elements.
struct PassLayout {
  std::size_t row;
  std::size_t planeRow;

  PassLayout(const Neighbourhood& map, std::size_t elementBytes, std::size_t planes)
      : row(WholeVectors(map.elements * elementBytes) + 2 * kLargestVector),
        planeRow(2 * planes * row) {}
};

inline std::size_t PassBytes(const Neighbourhood& map, std::size_t elementBytes,
                             std::size_t planes) {
  const PassLayout layout(map, elementBytes, planes);
  return 2 * (layout.planeRow + layout.row);
}

}  // namespace lx
