// SPDX-License-Identifier: Apache-2.0
/// @file smoothing.h
/// Smoothing of any size, and local statistics.
#pragma once

#include "lxpic/base/image.h"

/// @name Fixed smoothing
/// Edge replication. Errors: LX_ERROR_ROI_NOT_ATTACHED, LX_ERROR_SIZE_MISMATCH,
/// LX_ERROR_ALLOCATION_FAILED; those that cannot run in place, LX_ERROR_DESTINATION_IS_SOURCE.
/// @{

/// `(sum of nine * 14) >> 7`; a missing destination means in place. Trace "PicConvolUniform3x3
/// (BW8)".
LXPIC_API void PicConvolUniform3x3(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Binomial weights 1 2 1 / 2 4 2 / 1 2 1, `sum >> 4`; a missing destination means in place. Trace
/// "PicConvolGaussian3x3 (BW8)".
LXPIC_API void PicConvolGaussian3x3(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// `(sum of 25 * 335544) >> 23`; not in place. Trace "ConvolUniform5x5".
LXPIC_API void PicConvolUniform5x5(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// `(sum of 49 * 171196) >> 23`; not in place. Trace "PicConvolUniform7x7".
LXPIC_API void PicConvolUniform7x7(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Binomial weights (1 4 6 4 1) squared, `sum >> 8`; not in place. Trace "ConvolGaussian5x5".
LXPIC_API void PicConvolGaussian5x5(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Binomial weights (1 6 15 20 15 6 1) squared, `sum >> 12`; not in place. Trace
/// "PicConvolGaussian7x7".
LXPIC_API void PicConvolGaussian7x7(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// @}

/// @name Box mean
/// Mean over a window of `2 * halfX + 1` columns and `2 * halfY + 1` rows with edge replication; a
/// `halfY` of 0xFFFFFFFF is `halfX`. (0, 0) copies, (1, 0) and (0, 1) give `(sum of three * 85) >>
/// 8`, (1, 1) is PicConvolUniform3x3(). Any other window, its halves cut at the width - 1 and the
/// height - 1 of the region, gives `(sum * floor(2^24 / N)) >> 24` with N pixels in the window, so
/// that a constant 255 may become 254 (windows of more than 2^24 pixels: the sum divided by N). The
/// cost does not depend on the size.
///
/// A missing destination means in place. Grey windows larger than 3 × 3 cannot run in place:
/// LX_ERROR_DESTINATION_IS_SOURCE. Other errors as above.
/// @{

/// Trace "PicConvolUniform".
LXPIC_API void PicConvolUniform(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned halfX,
                                unsigned halfY = 0xFFFFFFFF);
/// Trace "PicConvolUniform (BW16)".
LXPIC_API void PicConvolUniform(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, unsigned halfX,
                                unsigned halfY = 0xFFFFFFFF);
/// Each component; works in place at every size. Trace "PicConvolUniform ( C24)".
LXPIC_API void PicConvolUniform(LxROI<LxC24>* source, LxROI<LxC24>* destination, unsigned halfX,
                                unsigned halfY = 0xFFFFFFFF);
/// PicConvolUniform() under another name. Trace "PicLocalAverage".
LXPIC_API void PicLocalAverage(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned halfX,
                               unsigned halfY = 0xFFFFFFFF);
/// Trace "PicLocalAverage (BW16)".
LXPIC_API void PicLocalAverage(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, unsigned halfX,
                               unsigned halfY = 0xFFFFFFFF);
/// @}

/// @name Gaussian smoothing
/// `halfX` horizontal and `halfY` vertical binomial passes 1 2 1, together where both are left
/// (PicConvolGaussian3x3()), each truncated: a binomial of width `2n + 1`. A `halfY` of 0xFFFFFFFF
/// is `halfX`; (0, 0) copies. Edge replication. A missing destination means in place. Passes that
/// change nothing any more are left out.
/// @{

/// Trace "PicConvolGaussian".
LXPIC_API void PicConvolGaussian(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned halfX,
                                 unsigned halfY = 0xFFFFFFFF);
/// Trace "PicConvolGaussian (BW16)".
LXPIC_API void PicConvolGaussian(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, unsigned halfX,
                                 unsigned halfY = 0xFFFFFFFF);
/// Trace "PicConvolGaussian ( C24)".
LXPIC_API void PicConvolGaussian(LxROI<LxC24>* source, LxROI<LxC24>* destination, unsigned halfX,
                                 unsigned halfY = 0xFFFFFFFF);
/// @}

/// @name Local deviation
/// Population standard deviation of the window of PicConvolUniform(), truncated:
/// `sqrt(N * sum of squares - square of sum) / N` in single precision. Cannot run in place: LX_ERROR_DESTINATION_IS_SOURCE.
/// @{

/// Trace "PicLocalDeviation".
LXPIC_API void PicLocalDeviation(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned halfX,
                                 unsigned halfY = 0xFFFFFFFF);
/// Trace "PicLocalDeviation (BW16)".
LXPIC_API void PicLocalDeviation(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, unsigned halfX,
                                 unsigned halfY = 0xFFFFFFFF);
/// @}
