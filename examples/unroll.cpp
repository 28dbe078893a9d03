// SPDX-License-Identifier: Apache-2.0
// Unrolls a ring into a strip, and halves the strip.
#include <cstdio>

#include "lxpic/lxpic.h"

int main() {
  LxImage<LxBW8> cap(200, 200);
  for (int y = 0; y < 200; ++y) {
    for (int x = 0; x < 200; ++x) cap.SetPixel(y < 100 ? 50 : 90, x, y);
  }

  LxImage<LxBW16> columns;
  LxImage<LxBW16> rows;
  PicSetCircleWarp(100, 100, 20, 50, 80, 360, 0, 360, &columns, &rows);
  LxImage<LxBW8> strip(360, 20);
  PicWarp(&cap, &strip, &columns, &rows, 0, 0);
  LxPyramid pyramid;
  pyramid.SetNumLevels(3, LX_IMAGE_BW8);
  pyramid.Build(&strip);
  if (LxGetError() != LX_OK) return 1;
  const LxGenericROI* const top = pyramid.GetImage(2);
  std::printf("%d, %d, %u x %u\n", strip.GetPixel(89, 0).value, strip.GetPixel(270, 0).value,
              top->GetWidth(), top->GetHeight());
}
