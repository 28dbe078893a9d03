// SPDX-License-Identifier: Apache-2.0
// Brings a part that lies askew onto the geometry of its reference.
#include <cstdio>

#include "lxpic/lxpic.h"

int main() {
  // Two fiducials, one beside the other on the drawing; the part lies on its side.
  LxImage<LxBW8> part(640, 480);
  PicCopy(LxBW8(40), &part);
  for (int y = -8; y < 8; ++y) {
    for (int x = -8; x < 8; ++x) {
      part.SetPixel(200, 320 + x, 400 + y);
      part.SetPixel(240, 320 + x, 100 + y);
    }
  }

  LxImage<LxBW8> upright(640, 480);
  PicRegister(&part, &upright, 320, 400, 320, 100, 170, 240, 470, 240, 8, 0);
  std::printf("%d %d %d %d\n", upright.GetPixel(170, 240).value, upright.GetPixel(470, 240).value,
              upright.GetPixel(320, 240).value, upright.GetPixel(5, 240).value);
}
