// SPDX-License-Identifier: Apache-2.0
// The kernels behind PicOper(). Each returns false, without touching a pixel, when it has no case
// for the operation.
#pragma once

#include "foundation/pixel_map.h"
#include "lxpic/point/arithmetic.h"

namespace lx::point {

// destination = operation(source), copies excepted, on elements of 8 or 16 bits.
bool InvertElements8(const PixelMap& map);
bool InvertElements16(const PixelMap& map);

// destination = operation(source 1, source 2).
bool CombineImages8(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map);
bool CombineImages16(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map);

// destination = operation(source, constants).
bool CombineWithConstant8(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map);
bool CombineWithConstant16(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map);

// destination = operation(constants, source).
bool CombineConstantWith8(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map);
bool CombineConstantWith16(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map);

// Colour destinations with one grey source: the map counts pixels.
bool CombineGreyWithColour(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map);
bool CombineColourWithGrey(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map);

// 16-bit destinations with 8-bit sources.
bool WidenBytes(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map);
bool CombineWordsWithBytes(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map);

// Overlays; the constants hold the overlay colour and the map counts pixels.
void PaintWhereGrey(const PixelMap& map);         // grey -> colour, destination kept elsewhere
void PaintGreyWhereGrey(const PixelMap& map);     // grey, grey mask -> colour
void PaintColourWhereGrey(const PixelMap& map);   // colour, grey mask -> colour
void OverlayColour(const PixelMap& map);          // colour -> colour, destination kept where black
void OverlayColourOnColour(const PixelMap& map);  // source 2, where black source 1
void OverlayColourOnGrey(const PixelMap& map);    // source 2, where black grey source 1

}  // namespace lx::point
