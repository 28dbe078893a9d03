// SPDX-License-Identifier: Apache-2.0
// Neighbourhoods whose pixels outside of the region have a value.
#pragma once

#include "foundation/neighbourhood.h"

namespace lx::morphology {

// A grey level, clamped to those that there are.
inline void SetOutside(Neighbourhood& map, int level) {
  map.border = Border::kConstant;
  map.outside[0] = static_cast<std::uint16_t>(std::clamp(level, 0, 255));
}

inline void SetOutside(Neighbourhood& map, LxC24 colour) {
  map.border = Border::kConstant;
  map.outside = {colour.c0, colour.c1, colour.c2};
}

}  // namespace lx::morphology
