// SPDX-License-Identifier: Apache-2.0
// Moments of an image, from those of its blocks.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "measure/wide_integers.h"

namespace lx::measure {

inline constexpr int kHighestOrder = 4;

// Sums of w x^p y^q by p and q, p + q up to an order.
template <typename Number>
using MomentTable = std::array<std::array<Number, kHighestOrder + 1>, kHighestOrder + 1>;

class MomentSums {
 public:
  // For weights up to `heaviest` of so many pixels, whose coordinates are below `extent`.
  MomentSums(int highest, std::uint64_t pixels, std::uint64_t extent, unsigned heaviest);

  int Order() const { return order_; }
  // Adds the moments of a block about its first pixel, which is (x, y).
  void Add(const MomentTable<Uint128>& block, std::uint64_t x, std::uint64_t y);

  // m_pq: exact in an image whose moments fit 128 bits, else rounded to 64 bits on the way.
  bool IsExact() const { return exact_; }
  Uint128 Whole(int p, int q) const { return Of(whole_, p, q); }
  long double Real(int p, int q) const {
    return exact_ ? static_cast<long double>(Of(whole_, p, q)) : Of(real_, p, q);
  }
  float Rounded(int p, int q) const {
    return exact_ ? static_cast<float>(Of(whole_, p, q)) : static_cast<float>(Of(real_, p, q));
  }

 private:
  template <typename Number>
  static Number Of(const MomentTable<Number>& table, int p, int q) {
    return table[static_cast<std::size_t>(p)][static_cast<std::size_t>(q)];
  }

  int order_;
  bool exact_;
  MomentTable<Uint128> whole_{};
  MomentTable<long double> real_{};
};

}  // namespace lx::measure
