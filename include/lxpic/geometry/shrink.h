// SPDX-License-Identifier: Apache-2.0
/// @file shrink.h
/// Smaller images by averages over blocks of pixels.
#pragma once

#include "lxpic/base/roi.h"

/// Shrinks the source to the size of the destination. With W the width of the source and w that of
/// the destination, destination column X covers source columns X * W / w up to (X + 1) * W / w - 1,
/// divisions truncating, and rows likewise: the blocks tile the source, and their sides differ by
/// one pixel at most. Each destination pixel is the sum over its block, divided by the number of
/// pixels and truncated. Sums are exact for blocks of any size.
///
/// The destination is at most as wide and as high as the source; a larger one sets
/// LX_ERROR_SIZE_MISMATCH. Works in place, where it changes nothing. LX_ERROR_ALLOCATION_FAILED
/// without scratch memory. Trace "PicShrink".
LXPIC_API void PicShrink(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Trace "PicShrink (BW16)".
LXPIC_API void PicShrink(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// Each component. Trace "PicShrink ( C24)".
LXPIC_API void PicShrink(LxROI<LxC24>* source, LxROI<LxC24>* destination);

/// Halves the source: (sum of 2 × 2 pixels) >> 2. Of an odd width, the last column is ignored when
/// `dropOdd` is not 0; else it becomes a column of its own, (top + bottom) >> 1, and likewise an odd
/// height's last row, (left + right) >> 1, and the corner copies the last pixel.
///
/// The destination is given its size by its SetSize(): an image that owns its pixels gets new ones,
/// a region that owns none sets LX_ERROR_SIZE_MISMATCH unless it has the size. A destination that is
/// missing, or is the source, or would have to give up the memory in which the source lies, sets
/// LX_ERROR_DESTINATION_IS_SOURCE; no memory for it LX_ERROR_ALLOCATION_FAILED. Trace
/// "PicHalve ( BW8)".
LXPIC_API void PicHalve(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, int dropOdd);
