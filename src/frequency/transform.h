// SPDX-License-Identifier: Apache-2.0
// What a Fourier transform works on.
#pragma once

#include <cstddef>

#include "foundation/path.h"
#include "foundation/rows.h"
#include "foundation/scratch.h"

namespace lx::frequency {

// `width` and `height` are at least 1. Source pixels are bytes, those of the destination two floats.
struct Transform {
  Rows source;
  Rows destination;
  std::size_t width;
  std::size_t height;
  float scale;  // of the pixels
  Path path = CurrentPath();
};

// Scratch memory of a batch of rows or columns that are transformed side by side, as many as the
// largest vector has lanes.
inline constexpr std::size_t kLargestBatch = kLargestVector / sizeof(float);
inline std::size_t BatchFloats(std::size_t longest) { return 2 * kLargestBatch * longest; }
// Of their pixels, 16 columns at a time.
inline std::size_t PixelBytes(std::size_t width) { return kLargestBatch * (width + 15); }

}  // namespace lx::frequency
