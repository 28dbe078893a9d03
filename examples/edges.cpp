// SPDX-License-Identifier: Apache-2.0
// Measures a part along a line, and goes around it.
#include <cstdint>
#include <cstdio>

#include "lxpic/lxpic.h"

namespace {

// A bright plate on a dark ground, slightly blurred.
void DrawPlate(LxImage<LxBW8>& image) {
  PicCopy(LxBW8(40), &image);
  LxROI<LxBW8> plate(&image, 60, 30, 70, 50);
  PicCopy(LxBW8(200), &plate);
  PicConvolGaussian(&image, &image, 1);
}

}  // namespace

int main() {
  LxImage<LxBW8> image(200, 120);
  DrawPlate(image);

  LxVector edges;
  PicTransitionScan(TRANS_SCAN_EDGE_ANY, &image, 0, 55, 199, 55, 120, 0, &edges);
  if (LxGetError() != LX_OK || edges.GetNbGroup() != 2) return 1;
  const auto* const edge = static_cast<const std::int32_t*>(edges.GetDataPtr());
  std::printf("%d pixels wide, from column %d on\n", edge[3] - edge[0], edge[0]);

  LxPathVector outline(0);
  PicContour(&image, CONTOUR_CLOCKWISE, edge[0], edge[1], CONTOUR_ABOVE_THRESHOLD, 120, CONNEXITY_8,
             &outline);
  if (LxGetError() != LX_OK) return 1;
  std::printf("%u pixels around it, %s\n", outline.GetNumElements(),
              outline.m_bClosed != 0 ? "closed" : "open");
  return 0;
}
