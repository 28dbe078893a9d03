// SPDX-License-Identifier: Apache-2.0
/// @file recursive_average.h
/// Less noise in a sequence of images: a recursive filter of the first order for each pixel, whose
/// step is looked up. The caller owns its state: 16 times the filtered levels, as signed words, for
/// which 16 times the first image is a good start.
#pragma once

#include "lxpic/base/roi.h"
#include "lxpic/base/vector.h"

/// Fills the table of PicRecursiveAverage() with 8191 signed words: the step for each difference
/// between -4095 and 4095, the one for 0 in the middle. Steps are truncated toward zero, and those of
/// opposite differences are opposite.
///
/// With a `width` of 0 the filter is linear: the step of a difference i is `0.5 + i * k` with
/// `k = 2 / (noiseReduction² + 1)`, summed up in single precision, so that noise is divided by
/// `noiseReduction`. Another width keeps edges: differences i well above it pass almost unchanged,
/// small ones are reduced. The step is then `g * (m - 1) / (m + 1) + i`, where W = 16 * width,
/// `g = W * (1 - noiseReduction²) / (1 + noiseReduction²)` and m the power `exp(1 / W)` to the i,
/// multiplied up in single precision; where it overflows the fraction is 1.
///
/// LX_ERROR_VECTOR_NO_DATA without a table, LX_ERROR_ARGUMENT_2_OUT_OF_RANGE and
/// LX_ERROR_ARGUMENT_3_OUT_OF_RANGE for numbers that are not finite, LX_ERROR_ALLOCATION_FAILED: the
/// table stays as it was. Trace "PicSetRecursiveAverageLUT".
LXPIC_API void PicSetRecursiveAverageLUT(LxBW16Vector* table, float noiseReduction, float width);

/// With d = 16 * source - state, clamped to ±4095: the state grows by the table's step for d, in 16
/// bits, and the destination becomes the state / 16, rounded down and clamped. The destination may
/// be the source. LX_ERROR_VECTOR_NO_DATA without a table, LX_ERROR_WRONG_VECTOR_SIZE when it has
/// not 8191 elements. Trace "PicRecursiveAverage".
LXPIC_API void PicRecursiveAverage(LxROI<LxBW8>* source, LxROI<LxBW16>* state,
                                   LxROI<LxBW8>* destination, LxBW16Vector* table);
