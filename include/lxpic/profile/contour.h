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

/// @name Contours
/// Follows the boundary of an object from the pixel (`startX`, `startY`) on it, and records its
/// pixels in order. Pixels that pass `test` against `threshold` belong to objects, and `connectivity`
/// says which neighbours belong together. Clockwise, the background lies to the left of each step.
///
/// The neighbours of the start are looked at from north on, in the order of the sense. The first step
/// goes to an object pixel that comes behind a background pixel; of eight neighbours, one that shares
/// an edge must come behind two of them. Each later step goes to the first object pixel behind the
/// one where the walk came from. The contour is closed when it is to leave the start in the direction
/// of the first step again; a pixel that it passes several times is recorded each time.
///
/// Unless the mode runs along the border, a contour ends where it looks beyond it, at a pixel that
/// is not recorded: LX_ERROR_POINT_OUTSIDE_IMAGE, and what was recorded stays. Modes with a second
/// sense then empty the result and record the contour from that pixel on, in that sense, to where
/// it reaches the border again. The code stays, even where the second walk closes or finds no first
/// step.
///
/// A result starts empty, and keeps what was recorded when the walk fails. `m_bClosed` becomes 0
/// when the first walk ended at the border, and 1 otherwise. A path ends, as at the border, at the
/// last point before one whose coordinates do not fit 16 bits.
///
/// Codes, in this order: LX_ERROR_UNKNOWN_MODE for `mode`, then for `connectivity`;
/// LX_ERROR_ROI_NOT_ATTACHED; LX_ERROR_VECTOR_NO_DATA for a null result; LX_ERROR_CONTOUR_START when
/// the start is no object pixel of the region; when there is no first step,
/// LX_ERROR_CONTOUR_START_ISOLATED if the last neighbour is background and
/// LX_ERROR_CONTOUR_START_INSIDE_OBJECT if not; LX_ERROR_ALLOCATION_FAILED.
/// @{

/// Trace "PicContour ( LxPathVector)".
LXPIC_API void PicContour(LxROI<LxBW8>* region, CONTOUR_MODE mode, int startX, int startY,
                          CONTOUR_THRESHOLD test, unsigned threshold, CONNEXITY connectivity,
                          LxPathVector* path);
/// Points with their levels or, when `chainCode` is not 0, with the direction of the step that leaves
/// them: 0 east, 1 north-east, and on anticlockwise to 7. Trace "PicContour ( LxBW8PathVector)".
LXPIC_API void PicContour(LxROI<LxBW8>* region, CONTOUR_MODE mode, int startX, int startY,
                          CONTOUR_THRESHOLD test, unsigned threshold, CONNEXITY connectivity,
                          LxBW8PathVector* path, int chainCode);
/// Groups of column, row and direction of the step that leaves the point. A vector of another kind
/// becomes one of LX_VECTOR_CONTOUR; LX_ERROR_VECTOR_NO_DATA when one has no room at all. More
/// points than an eighth of the region's pixels: LX_ERROR_CONTOUR_OVERFLOW.
/// Trace "PicContour ( LxVector)".
LXPIC_API void PicContour(LxROI<LxBW8>* region, CONTOUR_MODE mode, int startX, int startY,
                          CONTOUR_THRESHOLD test, unsigned threshold, CONNEXITY connectivity,
                          LxVector* vector);
/// Trace "PicContour ( LxPathVector)(BW16)".
LXPIC_API void PicContour(LxROI<LxBW16>* region, CONTOUR_MODE mode, int startX, int startY,
                          CONTOUR_THRESHOLD test, unsigned threshold, CONNEXITY connectivity,
                          LxPathVector* path);
/// Like the 8-bit form with levels. Trace "PicContour ( LxBW16PathVector)(BW16)".
LXPIC_API void PicContour(LxROI<LxBW16>* region, CONTOUR_MODE mode, int startX, int startY,
                          CONTOUR_THRESHOLD test, unsigned threshold, CONNEXITY connectivity,
                          LxBW16PathVector* path, int chainCode);
/// @}

/// @name Images along paths
/// PicImageToPath() gives each point of the path the level of its pixel, PicPathToImage() each pixel
/// the level of its point, in the order of the path. Points outside the region are left out, and set
/// LX_ERROR_POINT_OUTSIDE_IMAGE without a trace. LX_ERROR_VECTOR_NO_DATA: a null path.
/// @{

/// Trace "PicImageToPath ( BW8)".
LXPIC_API void PicImageToPath(LxROI<LxBW8>* region, LxBW8PathVector* path);
/// Trace "PicImageToPath (BW16)".
LXPIC_API void PicImageToPath(LxROI<LxBW16>* region, LxBW16PathVector* path);
/// Trace "PicImageToPath ( C24)".
LXPIC_API void PicImageToPath(LxROI<LxC24>* region, LxC24PathVector* path);

/// Trace "PicPathToImage ( BW8)".
LXPIC_API void PicPathToImage(LxROI<LxBW8>* region, LxBW8PathVector* path);
/// Trace "PicPathToImage ( BW16)".
LXPIC_API void PicPathToImage(LxROI<LxBW16>* region, LxBW16PathVector* path);
/// Trace "PicPathToImage ( C24)".
LXPIC_API void PicPathToImage(LxROI<LxC24>* region, LxC24PathVector* path);
/// @}
