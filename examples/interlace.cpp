// SPDX-License-Identifier: Apache-2.0
// Puts the fields of an interlaced frame one over the other.
#include <cstdio>

#include "lxpic/lxpic.h"

int main() {
  LxImage<LxBW8> frame(64, 8);
  for (int y = 0; y < 8; ++y) {
    const int left = y % 2 == 0 ? 20 : 15;
    for (int x = 0; x < 64; ++x) frame.SetPixel(x >= left && x < left + 9 ? 200 : 30, x, y);
  }
  int shift = 0;
  PicMatchFrames(&frame, 0, -8, 8, shift);
  PicRealignFrame(&frame, &frame, shift, 0);
  LxMovingAverage average(4, 64, 8, 0);
  average.Average(&frame, &frame);
  if (LxGetError() != LX_OK) return 1;
  std::printf("%d, %d\n", shift, frame.GetPixel(20, 1).value);
}
