// SPDX-License-Identifier: Apache-2.0
// The fast path changes the time that an operation takes, never its result.
#include <cstdio>
#include <cstring>

#include "lxpic/lxpic.h"

int main() {
  LxImage<LxBW8> ramp(256, 1);
  for (int x = 0; x < 256; ++x) ramp.SetPixel(LxBW8(static_cast<unsigned char>(x)), x, 0);
  LxImage<LxBW8> fast(256, 1);
  LxImage<LxBW8> plain(256, 1);

  PicGainOffset(&ramp, &fast, 1.4F, -20.0F);
  LxSetMMX(0);
  PicGainOffset(&ramp, &plain, 1.4F, -20.0F);
  LxSetMMX(1);

  const bool same = std::memcmp(fast.GetPixelPtr(0, 0), plain.GetPixelPtr(0, 0), 256) == 0;
  std::printf("%s\n", same ? "the same pixels" : "different pixels");
}
