// SPDX-License-Identifier: Apache-2.0
// Single components of colour pixels. Maps count pixels.
#pragma once

#include "foundation/pixel_map.h"

namespace lx::colour {

// destination = component `index` (0..2) of the colour source.
void ExtractComponent(const PixelMap& map, unsigned index);
// Component `index` (0..2) of the colour destination = the grey source.
void InsertComponent(const PixelMap& map, unsigned index);

}  // namespace lx::colour
