// SPDX-License-Identifier: Apache-2.0
/// @file thresholding.h
/// Images of two and three levels, binary images, and thresholds chosen from images.
///
/// A threshold argument up to the largest pixel value is the threshold itself. Where a larger one is
/// allowed it is one of PIC_THRESHOLD_MODES, and the threshold is what PicHistogramThreshold(), or
/// PicHistogramThresholdBW16(), selects in the histogram of the source, over all levels, with
/// `relative`. Histograms of BW8 regions are confined to the runs of the region, as PicHistogram()
/// is.
#pragma once

#include "lxpic/base/image.h"
#include "lxpic/colour/lookup.h"
#include "lxpic/histogram/threshold_selection.h"

/// @name Two levels
/// Pixels below the threshold become `lowValue`, all others `highValue`. Works in place. Errors:
/// LX_ERROR_ROI_NOT_ATTACHED, LX_ERROR_SIZE_MISMATCH; with a mode, LX_ERROR_INCONSISTENT_ARGUMENTS:
/// a run does not lie in the source any more, and LX_ERROR_ALLOCATION_FAILED.
///
/// A selection that fails leaves its error, LX_ERROR_ARGUMENT_5_OUT_OF_RANGE: `relative` is read and
/// not in 0..1, or LX_ERROR_ARGUMENT_2_OUT_OF_RANGE: no mode, and every pixel becomes `lowValue`.
/// The names of the inner operations stand in the trace before the operation's own.
/// @{

/// Trace "PicThreshold".
LXPIC_API void PicThreshold(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned threshold,
                            LxBW8 lowValue, LxBW8 highValue, float relative = 0.5F);
/// Trace "PicThreshold (BW16)".
LXPIC_API void PicThreshold(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, unsigned threshold,
                            LxBW16 lowValue, LxBW16 highValue, float relative = 0.5F);
/// @}

/// @name Three levels
/// Pixels above `highThreshold` become `highValue`, others below `lowThreshold` become `lowValue`,
/// and the rest `midValue`: there is none when `lowThreshold` is above `highThreshold`. Thresholds
/// are numbers, never modes. Works in place. LX_ERROR_ROI_NOT_ATTACHED, LX_ERROR_SIZE_MISMATCH.
/// @{

/// Trace "PicDoubleThreshold ( BW8 to BW8)".
LXPIC_API void PicDoubleThreshold(LxROI<LxBW8>* source, LxROI<LxBW8>* destination,
                                  unsigned lowThreshold, unsigned highThreshold, LxBW8 lowValue,
                                  LxBW8 midValue, LxBW8 highValue);
/// Trace "PicDoubleThreshold ( BW16 to BW16)".
LXPIC_API void PicDoubleThreshold(LxROI<LxBW16>* source, LxROI<LxBW16>* destination,
                                  unsigned lowThreshold, unsigned highThreshold, LxBW16 lowValue,
                                  LxBW16 midValue, LxBW16 highValue);
/// @}

/// @name Binary images
/// Rows of a binary region may start at any bit of a byte; bits of its bytes that lie outside the
/// region stay. LX_ERROR_ROI_NOT_ATTACHED, LX_ERROR_SIZE_MISMATCH.
/// @{

/// Sets the bits of pixels from the threshold on and clears all others. A threshold above 255 is no
/// mode: it clears every bit. Trace "PicThreshold ( BW8 to BW1)".
LXPIC_API void PicThreshold(LxROI<LxBW8>* source, LxROI<int>* destination, unsigned threshold);
/// The same of 16-bit pixels. The threshold may be a mode, with the errors that two levels have; a
/// selection that fails clears every bit. Trace "PicThreshold (BW16 to BW1)".
LXPIC_API void PicThreshold(LxROI<LxBW16>* source, LxROI<int>* destination, unsigned threshold,
                            float relative = 0.5F);
/// Clear bits become `lowValue`, set ones `highValue`. Trace "PicThreshold ( BW1 to BW8)".
LXPIC_API void PicThreshold(LxROI<int>* source, LxROI<LxBW8>* destination, LxBW8 lowValue,
                            LxBW8 highValue);
/// @}

/// @name Colours
/// A colour is inside when each of its components lies between those of `minColor` and `maxColor`,
/// both included. Trace "PicThreshold ( C24 to BW8)". LX_ERROR_ROI_NOT_ATTACHED,
/// LX_ERROR_SIZE_MISMATCH.
/// @{

/// Inside becomes 255, outside 0.
LXPIC_API void PicThreshold(LxROI<LxC24>* source, LxROI<LxBW8>* destination, LxC24 minColor,
                            LxC24 maxColor);
/// Inside becomes `inValue`, outside `outValue`. With a `lookup`, which may be null, the colours
/// that it makes of the pixels are tested; it is called once for each pixel, row by row from the
/// left. An exception of the lookup ends the operation there: LX_ERROR_INTERNAL, or
/// LX_ERROR_ALLOCATION_FAILED if it is a failed allocation.
LXPIC_API void PicThreshold(LxROI<LxC24>* source, LxROI<LxBW8>* destination, LxC24 minColor,
                            LxC24 maxColor, LxColorLookup* lookup, LxBW8 outValue, LxBW8 inValue);
/// @}

/// @name Thresholds of images
/// The threshold that a mode selects in the source, modulo 256 (65536 for 16-bit images): a
/// selection of 256, which leaves no bright pixels, returns 0. A `mode` that is a pixel value is
/// returned as it is, and the source is not looked at.
///
/// Errors, with `mode` returned modulo the same: LX_ERROR_INCONSISTENT_ARGUMENTS: a run does not lie
/// in the source any more; LX_ERROR_ALLOCATION_FAILED; LX_ERROR_WRONG_VECTOR_SIZE: the source is
/// null or not attached, so that its histogram has no bins; LX_ERROR_ARGUMENT_5_OUT_OF_RANGE:
/// `relative` is read and not in 0..1; LX_ERROR_ARGUMENT_2_OUT_OF_RANGE: no mode. There is no trace
/// but that of the inner operation that failed.
/// @{

LXPIC_API unsigned PicAutoThreshold(LxROI<LxBW8>* source, PIC_THRESHOLD_MODES mode,
                                    float relative = 0.5F);
LXPIC_API unsigned PicAutoThreshold(LxROI<LxBW16>* source, PIC_THRESHOLD_MODES mode,
                                    float relative = 0.5F);
/// @}

/// A surface of thresholds that follows the image. It has one node in each corner of the image, and
/// between them, evenly spread, so many that they lie no more than `tileWidth` and `tileHeight` (0:
/// `tileWidth`) apart; the value of a node is the threshold that `mode` selects, with a `relative` of
/// 0.5, among the pixels of the tile of that size around it, cut at the border. The nodes are the
/// pixels of a grid that PicScaleRotate() stretches over the destination, with 8 bits of
/// interpolation and both pivots in the origin.
///
/// With W the width, n = ceil(W / tileWidth) (the quotient in single precision) and integer
/// divisions, node i = 0..n has a tile from max(0, i W / n - tileWidth / 2) up to, and without,
/// min(W, i W / n + tileWidth / 2); likewise down. Where a mode that needs two filled classes finds
/// one grey level only, the tile's PicIsodataThreshold() stands in; a threshold of 256 is stored as
/// 255. All pixels count, whatever the runs of the source. Works in place.
///
/// Errors, in this order: LX_ERROR_ROI_NOT_ATTACHED, LX_ERROR_SIZE_MISMATCH;
/// LX_ERROR_ARGUMENT_2_OUT_OF_RANGE: `mode` is no mode, which a threshold is not either;
/// LX_ERROR_ARGUMENT_4_OUT_OF_RANGE: `tileWidth` not above 0; LX_ERROR_ARGUMENT_5_OUT_OF_RANGE:
/// `tileHeight` below 0; LX_ERROR_ALLOCATION_FAILED. Trace "PicAutoAdaptiveThreshold".
LXPIC_API void PicAutoAdaptiveThreshold(LxROI<LxBW8>* source, LxROI<LxBW8>* destination,
                                        PIC_THRESHOLD_MODES mode, int tileWidth, int tileHeight);
