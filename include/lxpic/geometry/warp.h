// SPDX-License-Identifier: Apache-2.0
/// @file warp.h
/// Resampling through maps of coordinates, and the maps that unroll a ring.
///
/// A warp does not run in place: a destination that is missing or is the source sets
/// LX_ERROR_DESTINATION_IS_SOURCE, once the other regions and their sizes have been checked.
#pragma once

#include "lxpic/base/image.h"

/// Fetches destination pixel (X, Y) from source pixel (xMap(X, Y) + xOffset, yMap(X, Y) + yOffset),
/// where the maps hold signed 16-bit numbers; 0 where that lies outside the source. Sums of any
/// offset are exact. The source may have any size, the maps have the destination's
/// (LX_ERROR_SIZE_MISMATCH). Trace "PicWarp".
LXPIC_API void PicWarp(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, LxImage<LxBW16>* xMap,
                       LxImage<LxBW16>* yMap, int xOffset, int yOffset);
/// The same for colours. Trace "PicWarp ( C24)".
LXPIC_API void PicWarp(LxROI<LxC24>* source, LxROI<LxC24>* destination, LxImage<LxBW16>* xMap,
                       LxImage<LxBW16>* yMap, int xOffset, int yOffset);

/// Fetches destination pixel (X, Y) from the source pixel whose x and y are the low and the high 16
/// bits of map(X, Y), both unsigned. Source and destination have one size; a map that is narrower or
/// lower sets LX_ERROR_WARP_RANGE. An entry outside the source sets LX_ERROR_WARP_TABLE: the
/// destination pixels before it, row by row, are then written, and no others. Trace "PicWarp".
LXPIC_API void PicWarp(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, LxImage<LxBW32>* map);

/// Sets the maps that unroll a ring into a rectangle of `width` columns and `height` rows, for
/// PicWarp(). Column u lies on the ray of the angle that goes evenly from `angle1` in the first
/// column to `angle2` in the last one, in the unit of LxSetAngleUnit(), growing from +x towards +y.
/// Row 0 lies on the circle of `radius2`, the last row on that of `radius1`, rows between evenly.
/// A single column takes `angle1`, a single row `radius2`.
///
/// Angles, points and steps are single-precision. With (x1, y1) and (x2, y2) the points of a column
/// on both circles, t growing from 0 and s falling from 1 by 1 / (height - 1) a row, coordinates are
/// t * x1 + s * x2 and t * y1 + s * y2, truncated and saturated to signed 16 bits, NaN as 0.
///
/// Errors, in this order: a height below 1 LX_ERROR_ARGUMENT_3_OUT_OF_RANGE, a width below 1
/// LX_ERROR_ARGUMENT_6_OUT_OF_RANGE, a missing map LX_ERROR_ROI_NOT_ATTACHED. The maps are given
/// their size by SetSize(): a view of other size sets LX_ERROR_SIZE_MISMATCH, no memory
/// LX_ERROR_ALLOCATION_FAILED; the x map may have its new size by then. Trace "PicSetCircleWarp".
LXPIC_API void PicSetCircleWarp(float centreX, float centreY, int height, float radius1,
                                float radius2, int width, float angle1, float angle2,
                                LxImage<LxBW16>* xMap, LxImage<LxBW16>* yMap);
