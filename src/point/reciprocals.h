// SPDX-License-Identifier: Apache-2.0
// Reciprocals that divide bytes exactly: floor(a / b) = (a * r(b)) >> 16 for a, b <= 255 and b >=
// 2, with r(b) = floor(65536 / b) + 1, because the excess a * (r(b) * b - 65536) stays below 65536.
// The table holds 0 for b = 0 and b = 1.
#pragma once

#include <cstdint>

namespace lx::point {

struct ReciprocalTable {
  std::uint8_t low[256];
  std::uint8_t high[256];
};

constexpr ReciprocalTable MakeReciprocals() {
  ReciprocalTable made{};
  for (unsigned b = 2; b < 256; ++b) {
    const unsigned reciprocal = 65536 / b + 1;
    made.low[b] = static_cast<std::uint8_t>(reciprocal & 0xFF);
    made.high[b] = static_cast<std::uint8_t>(reciprocal >> 8);
  }
  return made;
}

inline constexpr ReciprocalTable kReciprocals = MakeReciprocals();

}  // namespace lx::point
