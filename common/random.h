// SPDX-License-Identifier: Apache-2.0
// A small generator whose numbers are the same with every standard library, so that a seed gives
// the same picture and the same test everywhere.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace lx {

class Random {
 public:
  explicit Random(std::uint64_t seed) : state(seed) {}
  /// Seeded from a name.
  explicit Random(std::string_view name) : state(0) {
    for (const char c : name) state = state * 1099511628211U + static_cast<unsigned char>(c);
  }

  // SplitMix64 (Steele, Lea and Flood, 2014).
  std::uint64_t Next() {
    std::uint64_t z = state += 0x9E3779B97F4A7C15U;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31);
  }
  /// A number below `count`.
  std::size_t Below(std::size_t count) { return static_cast<std::size_t>(Next() % count); }
  /// A whole number from `first` to `last`, both included.
  std::int64_t Between(std::int64_t first, std::int64_t last) {
    return first + static_cast<std::int64_t>(Next() % static_cast<std::uint64_t>(last - first + 1));
  }
  /// `low` up to but not including `high`.
  double Real(double low, double high) {
    return low + (high - low) * static_cast<double>(Next() >> 11) * 0x1p-53;
  }
  /// Nearly normal, mean 0 and deviation 1: the sum of four 16-bit parts of one number.
  double Noise() {
    std::uint64_t bits = Next();
    double sum = 0;
    for (int part = 0; part < 4; ++part, bits >>= 16) sum += static_cast<double>(bits & 0xFFFF);
    return (sum / 65536 - 2) * kSumDeviation;
  }
  template <class Container>
  const auto& Pick(const Container& container) {
    return container[Below(container.size())];
  }

 private:
  // The square root of 3: four even parts of width 1 have a variance of 4 / 12.
  static constexpr double kSumDeviation = 1.7320508075688772;
  std::uint64_t state;
};

}  // namespace lx
