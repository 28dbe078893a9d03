// SPDX-License-Identifier: Apache-2.0
// Moduli of complex pixels as bytes.
#pragma once

#include "foundation/pixel_map.h"

namespace lx::frequency {

// What becomes of a modulus.
struct Scale {
  double gain;
  bool logarithmic;
  double logGain;
};

// Source pixels are two floats, destination pixels bytes.
void RenderModuli(const PixelMap& map, const Scale& scale);

// Moduli times the squared distance from the centre. The rows of the map are those of the image.
void RenderWeightedModuli(const PixelMap& map, const Scale& scale);

}  // namespace lx::frequency
