// SPDX-License-Identifier: Apache-2.0
// Takes uneven light out of a picture.
#include <cstdio>

#include "lxpic/lxpic.h"

int main() {
  // A lamp on the left: an even sheet of paper is bright there and dark on the right.
  LxImage<LxBW8> sheet(160, 40);
  for (int y = 0; y < 40; ++y) {
    for (int x = 0; x < 160; ++x) sheet.SetPixel(static_cast<unsigned char>(220 - x), x, y);
  }
  // A part that reflects half of the light everywhere.
  LxImage<LxBW8> part(160, 40);
  PicGainOffset(&sheet, &part, 0.5F, 0.0F);

  LxImage<LxBW8> even(160, 40);
  PicUniformize(&part, LxBW8(220), &sheet, &even, 1);
  if (LxGetError() != LX_OK) return 1;
  std::printf("%d and %d, evened out %d and %d\n", part.GetPixel(0, 20).value,
              part.GetPixel(159, 20).value, even.GetPixel(0, 20).value,
              even.GetPixel(159, 20).value);
}
