// SPDX-License-Identifier: Apache-2.0
// Conversion of floating-point values to integers, defined for every value.
#pragma once

#include <algorithm>
#include <cstdint>

namespace lx {

// `value` truncated toward zero and clamped to low..high; NaN counts as 0.
inline std::int64_t TruncateTo(double value, std::int64_t low, std::int64_t high) {
  if (!(value == value)) return std::clamp<std::int64_t>(0, low, high);
  if (value <= static_cast<double>(low)) return low;
  if (value >= static_cast<double>(high)) return high;
  return static_cast<std::int64_t>(value);
}

// To the 32-bit integers.
inline std::int64_t TruncateTo32(double value) { return TruncateTo(value, INT32_MIN, INT32_MAX); }

}  // namespace lx
