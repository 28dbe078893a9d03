// SPDX-License-Identifier: Apache-2.0
// Binomial smoothing of 8-bit images over 5 × 5 and 7 × 7 windows. Images are not empty; source and
// destination are apart.
#pragma once

#include <cstdint>

#include "foundation/neighbourhood.h"

namespace lx::convolution {

enum class FixedSmoothing {
  kGaussian5,
  kGaussian7
};

// Bytes of scratch memory: a padded source row, and 16-bit sums of seven rows.
std::size_t FixedSmoothingScratch(const Neighbourhood& map);

void SmoothBytes(FixedSmoothing smoothing, const Neighbourhood& map, std::uint8_t* scratch);

}  // namespace lx::convolution
