// SPDX-License-Identifier: Apache-2.0
#include "lxpic/colour/component.h"

#include "colour/component_kernels.h"
#include "foundation/frame.h"

namespace {

using namespace lx;
using namespace lx::colour;

constexpr unsigned kComponents = 3;

bool ArgumentsGood(LxGenericROI* source, LxGenericROI* destination, unsigned index) {
  return Usable({source, destination}) &&
         Require(index < kComponents, LX_ERROR_ARGUMENT_3_OUT_OF_RANGE);
}

// ExtractComponent() of what `lookup` makes of each pixel.
void ExtractTransformed(const PixelMap& map, unsigned index, LxColorLookup& lookup) {
  constexpr std::uint8_t LxC24::*kMembers[kComponents] = {&LxC24::c0, &LxC24::c1, &LxC24::c2};
  MapEach<LxC24, std::uint8_t>(map, [&](LxC24 colour, std::size_t) {
    LxC24 result{};
    lookup.Transform(colour, result);
    return result.*kMembers[index];
  });
}

}  // namespace

void TintGetComponent(LxROI<LxC24>* source, LxROI<LxBW8>* plane, unsigned index,
                      LxColorLookup* lookup) {
  RunOperation("TintGetComponent", [&] {
    if (!ArgumentsGood(source, plane, index)) return;
    const PixelMap map = MapOf(plane, source);
    if (lookup == nullptr) {
      ExtractComponent(map, index);
    } else {
      ExtractTransformed(map, index, *lookup);
    }
  });
}

void TintSetComponent(LxROI<LxBW8>* plane, LxROI<LxC24>* target, unsigned index) {
  RunOperation("TintSetComponent", [&] {
    if (ArgumentsGood(plane, target, index)) InsertComponent(MapOf(target, plane), index);
  });
}
