// SPDX-License-Identifier: Apache-2.0
/// @file focus.h
/// How sharp an image is.
#pragma once

#include "lxpic/base/roi.h"

/// @name Focus
/// The root of the mean squared difference of neighbours: with S the sum of
/// `(p(x, y) - p(x + 1, y))^2 + (p(x, y) - p(x, y + 1))^2` over all pixels but those of the last
/// column and of the last row, `sqrt(S / (width * height))`. S is exact; the rest is computed in
/// double precision. One column or one row has no such pixel, and score 0. Errors, which return 0:
/// LX_ERROR_ROI_NOT_ATTACHED; LX_ERROR_EMPTY_HISTOGRAM: an empty region.
/// @{

/// Trace "PicFocusing ( BW8)".
LXPIC_API float PicFocusing(LxROI<LxBW8>* source);
/// Trace "PicFocusing ( BW16)".
LXPIC_API float PicFocusing(LxROI<LxBW16>* source);
/// S over the three components, divided by `3 * width * height`. Trace "PicFocusing ( C24)".
LXPIC_API float PicFocusing(LxROI<LxC24>* source);
/// @}
