// SPDX-License-Identifier: Apache-2.0
#include "measure/moment_sums.h"

#include <algorithm>
#include <bit>

namespace lx::measure {

namespace {

constexpr std::array<std::array<int, kHighestOrder + 1>, kHighestOrder + 1> kBinomials = {
    {{1}, {1, 1}, {1, 2, 1}, {1, 3, 3, 1}, {1, 4, 6, 4, 1}}};

// Replaces the sums of w u^p, p = 0..order, by those of w (u + offset)^p.
template <typename Number, class At>
void Move(int order, Number offset, const At& at) {
  for (int p = order; p > 0; --p) {
    Number power = 1;
    for (int k = p - 1; k >= 0; --k) {
      power *= offset;
      at(p) += static_cast<Number>(
                   kBinomials[static_cast<std::size_t>(p)][static_cast<std::size_t>(k)]) *
               power * at(k);
    }
  }
}

template <typename Number>
void AddMoved(int order, const MomentTable<Uint128>& block, std::uint64_t x, std::uint64_t y,
              MomentTable<Number>& sums) {
  MomentTable<Number> moved;
  const auto at = [&moved](int p, int q) -> Number& {
    return moved[static_cast<std::size_t>(p)][static_cast<std::size_t>(q)];
  };
  for (std::size_t p = 0; p <= kHighestOrder; ++p) {
    std::copy(block[p].begin(), block[p].end(), moved[p].begin());
  }
  for (int q = 0; q <= order; ++q) {
    Move<Number>(order - q, static_cast<Number>(x), [&](int p) -> Number& { return at(p, q); });
  }
  for (int p = 0; p <= order; ++p) {
    Move<Number>(order - p, static_cast<Number>(y), [&](int q) -> Number& { return at(p, q); });
    for (int q = 0; q <= order - p; ++q) {
      sums[static_cast<std::size_t>(p)][static_cast<std::size_t>(q)] += at(p, q);
    }
  }
}

int WidthOf(std::uint64_t value) { return static_cast<int>(std::bit_width(value)); }

}  // namespace

MomentSums::MomentSums(int highest, std::uint64_t pixels, std::uint64_t extent, unsigned heaviest)
    : order_(highest),
      exact_(WidthOf(pixels) + highest * WidthOf(extent) + WidthOf(heaviest) <= 128) {}

void MomentSums::Add(const MomentTable<Uint128>& block, std::uint64_t x, std::uint64_t y) {
  if (exact_) {
    AddMoved(order_, block, x, y, whole_);
  } else {
    AddMoved(order_, block, x, y, real_);
  }
}

}  // namespace lx::measure
