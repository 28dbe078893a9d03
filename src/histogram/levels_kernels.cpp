// SPDX-License-Identifier: Apache-2.0
#include "histogram/levels_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "histogram/levels_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/colour_pixels-inl.h"
#include "foundation/pixel_map-inl.h"
#include "histogram/levels-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::histogram::HWY_NAMESPACE {
namespace {

struct Two {
  TwoLevels levels;

  template <class D, class V>
  HWY_INLINE V operator()(D d, V v) const {
    return Choose(d, Passed(d, levels.cut, v), Level(d, levels.high), Level(d, levels.low));
  }
};

struct Three {
  ThreeLevels levels;

  template <class D, class V>
  HWY_INLINE V operator()(D d, V v) const {
    const V below =
        Choose(d, Passed(d, levels.lower, v), Level(d, levels.middle), Level(d, levels.low));
    return Choose(d, Passed(d, levels.upper, v), Level(d, levels.high), below);
  }
};

void TwoBytes(const PixelMap& map, const TwoLevels& levels) {
  MapOne<std::uint8_t>(map, Two{levels});
}
void TwoWords(const PixelMap& map, const TwoLevels& levels) {
  MapOne<std::uint16_t>(map, Two{levels});
}
void ThreeBytes(const PixelMap& map, const ThreeLevels& levels) {
  MapOne<std::uint8_t>(map, Three{levels});
}
void ThreeWords(const PixelMap& map, const ThreeLevels& levels) {
  MapOne<std::uint16_t>(map, Three{levels});
}

// How far a component lies beyond its bounds, if at all: below the lower one it wraps to the other
// side of the upper.
template <class D>
HWY_INLINE hn::Vec<D> Beyond(D d, const ColourBox& box, std::size_t k, hn::Vec<D> component) {
  return hn::SaturatedSub(hn::Sub(component, hn::Set(d, box.lowest[k])), hn::Set(d, box.extent[k]));
}

void Box(const PixelMap& map, const ColourBox& box) {
  const hn::ScalableTag<std::uint8_t> d;
  const auto inside = hn::Set(d, box.inside);
  const auto outside = hn::Set(d, box.outside);
  for (std::size_t y = 0; y < map.height; ++y) {
    const auto* const from = map.sources[0].Row<const std::uint8_t>(y);
    auto* const to = map.destination.Row<std::uint8_t>(y);
    ForEachColour(d, map.width, [&](std::size_t x, auto access, auto colour) HWY_ATTR {
      hn::Vec<decltype(d)> c0, c1, c2;
      colour.Load(d, from + 3 * x, c0, c1, c2);
      const auto beyond =
          hn::Or(hn::Or(Beyond(d, box, 0, c0), Beyond(d, box, 1, c1)), Beyond(d, box, 2, c2));
      const auto isInside = hn::Eq(beyond, hn::Zero(d));
      access.Store(d, hn::IfThenElse(isInside, inside, outside), to + x);
    });
  }
}

}  // namespace
}  // namespace lx::histogram::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::histogram {

HWY_EXPORT(TwoBytes);
HWY_EXPORT(TwoWords);
HWY_EXPORT(ThreeBytes);
HWY_EXPORT(ThreeWords);
HWY_EXPORT(Box);

void MapToTwoBytes(const PixelMap& map, const TwoLevels& levels) {
  LX_CALL(map.path, TwoBytes, map, levels);
}

void MapToTwoWords(const PixelMap& map, const TwoLevels& levels) {
  LX_CALL(map.path, TwoWords, map, levels);
}

void MapToThreeBytes(const PixelMap& map, const ThreeLevels& levels) {
  LX_CALL(map.path, ThreeBytes, map, levels);
}

void MapToThreeWords(const PixelMap& map, const ThreeLevels& levels) {
  LX_CALL(map.path, ThreeWords, map, levels);
}

void MapColourBox(const PixelMap& map, const ColourBox& box) { LX_CALL(map.path, Box, map, box); }

}  // namespace lx::histogram
#endif
