// SPDX-License-Identifier: Apache-2.0
// Compares a part with a golden sample.
#include <cstdio>

#include "lxpic/lxpic.h"

// Marks where `part` differs from `golden` by more than `tolerance` grey levels. Returns how many
// pixels differ, or -1 after an error.
int FindDefects(LxROI<LxBW8>& golden, LxROI<LxBW8>& part, LxBW8 tolerance,
                LxImage<LxBW8>& defects) {
  defects.SetSize(&part);
  PicOper(ARITH_LOGIC_ABSOLUTE_DIFFERENCE, &golden, &part, &defects);
  if (LxGetError() == LX_OK) PicOper(ARITH_LOGIC_GREATER, &defects, tolerance, &defects);
  if (LxGetError() != LX_OK) return -1;
  int count = 0;
  for (unsigned y = 0; y < defects.GetHeight(); ++y) {
    const auto* const row = static_cast<LxBW8*>(defects.GetPixelPtr(0, static_cast<int>(y)));
    for (unsigned x = 0; x < defects.GetWidth(); ++x) count += row[x] != 0 ? 1 : 0;
  }
  return count;
}

int main() {
  LxImage<LxBW8> golden(640, 480);
  LxImage<LxBW8> part(640, 480);
  PicCopy(LxBW8(128), &golden);
  PicCopy(&golden, &part);
  LxROI<LxBW8> scratch(&part, 200, 100, 40, 2);
  PicCopy(LxBW8(90), &scratch);

  LxImage<LxBW8> defects;
  std::printf("%d pixels differ\n", FindDefects(golden, part, LxBW8(20), defects));
}
