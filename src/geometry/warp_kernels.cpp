// SPDX-License-Identifier: Apache-2.0
#include "geometry/warp_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "geometry/warp_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/fetch-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::geometry::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

// Points of a row from two maps of signed numbers.
struct TwoMaps {
  static constexpr bool kEndsOutside = false;

  const std::int16_t* xMap;
  const std::int16_t* yMap;
  std::int32_t xOffset;
  std::int32_t yOffset;

  HWY_INLINE TwoMaps(const Warp& warp, std::size_t y)
      : xMap(warp.xMap.Row<const std::int16_t>(y)),
        yMap(warp.yMap.Row<const std::int16_t>(y)),
        xOffset(Bounded(warp.xOffset)),
        yOffset(Bounded(warp.yOffset)) {}

  // Sums do not wrap at the lower end, and are below 0 as without the bound; those that wrap at the
  // upper end become so, and lie outside either way.
  static std::int32_t Bounded(std::int32_t offset) {
    return std::max(offset, INT32_MIN - INT16_MIN);
  }

  template <class Access>
  HWY_INLINE Points operator()(std::size_t i, Access access) const {
    const Coordinate d;
    const hn::Rebind<std::int16_t, Coordinate> words;
    return {hn::Add(hn::PromoteTo(d, access.Load(words, xMap + i)), hn::Set(d, xOffset)),
            hn::Add(hn::PromoteTo(d, access.Load(words, yMap + i)), hn::Set(d, yOffset))};
  }
};

// Points of a row from pairs of unsigned numbers, the first one outside being the end.
struct PackedPoints {
  static constexpr bool kEndsOutside = true;

  const std::uint32_t* map;

  HWY_INLINE PackedPoints(const Warp& warp, std::size_t y)
      : map(warp.xMap.Row<const std::uint32_t>(y)) {}

  template <class Access>
  HWY_INLINE Points operator()(std::size_t i, Access access) const {
    const Coordinate d;
    const hn::RebindToUnsigned<Coordinate> bits;
    const auto both = access.Load(bits, map + i);
    return {hn::BitCast(d, hn::And(both, hn::Set(bits, 0xFFFF))),
            hn::BitCast(d, hn::ShiftRight<16>(both))};
  }
};

template <bool kNear, std::size_t kBytes, class Map>
bool WarpRows(const Warp& warp, const FetchSource<kBytes>& source) {
  FetchStrip strip;
  for (std::size_t y = 0; y < warp.height; ++y) {
    const Map map(warp, y);
    auto* const to = warp.destination.Row<std::uint8_t>(y);
    for (std::size_t x = 0; x < warp.width; x += FetchStrip::kPixels) {
      strip.count = std::min(FetchStrip::kPixels, warp.width - x);
      Locate<kNear>(source, x, map, strip);
      const bool ends = Map::kEndsOutside && !strip.allInside;
      const std::size_t count = ends ? strip.FirstOutside() : strip.count;
      Fetch<kNear>(source, strip, count, to + kBytes * x);
      if (count < strip.count) return false;
    }
  }
  return true;
}

template <std::size_t kBytes, class Map>
bool WarpAll(const Warp& warp) {
  const FetchSource<kBytes> source{warp.source, warp.sourceWidth, warp.sourceHeight};
  return source.IsNear() ? WarpRows<true, kBytes, Map>(warp, source)
                         : WarpRows<false, kBytes, Map>(warp, source);
}

void TwoMapBytes(const Warp& warp) { WarpAll<1, TwoMaps>(warp); }
void TwoMapColours(const Warp& warp) { WarpAll<3, TwoMaps>(warp); }
bool PackedBytes(const Warp& warp) { return WarpAll<1, PackedPoints>(warp); }

}  // namespace
}  // namespace lx::geometry::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::geometry {

HWY_EXPORT(TwoMapBytes);
HWY_EXPORT(TwoMapColours);
HWY_EXPORT(PackedBytes);

void WarpBytes(const Warp& warp) { LX_CALL(warp.path, TwoMapBytes, warp); }
void WarpColours(const Warp& warp) { LX_CALL(warp.path, TwoMapColours, warp); }
bool WarpPacked(const Warp& warp) { return LX_CALL(warp.path, PackedBytes, warp); }

}  // namespace lx::geometry
#endif
