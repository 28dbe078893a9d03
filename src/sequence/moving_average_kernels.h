// SPDX-License-Identifier: Apache-2.0
// The moving average: sums that an image joins and another one leaves.
#pragma once

#include <cstdint>

#include "foundation/path.h"
#include "foundation/rows.h"

namespace lx::sequence {

// Divides sums of `count` bytes: ((sum + more) * multiplier >> 16) >> shift. Of the numbers beside
// 2^(16 + shift) / count the nearer one is the multiplier; below it, the sum is one more.
struct ByteAverage {
  static constexpr unsigned kMost = 257;

  std::uint16_t multiplier;
  std::uint16_t more;
  int shift;

  // For 2 to kMost bytes.
  static ByteAverage Of(unsigned count) {
    int shift = 0;
    while (2U << shift < count) ++shift;
    const std::uint32_t whole = std::uint32_t{1} << (16 + shift);
    const std::uint32_t rest = whole % count;
    const bool up = rest != 0 && 2 * (count - rest) <= count;
    return {static_cast<std::uint16_t>(whole / count + (up ? 1 : 0)),
            static_cast<std::uint16_t>(rest != 0 && !up ? 1 : 0), shift};
  }
};

struct Averaging {
  Rows source;
  Rows kept;  // takes the source, and may be the outgoing image; nowhere when that is not needed
  Rows outgoing;
  Rows sum;  // words
  Rows destination;
  std::size_t width;
  std::size_t height;
  Path path = CurrentPath();
};

// Makes the sum `others` times the source, and the destination the source.
void StartAverage(const Averaging& images, std::uint16_t others);

// The destination becomes the average of sum and source; then the source joins the sum and the
// outgoing image leaves it.
void ContinueAverage(const Averaging& images, const ByteAverage& average);

}  // namespace lx::sequence
