// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "lxpic/lxpic.h"

namespace lx::test {

/// An image of one value.
template <class T>
class Filled : public LxImage<T> {
 public:
  Filled(int width, int height, T value) : LxImage<T>(width, height) {
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) *static_cast<T*>(this->GetPixelPtr(x, y)) = value;
    }
  }
};

}  // namespace lx::test
