// SPDX-License-Identifier: Apache-2.0
// Thresholds of colours: a box between two of them.
#include "foundation/frame.h"
#include "histogram/levels_kernels.h"
#include "lxpic/histogram/thresholding.h"

namespace {

using namespace lx;
using namespace lx::histogram;

bool IsWithin(std::uint8_t lowest, std::uint8_t value, std::uint8_t highest) {
  return lowest <= value && value <= highest;
}

struct Bounds {
  LxC24 lowest;
  LxC24 highest;

  bool Hold(LxC24 colour) const {
    return IsWithin(lowest.c0, colour.c0, highest.c0) &&
           IsWithin(lowest.c1, colour.c1, highest.c1) && IsWithin(lowest.c2, colour.c2, highest.c2);
  }

  // A box that holds no colour has no extent: then inside is like outside.
  ColourBox BoxOf(std::uint8_t outside, std::uint8_t inside) const {
    const auto extent = [](std::uint8_t from, std::uint8_t to) {
      return static_cast<std::uint8_t>(to - from);
    };
    return {{lowest.c0, lowest.c1, lowest.c2},
            {extent(lowest.c0, highest.c0), extent(lowest.c1, highest.c1),
             extent(lowest.c2, highest.c2)},
            outside,
            Hold(lowest) ? inside : outside};
  }
};

// Each pixel once, in the order of rows: the lookup may remember what it has seen.
void MapTransformed(const PixelMap& map, const Bounds& bounds, LxColorLookup& lookup,
                    std::uint8_t outside, std::uint8_t inside) {
  MapEach<LxC24, std::uint8_t>(map, [&](LxC24 colour, std::size_t) {
    LxC24 result{};
    lookup.Transform(colour, result);
    return bounds.Hold(result) ? inside : outside;
  });
}

}  // namespace

void PicThreshold(LxROI<LxC24>* source, LxROI<LxBW8>* destination, LxC24 minColor, LxC24 maxColor) {
  PicThreshold(source, destination, minColor, maxColor, nullptr, LxBW8(0), LxBW8(255));
}

void PicThreshold(LxROI<LxC24>* source, LxROI<LxBW8>* destination, LxC24 minColor, LxC24 maxColor,
                  LxColorLookup* lookup, LxBW8 outValue, LxBW8 inValue) {
  RunOperation("PicThreshold ( C24 to BW8)", [&] {
    if (!Usable({source, destination})) return;
    const Bounds bounds{minColor, maxColor};
    const PixelMap map = MapOf(destination, source);
    if (lookup == nullptr) {
      MapColourBox(map, bounds.BoxOf(outValue, inValue));
    } else {
      MapTransformed(map, bounds, *lookup, outValue, inValue);
    }
  });
}
