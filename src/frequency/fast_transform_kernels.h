// SPDX-License-Identifier: Apache-2.0
// The fast Fourier transform.
#pragma once

#include <cstdint>

#include "frequency/transform.h"

namespace lx::frequency {

// What transforms of up to `longest` elements share.
struct FastPlan {
  std::size_t longest;
  const float* twiddles;          // of the stage of span s, complex, from element s on
  const std::uint32_t* reversed;  // positions with their bits in reverse, of `longest` elements
  std::uint8_t* pixels;
  float* batch;
};

// Of sides that are powers of two. Sets LX_ERROR_ALLOCATION_FAILED, and writes nothing, when there
// is no scratch memory.
void TransformFast(const Transform& transform);

}  // namespace lx::frequency
