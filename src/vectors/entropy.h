// SPDX-License-Identifier: Apache-2.0
// The entropy of a distribution from its counts. `Real` is the precision that decides results:
// counts are rounded to it before a logarithm, and sums whenever they grow. Between these roundings
// the arithmetic has the widest format there is.
#pragma once

#include <cmath>
#include <cstdint>
#include <type_traits>

namespace lx {

template <typename Real, typename Wide>
Wide LogarithmOf(std::uint64_t count) {
  return std::log(static_cast<Wide>(static_cast<Real>(count)));
}

// The entropy, in nats, of `count` pixels whose sum of h ln h is `weighted`.
template <typename Real, typename Wide>
Wide EntropyOf(std::uint64_t count, Real weighted) {
  return LogarithmOf<Real, Wide>(count) - static_cast<Wide>(weighted) / static_cast<Wide>(count);
}

// formula(0.0L), which computes in the type of its argument, rounded to `Real`. The widest
// logarithm is slow, and single precision can be told from double unless the value lies next to the
// middle of two numbers. `magnitude` bounds the sum of the magnitudes of what the formula adds up.
template <typename Real, class Formula>
Real RoundOnce(const Formula& formula, [[maybe_unused]] double magnitude) {
  if constexpr (std::is_same_v<Real, float>) {
    constexpr double kPrecision = 0x1p-48;  // sixteen units in the last place of double precision
    const double value = formula(0.0);
    const auto low = static_cast<float>(value - magnitude * kPrecision);
    const auto high = static_cast<float>(value + magnitude * kPrecision);
    if (low == high) return low;
  }
  return static_cast<Real>(formula(0.0L));
}

// Above the logarithm of any count of 32 bits.
inline constexpr double kMostNatsOf32 = 23.0;

// What a bin adds to a sum of h ln h.
template <typename Real>
class EntropyTerm {
 public:
  explicit EntropyTerm(std::uint32_t count) : count_(count), term_(In<First>()) {}

  // sum + sign * term, rounded.
  Real AddTo(Real sum, int sign) const {
    return RoundOnce<Real>(
        [&](auto wide) {
          using Wide = decltype(wide);
          const Wide term = std::is_same_v<Wide, First> ? static_cast<Wide>(term_) : In<Wide>();
          return static_cast<Wide>(sum) + static_cast<Wide>(sign) * term;
        },
        static_cast<double>(sum) + kMostNatsOf32 * count_);
  }

 private:
  // What RoundOnce() asks for first.
  using First = std::conditional_t<std::is_same_v<Real, float>, double, long double>;

  template <typename Wide>
  Wide In() const {
    if (count_ == 0) return Wide{0};
    return static_cast<Wide>(count_) * LogarithmOf<Real, Wide>(count_);
  }

  std::uint32_t count_;
  First term_;
};

}  // namespace lx
