// SPDX-License-Identifier: Apache-2.0
// A filter of one's own.
#include <cstdio>
#include <initializer_list>

#include "lxpic/lxpic.h"

int main() {
  LxImage<LxBW8> image(640, 480);
  PicCopy(LxBW8(100), &image);
  LxROI<LxBW8> right(&image, 320, 0, 320, 480);
  PicCopy(LxBW8(140), &right);

  LxKernel sharpen(3, 3, 1.0F, 0, RECTIFIER_POSITIVE, 0);
  sharpen.SetKernelData(0, -1, 0,   //
                        -1, 5, -1,  //
                        0, -1, 0);
  LxImage<LxBW8> sharper(640, 480);
  PicConvolKernel(&image, &sharper, &sharpen);
  for (const int x : {318, 319, 320, 321}) std::printf("%d ", sharper.GetPixel(x, 0).value);
  std::printf("\n");
}
