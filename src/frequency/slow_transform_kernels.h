// SPDX-License-Identifier: Apache-2.0
// The Fourier transform by its sums.
#pragma once

#include <cstdint>

#include "frequency/transform.h"

namespace lx::frequency {

struct SlowPlan {
  const float* across;  // twiddles of the rows, complex
  const float* down;    // and of the columns
  std::uint8_t* pixels;
  float* samples;  // a batch
  float* sums;     // another one
};

// Of any sides. Sets LX_ERROR_ALLOCATION_FAILED, and writes nothing, when there is no scratch
// memory.
void TransformSlowly(const Transform& transform);

}  // namespace lx::frequency
