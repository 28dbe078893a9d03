// SPDX-License-Identifier: Apache-2.0
// Minimum and maximum over boxes of any size.
#pragma once

#include "foundation/box_extremes.h"
#include "morphology/plane.h"

namespace lx::morphology {

inline ExtremeBox BoxOn(const Plane& plane, std::size_t halfX, std::size_t halfY) {
  return {plane.elements, plane.elementBytes, plane.stride, plane.height, halfX, halfY};
}

// The plane is not empty, and `scratch` has BoxLayout::Bytes() bytes.
void RunBox(Extreme extreme, const Plane& plane, const ExtremeBox& box, std::uint8_t* scratch);

}  // namespace lx::morphology
