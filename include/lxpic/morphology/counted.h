// SPDX-License-Identifier: Apache-2.0
/// @file counted.h
/// Morphology with a 3 × 3 square, repeated.
///
/// Every pass takes the minimum (erosion) or maximum (dilation) of the nine pixels around each; pixels
/// outside of the region are `outside` in every pass, a grey level clamped to 0..255 or a colour.
/// Where there are two outside values, the second one belongs to the second step. Colours are taken
/// component by component.
///
/// A `count` of 0 or less makes no pass: the regions are checked, and the destination stays as it is.
/// Passes that cannot change anything any more, beyond the larger side of the region, are left out.
///
/// Works in place, top-hats apart; the destination must be given all the same. Errors:
/// LX_ERROR_ROI_NOT_ATTACHED, LX_ERROR_SIZE_MISMATCH, LX_ERROR_ALLOCATION_FAILED. A pass that fails
/// traces "PicErodeDilate" before the operation's own name.
#pragma once

#include "lxpic/base/image.h"

/// `count` erosions. Trace "PicErode".
LXPIC_API void PicErode(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, int count, int outside);
/// Trace "PicErode ( C24)".
LXPIC_API void PicErode(LxROI<LxC24>* source, LxROI<LxC24>* destination, int count, LxC24 outside);

/// `count` dilations. Trace "PicDilate".
LXPIC_API void PicDilate(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, int count, int outside);
/// Trace "PicDilate ( C24)".
LXPIC_API void PicDilate(LxROI<LxC24>* source, LxROI<LxC24>* destination, int count, LxC24 outside);

/// `count` erosions and as many dilations. Trace "PicOpen".
LXPIC_API void PicOpen(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, int count, int outside1,
                       int outside2);
/// Trace "PicOpen ( C24)".
LXPIC_API void PicOpen(LxROI<LxC24>* source, LxROI<LxC24>* destination, int count, LxC24 outside1,
                       LxC24 outside2);

/// `count` dilations and as many erosions. Trace "PicClose".
LXPIC_API void PicClose(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, int count, int outside1,
                        int outside2);
/// Trace "PicClose ( C24)".
LXPIC_API void PicClose(LxROI<LxC24>* source, LxROI<LxC24>* destination, int count, LxC24 outside1,
                        LxC24 outside2);

/// @name Top-hats
/// What an opening takes away, or a closing adds; 0 everywhere after no pass, and where the
/// difference is negative. LX_ERROR_DESTINATION_IS_SOURCE when the destination is missing or is the
/// source.
/// @{

/// source - opening. Trace "PicWhiteTopHat".
LXPIC_API void PicWhiteTopHat(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, int count,
                              int outside1, int outside2);
/// Trace "PicWhiteTopHat ( C24)".
LXPIC_API void PicWhiteTopHat(LxROI<LxC24>* source, LxROI<LxC24>* destination, int count,
                              LxC24 outside1, LxC24 outside2);
/// closing - source. Trace "PicBlackTopHat".
LXPIC_API void PicBlackTopHat(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, int count,
                              int outside1, int outside2);
/// Trace "PicBlackTopHat ( C24)".
LXPIC_API void PicBlackTopHat(LxROI<LxC24>* source, LxROI<LxC24>* destination, int count,
                              LxC24 outside1, LxC24 outside2);
/// @}
