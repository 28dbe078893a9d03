// SPDX-License-Identifier: Apache-2.0
// Hit-or-miss transforms on images of one bit a pixel.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "foundation/path.h"
#include "foundation/rows.h"
#include "foundation/scratch.h"

namespace lx::morphology {

// What a pattern asks of each cell, row by row: 1 set, 0 clear, -1 nothing.
using Cells = std::array<int, 9>;

struct HitOrMiss {
  Rows destination;
  Rows source;
  std::size_t width = 0;  // pixels
  std::size_t height = 0;
  std::size_t elementBytes = 1;
  std::size_t components = 1;
  Cells cells = {};
  bool outsideMatches = false;  // or is clear
  bool sets = false;            // matching pixels; or clears them
  int rotation = 0;             // 1 clockwise, 2 anticlockwise
  Path path = CurrentPath();
};

template <class T>
HitOrMiss HitOrMissOf(const LxROI<T>* destination, const LxROI<T>* source) {
  HitOrMiss made;
  made.destination = RowsOf(destination);
  made.source = RowsOf(source);
  made.width = source->GetWidth();
  made.height = source->GetHeight();
  made.elementBytes = sizeof(T) == 2 ? 2 : 1;
  made.components = sizeof(T) == 3 ? 3 : 1;
  return made;
}

// Where the bits lie, in 64-bit words. A row has clear words before and behind its pixels, a vector of
// them at least, and clear bits behind the last pixel.
struct BitLayout {
  static constexpr std::size_t kWordBits = 64;
  static constexpr std::size_t kMargin = kLargestVector / sizeof(std::uint64_t);
  // Three rows of the image, each moved by a pixel either way and not at all; which pixels there
  // are, which have no left and which no right neighbour; none.
  static constexpr std::size_t kWorkRows = 3 * 3 + 4;

  std::size_t pitch;
  std::size_t plane;  // of a component

  explicit BitLayout(const HitOrMiss& work)
      : pitch(WholeVectors((work.width + 7) / 8) / sizeof(std::uint64_t) + 2 * kMargin),
        plane(pitch * work.height) {}

  std::size_t Words(std::size_t components) const { return components * plane + kWorkRows * pitch; }
};

// Both work on `bits` of BitLayout::Words(), which are 0 at first; the image is not empty.

// Up to `limit` passes over a component of the source. The result stays in `bits`. Returns how many
// passes it took.
std::size_t TransformComponent(const HitOrMiss& work, std::size_t component, std::size_t limit,
                               std::uint64_t* bits);
// Makes pixels of the bits of all components.
void WriteComponents(const HitOrMiss& work, const std::uint64_t* bits);

}  // namespace lx::morphology
