// SPDX-License-Identifier: Apache-2.0
// What a Fourier transform works on.
#pragma once

#include <cstddef>

#include "foundation/path.h"
#include "foundation/rows.h"

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

}  // namespace lx::frequency
