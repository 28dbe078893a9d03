// SPDX-License-Identifier: Apache-2.0
/// @file gradient.h
/// Gradient images through lookup images. Differences of a pixel's neighbours,
///
///     dx = p(x - 1, y) - p(x + 1, y)
///     dy = p(x, y - 1) - p(x, y + 1)
///
/// where a pixel stands for its neighbours outside the region, find their result in an image of
/// 512 × 512 pixels that is made once: the pixel at column dx + 256 and row dy + 256.
#pragma once

#include "lxpic/base/image.h"
#include "lxpic/base/roi.h"

/// @name Lookup images
/// The table becomes 512 × 512 pixels large and holds the result for all differences between -256
/// and 255, computed in double precision. LX_ERROR_SIZE_MISMATCH for a view of another size,
/// LX_ERROR_ALLOCATION_FAILED.
/// @{

/// Magnitudes: `trunc(sqrt(dx² + dy²) * gain + 0.5)`, at most 255, also where that is not a number,
/// and at least 0. Trace "PicModulusImage".
LXPIC_API void PicModulusImage(LxImage<LxBW8>* table, float gain);

/// Directions: the low 8 bits of `trunc(atan2(dy, dx) * k + origin + 256.5)`, so that the angle
/// `period`, in the current unit, spans 256 codes: k is 256 / LxToRadians(period) in single
/// precision. A period of 0 stands for a full turn. 0 where both differences are 0; 255 for codes
/// that are not a number or exceed 64 bits. Trace "PicArgumentImage".
LXPIC_API void PicArgumentImage(LxImage<LxBW8>* table, LxBW8 origin, float period);
/// @}

/// The differences themselves: dx in the low and dy in the high 16 bits of each pixel, both signed.
/// LX_ERROR_ALLOCATION_FAILED when there is no memory for a few rows. Trace "PicGradientVector".
LXPIC_API void PicGradientVector(LxROI<LxBW8>* source, LxROI<LxBW32>* destination);

/// @name Gradients
/// What a lookup image holds for the differences of each pixel. A table that is not 512 × 512 pixels
/// large sets LX_ERROR_ARGUMENT_3_OUT_OF_RANGE, LX_ERROR_ALLOCATION_FAILED means that there is no
/// memory for a few rows. Trace "PicGradientScalar".
/// @{

/// Of an image. Works in place.
LXPIC_API void PicGradientScalar(LxROI<LxBW8>* source, LxROI<LxBW8>* destination,
                                 LxROI<LxBW8>* table);
/// Of what PicGradientVector() made. Differences outside -256..255 are clamped.
LXPIC_API void PicGradientScalar(LxROI<LxBW32>* source, LxROI<LxBW8>* destination,
                                 LxROI<LxBW8>* table);
/// @}
