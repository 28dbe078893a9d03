// SPDX-License-Identifier: Apache-2.0
// Line segments of an image, and untyped vectors of their pixels.
#pragma once

#include <array>
#include <cstdint>

#include "foundation/frame.h"
#include "lxpic/base/vector.h"
#include "vectors/line.h"

namespace lx::profile {

// Level, column and row of a pixel; or column, row and kind of a crossing.
using SegmentGroup = std::array<std::int32_t, 3>;

// The groups of a vector with vectors like these are pixels of an image.
inline constexpr int kPixelsUse = 5;

// Both points lie in the region. Coordinates outside are refused with the codes from `first` on, in
// the order x, y of one point and then of the other.
inline bool HasPoints(const LxGenericROI& region, vectors::Point from, vectors::Point to,
                      LX_ERRORS first) {
  const auto lies = [&](int coordinate, std::uint32_t size, int argument) {
    return Require(coordinate >= 0 && static_cast<std::uint32_t>(coordinate) < size,
                   static_cast<LX_ERRORS>(first + argument));
  };
  return lies(from.x, region.GetWidth(), 0) && lies(from.y, region.GetHeight(), 1) &&
         lies(to.x, region.GetWidth(), 2) && lies(to.y, region.GetHeight(), 3);
}

// The vector holds a segment, whose groups have this form.
inline bool IsSegment(const LxVector& vector) {
  return vector.IsSameVectType(LX_VECTOR_SEGMENT) != 0 &&
         vector.GetGroupLength() == std::tuple_size_v<SegmentGroup>;
}

// Makes the vector a segment with room for some groups; one that has it already keeps its storage.
// Returns the first group; null, with the error set, without memory.
inline SegmentGroup* MakeSegment(LxVector& vector, int groups) {
  const bool fits = IsSegment(vector) && vector.GetNbMaxGroup() >= groups;
  if (!fits) vector.SetType(LX_VECTOR_SEGMENT, groups, std::tuple_size_v<SegmentGroup>);
  return LxGetError() == LX_OK ? static_cast<SegmentGroup*>(vector.GetDataPtr()) : nullptr;
}

}  // namespace lx::profile
