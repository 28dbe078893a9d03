// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "support/filled.h"

namespace lx::test {
namespace {

TEST(Boxes, KnownResults) {
  Filled<LxBW8> image(9, 7, 50);
  image.SetPixel(200, 4, 3);
  LxImage<LxBW8> result(9, 7);
  PicDilateBox(&image, &result, 3, 1);
  for (int y = 0; y < 7; ++y) {
    for (int x = 0; x < 9; ++x) {
      const bool isInside = x >= 1 && x <= 7 && y >= 2 && y <= 4;
      EXPECT_EQ(result.GetPixel(x, y), isInside ? 200 : 50) << x << ' ' << y;
    }
  }
}

}  // namespace
}  // namespace lx::test
