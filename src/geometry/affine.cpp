// SPDX-License-Identifier: Apache-2.0
#include "geometry/affine.h"

#include <algorithm>
#include <cmath>

#include "foundation/frame.h"

namespace lx::geometry {

namespace {

constexpr auto kFixedLimit = 9223372036854775808.0F;

// A coefficient in fixed point; false when it has none.
bool ToFixed(float value, std::int64_t& fixed) {
  const float scaled = value * static_cast<float>(kOnePixel);
  if (!(std::abs(scaled) < kFixedLimit)) return false;
  fixed = static_cast<std::int64_t>(scaled);
  return true;
}

// The coordinate that a row of the inverse matrix gives, counted from the centres of destination
// pixels, and `further` in the source.
bool MakeAxis(float column, float row, float origin, std::int64_t further, FixedAxis& axis) {
  std::int64_t corner = 0;
  if (!ToFixed(column, axis.column) || !ToFixed(row, axis.row) || !ToFixed(origin, corner)) {
    return false;
  }
  axis.origin = corner + ((Int128{axis.column} + axis.row + further) >> 1);
  return true;
}

Int128 FloorQuotient(Int128 dividend, std::int64_t divisor) {
  const auto narrow = static_cast<std::int64_t>(dividend);
  const bool fits = narrow == dividend && narrow != INT64_MIN;
  const Int128 quotient = fits ? Int128{narrow / divisor} : dividend / divisor;
  return quotient - (quotient * divisor > dividend ? 1 : 0);
}

std::int64_t Bounded(Int128 value, Span in) {
  return static_cast<std::int64_t>(std::clamp<Int128>(value, in.from, in.to));
}

}  // namespace

bool Invert(const LinearTransform& t, int bits, FixedAffine& inverse) {
  const float determinant = t.a0 * t.b1 - t.a1 * t.b0;
  const bool isFinite = std::isfinite(determinant) && std::isfinite(t.a2) && std::isfinite(t.b2);
  if (!Require(isFinite && determinant != 0.0F, LX_ERROR_DIVISION_BY_ZERO)) return false;
  const bool isKnown = bits == 0 || bits == 4 || bits == 8;
  if (!Require(isKnown, LX_ERROR_INCONSISTENT_ARGUMENTS)) return false;
  const float k0 = t.b1 / determinant;
  const float k1 = -t.a1 / determinant;
  const float m0 = -t.b0 / determinant;
  const float m1 = t.a0 / determinant;
  const float k2 = -(k0 * t.a2 + k1 * t.b2);
  const float m2 = -(m0 * t.a2 + m1 * t.b2);
  const std::int64_t further = bits == 0 ? 0 : kOnePixel;
  inverse.isNowhere =
      !MakeAxis(k0, k1, k2, further, inverse.x) || !MakeAxis(m0, m1, m2, further, inverse.y);
  return true;
}

Span Cut(Span in, Int128 start, std::int64_t step, std::int64_t low, std::int64_t high) {
  if (step == 0) return start >= low && start < high ? in : Span{in.from, in.from};
  Int128 from = 0;
  Int128 to = 0;
  if (step > 0) {
    from = -FloorQuotient(start - low, step);
    to = -FloorQuotient(start - high, step);
  } else {
    from = FloorQuotient(start - high, -step) + 1;
    to = FloorQuotient(start - low, -step) + 1;
  }
  const Span rest = {Bounded(from, in), in.to};
  return {rest.from, Bounded(to, rest)};
}

}  // namespace lx::geometry
