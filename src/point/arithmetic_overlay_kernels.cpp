// SPDX-License-Identifier: Apache-2.0
#include "point/arithmetic_overlay_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "point/arithmetic_overlay_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/colour_pixels-inl.h"
#include "foundation/pixel_map-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::point::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

using Tag = hn::ScalableTag<std::uint8_t>;
using Bytes = hn::Vec<Tag>;

struct Colour {
  Bytes c0, c1, c2;
};

HWY_INLINE Colour Grey(Bytes level) { return {level, level, level}; }

HWY_INLINE Colour Select(hn::Mask<Tag> mask, const Colour& yes, const Colour& no) {
  return {hn::IfThenElse(mask, yes.c0, no.c0), hn::IfThenElse(mask, yes.c1, no.c1),
          hn::IfThenElse(mask, yes.c2, no.c2)};
}

HWY_INLINE hn::Mask<Tag> IsBlack(const Colour& colour) {
  return hn::Eq(hn::Or(hn::Or(colour.c0, colour.c1), colour.c2), hn::Zero(Tag()));
}

// What a rule may ask of the pixels at one place.
template <class VectorAccess, class ColourAccess>
struct Place {
  VectorAccess vector;
  ColourAccess colour;
  const std::uint8_t* rows[3];  // source 1, source 2, destination
  std::size_t x;

  HWY_INLINE Bytes GreyOf(int which) const { return vector.Load(Tag(), rows[which] + x); }
  HWY_INLINE Colour ColourOf(int which) const {
    Colour pixels;
    colour.Load(Tag(), rows[which] + 3 * x, pixels.c0, pixels.c1, pixels.c2);
    return pixels;
  }
};

// destination = rule(place, overlay colour), colour pixels.
template <class Rule>
HWY_INLINE void MapColour(const PixelMap& map, const Rule& rule) {
  const Tag d;
  const auto component = [&](std::size_t c) HWY_ATTR {
    return hn::Set(d, static_cast<std::uint8_t>(map.constants[c]));
  };
  const Colour overlay = {component(0), component(1), component(2)};
  for (std::size_t y = 0; y < map.height; ++y) {
    std::uint8_t* const to = map.destination.Row<std::uint8_t>(y);
    const auto* const first = map.sources[0].Row<const std::uint8_t>(y);
    const auto* const second = map.sources[1].Row<const std::uint8_t>(y);
    ForEachColour(d, map.width, [&](std::size_t x, auto vector, auto colour) HWY_ATTR {
      const Place<decltype(vector), decltype(colour)> place{vector, colour, {first, second, to}, x};
      const Colour result = rule(place, overlay);
      colour.Store(d, result.c0, result.c1, result.c2, to + 3 * x);
    });
  }
}

constexpr int kFirst = 0;
constexpr int kSecond = 1;
constexpr int kDestination = 2;

void PaintGrey(const PixelMap& map) {
  MapColour(map, [](const auto& place, const Colour& overlay) HWY_ATTR {
    const auto keep = hn::Eq(place.GreyOf(kFirst), hn::Zero(Tag()));
    return Select(keep, place.ColourOf(kDestination), overlay);
  });
}

void PaintGreyOnGrey(const PixelMap& map) {
  MapColour(map, [](const auto& place, const Colour& overlay) HWY_ATTR {
    const auto keep = hn::Eq(place.GreyOf(kSecond), hn::Zero(Tag()));
    return Select(keep, Grey(place.GreyOf(kFirst)), overlay);
  });
}

void PaintGreyOnColour(const PixelMap& map) {
  MapColour(map, [](const auto& place, const Colour& overlay) HWY_ATTR {
    const auto keep = hn::Eq(place.GreyOf(kSecond), hn::Zero(Tag()));
    return Select(keep, place.ColourOf(kFirst), overlay);
  });
}

void TakeColour(const PixelMap& map) {
  MapColour(map, [](const auto& place, const Colour& /*overlay*/) HWY_ATTR {
    const Colour source = place.ColourOf(kFirst);
    return Select(IsBlack(source), place.ColourOf(kDestination), source);
  });
}

void ColourOnColour(const PixelMap& map) {
  MapColour(map, [](const auto& place, const Colour& /*overlay*/) HWY_ATTR {
    const Colour top = place.ColourOf(kSecond);
    return Select(IsBlack(top), place.ColourOf(kFirst), top);
  });
}

void ColourOnGrey(const PixelMap& map) {
  MapColour(map, [](const auto& place, const Colour& /*overlay*/) HWY_ATTR {
    const Colour top = place.ColourOf(kSecond);
    return Select(IsBlack(top), Grey(place.GreyOf(kFirst)), top);
  });
}

}  // namespace
}  // namespace lx::point::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::point {

HWY_EXPORT(PaintGrey);
HWY_EXPORT(PaintGreyOnGrey);
HWY_EXPORT(PaintGreyOnColour);
HWY_EXPORT(TakeColour);
HWY_EXPORT(ColourOnColour);
HWY_EXPORT(ColourOnGrey);

void PaintWhereGrey(const PixelMap& map) { LX_CALL(map.path, PaintGrey, map); }
void PaintGreyWhereGrey(const PixelMap& map) { LX_CALL(map.path, PaintGreyOnGrey, map); }
void PaintColourWhereGrey(const PixelMap& map) { LX_CALL(map.path, PaintGreyOnColour, map); }
void OverlayColour(const PixelMap& map) { LX_CALL(map.path, TakeColour, map); }
void OverlayColourOnColour(const PixelMap& map) { LX_CALL(map.path, ColourOnColour, map); }
void OverlayColourOnGrey(const PixelMap& map) { LX_CALL(map.path, ColourOnGrey, map); }

}  // namespace lx::point
#endif
