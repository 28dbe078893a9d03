// SPDX-License-Identifier: Apache-2.0
// Images, and regions inside them.
#include <cstdio>

#include "lxpic/lxpic.h"

int main() {
  LxImage<LxBW8> image(640, 480);
  PicCopy(LxBW8(0), &image);

  LxROI<LxBW8> window(&image, 100, 50, 200, 80);
  PicCopy(LxBW8(255), &window);
  std::printf("%d %d\n", image.GetPixel(100, 50).value, image.GetPixel(99, 50).value);

  LxROI<LxBW8> inner(&window, 10, 10, 20, 20);
  inner.SetPixel(LxBW8(7), 0, 0);
  std::printf("%d\n", image.GetPixel(110, 60).value);

  window.SetPlacement(0, 0, 200, 80);
  std::printf("%d\n", image.GetPixel(10, 10).value);

  inner.SetPixel(LxBW8(9), 0, 0);
  std::printf("%d\n", image.GetPixel(10, 10).value);
}
