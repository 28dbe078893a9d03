// SPDX-License-Identifier: Apache-2.0
// Integers of 128 bits, and what is made of them at the end of a measure.
#pragma once

#include <cstdint>

namespace lx::measure {

__extension__ using Int128 = __int128;
__extension__ using Uint128 = unsigned __int128;

// sum / count, rounded to a float.
template <typename Number>
float Quotient(Number sum, Number count) {
  return static_cast<float>(static_cast<long double>(sum) / static_cast<long double>(count));
}

// The covariance of two quantities of `count` items: of their sums and the sum of their products.
// The numerator is exact where it may cancel.
inline float Covariance(Uint128 count, Uint128 sumA, Uint128 sumB, Uint128 products) {
  const auto numerator = static_cast<Int128>(count * products - sumA * sumB);
  return static_cast<float>(static_cast<double>(numerator) / static_cast<double>(count * count));
}

}  // namespace lx::measure
