// SPDX-License-Identifier: Apache-2.0
/// @file convert.h
/// Conversions between pixel types.
#pragma once

#include "lxpic/base/image.h"

/// @name Convert
/// Each pixel of `destination` from the pixel of `source` at the same place. Integer formulas that
/// truncate. Shifts act on the pixel widened to 32 bits and count modulo 32; nothing saturates.
/// @{

/// Components shifted right by 3 into their fields; bit 15 stays. Trace "PicConvert ( C24 to C15)".
LXPIC_API void PicConvert(LxROI<LxC24>* source, LxROI<LxC15>* destination);
/// All three fields `v >> 3`; bit 15 stays. Trace "PicConvert ( BW8 to C15)".
LXPIC_API void PicConvert(LxROI<LxBW8>* source, LxROI<LxC15>* destination);
/// Fields shifted left by 3: 0..248. Trace "PicConvert ( C15 to C24)".
LXPIC_API void PicConvert(LxROI<LxC15>* source, LxROI<LxC24>* destination);
/// A third of the sum of the fields times 8: 0..248. Trace "PicConvert ( C15 to BW8)".
LXPIC_API void PicConvert(LxROI<LxC15>* source, LxROI<LxBW8>* destination);
/// Components shifted right by 3, 2 and 3 into their fields. Trace "PicConvert ( C24 to C16)".
LXPIC_API void PicConvert(LxROI<LxC24>* source, LxROI<LxC16>* destination);
/// Fields `v >> 3`, `v >> 2`, `v >> 3`. Trace "PicConvert ( BW8 to C16)".
LXPIC_API void PicConvert(LxROI<LxBW8>* source, LxROI<LxC16>* destination);
/// Fields shifted left by 3, 2 and 3: 0..248, middle 0..252. Trace "PicConvert ( C16 to C24)".
LXPIC_API void PicConvert(LxROI<LxC16>* source, LxROI<LxC24>* destination);
/// A third of the sum of the fields shifted left by 3, 2 and 3: 0..249. Trace "PicConvert ( C16 to
/// BW8)".
LXPIC_API void PicConvert(LxROI<LxC16>* source, LxROI<LxBW8>* destination);
/// Copies the components; the alpha stays. Trace "PicConvert ( C24 to C24A)".
LXPIC_API void PicConvert(LxROI<LxC24>* source, LxROI<LxC24A>* destination);
/// Copies the components. Trace "PicConvert ( C24A to C24)".
LXPIC_API void PicConvert(LxROI<LxC24A>* source, LxROI<LxC24>* destination);
/// Merges colour and alpha plane. Trace "PicConvert ( C24 to C24A with Alpha)".
LXPIC_API void PicConvert(LxROI<LxC24>* source, LxROI<LxBW8>* alpha, LxROI<LxC24A>* destination);
/// Splits into colour and alpha plane. Trace "PicConvert ( C24A to C24 with Alpha)".
LXPIC_API void PicConvert(LxROI<LxC24A>* source, LxROI<LxC24>* destination, LxROI<LxBW8>* alpha);
/// The level in each component. Trace "PicConvert ( BW8 to C24)".
LXPIC_API void PicConvert(LxROI<LxBW8>* source, LxROI<LxC24>* destination);
/// `((c0 + c1 + c2) * 85) >> 8`, the mean of the components; white gives 254. Trace "PicConvert (
/// C24 to BW8)".
LXPIC_API void PicConvert(LxROI<LxC24>* source, LxROI<LxBW8>* destination);
/// The low 8 bits of `v >> shift`. Trace "PicConvert ( BW16 to BW8)".
LXPIC_API void PicConvert(LxROI<LxBW16>* source, LxROI<LxBW8>* destination, unsigned shift);
/// The low 8 bits of `v >> shift`. Trace "PicConvert ( BW32 to BW8)".
LXPIC_API void PicConvert(LxROI<LxBW32>* source, LxROI<LxBW8>* destination, unsigned shift);
/// The low 16 bits of `v >> shift`. Trace "PicConvert ( BW32 to BW16)".
LXPIC_API void PicConvert(LxROI<LxBW32>* source, LxROI<LxBW16>* destination, unsigned shift);
/// The low 16 bits of `v << shift`. Trace "PicConvert ( BW8 to BW16)".
LXPIC_API void PicConvert(LxROI<LxBW8>* source, LxROI<LxBW16>* destination, unsigned shift);
/// `v << shift`, bits beyond the pixel lost. Trace "PicConvert ( BW8 to BW32)".
LXPIC_API void PicConvert(LxROI<LxBW8>* source, LxROI<LxBW32>* destination, unsigned shift);
/// `v << shift`, bits beyond the pixel lost. Trace "PicConvert ( BW16 to BW32)".
LXPIC_API void PicConvert(LxROI<LxBW16>* source, LxROI<LxBW32>* destination, unsigned shift);
/// @}

/// Grey to a 4:2:2 stream: the level in the first byte of each 16-bit pixel, 128 (neutral chroma)
/// in the second. Trace "PicConvertTo422 ( BW8 to BW16)".
LXPIC_API void PicConvertTo422(LxROI<LxBW8>* source, LxROI<LxBW16>* destination);
