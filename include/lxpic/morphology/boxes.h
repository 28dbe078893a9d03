// SPDX-License-Identifier: Apache-2.0
/// @file boxes.h
/// Grey morphology with rectangular structuring elements.
///
/// The box of half-widths X and Y holds the `2 * X + 1` by `2 * Y + 1` pixels around a pixel; a
/// `halfY` of 0xFFFFFFFF is `halfX`, and (0, 0) is the pixel itself. Half-widths have no limit:
/// pixels outside of the region are those of its edge, so that what a box holds beyond the region
/// changes nothing. Colours are taken component by component. The cost hardly grows with the size.
///
/// Works in place, and a missing destination means that. Errors: LX_ERROR_ROI_NOT_ATTACHED,
/// LX_ERROR_SIZE_MISMATCH, LX_ERROR_ALLOCATION_FAILED.
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

/// @name Opening
/// Erosion, then dilation: takes away what is brighter than its surroundings and does not hold the
/// box.
/// @{

/// Trace "PicOpenBox".
LXPIC_API void PicOpenBox(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned halfX,
                          unsigned halfY = 0xFFFFFFFF);
/// Trace "PicOpenBox (BW16)".
LXPIC_API void PicOpenBox(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, unsigned halfX,
                          unsigned halfY = 0xFFFFFFFF);
/// Trace "PicOpenBox ( C24)".
LXPIC_API void PicOpenBox(LxROI<LxC24>* source, LxROI<LxC24>* destination, unsigned halfX,
                          unsigned halfY = 0xFFFFFFFF);
/// @}

/// @name Closing
/// Dilation, then erosion: takes away what is darker than its surroundings and does not hold the
/// box.
/// @{

/// Trace "PicCloseBox".
LXPIC_API void PicCloseBox(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned halfX,
                           unsigned halfY = 0xFFFFFFFF);
/// Trace "PicCloseBox (BW16)".
LXPIC_API void PicCloseBox(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, unsigned halfX,
                           unsigned halfY = 0xFFFFFFFF);
/// Trace "PicCloseBox ( C24)".
LXPIC_API void PicCloseBox(LxROI<LxC24>* source, LxROI<LxC24>* destination, unsigned halfX,
                           unsigned halfY = 0xFFFFFFFF);
/// @}

/// @name White top-hat
/// The source less its opening: what is bright and does not hold the box.
/// @{

/// Trace "PicWhiteTopHatBox (BW8)".
LXPIC_API void PicWhiteTopHatBox(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned halfX,
                                 unsigned halfY = 0xFFFFFFFF);
/// Trace "PicWhiteTopHatBox (BW16)".
LXPIC_API void PicWhiteTopHatBox(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, unsigned halfX,
                                 unsigned halfY = 0xFFFFFFFF);
/// Trace "PicWhiteTopHatBox ( C24)".
LXPIC_API void PicWhiteTopHatBox(LxROI<LxC24>* source, LxROI<LxC24>* destination, unsigned halfX,
                                 unsigned halfY = 0xFFFFFFFF);
/// @}

/// @name Black top-hat
/// The closing less the source: what is dark and does not hold the box.
/// @{

/// Trace "PicBlackTopHatBox (BW8)".
LXPIC_API void PicBlackTopHatBox(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned halfX,
                                 unsigned halfY = 0xFFFFFFFF);
/// Trace "PicBlackTopHatBox (BW16)".
LXPIC_API void PicBlackTopHatBox(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, unsigned halfX,
                                 unsigned halfY = 0xFFFFFFFF);
/// Trace "PicBlackTopHatBox ( C24)".
LXPIC_API void PicBlackTopHatBox(LxROI<LxC24>* source, LxROI<LxC24>* destination, unsigned halfX,
                                 unsigned halfY = 0xFFFFFFFF);
/// @}

/// @name Morphological gradient
/// Dilation less erosion: edges, as high as they are steep within the box.
/// @{

/// Trace "PicMorphoGradientBox".
LXPIC_API void PicMorphoGradientBox(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned halfX,
                                    unsigned halfY = 0xFFFFFFFF);
/// Trace "PicMorphoGradientBox (BW16)".
LXPIC_API void PicMorphoGradientBox(LxROI<LxBW16>* source, LxROI<LxBW16>* destination,
                                    unsigned halfX, unsigned halfY = 0xFFFFFFFF);
/// Trace "PicMorphoGradientBox ( C24)".
LXPIC_API void PicMorphoGradientBox(LxROI<LxC24>* source, LxROI<LxC24>* destination, unsigned halfX,
                                    unsigned halfY = 0xFFFFFFFF);
/// @}
