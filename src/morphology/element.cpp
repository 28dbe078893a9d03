// SPDX-License-Identifier: Apache-2.0
#include "morphology/element.h"

#include <algorithm>

namespace lx::morphology {

Element CutTo(const Element& element, const Plane& plane) {
  const std::size_t width = plane.Width();
  const std::size_t height = plane.height;
  const Element whole = {false, width - 1, height - 1};
  if (!element.isDisk) {
    return {false, std::min(element.halfX, whole.halfX), std::min(element.halfY, whole.halfY)};
  }
  const std::size_t radius = element.Radius();
  const bool holdsAll = radius >= std::max(width, height) && radius / 2 + radius >= width + height;
  return holdsAll ? whole : element;
}

ElementPlan::ElementPlan(const Element& element, const Plane& plane)
    : box{plane.elements, plane.elementBytes, plane.stride,
          plane.height,   element.halfX,      element.halfY} {
  if (!element.isDisk) return;
  const std::size_t radius = element.Radius();
  box.halfX = box.halfY = radius / 2;
  box.beyond = radius - radius / 2;
  AddDiagonal(1, box.beyond + 1, plane);
  AddDiagonal(-1, box.beyond + 1, plane);
}

void ElementPlan::AddDiagonal(std::ptrdiff_t direction, std::size_t length, const Plane& plane) {
  const WindowPlan plan(length);
  const std::size_t width = plane.Width();
  for (std::size_t p = 0; p < plan.count; ++p) {
    const WindowPlan::Step& join = plan.steps[p];
    // A result row is as wide as the rows that will be made from it read of it.
    const std::size_t ahead = length - join.length;
    const std::size_t behind = direction > 0 ? box.beyond : ahead;
    const std::size_t had =
        diagonalCount == 0 ? width + 2 * box.beyond : diagonals[diagonalCount - 1].columns;
    diagonals[diagonalCount++] = {join,
                                  direction,
                                  -static_cast<std::ptrdiff_t>(behind),
                                  width + behind + (direction > 0 ? ahead : 0),
                                  join.at[join.taps - 1] + BoxLayout::kRows,
                                  WholeVectors(had * plane.stride * plane.elementBytes)};
  }
}

std::size_t ElementPlan::Bytes() const {
  std::size_t bytes = BoxLayout(box).Bytes();
  for (std::size_t i = 0; i < diagonalCount; ++i) bytes += diagonals[i].slots * diagonals[i].row;
  return bytes;
}

}  // namespace lx::morphology
