// SPDX-License-Identifier: Apache-2.0
// Mirrors in place.
#pragma once

#include "foundation/path.h"
#include "foundation/rows.h"

namespace lx::geometry {

// The rows of an image that is changed where it lies.
struct RowsInPlace {
  Rows rows;
  std::size_t width;
  std::size_t height;
  std::size_t pixelBytes;  // 1, 2 or 3
  Path path = CurrentPath();
};

void SwapTopAndBottom(const RowsInPlace& image);
void SwapLeftAndRight(const RowsInPlace& image);

}  // namespace lx::geometry
