// SPDX-License-Identifier: Apache-2.0
// Sums and differences of images, between pixel types.
#include <cstdio>

#include "lxpic/lxpic.h"

int main() {
  LxImage<LxBW8> dark(320, 240);
  LxImage<LxBW8> bright(320, 240);
  PicCopy(LxBW8(90), &dark);
  PicCopy(LxBW8(200), &bright);

  LxImage<LxBW8> result(320, 240);
  PicOper(ARITH_LOGIC_ADD, &dark, &bright, &result);
  const int sum = result.GetPixel(0, 0).value;
  PicOper(ARITH_LOGIC_ABSOLUTE_DIFFERENCE, &dark, &bright, &result);
  const int difference = result.GetPixel(0, 0).value;
  PicOper(ARITH_LOGIC_AVERAGE, &dark, &bright, &result);
  std::printf("%d %d %d\n", sum, difference, result.GetPixel(0, 0).value);

  LxImage<LxBW16> deep(320, 240);
  LxImage<LxBW16> total(320, 240);
  PicConvert(&dark, &total, 0);
  PicConvert(&bright, &deep, 0);
  PicOper(ARITH_LOGIC_ADD, &total, &deep, &total);
  if (LxGetError() != LX_OK) return 1;
  std::printf("%d\n", total.GetPixel(0, 0).value);
}
