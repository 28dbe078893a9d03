// SPDX-License-Identifier: Apache-2.0
/// @file regression.h
/// How the grey levels of one region follow from another's.
#pragma once

#include "lxpic/base/roi.h"

/// Fits `slope * a + offset` to the grey levels b of `second` by least squares, a being those of
/// `first`, and tells how well they agree: `correlation` is from -1 to 1, and 0 where b does not
/// vary. When `excludeSaturated` is not 0, positions where either level is 0 or 255 do not count.
/// Sums are exact; the rest is computed in double precision, with variances as means of products
/// less products of means.
///
/// Errors: LX_ERROR_ROI_NOT_ATTACHED; LX_ERROR_SIZE_MISMATCH; LX_ERROR_EMPTY_HISTOGRAM: no position
/// is left, and the results are as they were; or a does not vary, and the fit is a slope of 0, the
/// mean of b as offset and a correlation of 0. Trace "PicLinearRegression".
LXPIC_API void PicLinearRegression(LxROI<LxBW8>* first, LxROI<LxBW8>* second, float& slope,
                                   float& offset, float& correlation, int excludeSaturated);
