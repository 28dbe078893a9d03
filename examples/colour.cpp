// SPDX-License-Identifier: Apache-2.0
// Colours: the order of components, grey from colour, and single components.
#include <cstdio>

#include "lxpic/lxpic.h"

int main() {
  LxC24 orange{0, 128, 255};  // blue, green, red
  LxImage<LxC24> image(4, 4);
  PicCopy(orange, &image);

  LxImage<LxBW8> grey(4, 4);
  PicConvert(&image, &grey);
  std::printf("grey %d\n", grey.GetPixel(0, 0).value);

  LxImage<LxBW8> red(4, 4);
  TintGetComponent(&image, &red, 2, nullptr);
  PicOper(ARITH_LOGIC_INVERT, &red, &red);
  TintSetComponent(&red, &image, 2);
  std::printf("red %d\n", image.GetPixel(0, 0).c2);

  // LxColor counts from the other end: its first value belongs to red.
  PicGainOffset(&image, &image, LxColor{1.0F, 0.5F, 1.0F}, LxColor{20.0F, 0.0F, 0.0F});
  const LxC24 pixel = image.GetPixel(0, 0);
  std::printf("blue %d green %d red %d\n", pixel.c0, pixel.c1, pixel.c2);
}
