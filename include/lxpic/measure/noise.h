// SPDX-License-Identifier: Apache-2.0
/// @file noise.h
/// How noisy an image is, measured against a reference.
#pragma once

#include "lxpic/base/roi.h"

/// How the reference was made of N frames, and what the sum D of squared differences from it is
/// divided by: its own noise adds to the source's, or has some of it in common. Any other value is
/// taken as PIC_REFERENCE_NOISE_NONE.
enum PIC_REFERENCE_NOISE : unsigned {
  /// It is free of noise: 1.
  PIC_REFERENCE_NOISE_NONE = 0,
  /// The average of N frames without the source: 1 + 1/N.
  PIC_REFERENCE_NOISE_INDEPENDENT = 1,
  /// The average of N frames, the source among them: 1 - 1/N. Refused when N is 1.
  PIC_REFERENCE_NOISE_DEPENDENT = 2
};

/// @name Noise
/// Source and reference have one size. N is 1 unless it is passed as `frames`: the reference is then
/// the sum of so many 8-bit frames, and each of its pixels is shifted right by log2(frames) before
/// it is compared. Sums are exact; the rest is computed in double precision.
///
/// Errors, in this order, which return 0: LX_ERROR_ARGUMENT_3_OUT_OF_RANGE: `frames` is no power of
/// two from 1 to 256; LX_ERROR_ROI_NOT_ATTACHED; LX_ERROR_SIZE_MISMATCH;
/// LX_ERROR_ARGUMENT_3_OUT_OF_RANGE: PIC_REFERENCE_NOISE_DEPENDENT with N = 1.
/// @{

/// The root mean square of the noise: `sqrt(D / (width * height))`, D corrected for `noise`.
/// LX_ERROR_EMPTY_HISTOGRAM: empty regions. Trace "PicRmsNoise ( BW8 source and BW8 reference)".
LXPIC_API float PicRmsNoise(LxROI<LxBW8>* source, LxROI<LxBW8>* reference,
                            PIC_REFERENCE_NOISE noise);
/// Against a sum of frames. Trace "PicRmsNoise ( BW8 source and BW16 reference)".
LXPIC_API float PicRmsNoise(LxROI<LxBW8>* source, LxROI<LxBW16>* reference, unsigned frames,
                            PIC_REFERENCE_NOISE noise);
/// Trace "PicRmsNoise ( BW16 source and BW16 reference)".
LXPIC_API float PicRmsNoise(LxROI<LxBW16>* source, LxROI<LxBW16>* reference,
                            PIC_REFERENCE_NOISE noise);
/// D is over the three components, and divided by the number of pixels all the same. Trace
/// "PicRmsNoise ( C24 source and C24 reference)".
LXPIC_API float PicRmsNoise(LxROI<LxC24>* source, LxROI<LxC24>* reference,
                            PIC_REFERENCE_NOISE noise);

/// The signal-to-noise ratio in decibels: `10 log10(P / D)`, P being the sum of the source's squares
/// and D corrected for `noise`. 0 without any difference, so of empty regions too; minus infinity
/// where a black source differs from the reference. Trace
/// "PicSignalNoiseRatio ( BW8 source and BW8 reference)".
LXPIC_API float PicSignalNoiseRatio(LxROI<LxBW8>* source, LxROI<LxBW8>* reference,
                                    PIC_REFERENCE_NOISE noise);
/// Against a sum of frames. Trace "PicSignalNoiseRatio ( BW8 source and BW16 reference)".
LXPIC_API float PicSignalNoiseRatio(LxROI<LxBW8>* source, LxROI<LxBW16>* reference, unsigned frames,
                                    PIC_REFERENCE_NOISE noise);
/// Trace "PicSignalNoiseRatio ( BW16 source and BW16 reference)".
LXPIC_API float PicSignalNoiseRatio(LxROI<LxBW16>* source, LxROI<LxBW16>* reference,
                                    PIC_REFERENCE_NOISE noise);
/// P and D are over the three components. Trace
/// "PicSignalNoiseRatio ( C24 source and C24 reference)".
LXPIC_API float PicSignalNoiseRatio(LxROI<LxC24>* source, LxROI<LxC24>* reference,
                                    PIC_REFERENCE_NOISE noise);
/// @}
