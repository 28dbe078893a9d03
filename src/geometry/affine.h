// SPDX-License-Identifier: Apache-2.0
// Affine transforms, and their inverses in fixed point.
#pragma once

#include <cstdint>

namespace lx::geometry {

__extension__ using Int128 = __int128;

// One pixel in the fixed point of coordinates, and half of one.
inline constexpr std::int64_t kOnePixel = 65536;
inline constexpr std::int64_t kHalfPixel = kOnePixel / 2;

// Where source point (x, y) goes: (a0 x + a1 y + a2, b0 x + b1 y + b2).
struct LinearTransform {
  float a0;
  float a1;
  float a2;
  float b0;
  float b1;
  float b2;
};

// One coordinate of the source point of destination pixel (X, Y).
struct FixedAxis {
  std::int64_t column = 0;
  std::int64_t row = 0;
  Int128 origin = 0;

  // Of the first pixel of a row.
  Int128 Start(std::int64_t y) const { return Int128{row} * y + origin; }
  Int128 At(std::int64_t x, std::int64_t y) const { return Int128{column} * x + Start(y); }
};

// Destination pixels to source points. Bilinear interpolation counts points from half a pixel
// further up and left, so that whole coordinates lie on the centres of pixels.
struct FixedAffine {
  FixedAxis x;
  FixedAxis y;
  bool isNowhere = false;  // coefficients without a fixed point: every point is outside

  // Rows stay rows, and columns columns.
  bool IsAligned() const { return x.row == 0 && y.column == 0; }
};

// The inverse of a transform, or an error: LX_ERROR_DIVISION_BY_ZERO when there is none,
// LX_ERROR_INCONSISTENT_ARGUMENTS when nothing interpolates with so many bits.
bool Invert(const LinearTransform& transform, int bits, FixedAffine& inverse);

// Destination columns from..to - 1.
struct Span {
  std::int64_t from = 0;
  std::int64_t to = 0;

  std::int64_t Length() const { return to - from; }
};

// The part of `in` where low <= start + step * X < high.
Span Cut(Span in, Int128 start, std::int64_t step, std::int64_t low, std::int64_t high);

}  // namespace lx::geometry
