// SPDX-License-Identifier: Apache-2.0
// The kernel behind PicOverlay().
#pragma once

#include "foundation/pixel_map.h"
#include "point/packing.h"

namespace lx::point {

// Packs the pixels that differ from the map's constants; the destination keeps the others.
void PackExceptKey(Packing packing, const PixelMap& map);

}  // namespace lx::point
