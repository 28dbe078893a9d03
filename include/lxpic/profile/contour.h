// SPDX-License-Identifier: Apache-2.0
/// @file contour.h
/// Contours of objects, and paths in images.
#pragma once

#include "lxpic/base/roi.h"
#include "lxpic/base/vector.h"
#include "lxpic/vectors/path_vectors.h"

/// In which sense a contour is followed, as displayed with y pointing down, and what happens at the
/// border of the region.
enum CONTOUR_MODE : int {
  CONTOUR_CLOCKWISE = 0,               ///< stops where it reaches the border
  CONTOUR_CLOCKWISE_ALONG_BORDER = 1,  ///< what lies outside is background: runs along the border
  /// Where it reaches the border it starts anew there, anticlockwise.
  CONTOUR_CLOCKWISE_THEN_ANTICLOCKWISE = 2,
  CONTOUR_ANTICLOCKWISE = 3,  ///< stops where it reaches the border
  /// Where it reaches the border it starts anew there, clockwise.
  CONTOUR_ANTICLOCKWISE_THEN_CLOCKWISE = 4,
  CONTOUR_ANTICLOCKWISE_ALONG_BORDER = 5  ///< runs along the border
};

/// Which pixels belong to an object. Any value but 0 stands for the second.
enum CONTOUR_THRESHOLD : int {
  CONTOUR_ABOVE_THRESHOLD = 0,  ///< levels at or above the threshold
  CONTOUR_BELOW_THRESHOLD = 1   ///< levels at or below it
};

/// Which neighbours a contour moves to.
enum CONNEXITY : int {
  CONNEXITY_4 = 0,  ///< those that share an edge
  CONNEXITY_8 = 1   ///< all eight
};
