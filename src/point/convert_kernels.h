// SPDX-License-Identifier: Apache-2.0
// Conversions between pixel types. Maps count pixels.
#pragma once

#include "foundation/pixel_map.h"
#include "point/packing.h"

namespace lx::point {

void PackColour(Packing packing, const PixelMap& map);
void PackGrey(Packing packing, const PixelMap& map);
void UnpackToColour(Packing packing, const PixelMap& map);
void UnpackToGrey(Packing packing, const PixelMap& map);

// Alpha: kept in the destination, dropped, merged from source 2, split into the plane `alpha`.
void AddAlpha(const PixelMap& map);
void DropAlpha(const PixelMap& map);
void MergeAlpha(const PixelMap& map);
void SplitAlpha(const PixelMap& map, const Rows& alpha);

// Each level, or its inverse, in the three components.
void GreyToColour(const PixelMap& map, bool invert);
void ColourToGrey(const PixelMap& map);

// Depths: the low bits of the source shifted right, or left where the destination is wider.
void Bits16To8(const PixelMap& map, unsigned shift);
void Bits32To8(const PixelMap& map, unsigned shift);
void Bits32To16(const PixelMap& map, unsigned shift);
void Bits8To16(const PixelMap& map, unsigned shift);
void Bits8To32(const PixelMap& map, unsigned shift);
void Bits16To32(const PixelMap& map, unsigned shift);
// Words of a 4:2:2 stream with neutral chroma.
void GreyTo422(const PixelMap& map);

}  // namespace lx::point
