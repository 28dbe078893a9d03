// SPDX-License-Identifier: Apache-2.0
// The objects of a picture, with their outlines and measures.
#pragma once

#include <vector>

#include "tools/lxpic/value/image_value.h"

namespace lx::tool {

struct Outlined {
  std::vector<LxPath> outline;  ///< clockwise, from the first pixel of the topmost row on
  int x;                        ///< of the box around it
  int y;
  int width;
  int height;
  unsigned area;  ///< in pixels, without its holes
  float centreX;  ///< the centre of gravity of its pixels
  float centreY;
};

/// The pixels of grey levels that belong to objects.
struct ObjectTest {
  unsigned threshold = 128;
  CONTOUR_THRESHOLD side = CONTOUR_ABOVE_THRESHOLD;

  bool Has(unsigned level) const {
    return side == CONTOUR_ABOVE_THRESHOLD ? level >= threshold : level <= threshold;
  }
};

/// Sets of pixels that touch each other by edges or corners, in the order of their first pixels.
/// The image has 8 bits and at most 32,768 columns and rows. Throws Failure.
std::vector<Outlined> FindObjects(const ImageValue& image, const ObjectTest& test);

/// The picture in colour, with the outlines painted red.
ImageValue PaintOutlines(const ImageValue& image, const std::vector<Outlined>& objects);

}  // namespace lx::tool
