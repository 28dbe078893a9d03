// SPDX-License-Identifier: Apache-2.0
// A lookup table in a vector, kept in a file.
#include <cmath>
#include <cstdio>

#include "lxpic/lxpic.h"

int main() {
  LxBW8Vector gamma(256, 0);
  for (unsigned i = 0; i < 256; ++i) {
    gamma[i] = static_cast<unsigned char>(std::lround(255.0 * std::pow(i / 255.0, 1.0 / 2.2)));
  }
  gamma.Save("gamma.lxv");

  LxBW8Vector table;
  table.Load("gamma.lxv");
  if (LxGetError() != LX_OK) return 1;

  LxImage<LxBW8> image(640, 480);
  PicCopy(LxBW8(50), &image);
  PicLut(&image, &image, &table);
  std::printf("%d\n", image.GetPixel(0, 0).value);
}
