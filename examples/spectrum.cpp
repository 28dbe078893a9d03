// SPDX-License-Identifier: Apache-2.0
// Finds how fine a pattern is, and which way an edge faces.
#include <cstdio>

#include "lxpic/lxpic.h"

int main() {
  // Stripes of eight pixels' width, four bright and four dark ones.
  LxImage<LxBW8> stripes(64, 64);
  for (int y = 0; y < 64; ++y) {
    for (int x = 0; x < 64; ++x) stripes.SetPixel(x / 4 % 2 == 0 ? 160 : 40, x, y);
  }

  LxImage<LxComplex64> spectrum(64, 64);
  LxImage<LxBW8> modulus(64, 64);
  PicFastDFT(&stripes, &spectrum, 1.0F);
  PicComplexModulus(&spectrum, &modulus, 0.05F, 0, 0.0F);
  if (LxGetError() != LX_OK) return 1;
  for (int x = 33; x < 64; ++x) {
    if (modulus.GetPixel(x, 32) > 20) std::printf("%d periods across\n", x - 32);
  }

  LxImage<LxBW8> steepness;
  LxImage<LxBW8> gradient(64, 64);
  PicModulusImage(&steepness, 1.0F);
  PicGradientScalar(&stripes, &gradient, &steepness);
  if (LxGetError() != LX_OK) return 1;
  std::printf("%d at an edge, %d between them\n", gradient.GetPixel(4, 32).value,
              gradient.GetPixel(5, 32).value);
}
