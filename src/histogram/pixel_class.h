// SPDX-License-Identifier: Apache-2.0
// The classes that a threshold makes of the pixels of a histogram.
#pragma once

#include <cstdint>

namespace lx::histogram {

// The bins first..last of a histogram, at least one.
struct Range {
  const std::uint32_t* counts;  // of bin 0
  unsigned first;
  unsigned last;
};

// Pixels of some bins: how many, and the sum of their bins.
struct PixelClass {
  std::uint64_t count = 0;
  std::uint64_t sum = 0;

  void Add(unsigned bin, std::uint32_t pixels) {
    count += pixels;
    sum += std::uint64_t{bin} * pixels;
  }
  void Remove(unsigned bin, std::uint32_t pixels) {
    count -= pixels;
    sum -= std::uint64_t{bin} * pixels;
  }
  float MeanOr(unsigned none) const {
    if (count == 0) return static_cast<float>(none);
    return static_cast<float>(static_cast<long double>(sum) / static_cast<long double>(count));
  }
};

// The pixels of the bins first..end - 1.
inline PixelClass ClassOf(const std::uint32_t* counts, unsigned first, unsigned end) {
  PixelClass pixels;
  for (unsigned bin = first; bin < end; ++bin) pixels.Add(bin, counts[bin]);
  return pixels;
}

}  // namespace lx::histogram
