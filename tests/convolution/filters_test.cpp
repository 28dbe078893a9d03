// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "support/filled.h"

namespace lx::test {
namespace {

// With all left neighbours missing the response of a level is four times itself.
TEST(Filters, OnlyTheirPlainTwoImagePathHasAZeroBorder) {
  const int wasFast = LxGetMMX();
  for (const int fast : {0, 1}) {
    LxSetMMX(fast);
    Filled<LxBW8> grey(5, 4, 100);
    Filled<LxBW8> result(5, 4, 7);
    PicConvolSobelX(&grey, &result);
    EXPECT_EQ(result.GetPixel(0, 1), fast == 1 ? 0 : 255);
    EXPECT_EQ(result.GetPixel(0, 0), fast == 1 ? 0 : 255);
    EXPECT_EQ(result.GetPixel(2, 0), 0);
    PicConvolPrewittX(&grey, &result);
    EXPECT_EQ(result.GetPixel(0, 1), 0);
    PicConvolSobelX(&grey, nullptr);
    EXPECT_EQ(grey.GetPixel(0, 1), 0);

    Filled<LxBW16> deep(5, 4, 100);
    Filled<LxBW16> deepResult(5, 4, 7);
    PicConvolSobelX(&deep, &deepResult);
    EXPECT_EQ(deepResult.GetPixel(0, 1), 400);
    EXPECT_EQ(deepResult.GetPixel(0, 0), 300);
    PicConvolSobelX(&deep, &deep);
    EXPECT_EQ(deep.GetPixel(0, 1), 0);

    Filled<LxC24> colour(5, 4, {100, 50, 25});
    Filled<LxC24> colourResult(5, 4, {7, 7, 7});
    PicConvolSobelX(&colour, &colourResult);
    EXPECT_EQ(colourResult.GetPixel(0, 0), (LxC24{0, 0, 0}));
  }
  LxSetMMX(wasFast);
}

TEST(Filters, KnownResults) {
  LxImage<LxBW8> image(20, 5);
  LxImage<LxBW8> result(20, 5);
  for (int x = 0; x < 20; ++x) {
    for (int y = 0; y < 5; ++y) image.SetPixel(x < 10 ? 0 : 100, x, y);
  }
  PicConvolSobelX(&image, &result);
  for (int x = 1; x < 19; ++x) EXPECT_EQ(result.GetPixel(x, 2), x == 9 || x == 10 ? 255 : 0) << x;

  Filled<LxBW8> row(3, 1, 0);
  row.SetPixel(255, 1, 0);
  PicConvolLaplacianX(&row, &row);
  EXPECT_EQ(row.GetPixel(1, 0), 255);

  Filled<LxBW8> bright(4, 4, 255);
  Filled<LxBW8> smooth(4, 4, 0);
  PicConvolUniform3x3(&bright, &smooth);
  EXPECT_EQ(smooth.GetPixel(0, 3), 251);
  PicConvolGaussian3x3(&bright, &smooth);
  EXPECT_EQ(smooth.GetPixel(0, 3), 255);
}

}  // namespace
}  // namespace lx::test
