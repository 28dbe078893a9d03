// SPDX-License-Identifier: Apache-2.0
/// @file complex.h
/// Spectra made visible, and their energy. The centre of an image of W by H complex pixels is
/// (W / 2, H / 2), the place of the frequency 0 in what PicFastDFT() and PicSlowDFT() give.
#pragma once

#include "lxpic/base/roi.h"
#include "lxpic/base/vector.h"

/// @name Moduli
/// A modulus m becomes `trunc(m)` or, when `logarithmic` is not 0, `trunc(ln(1 + m) * logGain)`.
/// What is outside 0..255 then, also below 0, or not a number, is 255. All in double precision.
/// @{

/// `m = sqrt(re² + im²) * gain`, with the sum of squares rounded to single precision. Trace
/// "PicComplexModulus".
LXPIC_API void PicComplexModulus(LxROI<LxComplex64>* source, LxROI<LxBW8>* destination, float gain,
                                 int logarithmic, float logGain);

/// Weighted by the squared distance from the centre, in relation to that of the corner:
/// `m = sqrt(re² + im²) * (((x - W/2)² + (y - H/2)²) * w)`, `w = gain / ((W/2)² + (H/2)²)`. Trace
/// "PicComplexRescaledModulus".
LXPIC_API void PicComplexRescaledModulus(LxROI<LxComplex64>* source, LxROI<LxBW8>* destination,
                                         float gain, int logarithmic, float logGain);
/// @}

/// Angles 0..2 pi as 0..255: `trunc(256 * t)`, at most 255, for the angle `atan2(im, re)`, which is 0
/// where both are 0, rounded to single precision; `t = angle * 0.15915494` in single precision, plus
/// 1 where that is negative. 255 for what is not a number. Trace "PicComplexArgument".
LXPIC_API void PicComplexArgument(LxROI<LxComplex64>* source, LxROI<LxBW8>* destination);

/// The energy in discs around the centre. Element r is the sum of re² + im² over all pixels whose
/// distance from the centre, cut to an integer, is 1 to r; element 0 is 0. There are
/// `n = trunc(sqrt((W/2)² + (H/2)²)) + 1` of them, and elements behind those stay. Sums are in double
/// precision, in the order of the pixels, and rounded once.
///
/// The vector must be of kind LX_VECTOR_DISC_ENERGY, else LX_ERROR_VECTOR_CONTENT; it is laid out
/// anew when it has fewer than n groups. LX_ERROR_VECTOR_NO_DATA without a vector,
/// LX_ERROR_ALLOCATION_FAILED. Elements of another type or width and longer groups set
/// LX_ERROR_UNSUPPORTED_DATA_TYPE, LX_ERROR_UNSUPPORTED_DATA_SIZE and LX_ERROR_DISC_ENERGY. Trace
/// "PicComplexDiscEnergy".
LXPIC_API void PicComplexDiscEnergy(LxROI<LxComplex64>* source, LxVector* energy);
