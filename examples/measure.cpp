// SPDX-License-Identifier: Apache-2.0
// Averages, deviations and the place of what is bright.
#include <cstdio>

#include "lxpic/lxpic.h"

int main() {
  LxImage<LxBW8> image(640, 480);
  PicCopy(LxBW8(60), &image);
  LxROI<LxBW8> part(&image, 100, 100, 64, 48);
  PicCopy(LxBW8(200), &part);

  float deviation = 0;
  float average = 0;
  float x = 0;
  float y = 0;
  PicPixelStdDev(&image, deviation, average);
  PicGravityCenter(&image, 128, x, y);
  if (LxGetError() != LX_OK) return 1;
  std::printf("%.1f +- %.1f, bright around (%.1f, %.1f)\n", average, deviation, x, y);
}
