// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "support/filled.h"

namespace lx::test {
namespace {

TEST(Thinning, RotationThatIsNone) {
  LxKernel pattern(KERNEL_THIN);
  for (const int rotation : {-1, 3}) {
    Filled<LxBW8> image(5, 4, 7);
    int count = 9;
    PicThin(&image, &image, &pattern, static_cast<KERNEL_ROTATION>(rotation), count);
    EXPECT_EQ(LxGetError(), LX_ERROR_ARGUMENT_4_OUT_OF_RANGE);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(image.GetPixel(2, 2), 7);
  }
}

// What the first pass writes anew counts as a change only if it is another value.
template <class T>
int PassesOnMatching(T level) {
  LxKernel pattern(KERNEL_SQUARE);
  pattern.SetOutsideValue(1);
  Filled<T> image(70, 3, level);
  int count = 5;
  PicThick(&image, &image, &pattern, KERNEL_ROTATION_NONE, count);
  return count;
}

TEST(Thinning, FirstPassComparesValues) {
  EXPECT_EQ(PassesOnMatching<LxBW8>(255), 1);
  EXPECT_EQ(PassesOnMatching<LxBW8>(254), 2);
  EXPECT_EQ(PassesOnMatching<LxBW16>(65535), 1);
  EXPECT_EQ(PassesOnMatching<LxBW16>(255), 2);
}

}  // namespace
}  // namespace lx::test
