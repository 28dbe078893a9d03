// SPDX-License-Identifier: Apache-2.0
/// @file filters.h
/// Predefined edge, sharpening and smoothing filters of 3 × 3 neighbourhoods.
#pragma once

#include "lxpic/base/image.h"

/// @name Filters
/// Integer filters; what "magnitude" ends is `min(abs(v), M)`, with `M` the largest value of a
/// pixel or component. A missing destination means in place, as does the source itself. Colours are
/// filtered component by component.
///
/// Border: pixels outside the region are those of its edge (replication). Filters marked "zero
/// border" take 0 instead when they run from one grey image to another on the plain path: always
/// with LxBW16, and with LxBW8 when LxSetMMX() has switched the fast path off.
///
/// Errors: LX_ERROR_ROI_NOT_ATTACHED, LX_ERROR_SIZE_MISMATCH, LX_ERROR_ALLOCATION_FAILED.
/// @{

/// Horizontal Sobel response: weights -1 0 1 / -2 0 2 / -1 0 1, magnitude. Zero border. Trace
/// "PicConvolSobelX (BW8)".
LXPIC_API void PicConvolSobelX(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Horizontal Sobel response: weights -1 0 1 / -2 0 2 / -1 0 1, magnitude. Zero border. Trace
/// "PicConvolSobelX (BW16)".
LXPIC_API void PicConvolSobelX(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// Horizontal Sobel response: weights -1 0 1 / -2 0 2 / -1 0 1, magnitude. Zero border. Trace
/// "PicConvolSobelX ( C24)".
LXPIC_API void PicConvolSobelX(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// Vertical Sobel response: weights -1 -2 -1 / 0 0 0 / 1 2 1, magnitude. Zero border. Trace
/// "PicConvolSobelY (BW8)".
LXPIC_API void PicConvolSobelY(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Vertical Sobel response: weights -1 -2 -1 / 0 0 0 / 1 2 1, magnitude. Zero border. Trace
/// "PicConvolSobelY (BW16)".
LXPIC_API void PicConvolSobelY(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// Vertical Sobel response: weights -1 -2 -1 / 0 0 0 / 1 2 1, magnitude. Zero border. Trace
/// "PicConvolSobelY ( C24)".
LXPIC_API void PicConvolSobelY(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// Sobel gradient: the sum of the magnitudes of both responses (I. Sobel and G. Feldman, 1968).
/// Zero border. Trace "PicConvolSobel (BW8)".
LXPIC_API void PicConvolSobel(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Sobel gradient: the sum of the magnitudes of both responses (I. Sobel and G. Feldman, 1968).
/// Zero border. Trace "PicConvolSobel (BW16)".
LXPIC_API void PicConvolSobel(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// Sobel gradient: the sum of the magnitudes of both responses (I. Sobel and G. Feldman, 1968).
/// Zero border. Trace "PicConvolSobel ( C24)".
LXPIC_API void PicConvolSobel(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// Horizontal Prewitt response: weights -1 0 1 in each row, magnitude. Trace "PicConvolPrewittX
/// (BW8)".
LXPIC_API void PicConvolPrewittX(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Horizontal Prewitt response: weights -1 0 1 in each row, magnitude. Trace "PicConvolPrewittX
/// (BW16)".
LXPIC_API void PicConvolPrewittX(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// Horizontal Prewitt response: weights -1 0 1 in each row, magnitude. Trace "PicConvolPrewittX
/// ( C24)".
LXPIC_API void PicConvolPrewittX(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// Vertical Prewitt response: weights -1 -1 -1 / 0 0 0 / 1 1 1, magnitude. Zero border. Trace
/// "PicConvolPrewittY (BW8)".
LXPIC_API void PicConvolPrewittY(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Vertical Prewitt response: weights -1 -1 -1 / 0 0 0 / 1 1 1, magnitude. Zero border. Trace
/// "PicConvolPrewittY (BW16)".
LXPIC_API void PicConvolPrewittY(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// Vertical Prewitt response: weights -1 -1 -1 / 0 0 0 / 1 1 1, magnitude. Zero border. Trace
/// "PicConvolPrewittY ( C24)".
LXPIC_API void PicConvolPrewittY(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// Prewitt gradient: the sum of the magnitudes of both responses (J. Prewitt, 1970). Zero
/// border. Trace "PicConvolPrewitt (BW8)".
LXPIC_API void PicConvolPrewitt(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Prewitt gradient: the sum of the magnitudes of both responses (J. Prewitt, 1970). Zero
/// border. Trace "PicConvolPrewitt (BW16)".
LXPIC_API void PicConvolPrewitt(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// Prewitt gradient: the sum of the magnitudes of both responses (J. Prewitt, 1970). Zero
/// border. Trace "PicConvolPrewitt ( C24)".
LXPIC_API void PicConvolPrewitt(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// Laplacian over four neighbours: weights 0 1 0 / 1 -4 1 / 0 1 0, magnitude. Zero border.
/// Trace "PicConvolLaplacian4 (BW8)".
LXPIC_API void PicConvolLaplacian4(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Laplacian over four neighbours: weights 0 1 0 / 1 -4 1 / 0 1 0, magnitude. Zero border.
/// Trace "PicConvolLaplacian4 (BW16)".
LXPIC_API void PicConvolLaplacian4(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// Laplacian over four neighbours: weights 0 1 0 / 1 -4 1 / 0 1 0, magnitude. Zero border.
/// Trace "PicConvolLaplacian4 ( C24)".
LXPIC_API void PicConvolLaplacian4(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// Laplacian over eight neighbours: weights 1 1 1 / 1 -8 1 / 1 1 1, magnitude. Zero border.
/// Trace "PicConvolLaplacian8 (BW8)".
LXPIC_API void PicConvolLaplacian8(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Laplacian over eight neighbours: weights 1 1 1 / 1 -8 1 / 1 1 1, magnitude. Zero border.
/// Trace "PicConvolLaplacian8 (BW16)".
LXPIC_API void PicConvolLaplacian8(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// Laplacian over eight neighbours: weights 1 1 1 / 1 -8 1 / 1 1 1, magnitude. Zero border.
/// Trace "PicConvolLaplacian8 ( C24)".
LXPIC_API void PicConvolLaplacian8(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// Second difference along the row: `p(x-1) + p(x+1) - 2p(x)`, magnitude. Trace
/// "PicConvolLaplacianX (BW8)".
LXPIC_API void PicConvolLaplacianX(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Second difference along the row: `p(x-1) + p(x+1) - 2p(x)`, magnitude. Trace
/// "PicConvolLaplacianX (BW16)".
LXPIC_API void PicConvolLaplacianX(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// Second difference along the row: `p(x-1) + p(x+1) - 2p(x)`, magnitude. Trace
/// "PicConvolLaplacianX ( C24)".
LXPIC_API void PicConvolLaplacianX(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// Second difference along the column, magnitude. Trace "PicConvolLaplacianY (BW8)".
LXPIC_API void PicConvolLaplacianY(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Second difference along the column, magnitude. Trace "PicConvolLaplacianY (BW16)".
LXPIC_API void PicConvolLaplacianY(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// Second difference along the column, magnitude. Trace "PicConvolLaplacianY ( C24)".
LXPIC_API void PicConvolLaplacianY(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// Sharpening: weights 0 -1 0 / -1 5 -1 / 0 -1 0, magnitude. Zero border. Trace
/// "PicConvolHighpass1 (BW8)".
LXPIC_API void PicConvolHighpass1(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Sharpening: weights 0 -1 0 / -1 5 -1 / 0 -1 0, magnitude. Zero border. Trace
/// "PicConvolHighpass1 (BW16)".
LXPIC_API void PicConvolHighpass1(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// Sharpening: weights 0 -1 0 / -1 5 -1 / 0 -1 0, magnitude. Zero border. Trace
/// "PicConvolHighpass1 ( C24)".
LXPIC_API void PicConvolHighpass1(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// Strong sharpening: weights -1 -1 -1 / -1 9 -1 / -1 -1 -1, magnitude. Zero border. Trace
/// "PicConvolHighpass2 (BW8)".
LXPIC_API void PicConvolHighpass2(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Strong sharpening: weights -1 -1 -1 / -1 9 -1 / -1 -1 -1, magnitude. Zero border. Trace
/// "PicConvolHighpass2 (BW16)".
LXPIC_API void PicConvolHighpass2(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// Strong sharpening: weights -1 -1 -1 / -1 9 -1 / -1 -1 -1, magnitude. Zero border. Trace
/// "PicConvolHighpass2 ( C24)".
LXPIC_API void PicConvolHighpass2(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// Box smoothing, PicConvolUniform3x3() under another name: `(sum of nine * 14) >> 7`. Trace
/// "PicConvolLowpass1 (BW8)".
LXPIC_API void PicConvolLowpass1(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Box smoothing, PicConvolUniform3x3() under another name: `(sum of nine * 14) >> 7`. Trace
/// "PicConvolLowpass1 (BW16)".
LXPIC_API void PicConvolLowpass1(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// Box smoothing, PicConvolUniform3x3() under another name: `(sum of nine * 14) >> 7`. Trace
/// "PicConvolLowpass1 ( C24)".
LXPIC_API void PicConvolLowpass1(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// Mean of the eight neighbours, truncated. Zero border. Trace "PicConvolLowpass2 (BW8)".
LXPIC_API void PicConvolLowpass2(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Mean of the eight neighbours, truncated. Zero border. Trace "PicConvolLowpass2 (BW16)".
LXPIC_API void PicConvolLowpass2(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// Mean of the eight neighbours, truncated. Zero border. Trace "PicConvolLowpass2 ( C24)".
LXPIC_API void PicConvolLowpass2(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// Binomial smoothing, PicConvolGaussian3x3() under another name: weights 1 2 1 / 2 4 2 / 1 2
/// 1, `sum >> 4`. Trace "PicConvolLowpass3 (BW8)".
LXPIC_API void PicConvolLowpass3(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Binomial smoothing, PicConvolGaussian3x3() under another name: weights 1 2 1 / 2 4 2 / 1 2
/// 1, `sum >> 4`. Trace "PicConvolLowpass3 (BW16)".
LXPIC_API void PicConvolLowpass3(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// Binomial smoothing, PicConvolGaussian3x3() under another name: weights 1 2 1 / 2 4 2 / 1 2
/// 1, `sum >> 4`. Trace "PicConvolLowpass3 ( C24)".
LXPIC_API void PicConvolLowpass3(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// Difference of the neighbours in the row: `abs(p(x-1) - p(x+1))`. Trace "PicConvolGradientX
/// (BW8)".
LXPIC_API void PicConvolGradientX(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Difference of the neighbours in the row: `abs(p(x-1) - p(x+1))`. Trace "PicConvolGradientX
/// (BW16)".
LXPIC_API void PicConvolGradientX(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// Difference of the neighbours in the row: `abs(p(x-1) - p(x+1))`. Trace "PicConvolGradientX (
/// C24)".
LXPIC_API void PicConvolGradientX(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// Difference of the neighbours in the column. Trace "ConvolGradientY (BW8)".
LXPIC_API void PicConvolGradientY(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Difference of the neighbours in the column. Trace "ConvolGradientY (BW16)".
LXPIC_API void PicConvolGradientY(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// Difference of the neighbours in the column. Trace "PicConvolGradientY ( C24)".
LXPIC_API void PicConvolGradientY(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// Sum of both differences. Trace "PicConvolGradient (BW8)".
LXPIC_API void PicConvolGradient(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Sum of both differences. Trace "PicConvolGradient (BW16)".
LXPIC_API void PicConvolGradient(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// Sum of both differences. Trace "PicConvolGradient ( C24)".
LXPIC_API void PicConvolGradient(LxROI<LxC24>* source, LxROI<LxC24>* destination);

/// Roberts cross: `min(abs(p(x+1, y) - p(x, y+1)) + abs(p(x, y) - p(x+1, y+1)), M)`; the bottom
/// right pixel is 0 (L. Roberts, 1963). Cannot run in place: LX_ERROR_DESTINATION_IS_SOURCE. Trace
/// "PicConvolRoberts".
LXPIC_API void PicConvolRoberts(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// As above. Trace "PicConvolRoberts (BW16)".
LXPIC_API void PicConvolRoberts(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// As above for each component; runs in place. Trace "PicConvolRoberts ( C24)".
LXPIC_API void PicConvolRoberts(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// @}
