// SPDX-License-Identifier: Apache-2.0
/// @file frames.h
/// Frames of interlaced cameras: the even field holds rows 0, 2, 4, ... of a frame, the odd field
/// rows 1, 3, 5, ..., and the two are exposed one after the other.
#pragma once

#include "lxpic/base/roi.h"

/// @name Fields as images
/// PicGetFrame() copies a field of the frame to an image, PicSetFrame() an image to a field of the
/// frame, whose other rows stay. Any `parity` but 0 means the odd field. The image is as wide as the
/// frame and `(height + 1) / 2` rows high for the even field, `height / 2` for the odd one:
/// LX_ERROR_SIZE_MISMATCH otherwise.
/// @{

/// Trace "PicGetFrame ( LxBW8)".
LXPIC_API void PicGetFrame(LxROI<LxBW8>* frame, LxROI<LxBW8>* field, int parity);
/// Trace "PicGetFrame ( LxC24)".
LXPIC_API void PicGetFrame(LxROI<LxC24>* frame, LxROI<LxC24>* field, int parity);
/// Trace "PicGetFrame ( LxBW16)".
LXPIC_API void PicGetFrame(LxROI<LxBW16>* frame, LxROI<LxBW16>* field, int parity);

/// Trace "PicSetFrame ( LxBW8)".
LXPIC_API void PicSetFrame(LxROI<LxBW8>* field, LxROI<LxBW8>* frame, int parity);
/// Trace "PicSetFrame ( LxC24)".
LXPIC_API void PicSetFrame(LxROI<LxC24>* field, LxROI<LxC24>* frame, int parity);
/// Trace "PicSetFrame ( LxBW16)".
LXPIC_API void PicSetFrame(LxROI<LxBW16>* field, LxROI<LxBW16>* frame, int parity);
/// @}

/// @name Realignment
/// Moves the rows of the field that is not the reference by `shift` pixels to the right, by
/// `-shift` to the left when it is negative. The pixels that fall free take the value of the
/// source's pixel at that end of the row; a shift of the width or more leaves nothing else. Bit 0 of
/// `reference` names the reference field, 0 for the even one; its rows are not written. Works in
/// place.
/// @{

/// Trace "PicRealignFrame ( LxBW8)".
LXPIC_API void PicRealignFrame(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, int shift,
                               unsigned reference);
/// Trace "PicRealignFrame ( LxC24)".
LXPIC_API void PicRealignFrame(LxROI<LxC24>* source, LxROI<LxC24>* destination, int shift,
                               unsigned reference);
/// Trace "PicRealignFrame ( LxBW16)".
LXPIC_API void PicRealignFrame(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, int shift,
                               unsigned reference);
/// @}

/// @name Matching
/// The shift between `lowest` and `highest`, both included, for which row `row + 1` fits row `row`
/// best: PicRealignFrame() by that shift aligns the two. It has the least sum of squared
/// differences, of all components, over the columns that both rows have under every one of the
/// shifts; of several it is the lowest, and also where there is no such column. LX_ERROR_INCONSISTENT_ARGUMENTS when
/// `highest` lies below `lowest` or further above it than the width, and then
/// LX_ERROR_ARGUMENT_2_OUT_OF_RANGE when one of the rows is not in the region.
/// @{

/// Trace "PicMatchFrames ( LxBW8)".
LXPIC_API void PicMatchFrames(LxROI<LxBW8>* region, int row, int lowest, int highest, int& best);
/// Trace "PicMatchFrames ( LxC24)".
LXPIC_API void PicMatchFrames(LxROI<LxC24>* region, int row, int lowest, int highest, int& best);
/// Trace "PicMatchFrames ( LxBW16)".
LXPIC_API void PicMatchFrames(LxROI<LxBW16>* region, int row, int lowest, int highest, int& best);
/// @}

/// @name Rebuilding
/// Each row of the field that is not the reference becomes the average of the rows above and below
/// it, rounded down; at the edge of the image, the one neighbour that there is, or nothing is
/// written when there is none. `reference` is that of PicRealignFrame(). Works in place.
/// @{

/// Trace "PicRebuildFrame ( LxBW8)".
LXPIC_API void PicRebuildFrame(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned reference);
/// Trace "PicRebuildFrame ( LxC24)".
LXPIC_API void PicRebuildFrame(LxROI<LxC24>* source, LxROI<LxC24>* destination, unsigned reference);
/// Trace "PicRebuildFrame ( LxBW16)".
LXPIC_API void PicRebuildFrame(LxROI<LxBW16>* source, LxROI<LxBW16>* destination,
                               unsigned reference);
/// @}

/// @name Exchange
/// Rows 0 and 1 change places, rows 2 and 3, and so on; of an odd number of rows the last one is not
/// written. Works in place.
/// @{

/// Trace "PicSwapFrames ( LxBW8)".
LXPIC_API void PicSwapFrames(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Trace "PicSwapFrames ( LxC24)".
LXPIC_API void PicSwapFrames(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// Trace "PicSwapFrames ( LxBW16)".
LXPIC_API void PicSwapFrames(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// @}
