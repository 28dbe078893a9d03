// SPDX-License-Identifier: Apache-2.0
/// @file copy.h
/// Copies and fills.
#pragma once

#include "lxpic/base/image.h"

/// @name Fill
/// Sets every pixel of `destination` to `value`. C15 keeps no bit 15 here: the whole word is
/// written.
/// @{

/// Trace "PicCopy ( BW8 Const to Image)".
LXPIC_API void PicCopy(LxBW8 value, LxROI<LxBW8>* destination);
/// Trace "PicCopy (BW16 Const)".
LXPIC_API void PicCopy(LxBW16 value, LxROI<LxBW16>* destination);
/// Trace "PicCopy (C24 Const)".
LXPIC_API void PicCopy(LxC24 value, LxROI<LxC24>* destination);
/// Trace "PicCopy (C15 Const)".
LXPIC_API void PicCopy(LxC15 value, LxROI<LxC15>* destination);
/// Trace "PicCopy (C16 Const)".
LXPIC_API void PicCopy(LxC16 value, LxROI<LxC16>* destination);
/// @}

/// @name Copy
/// Copies `source` to `destination` of the same size. Onto itself nothing changes.
/// @{

/// Trace "PicCopy ( BW8 Image to Image)".
LXPIC_API void PicCopy(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Trace "PicCopy (BW16 Image)".
LXPIC_API void PicCopy(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// Trace "PicCopy ( C24 Image)".
LXPIC_API void PicCopy(LxROI<LxC24>* source, LxROI<LxC24>* destination);
/// Trace "PicCopy ( C15 Image)".
LXPIC_API void PicCopy(LxROI<LxC15>* source, LxROI<LxC15>* destination);
/// Trace "PicCopy ( C16 Image)".
LXPIC_API void PicCopy(LxROI<LxC16>* source, LxROI<LxC16>* destination);
/// @}
