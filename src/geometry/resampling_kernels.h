// SPDX-License-Identifier: Apache-2.0
// A source seen through an affine transform.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "foundation/path.h"
#include "foundation/rows.h"
#include "geometry/affine.h"

namespace lx::geometry {

struct Resampling {
  Rows destination;
  std::int64_t width = 0;  // of the destination
  std::int64_t height = 0;
  Rows source;  // apart from the destination
  std::int64_t sourceWidth = 0;
  std::int64_t sourceHeight = 0;
  std::size_t pixelBytes = 1;
  FixedAffine inverse;
  int bits = 0;
  Path path = CurrentPath();

  // How far beyond the first and the last whole coordinate points still lie in the source.
  std::int64_t Margin() const { return bits == 0 ? 0 : kHalfPixel; }

  // The columns of row `y` whose points lie in the source.
  Span Inside(std::int64_t y) const {
    const std::int64_t margin = Margin();
    const Span across = Cut({0, width}, inverse.x.Start(y), inverse.x.column, margin,
                            sourceWidth * kOnePixel + margin);
    return Cut(across, inverse.y.Start(y), inverse.y.column, margin,
               sourceHeight * kOnePixel + margin);
  }
};

// Each kernel writes every pixel of the destination: 0 where the point lies outside the source.

// Any transform, pixel by pixel, for nearest pixels and for interpolation.
void ResampleNearest(const Resampling& job);
void ResampleColours(const Resampling& job);
// Takes memory for its tiles, and may fail to get it.
void ResampleGrey(const Resampling& job);
// Transforms that keep rows and columns. Takes memory for rows.
void ResampleAligned(const Resampling& job);

}  // namespace lx::geometry
