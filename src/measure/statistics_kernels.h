// SPDX-License-Identifier: Apache-2.0
// Sums, extremes and counts of pixels, all of them exact.
#pragma once

#include <array>
#include <cstdint>

#include "foundation/pixel_map.h"
#include "foundation/spans.h"

namespace lx::measure {

struct Sums {
  std::uint64_t sum;
  std::uint64_t squares;
};

std::uint64_t SumOfBytes(const Spans& spans);
std::uint64_t SumOfWords(const Spans& spans);
Sums SumsOfBytes(const Spans& spans);
Sums SumsOfWords(const Spans& spans);

// Sums over colour pixels, by byte; products are of a byte and the next one, and of the last and the
// first.
struct ColourSums {
  std::array<std::uint64_t, 3> sums;
  std::array<std::uint64_t, 3> squares;
  std::array<std::uint64_t, 3> products;
};

std::array<std::uint64_t, 3> SumsOfComponents(const Spans& spans);
ColourSums SumsOfColours(const Spans& spans);

// Of no pixels: the largest value and 0.
struct Extremes {
  unsigned minimum;
  unsigned maximum;
};

Extremes ExtremesOfBytes(const Spans& spans);
Extremes ExtremesOfWords(const Spans& spans);

struct Summary {
  Extremes extremes;
  std::uint64_t sum;
};

Summary SummaryOfBytes(const Spans& spans);
Summary SummaryOfWords(const Spans& spans);

// The pixels that are `low` or more, and those that are `high` or more, which is not below `low`.
struct Reaching {
  std::uint64_t low;
  std::uint64_t high;
};

Reaching CountBytes(const Spans& spans, unsigned low, unsigned high);
Reaching CountWords(const Spans& spans, unsigned low, unsigned high);

// The pixels in which the two sources of a map differ.
std::uint64_t DifferentBytes(const PixelMap& map);
std::uint64_t DifferentWords(const PixelMap& map);
std::uint64_t DifferentColours(const PixelMap& map);

}  // namespace lx::measure
