// SPDX-License-Identifier: Apache-2.0
// The overlays of PicOper(). The constants of a map hold the overlay colour, and the map counts
// pixels.
#pragma once

#include "foundation/pixel_map.h"

namespace lx::point {

void PaintWhereGrey(const PixelMap& map);         // grey -> colour, destination kept elsewhere
void PaintGreyWhereGrey(const PixelMap& map);     // grey, grey mask -> colour
void PaintColourWhereGrey(const PixelMap& map);   // colour, grey mask -> colour
void OverlayColour(const PixelMap& map);          // colour -> colour, destination kept where black
void OverlayColourOnColour(const PixelMap& map);  // source 2, where black source 1
void OverlayColourOnGrey(const PixelMap& map);    // source 2, where black grey source 1

}  // namespace lx::point
