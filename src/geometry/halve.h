// SPDX-License-Identifier: Apache-2.0
// Halving of regions, as the operation and the pyramid share it.
#pragma once

#include "foundation/frame.h"
#include "geometry/halve_kernels.h"

namespace lx::geometry {

// Checks both regions, gives the destination its size, and halves. Codes are set as PicHalve() does.
template <class T>
void HalveRegion(LxROI<T>* source, LxROI<T>* destination, int dropOdd,
                 void (*halve)(const Halving&)) {
  if (!Attached({source}) || !Require(destination != nullptr, LX_ERROR_DESTINATION_IS_SOURCE)) {
    return;
  }
  const bool keeps = dropOdd == 0;
  const std::uint32_t width = source->GetWidth();
  const std::uint32_t height = source->GetHeight();
  Halving halving;
  halving.columns = width / 2;
  halving.rows = height / 2;
  halving.keepsColumn = keeps && width % 2 != 0;
  halving.keepsRow = keeps && height % 2 != 0;
  const auto columns = static_cast<std::uint32_t>(halving.columns + (halving.keepsColumn ? 1 : 0));
  const auto rows = static_cast<std::uint32_t>(halving.rows + (halving.keepsRow ? 1 : 0));
  if (!Require(!SamePixels(source, destination), LX_ERROR_DESTINATION_IS_SOURCE) ||
      !Resize(destination, columns, rows, source)) {
    return;
  }
  if (columns == 0 || rows == 0) return;
  halving.source = RowsOf(source);
  halving.destination = RowsOf(destination);
  halve(halving);
}

}  // namespace lx::geometry
