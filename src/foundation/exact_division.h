// SPDX-License-Identifier: Apache-2.0
// Averages of pixels: sums divided by a count, exactly, by a multiplication.
#pragma once

#include <algorithm>
#include <cstdint>

namespace lx {

// Divides sums of up to `count` pixels of type T. With a multiplier of m = (2^k + e) / count, where
// 0 < e <= count, sum * m / 2^k is beyond the quotient by sum * e / (count * 2^k), which does not
// reach the next multiple of 1 / count as long as sum * e < 2^k.
template <typename T>
class PixelAverage {
 public:
  PixelAverage() = default;
  explicit PixelAverage(std::uint64_t count)
      : count_(std::max<std::uint64_t>(count, 1)),
        multiplier_(count_ < kCounts ? (std::uint64_t{1} << kShift) / count_ + 1 : 0) {}

  T operator()(std::uint64_t sum) const {
    return static_cast<T>(multiplier_ != 0 ? sum * multiplier_ >> kShift : sum / count_);
  }

 private:
  static constexpr int kBits = 8 * sizeof(T);
  static constexpr int kShift = 64 - kBits;
  // The largest pixel times count^2 is then below 2^kShift.
  static constexpr std::uint64_t kCounts = std::uint64_t{1} << ((kShift - kBits) / 2);

  std::uint64_t count_ = 1;
  std::uint64_t multiplier_ = 0;
};

// The same in lanes of 16 bits, for sums of up to kMost bytes: (2 * sum * multiplier >> 16) >> shift.
// Here k is 15 + shift, with 2^shift the largest power of two up to the count: sum * e is below
// 255 * count^2, which is below 2^k up to this count.
struct ShortAverage {
  static constexpr std::uint64_t kMost = 64;

  std::uint16_t multiplier;
  int shift;

  static ShortAverage Of(std::uint64_t pixels) {
    const std::uint64_t count = std::max<std::uint64_t>(pixels, 1);
    int shift = 0;
    while (std::uint64_t{2} << shift <= count) ++shift;
    const std::uint64_t power = std::uint64_t{1} << (15 + shift);
    return {static_cast<std::uint16_t>((power + count - 1) / count), shift};
  }
};

}  // namespace lx
