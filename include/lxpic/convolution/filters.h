// SPDX-License-Identifier: Apache-2.0
/// @file filters.h
/// Predefined edge, sharpening and smoothing filters of 3 × 3 neighbourhoods.
///
/// Integer filters; what "magnitude" ends is `min(abs(v), M)`, with `M` the largest value of a
/// pixel or component. A missing destination means in place, as does the source itself. Colours are
/// filtered component by component.
///
/// Border: pixels outside the region are those of its edge (replication). Filters marked "zero
/// border" take 0 instead when they run from one grey image to another on the plain path: always
/// with LxBW16, and with LxBW8 when LxSetMMX() has switched the fast path off.
///
/// Errors: LX_ERROR_ROI_NOT_ATTACHED, LX_ERROR_SIZE_MISMATCH, LX_ERROR_ALLOCATION_FAILED.
///
/// Traces are the function's name and " (BW8)", " (BW16)" or " ( C24)", for the type of its images.
#pragma once

#include "lxpic/base/image.h"

/// @name Horizontal Sobel response
/// Weights -1 0 1 / -2 0 2 / -1 0 1, magnitude. Zero border.
/// @{
LXPIC_API void PicConvolSobelX(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
LXPIC_API void PicConvolSobelX(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
LXPIC_API void PicConvolSobelX(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// @}

/// @name Vertical Sobel response
/// Weights -1 -2 -1 / 0 0 0 / 1 2 1, magnitude. Zero border.
/// @{
LXPIC_API void PicConvolSobelY(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
LXPIC_API void PicConvolSobelY(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
LXPIC_API void PicConvolSobelY(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// @}

/// @name Sobel gradient
/// The sum of the magnitudes of both responses (I. Sobel and G. Feldman, 1968). Zero border.
/// @{
LXPIC_API void PicConvolSobel(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
LXPIC_API void PicConvolSobel(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
LXPIC_API void PicConvolSobel(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// @}

/// @name Horizontal Prewitt response
/// Weights -1 0 1 in each row, magnitude.
/// @{
LXPIC_API void PicConvolPrewittX(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
LXPIC_API void PicConvolPrewittX(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
LXPIC_API void PicConvolPrewittX(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// @}

/// @name Vertical Prewitt response
/// Weights -1 -1 -1 / 0 0 0 / 1 1 1, magnitude. Zero border.
/// @{
LXPIC_API void PicConvolPrewittY(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
LXPIC_API void PicConvolPrewittY(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
LXPIC_API void PicConvolPrewittY(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// @}

/// @name Prewitt gradient
/// The sum of the magnitudes of both responses (J. Prewitt, 1970). Zero border.
/// @{
LXPIC_API void PicConvolPrewitt(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
LXPIC_API void PicConvolPrewitt(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
LXPIC_API void PicConvolPrewitt(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// @}

/// @name Laplacian over four neighbours
/// Weights 0 1 0 / 1 -4 1 / 0 1 0, magnitude. Zero border.
/// @{
LXPIC_API void PicConvolLaplacian4(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
LXPIC_API void PicConvolLaplacian4(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
LXPIC_API void PicConvolLaplacian4(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// @}

/// @name Laplacian over eight neighbours
/// Weights 1 1 1 / 1 -8 1 / 1 1 1, magnitude. Zero border.
/// @{
LXPIC_API void PicConvolLaplacian8(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
LXPIC_API void PicConvolLaplacian8(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
LXPIC_API void PicConvolLaplacian8(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// @}

/// @name Second difference along the row
/// `p(x-1) + p(x+1) - 2p(x)`, magnitude.
/// @{
LXPIC_API void PicConvolLaplacianX(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
LXPIC_API void PicConvolLaplacianX(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
LXPIC_API void PicConvolLaplacianX(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// @}

/// @name Second difference along the column
/// Magnitude.
/// @{
LXPIC_API void PicConvolLaplacianY(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
LXPIC_API void PicConvolLaplacianY(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
LXPIC_API void PicConvolLaplacianY(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// @}

/// @name Sharpening
/// Weights 0 -1 0 / -1 5 -1 / 0 -1 0, magnitude. Zero border.
/// @{
LXPIC_API void PicConvolHighpass1(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
LXPIC_API void PicConvolHighpass1(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
LXPIC_API void PicConvolHighpass1(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// @}

/// @name Strong sharpening
/// Weights -1 -1 -1 / -1 9 -1 / -1 -1 -1, magnitude. Zero border.
/// @{
LXPIC_API void PicConvolHighpass2(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
LXPIC_API void PicConvolHighpass2(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
LXPIC_API void PicConvolHighpass2(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// @}

/// @name Box smoothing
/// PicConvolUniform3x3() under another name: `(sum of nine * 14) >> 7`.
/// @{
LXPIC_API void PicConvolLowpass1(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
LXPIC_API void PicConvolLowpass1(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
LXPIC_API void PicConvolLowpass1(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// @}

/// @name Mean of the eight neighbours
/// Truncated. Zero border.
/// @{
LXPIC_API void PicConvolLowpass2(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
LXPIC_API void PicConvolLowpass2(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
LXPIC_API void PicConvolLowpass2(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// @}

/// @name Binomial smoothing
/// PicConvolGaussian3x3() under another name: weights 1 2 1 / 2 4 2 / 1 2 1, `sum >> 4`.
/// @{
LXPIC_API void PicConvolLowpass3(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
LXPIC_API void PicConvolLowpass3(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
LXPIC_API void PicConvolLowpass3(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// @}

/// @name Difference of the neighbours in the row
/// `abs(p(x-1) - p(x+1))`.
/// @{
LXPIC_API void PicConvolGradientX(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
LXPIC_API void PicConvolGradientX(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
LXPIC_API void PicConvolGradientX(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// @}

/// @name Difference of the neighbours in the column
/// Traces of the grey forms "ConvolGradientY (BW8)" and "ConvolGradientY (BW16)".
/// @{
LXPIC_API void PicConvolGradientY(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
LXPIC_API void PicConvolGradientY(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
LXPIC_API void PicConvolGradientY(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// @}

/// @name Sum of both differences
/// @{
LXPIC_API void PicConvolGradient(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
LXPIC_API void PicConvolGradient(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
LXPIC_API void PicConvolGradient(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// @}

/// @name Roberts cross
/// `min(abs(p(x+1, y) - p(x, y+1)) + abs(p(x, y) - p(x+1, y+1)), M)`; the bottom right pixel is 0
/// (L. Roberts, 1963). The grey forms cannot run in place: LX_ERROR_DESTINATION_IS_SOURCE. Trace of
/// the 8-bit form "PicConvolRoberts".
/// @{
LXPIC_API void PicConvolRoberts(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
LXPIC_API void PicConvolRoberts(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
LXPIC_API void PicConvolRoberts(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// @}
