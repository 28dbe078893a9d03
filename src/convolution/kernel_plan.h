// SPDX-License-Identifier: Apache-2.0
// A kernel in fixed point as vectors multiply it: pairs of neighbouring coefficients.
#pragma once

#include <cstddef>
#include <cstdint>

#include "convolution/kernel_worker.h"

namespace lx::convolution {

// Two neighbouring pixels, the first in an even column, and what they are multiplied by: the lower
// half of each pair of coefficients is for the first. Pixels in even columns begin with a pair,
// those in odd ones in the middle of one.
struct TapPair {
  std::size_t row;
  std::size_t column;
  std::uint32_t even[2];  // by digit of 16 bits, the lower one first
  std::uint32_t odd[2];
};

// destination = rectified((offset + sum of products) >> fraction), in 32 bits.
struct KernelPlan {
  std::size_t size = 0;
  std::size_t count = 0;  // of pairs that are not all zeros
  TapPair taps[28];
  bool isLong = false;    // some coefficient needs two digits
  bool isFolded = false;  // rows that share their coefficients are added up before
  std::uint32_t offset = 0;
  int fraction = 0;
  bool absolute = false;
};

// For bytes, and for words less 2^15.
KernelPlan PlanForBytes(const FixedKernel& kernel);
KernelPlan PlanForWords(const FixedKernel& kernel);

}  // namespace lx::convolution
