// SPDX-License-Identifier: Apache-2.0
// The kernels behind box.h, for windows whose sums fit 32 bits.
#pragma once

#include <cstdint>

#include "convolution/box.h"

namespace lx::convolution {

// The working memory of a window: the source rows that the window spans, each as sums over its
// columns (`Lane`), and the sums over the window of the current row.
struct BoxMemory {
  std::size_t slots;       // rows in the ring
  std::size_t rowStride;   // elements of one component's row of sums
  std::size_t padded;      // elements of a source row with its margins
  std::uint8_t* elements;  // padded source rows, one for each component
  std::uint8_t* prefix;
  std::uint8_t* ring;
  std::uint8_t* squares;  // a second ring, for deviations
  std::uint32_t* sums;
  std::uint32_t* squareSums;
  std::uint8_t* output;  // rows of components on their way to colour pixels
};

// Sums over columns held in 16 or in 32 bits.
void BoxMeanKernel8x16(const Window& window, const BoxMemory& memory);
void BoxMeanKernel8x32(const Window& window, const BoxMemory& memory);
void BoxMeanKernel16(const Window& window, const BoxMemory& memory);
void BoxDeviationKernel8(const Window& window, const BoxMemory& memory);

}  // namespace lx::convolution
