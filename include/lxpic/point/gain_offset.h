// SPDX-License-Identifier: Apache-2.0
/// @file gain_offset.h
/// Linear grey scale.
#pragma once

#include "lxpic/base/image.h"

/// @name Gain and offset
/// `destination = gain * source + offset`, clamped to the pixel range. Works in place. A NaN counts
/// as 0; values beyond the integers are clamped.
/// @{

/// Fixed point: with `g = trunc(32 * gain)` and `o = trunc(offset)` the result is
/// `floor(g * v / 32) + o`. Trace "PicGainOffset".
LXPIC_API void PicGainOffset(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, float gain,
                             float offset);
/// Per component, in floating point, truncated. Mind the order of LxColor: its first value applies
/// to byte 2 of a pixel. Trace "PicGainOffset".
LXPIC_API void PicGainOffset(LxROI<LxC24>* source, LxROI<LxC24>* destination, LxColor gain,
                             LxColor offset);
/// Fixed point like the 8-bit form. Trace "PicGainOffset (BW16)".
LXPIC_API void PicGainOffset(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, float gain,
                             float offset);
/// @}
