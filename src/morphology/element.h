// SPDX-License-Identifier: Apache-2.0
// Structuring elements, and how their extremes are found: those of a box, and of the boxes along one
// diagonal and then along the other, which together make an octagon.
#pragma once

#include <cstddef>

#include "foundation/box_extremes.h"
#include "foundation/window_plan.h"
#include "morphology/plane.h"

namespace lx::morphology {

// A box of half-widths, or a disk of a radius: the octagon |dx|, |dy| <= radius and
// |dx| + |dy| <= 2 * floor(radius / 2) + ceil(radius / 2).
struct Element {
  bool isDisk;
  std::size_t halfX;  // or the radius
  std::size_t halfY;

  std::size_t Radius() const { return halfX; }
  bool IsPixel() const { return halfX == 0 && halfY == 0; }
};

// The element without what is outside of the image wherever it lies.
Element CutTo(const Element& element, const Plane& plane);

// One step along a diagonal: rows that are joined, each `direction` columns further on.
struct DiagonalStep {
  WindowPlan::Step join;
  std::ptrdiff_t direction;
  std::ptrdiff_t begin;  // first column of the result
  std::size_t columns;   // of the result
  std::size_t slots;     // of the rows that are joined
  std::size_t row;       // bytes from one of them to the next

  // Rows below that a row needs.
  std::size_t Ahead() const { return join.at[join.taps - 1]; }
};

// The box and the steps of an element that is cut to the plane.
struct ElementPlan {
  static constexpr std::size_t kMostDiagonals = 2 * WindowPlan::kMostSteps;

  ElementPlan(const Element& element, const Plane& plane);

  // Scratch memory of a sweep.
  std::size_t Bytes() const;

  ExtremeBox box;
  DiagonalStep diagonals[kMostDiagonals];
  std::size_t diagonalCount = 0;

 private:
  void AddDiagonal(std::ptrdiff_t direction, std::size_t length, const Plane& plane);
};

}  // namespace lx::morphology
