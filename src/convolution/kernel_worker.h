// SPDX-License-Identifier: Apache-2.0
// What the kernel engine's workers compute, and the workers. Images are not empty.
#pragma once

#include <cstdint>

#include "foundation/component_rows.h"

namespace lx::convolution {

// A square kernel in fixed point: destination = rectified((offset + sum of coefficients times
// pixels) >> fraction), the border replicated.
struct FixedKernel {
  std::size_t size = 0;  // 3, 5 or 7
  std::int32_t coefficients[49] = {};
  std::int64_t offset = 0;
  int fraction = 0;
  bool absolute = false;  // the magnitude; otherwise negative results become 0
};

// A kernel of any size in single precision: `start` plus the sum in row order, truncated, rectified,
// moved by the offset and clipped; pixels outside the image are `outside`. The pixel lies under
// column `left` and row `above`.
struct RealKernel {
  std::size_t sizeX = 0;
  std::size_t sizeY = 0;
  std::size_t left = 0;
  std::size_t above = 0;
  const float* coefficients = nullptr;
  float outside = 0;
  std::uint32_t offset = 0;
  int rectifier = 0;
  float start = 0;
};

// Each returns false when there is no scratch memory. FixedBytes() and FixedWords() work in place.
bool FixedBytes(const ComponentImage& image, const FixedKernel& kernel);
bool FixedWords(const ComponentImage& image, const FixedKernel& kernel);
bool RealBytes(const ComponentImage& image, const RealKernel& kernel);
bool RealWords(const ComponentImage& image, const RealKernel& kernel);

}  // namespace lx::convolution
