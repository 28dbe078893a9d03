// SPDX-License-Identifier: Apache-2.0
/// @file profile.h
/// Peaks of profiles, and filters of one dimension.
///
/// A profile is a vector of pixel values, such as those along a line of an image. A null vector is
/// LX_ERROR_VECTOR_NO_DATA. Source and destination may be the same vector.
#pragma once

#include "lxpic/base/vector.h"
#include "lxpic/vectors/path_vectors.h"

/// @name Peaks
/// Finds the runs of samples above `high` (positive peaks) and of samples below `low` (negative
/// ones); a run of either kind may follow the other directly. The excess d of a sample is what it
/// has beyond its threshold, negative in negative peaks. Of each run `peaks` gets, in order: index
/// of the first sample, number of samples, centre `sum(i * d) / sum(d)`, amplitude (the excess
/// farthest from 0) and area `sum(d)`; the last two saturate at 32 bits. Runs that begin at the
/// first sample or go on to the last one are left out, and so are those whose amplitude or area has
/// a magnitude below `minimumAmplitude` or `minimumArea`, of which numbers of 2^31 and above count
/// as negative.
/// LX_ERROR_INCONSISTENT_ARGUMENTS: `low` is above `high`; nothing changes.
/// LX_ERROR_ALLOCATION_FAILED leaves the peaks before the one that found no room.
/// @{

/// Trace "PicGetProfilePeaks ( BW8)".
LXPIC_API void PicGetProfilePeaks(LxBW8Vector* profile, LxPeaksVector* peaks, unsigned low,
                                  unsigned high, unsigned minimumAmplitude, unsigned minimumArea);
/// Trace "PicGetProfilePeaks ( BW16)".
LXPIC_API void PicGetProfilePeaks(LxBW16Vector* profile, LxPeaksVector* peaks, unsigned low,
                                  unsigned high, unsigned minimumAmplitude, unsigned minimumArea);
/// @}

/// @name Derivative
/// `((s[i + 1] - s[i - 1]) >> 1) + offset`, rounded down, with 128 as the offset of 8 bits and 32768
/// as that of 16; at the ends the difference to the one neighbour, not halved, plus the offset,
/// saturated. A single sample gives the offset. The destination gets as many elements as the
/// source. LX_ERROR_ALLOCATION_FAILED: nothing changes. Trace "PicProfileDerivative".
/// @{
LXPIC_API void PicProfileDerivative(LxBW8Vector* source, LxBW8Vector* destination);
LXPIC_API void PicProfileDerivative(LxBW16Vector* source, LxBW16Vector* destination);
/// @}

/// @name Smoothing by a mean
/// Average of the `2 * halfSize + 1` samples around each one, truncated; beyond the ends lie copies
/// of the samples there. Errors, each with nothing changed: LX_ERROR_WRONG_VECTOR_SIZE: fewer
/// samples than that, or a destination of another length, which is not resized;
/// LX_ERROR_ALLOCATION_FAILED.
/// @{

/// Trace "PicConvolUniform".
LXPIC_API void PicConvolUniform(LxBW8Vector* source, LxBW8Vector* destination, unsigned halfSize);
/// Trace "PicConvolUniform (BW16)".
LXPIC_API void PicConvolUniform(LxBW16Vector* source, LxBW16Vector* destination, unsigned halfSize);
/// @}

/// @name Repeated filters
/// The destination gets as many elements as the source, and then the result of `passes` passes, each
/// over what the pass before it made; beyond the ends lie copies of the samples there. No passes
/// leave the destination's elements as they are, new ones uninitialised.
/// LX_ERROR_ALLOCATION_FAILED: nothing changes.
/// @{

/// `(s[i - 1] + 2 * s[i] + s[i + 1]) >> 2`, truncated in each pass. A pass that changes nothing is
/// the last one. Trace "PicConvolBinomial ( LxBW8Vector)".
LXPIC_API void PicConvolGaussian(LxBW8Vector* source, LxBW8Vector* destination, unsigned passes);
/// The same. Trace "PicConvolBinomial ( LxBW16Vector)".
LXPIC_API void PicConvolGaussian(LxBW16Vector* source, LxBW16Vector* destination, unsigned passes);

/// `max(s[i - 1], s[i], s[i + 1])`, in a time that hardly grows with the passes. Trace
/// "PicDilate ( LxBW8Vector)".
LXPIC_API void PicDilate(LxBW8Vector* source, LxBW8Vector* destination, unsigned passes);
/// The same. Trace "PicDilate ( LxBW16Vector)".
LXPIC_API void PicDilate(LxBW16Vector* source, LxBW16Vector* destination, unsigned passes);

/// `min(s[i - 1], s[i], s[i + 1])`, like PicDilate(). Trace "PicErode ( LxBW8Vector)".
LXPIC_API void PicErode(LxBW8Vector* source, LxBW8Vector* destination, unsigned passes);
/// The same. Trace "PicErode ( LxBW16Vector)".
LXPIC_API void PicErode(LxBW16Vector* source, LxBW16Vector* destination, unsigned passes);
/// @}
