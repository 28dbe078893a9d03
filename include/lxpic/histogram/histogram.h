// SPDX-License-Identifier: Apache-2.0
/// @file histogram.h
/// Counting grey levels.
#pragma once

#include "lxpic/base/image.h"
#include "lxpic/base/vector.h"
#include "lxpic/vectors/histogram_vector.h"

/// @name Histograms
/// Element i of the result is the number of pixels whose bin is i, modulo 2^32. An empty region has
/// a histogram of zeros. Errors, each with nothing changed: LX_ERROR_ROI_NOT_ATTACHED;
/// LX_ERROR_VECTOR_NO_DATA: a null vector; LX_ERROR_ALLOCATION_FAILED.
/// @{

/// 256 bins, one for each level. Confined to the runs of the region if it has any, where a pixel
/// counts once for each run that it lies in; LX_ERROR_INCONSISTENT_ARGUMENTS when a run does not
/// lie in the region any more. Trace "PicHistogram".
LXPIC_API void PicHistogram(LxROI<LxBW8>* source, LxBWHistogramVector* histogram);
/// The same of all pixels, whatever the runs of the region, into the first 256 entries of an
/// untyped vector. One that is no histogram (kind 2), or has fewer entries, is laid out anew. Trace
/// "PicHistogram ( LxVector)".
LXPIC_API void PicHistogram(LxROI<LxBW8>* source, LxVector* histogram);
/// 2^`bits` bins of all pixels, whatever the runs of the region: the bin of a pixel is made of its
/// `bits` bits from number `msb`, counted from 0, downwards: `pixel >> (msb + 1 - bits)`. Pixels
/// with bits set above `msb` count in the last bin when `saturate` is not 0, and nowhere when it
/// is. LX_ERROR_ARGUMENT_3_OUT_OF_RANGE: `msb` above 15; LX_ERROR_ARGUMENT_4_OUT_OF_RANGE: `bits`
/// above `msb + 1`. Trace "PicHistogram ( LxBW16)".
LXPIC_API void PicHistogram(LxROI<LxBW16>* source, LxBWHistogramVector* histogram, unsigned msb,
                            unsigned bits, int saturate);
/// The same of 32-bit pixels, `msb` at most 31 and `bits` at most 24. Trace
/// "PicHistogram ( LxBW32)".
LXPIC_API void PicHistogram(LxROI<LxBW32>* source, LxBWHistogramVector* histogram, unsigned msb,
                            unsigned bits, int saturate);
/// @}
