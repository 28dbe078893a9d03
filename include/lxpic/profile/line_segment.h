// SPDX-License-Identifier: Apache-2.0
/// @file line_segment.h
/// Profiles along line segments of an image, and lines drawn into it.
///
/// A segment runs from pixel (x0, y0) to pixel (x1, y1), both included, along the digital line of
/// Bresenham (1965): one pixel for each column, or for each row where it is steep. It starts on its
/// first pixel and ends on the other, so that the way back may take other pixels in between.
#pragma once

#include "lxpic/base/roi.h"
#include "lxpic/base/vector.h"

/// @name Segments
/// Coordinates are those of the region. Runs do not count. Errors, each with nothing changed, in
/// this order: LX_ERROR_ROI_NOT_ATTACHED; LX_ERROR_VECTOR_NO_DATA: a null vector; x0, y0, x1 or y1
/// outside the region: LX_ERROR_ARGUMENT_3_OUT_OF_RANGE, _4_, _5_, _6_OUT_OF_RANGE.
/// @{

/// Element i becomes pixel i of the segment. The profile gets a capacity and a count of exactly as
/// many elements; LX_ERROR_ALLOCATION_FAILED leaves it as it was. Trace
/// "PicImageToLineSegment ( BW8)".
LXPIC_API void PicImageToLineSegment(LxROI<LxBW8>* source, LxBW8Vector* profile, int x0, int y0,
                                     int x1, int y1);
/// The same. Trace "PicImageToLineSegment ( BW16)".
LXPIC_API void PicImageToLineSegment(LxROI<LxBW16>* source, LxBW16Vector* profile, int x0, int y0,
                                     int x1, int y1);
/// The same. Trace "PicImageToLineSegment ( C24)".
LXPIC_API void PicImageToLineSegment(LxROI<LxC24>* source, LxC24Vector* profile, int x0, int y0,
                                     int x1, int y1);

/// Pixel i of the segment becomes element i. LX_ERROR_WRONG_VECTOR_SIZE: not one element for each
/// pixel; nothing is drawn. Trace "PicLineSegmentToImage ( BW8, vector)".
LXPIC_API void PicLineSegmentToImage(LxROI<LxBW8>* destination, LxBW8Vector* profile, int x0,
                                     int y0, int x1, int y1);
/// The same. Trace "PicLineSegmentToImage ( BW16, vector)".
LXPIC_API void PicLineSegmentToImage(LxROI<LxBW16>* destination, LxBW16Vector* profile, int x0,
                                     int y0, int x1, int y1);
/// The same. Trace "PicLineSegmentToImage ( C24, vector)".
LXPIC_API void PicLineSegmentToImage(LxROI<LxC24>* destination, LxC24Vector* profile, int x0,
                                     int y0, int x1, int y1);

/// Each pixel of the segment becomes `value`. Trace "PicLineSegmentToImage ( BW8, const)".
LXPIC_API void PicLineSegmentToImage(LxROI<LxBW8>* destination, LxBW8 value, int x0, int y0, int x1,
                                     int y1);
/// The same. Trace "PicLineSegmentToImage ( BW16, const)".
LXPIC_API void PicLineSegmentToImage(LxROI<LxBW16>* destination, LxBW16 value, int x0, int y0,
                                     int x1, int y1);
/// The same. Trace "PicLineSegmentToImage ( C24, const)".
LXPIC_API void PicLineSegmentToImage(LxROI<LxC24>* destination, LxC24 value, int x0, int y0, int x1,
                                     int y1);
/// @}
