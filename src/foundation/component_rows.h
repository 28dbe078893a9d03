// SPDX-License-Identifier: Apache-2.0
// Images whose rows are taken apart into components on the way in and put together on the way out,
// so that colour images need no planes.
#pragma once

#include <cstddef>

#include "foundation/path.h"
#include "foundation/rows.h"
#include "foundation/scratch.h"

namespace lx {

struct ComponentImage {
  Rows destination;
  Rows source;
  std::size_t width = 0;  // pixels
  std::size_t height = 0;
  std::size_t components = 1;  // 3 for colours
  Path path = CurrentPath();
};

template <class T>
ComponentImage ComponentImageOf(const LxROI<T>* destination, const LxROI<T>* source) {
  ComponentImage made;
  made.destination = RowsOf(destination);
  made.source = RowsOf(source);
  made.width = source->GetWidth();
  made.height = source->GetHeight();
  made.components = sizeof(T) == 3 ? 3 : 1;
  return made;
}

// Elements from one component's row to the next, for rows that are read with `left` and `right`
// elements beyond their ends, and in whole vectors.
inline std::size_t ComponentStride(const ComponentImage& image, std::size_t left,
                                   std::size_t right) {
  return WholeVectors(left + image.width + right) + 2 * kLargestVector;
}

}  // namespace lx
