// SPDX-License-Identifier: Apache-2.0
/// @file normalize.h
/// Grey levels of a given mean and standard deviation.
#pragma once

#include "lxpic/base/image.h"

/// @name Normalization
/// The linear map that gives the region the mean `average` and the standard deviation `deviation`:
/// `k * source + average - k * mean` with `k = deviation / sigma`, in double precision and from the
/// left, truncated toward zero and clamped to the range of the pixels. Mean and sigma are those of
/// PicPixelStdDev(). A region of one grey level becomes `average`, clamped; NaN counts as 0 and
/// infinite targets as the largest numbers. They work in place; an empty region succeeds.
/// @{

/// Trace "PicNormalize".
LXPIC_API void PicNormalize(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, float average,
                            float deviation);
/// Trace "PicNormalize (BW16)".
LXPIC_API void PicNormalize(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, float average,
                            float deviation);
/// @}
