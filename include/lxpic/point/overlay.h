// SPDX-License-Identifier: Apache-2.0
/// @file overlay.h
/// Drawing one image onto another, and the overlay colour.
#pragma once

#include "lxpic/base/image.h"

/// @name Overlay
/// Draws the pixels of `source` that differ from `keyColor`, packed to the destination's type, with
/// the source's top left pixel at (x, y) of `destination`. What falls outside is clipped, without
/// an error. A source wider or higher than the destination is not drawn: the trace string is
/// appended and no code set.
/// @{

/// Trace "PicOverlay ( C24 on C16 Image)".
LXPIC_API void PicOverlay(LxROI<LxC24>* source, LxROI<LxC16>* destination, int x, int y,
                          LxC24 keyColor);
/// Bit 15 of the destination stays. Trace "PicOverlay ( C24 on C15 Image)".
LXPIC_API void PicOverlay(LxROI<LxC24>* source, LxROI<LxC15>* destination, int x, int y,
                          LxC24 keyColor);
/// @}

/// Sets the calling thread's overlay colour, which the overlay operation of PicOper() paints.
LXPIC_API void PicSetOverlayColor(LxC24 color);

/// The calling thread's overlay colour; (0, 0, 255), red, at start.
LXPIC_API LxC24 PicGetOverlayColor();
