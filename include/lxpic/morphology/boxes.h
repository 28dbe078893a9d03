// SPDX-License-Identifier: Apache-2.0
/// @file boxes.h
/// Grey morphology with rectangular structuring elements.
///
/// The box of half-widths X and Y holds the `2 * X + 1` by `2 * Y + 1` pixels around a pixel; a
/// `halfY` of 0xFFFFFFFF is `halfX`, and (0, 0) is the pixel itself. Half-widths have no limit:
/// pixels outside of the region are those of its edge, so that what a box holds beyond the region
/// changes nothing. Colours are taken component by component.
///
/// A missing destination means in place. Errors: LX_ERROR_ROI_NOT_ATTACHED, LX_ERROR_SIZE_MISMATCH,
/// LX_ERROR_ALLOCATION_FAILED.
#pragma once

#include "lxpic/base/image.h"

/// @name Erosion
/// The minimum of the box.
/// @{

/// Trace "PicErodeBox".
LXPIC_API void PicErodeBox(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned halfX,
                           unsigned halfY = 0xFFFFFFFF);
/// Trace "PicErodeBox (BW16)".
LXPIC_API void PicErodeBox(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, unsigned halfX,
                           unsigned halfY = 0xFFFFFFFF);
/// Trace "PicErodeBox ( C24)".
LXPIC_API void PicErodeBox(LxROI<LxC24>* source, LxROI<LxC24>* destination, unsigned halfX,
                           unsigned halfY = 0xFFFFFFFF);
/// @}

/// @name Dilation
/// The maximum of the box.
/// @{

/// Trace "PicDilateBox".
LXPIC_API void PicDilateBox(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned halfX,
                            unsigned halfY = 0xFFFFFFFF);
/// Trace "PicDilateBox (BW16)".
LXPIC_API void PicDilateBox(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, unsigned halfX,
                            unsigned halfY = 0xFFFFFFFF);
/// Trace "PicDilateBox ( C24)".
LXPIC_API void PicDilateBox(LxROI<LxC24>* source, LxROI<LxC24>* destination, unsigned halfX,
                            unsigned halfY = 0xFFFFFFFF);
/// @}
