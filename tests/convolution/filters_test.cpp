// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "support/filled.h"

namespace lx::test {
namespace {

TEST(Filters, KnownResults) {
  LxImage<LxBW8> image(20, 5);
  LxImage<LxBW8> result(20, 5);
  for (int x = 0; x < 20; ++x) {
    for (int y = 0; y < 5; ++y) image.SetPixel(x < 10 ? 0 : 100, x, y);
  }
  PicConvolSobelX(&image, &result);
  for (int x = 1; x < 19; ++x) EXPECT_EQ(result.GetPixel(x, 2), x == 9 || x == 10 ? 255 : 0) << x;

  Filled<LxBW8> bright(4, 4, 255);
  Filled<LxBW8> smooth(4, 4, 0);
  PicConvolUniform3x3(&bright, &smooth);
  EXPECT_EQ(smooth.GetPixel(0, 3), 251);
  PicConvolGaussian3x3(&bright, &smooth);
  EXPECT_EQ(smooth.GetPixel(0, 3), 255);
}

}  // namespace
}  // namespace lx::test
