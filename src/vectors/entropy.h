// SPDX-License-Identifier: Apache-2.0
// The entropy of a distribution from its counts. Between the roundings to `Real`, which decide
// results, the arithmetic has the widest format there is.
#pragma once

#include <cmath>
#include <cstdint>

namespace lx {

// The natural logarithm of a count that is rounded to `Real` first.
template <typename Real>
long double LogarithmOf(std::uint64_t count) {
  return std::log(static_cast<long double>(static_cast<Real>(count)));
}

// What a bin adds to the sum of h ln h.
template <typename Real>
long double EntropyTerm(std::uint64_t count) {
  return count == 0 ? 0.0L : static_cast<long double>(count) * LogarithmOf<Real>(count);
}

// The entropy, in nats, of `count` pixels whose sum of h ln h is `weighted`.
template <typename Real>
long double EntropyOf(std::uint64_t count, Real weighted) {
  return LogarithmOf<Real>(count) -
         static_cast<long double>(weighted) / static_cast<long double>(count);
}

}  // namespace lx
