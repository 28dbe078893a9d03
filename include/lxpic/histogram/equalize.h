// SPDX-License-Identifier: Apache-2.0
/// @file equalize.h
/// Histogram equalization: grey levels spread evenly over the pixels.
#pragma once

#include "lxpic/base/image.h"
#include "lxpic/base/vector.h"
#include "lxpic/vectors/histogram_vector.h"

/// @name Equalization tables
/// 256 entries from a histogram of 256 bins, each the scaled share of the pixels that are darker
/// than its level, truncated. Null vectors set LX_ERROR_VECTOR_NO_DATA, histograms without a pixel
/// LX_ERROR_EMPTY_HISTOGRAM; after an error the table is as it was.
/// @{

/// `table[v] = 255 * darker(v) / pixels`. A histogram of another length sets
/// LX_ERROR_WRONG_VECTOR_SIZE. Trace "PicSetupEqualize ( LxBWHistogramVector)".
LXPIC_API void PicSetupEqualize(LxBWHistogramVector* histogram, LxBW8Vector* table);
/// `table[v] = 256 * darker(v) / pixels`, modulo 256, from and into the first 256 entries of
/// untyped vectors. LX_ERROR_EQUALIZE_SETUP: the first is no histogram (kind 2);
/// LX_ERROR_VECTOR_NO_DATA: it has no data; LX_ERROR_WRONG_VECTOR_SIZE: fewer than 256 entries. A
/// table that is none (kind 3), or has fewer entries, is laid out anew. Trace
/// "PicSetupEqualize ( LxVector)".
LXPIC_API void PicSetupEqualize(LxVector* histogram, LxVector* table);
/// @}

/// @name Equalization
/// Both work in place and accept empty regions. LX_ERROR_ROI_NOT_ATTACHED, LX_ERROR_SIZE_MISMATCH,
/// LX_ERROR_ALLOCATION_FAILED.
/// @{

/// PicHistogram() of the source, confined to its runs if it has any; PicSetupEqualize(); PicLut()
/// on all pixels. What these refuse keeps their trace: a run that does not lie in the source any
/// more, LX_ERROR_EMPTY_HISTOGRAM when there are only runs of no pixels. Trace "PicEqualize".
LXPIC_API void PicEqualize(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// `65535 * (pixels up to the level) / pixels`, truncated: the brightest level becomes 65535.
/// All pixels count, whatever the runs of the source. Trace "PicEqualize (BW16)".
LXPIC_API void PicEqualize(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// @}
