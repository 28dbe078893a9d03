// SPDX-License-Identifier: Apache-2.0
// A threshold that the grey levels themselves suggest.
#include <cstdio>

#include "lxpic/lxpic.h"

int main() {
  LxImage<LxBW8> image(640, 480);
  PicCopy(LxBW8(60), &image);
  LxROI<LxBW8> part(&image, 100, 100, 64, 48);
  PicCopy(LxBW8(200), &part);
  LxROI<LxBW8> blur(&image, 90, 90, 84, 68);
  PicConvolGaussian(&blur, &blur, 4);

  LxBWHistogramVector histogram(256);
  PicHistogram(&image, &histogram);
  unsigned threshold = PIC_THRESHOLD_ISODATA;
  float below = 0;
  float above = 0;
  PicHistogramThreshold(&histogram, threshold, below, above, 0, 0, 255);
  if (LxGetError() != LX_OK) return 1;
  std::printf("%u, between %.1f and %.1f\n", threshold, below, above);

  PicOper(ARITH_LOGIC_GREATER_OR_EQUAL, &image, LxBW8(static_cast<unsigned char>(threshold)),
          &image);
  PicHistogram(&image, &histogram);
  std::printf("%u bright pixels\n", histogram[255]);
}
