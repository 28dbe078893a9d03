// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace lx::tool {

/// A place in a picture: continuous coordinates, (0, 0) the upper left corner of the first pixel.
struct Point {
  double x;
  double y;
};

/// Where a product lies: turned and scaled about the middle of the picture, then shifted.
struct Pose {
  Point shift{0, 0};  ///< pixels
  double angle = 0;   ///< degrees, counter-clockwise
  double scale = 1;
};

}  // namespace lx::tool
