// SPDX-License-Identifier: Apache-2.0
/// @file fourier.h
/// Fourier transforms of grey images.
#pragma once

#include "lxpic/base/roi.h"

/// @name Fourier transforms
/// The two-dimensional discrete Fourier transform of an image of W by H pixels:
///
///     F(u, v) = s * sum of p(x, y) * (-1)^(x + y) * exp(-2 pi i (u x / W + v y / H))
///
/// with `s = factor / sqrt(W * H)`: with `factor` 1 the squares of the moduli add up to those of the
/// pixels. The signs centre the spectrum: pixel (u, v) of the destination holds the frequency
/// (u - W / 2, v - H / 2) of an even W and H. Each complex pixel is a real and an imaginary `float`.
///
/// All arithmetic is in single precision, `s` and the cosines and sines that twiddles start from are
/// rounded from double. Both forms transform rows first, each sums in an order of its own, and every
/// result is the same to the last bit on all paths and processors. LX_ERROR_ALLOCATION_FAILED when
/// there is no memory for a few rows: then nothing is written.
/// @{

/// The direct form, for any size: every coefficient is one sum over its row or column in order of
/// the pixels, with twiddles from repeated multiplication. Takes W * H * (W + H) steps. An empty
/// region is a success. Trace "PicSlowDFT".
LXPIC_API void PicSlowDFT(LxROI<LxBW8>* source, LxROI<LxComplex64>* destination, float factor);

/// The fast form, for widths and heights that are powers of two, LX_ERROR_NOT_POWER_OF_TWO for
/// others and for empty regions: radix 2, decimation in time (J. W. Cooley and J. W. Tukey, An
/// algorithm for the machine calculation of complex Fourier series, 1965), twiddles from the
/// trigonometric recurrence of each stage. Trace "PicFastDFT".
LXPIC_API void PicFastDFT(LxROI<LxBW8>* source, LxROI<LxComplex64>* destination, float factor);
/// @}
