// SPDX-License-Identifier: Apache-2.0
// Pixels around a picture, for references of neighbourhoods.
#pragma once

#include <algorithm>

#include "support/trial/picture.h"

namespace lx::test {

/// Component `k` of the pixel nearest to (x, y).
inline Value Nearest(const Picture& picture, int x, int y, int k) {
  return picture.At(std::clamp(x, 0, picture.width - 1), std::clamp(y, 0, picture.height - 1), k);
}

/// Calls make(x, y, k) for every component of the picture, and keeps what it gives.
template <class Make>
void ForEachComponent(Picture& picture, const Make& make) {
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      for (int k = 0; k < picture.components; ++k) picture.At(x, y, k) = make(x, y, k);
    }
  }
}

}  // namespace lx::test
