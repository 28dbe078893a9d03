// SPDX-License-Identifier: Apache-2.0
// The kernels behind the box mean and the local deviation, for windows whose sums fit 32 bits.
#pragma once

#include <cstddef>
#include <cstdint>

#include "convolution/box.h"

namespace lx::convolution {

// How the sum over a window becomes its mean: (sum * reciprocal) >> 24. For windows whose sums fit
// 16 bits there may be a 16-bit factor that gives the same: (sum * factor) >> (16 + shift).
struct Reciprocal {
  std::uint32_t value = 0;
  std::uint16_t factor = 0;  // 0: there is none
  int shift = 0;
};

// The working memory of windows, in bytes, all of it zeros: planes of sums of columns, rows of sums
// of pairs of them, and rows of one value and of wider elements; for colours the source rows that the
// window spans, and a result, as rows of components.
struct WindowMemory {
  std::size_t plane;    // from one plane to the next
  std::size_t margin;   // before the first column's sum
  std::size_t pairRow;  // from one row of pairs to the next
  std::size_t slots;    // in the ring of source rows
  std::size_t stride;   // elements from component to component
  std::uint8_t* columns;
  std::uint8_t* pairs;
  std::uint8_t* neutral;
  std::uint8_t* wide;
  std::uint8_t* ring;
  std::uint8_t* output;
};

using MeanKernel = void (*)(const Window&, const WindowMemory&, const Reciprocal&);

// The kernels of a path; null where it has no vectors, and wide sums do as well.
struct MeanKernels {
  MeanKernel bytes16 = nullptr;    // sums of bytes in 16 bits,
  MeanKernel bytes32 = nullptr;    // in 32 bits of columns in 16,
  MeanKernel bytesTall = nullptr;  // and of columns in 32 bits
  MeanKernel words = nullptr;      // sums of words in 32 bits
};
MeanKernels MeanKernelsOf(Path path);

using DeviationKernel = void (*)(const Window&, const WindowMemory&);

// The same of deviations.
struct DeviationKernels {
  DeviationKernel bytesSmall = nullptr;  // up to 255 pixels and half-widths of 1 to 7
  DeviationKernel bytes = nullptr;       // sums and sums of squares in 32 bits
  DeviationKernel wordsSmall = nullptr;  // up to 2896 pixels: exact in doubles
  DeviationKernel words = nullptr;       // sums and parts of sums of squares in 32 bits
};
DeviationKernels DeviationKernelsOf(Path path);

}  // namespace lx::convolution
