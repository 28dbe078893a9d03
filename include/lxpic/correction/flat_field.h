// SPDX-License-Identifier: Apache-2.0
/// @file flat_field.h
/// Flat-field correction: evens out light and sensor response by references that were taken of an
/// even scene.
#pragma once

#include "lxpic/base/image.h"
#include "lxpic/base/vector.h"

/// @name Flat field by images
/// All regions have one size. Results are clamped to the range of the pixels; C24 is corrected
/// component by component, each with its own level. They work in place, onto a reference too.
///
/// With one reference: a non-zero `multiplicative` gives `source * level / reference`, truncated,
/// and the largest value where the reference is 0; zero gives `source + level - reference`.
///
/// With a light and a dark one: the line that takes the dark reference to `darkLevel` and the light
/// one to `lightLevel`,
/// `(source - dark) * (lightLevel - darkLevel) / (light - dark) + darkLevel`, where the quotient is
/// truncated toward zero; the largest value where both references are equal. Either may be the
/// brighter one.
/// @{

/// Trace "PicUniformize ( BW8 Single Image)".
LXPIC_API void PicUniformize(LxROI<LxBW8>* source, LxBW8 level, LxROI<LxBW8>* reference,
                             LxROI<LxBW8>* destination, int multiplicative);
/// Trace "PicUniformize ( BW16 Single Image)".
LXPIC_API void PicUniformize(LxROI<LxBW16>* source, LxBW16 level, LxROI<LxBW16>* reference,
                             LxROI<LxBW16>* destination, int multiplicative);
/// Trace "PicUniformize ( C24 Single Image)".
LXPIC_API void PicUniformize(LxROI<LxC24>* source, LxC24 level, LxROI<LxC24>* reference,
                             LxROI<LxC24>* destination, int multiplicative);

/// Trace "PicUniformize ( BW8 Light/Dark Images)".
LXPIC_API void PicUniformize(LxROI<LxBW8>* source, LxBW8 lightLevel, LxROI<LxBW8>* light,
                             LxBW8 darkLevel, LxROI<LxBW8>* dark, LxROI<LxBW8>* destination);
/// Trace "PicUniformize ( BW16 Light/Dark Images)".
LXPIC_API void PicUniformize(LxROI<LxBW16>* source, LxBW16 lightLevel, LxROI<LxBW16>* light,
                             LxBW16 darkLevel, LxROI<LxBW16>* dark, LxROI<LxBW16>* destination);
/// Trace "PicUniformize ( C24 Light/Dark Images)".
LXPIC_API void PicUniformize(LxROI<LxC24>* source, LxC24 lightLevel, LxROI<LxC24>* light,
                             LxC24 darkLevel, LxROI<LxC24>* dark, LxROI<LxC24>* destination);
/// @}

/// @name Flat field by vectors
/// The same with references of one element for each column of the destination. A null vector sets
/// LX_ERROR_VECTOR_NO_DATA, one of another length LX_ERROR_WRONG_VECTOR_SIZE, each vector after the
/// regions. Gains are fixed point with 12 fractional bits, so that results may lie one or a few
/// levels below those of the image forms: `((gain * source) >> 12) + offset`, where
///
/// - one reference, multiplicative: `gain = level * 4096 / reference`, `offset = 0`;
/// - one reference, else: `gain = 4096`, `offset = level - reference`;
/// - two: with `k = lightLevel - darkLevel` and `s = light - dark`, `gain = k * 4096 / s` and
///   `offset = darkLevel - dark * k / s`;
/// - a divisor of 0: `gain = 0`, and the largest value as `offset`.
///
/// Quotients are truncated toward zero. LX_ERROR_ALLOCATION_FAILED when there is no memory for gains
/// and offsets.
/// @{

/// Trace "PicUniformize ( BW8 Single Vector)".
LXPIC_API void PicUniformize(LxROI<LxBW8>* source, LxBW8 level, LxBW8Vector* reference,
                             LxROI<LxBW8>* destination, int multiplicative);
/// Trace "PicUniformize ( BW16 Single Vector)".
LXPIC_API void PicUniformize(LxROI<LxBW16>* source, LxBW16 level, LxBW16Vector* reference,
                             LxROI<LxBW16>* destination, int multiplicative);
/// Trace "PicUniformize ( C24 Single Vector)".
LXPIC_API void PicUniformize(LxROI<LxC24>* source, LxC24 level, LxC24Vector* reference,
                             LxROI<LxC24>* destination, int multiplicative);

/// Trace "PicUniformize ( BW8 Light/Dark Vectors)".
LXPIC_API void PicUniformize(LxROI<LxBW8>* source, LxBW8 lightLevel, LxBW8Vector* light,
                             LxBW8 darkLevel, LxBW8Vector* dark, LxROI<LxBW8>* destination);
/// Trace "PicUniformize ( BW16 Light/Dark Vectors)".
LXPIC_API void PicUniformize(LxROI<LxBW16>* source, LxBW16 lightLevel, LxBW16Vector* light,
                             LxBW16 darkLevel, LxBW16Vector* dark, LxROI<LxBW16>* destination);
/// Trace "PicUniformize ( C24 Light/Dark Vectors)".
LXPIC_API void PicUniformize(LxROI<LxC24>* source, LxC24 lightLevel, LxC24Vector* light,
                             LxC24 darkLevel, LxC24Vector* dark, LxROI<LxC24>* destination);
/// @}
