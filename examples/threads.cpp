// SPDX-License-Identifier: Apache-2.0
// An image is cut into bands, and each thread works on its own.
#include <cstdio>
#include <thread>
#include <vector>

#include "lxpic/lxpic.h"

void Brighten(LxImage<LxBW8>& image, int threads) {
  const int width = static_cast<int>(image.GetWidth());
  const int height = static_cast<int>(image.GetHeight());
  std::vector<std::thread> workers;
  for (int i = 0; i < threads; ++i) {
    const int top = height * i / threads;
    const int bottom = height * (i + 1) / threads;
    workers.emplace_back([&image, width, top, bottom] {
      LxROI<LxBW8> band(&image, 0, top, width, bottom - top);
      PicGainOffset(&band, &band, 1.5F, 10.0F);
    });
  }
  for (std::thread& worker : workers) worker.join();
}

int main() {
  LxImage<LxBW8> image(1920, 1080);
  PicCopy(LxBW8(100), &image);
  Brighten(image, 4);
  std::printf("%d %d\n", image.GetPixel(0, 0).value, image.GetPixel(1919, 1079).value);
}
