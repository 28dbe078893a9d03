// SPDX-License-Identifier: Apache-2.0
// A small generator whose numbers are the same with every standard library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace lx::test {

class Random {
 public:
  explicit Random(std::uint64_t seed) : state(seed) {}
  /// Seeded from a name, so that every operation meets cases of its own.
  explicit Random(std::string_view name) : state(0) {
    for (const char c : name) state = state * 1099511628211U + static_cast<unsigned char>(c);
  }

  std::uint64_t Next() {
    state += 0x9E3779B97F4A7C15U;
    std::uint64_t z = state;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31);
  }
  /// A number below `count`.
  std::size_t Below(std::size_t count) { return Next() % count; }
  /// A number from `first` to `last`, both included.
  std::int64_t Between(std::int64_t first, std::int64_t last) {
    return first + static_cast<std::int64_t>(Next() % static_cast<std::uint64_t>(last - first + 1));
  }
  double Real(double first, double last) {
    return first + (last - first) * static_cast<double>(Next() >> 11) * 0x1p-53;
  }
  template <class Container>
  const auto& Pick(const Container& container) {
    return container[Below(container.size())];
  }

 private:
  std::uint64_t state;
};

}  // namespace lx::test
