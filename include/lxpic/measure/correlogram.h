// SPDX-License-Identifier: Apache-2.0
/// @file correlogram.h
/// How often each pair of grey levels occurs.
#pragma once

#include "lxpic/base/image.h"

/// @name Correlogram
/// The joint histogram of two regions of one size, as an image of 256 x 256: pixel (x, y) of the
/// result counts the positions where `first` holds x and `second` 255 - y, so that both levels grow
/// from the bottom left. Counts saturate. The result is given its size, and is all 0 for empty
/// regions.
///
/// Errors, each with nothing changed: LX_ERROR_ROI_NOT_ATTACHED; LX_ERROR_SIZE_MISMATCH: the regions
/// differ in size, or the result is not 256 x 256 and does not own its pixels;
/// LX_ERROR_ALLOCATION_FAILED.
/// @{

/// Counts up to 255. LX_ERROR_DESTINATION_IS_SOURCE: the result is missing or one of the regions.
/// Trace "PicCorrelogram ( BW8)".
LXPIC_API void PicCorrelogram(LxROI<LxBW8>* first, LxROI<LxBW8>* second,
                              LxImage<LxBW8>* correlogram);
/// Counts up to 65535. Trace "PicCorrelogram ( BW16)".
LXPIC_API void PicCorrelogram(LxROI<LxBW8>* first, LxROI<LxBW8>* second,
                              LxImage<LxBW16>* correlogram);
/// @}
