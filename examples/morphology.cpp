// SPDX-License-Identifier: Apache-2.0
// Finds a dark dot under uneven light.
#include <cstdio>

#include "lxpic/lxpic.h"

int main() {
  LxImage<LxBW8> part(640, 480);
  for (int y = 0; y < 480; ++y) {
    for (int x = 0; x < 640; ++x) part.SetPixel(static_cast<unsigned char>(48 + x / 4), x, y);
  }
  for (int y = 238; y < 243; ++y) {
    for (int x = 318; x < 323; ++x) part.SetPixel(78, x, y);
  }

  LxImage<LxBW8> spots(640, 480);
  PicBlackTopHatDisk(&part, &spots, 7);
  std::printf("%d %d %d\n", part.GetPixel(320, 240).value, spots.GetPixel(320, 240).value,
              spots.GetPixel(100, 240).value);
}
