// SPDX-License-Identifier: Apache-2.0
// A destination may be one of the sources.
#include <cstdio>

#include "lxpic/lxpic.h"

int main() {
  LxImage<LxBW8> image(640, 480);
  PicCopy(LxBW8(30), &image);
  PicOper(ARITH_LOGIC_INVERT, &image, &image);
  std::printf("%d\n", image.GetPixel(0, 0).value);

  // The same pixels through another object: the same region.
  LxROI<LxBW8> all(&image, 0, 0, 640, 480);
  PicOper(ARITH_LOGIC_SUBTRACT, &image, &all, &all);
  std::printf("%d\n", image.GetPixel(0, 0).value);
}
