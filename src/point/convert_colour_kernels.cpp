// SPDX-License-Identifier: Apache-2.0
#include "point/convert_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "point/convert_colour_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/colour_pixels-inl.h"
#include "foundation/pixel_map-inl.h"
#include "foundation/wide-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::point::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

using BytesTag = hn::ScalableTag<std::uint8_t>;

void GreyTriple(const PixelMap& map, bool invert) {
  const BytesTag d;
  const std::size_t n = hn::Lanes(d);
  const auto flip = hn::Set(d, static_cast<std::uint8_t>(invert ? 0xFF : 0));
  for (std::size_t y = 0; y < map.height; ++y) {
    const auto* const from = map.sources[0].Row<const std::uint8_t>(y);
    auto* const to = map.destination.Row<std::uint8_t>(y);
    hn::Vec<BytesTag> levels[3];
    std::size_t x = 0;
    for (; x + n <= map.width; x += n) {
      Triple(d, hn::Xor(hn::LoadU(d, from + x), flip), levels);
      for (std::size_t v = 0; v < 3; ++v) hn::StoreU(levels[v], d, to + 3 * x + v * n);
    }
    const PartVector rest{map.width - x};
    Triple(d, hn::Xor(rest.Load(d, from + x), flip), levels);
    for (std::size_t v = 0; v * n < 3 * rest.count; ++v) {
      const PartVector third{HWY_MIN(n, 3 * rest.count - v * n)};
      third.Store(d, levels[v], to + 3 * x + v * n);
    }
  }
}

void Grey(const PixelMap& map) {
  const BytesTag d;
  for (std::size_t y = 0; y < map.height; ++y) {
    const auto* const from = map.sources[0].Row<const std::uint8_t>(y);
    auto* const to = map.destination.Row<std::uint8_t>(y);
    ForEachColour(d, map.width, [&](std::size_t x, auto access, auto colour) HWY_ATTR {
      hn::Vec<BytesTag> c0, c1, c2;
      colour.Load(d, from + 3 * x, c0, c1, c2);
      const auto mean = [](auto wide, auto p, auto q, auto r) HWY_ATTR {
        return hn::ShiftRight<8>(hn::Mul(hn::Add(hn::Add(p, q), r), hn::Set(wide, 85)));
      };
      access.Store(d, MapWide(d, mean, c0, c1, c2), to + x);
    });
  }
}

// Whole pixels with alpha, and the first `count` of them.
struct WholeAlpha {
  template <class D, class V>
  HWY_INLINE void Load(D d, const std::uint8_t* from, V& c0, V& c1, V& c2, V& alpha) const {
    hn::LoadInterleaved4(d, from, c0, c1, c2, alpha);
  }
  template <class D, class V>
  HWY_INLINE void Store(D d, V c0, V c1, V c2, V alpha, std::uint8_t* to) const {
    hn::StoreInterleaved4(c0, c1, c2, alpha, d, to);
  }
};

struct PartAlpha {
  std::size_t count;

  template <class D, class V>
  HWY_INLINE void Load(D d, const std::uint8_t* from, V& c0, V& c1, V& c2, V& alpha) const {
    HWY_ALIGN std::uint8_t bytes[4 * hn::MaxLanes(d)] = {};
    std::memcpy(bytes, from, 4 * count);
    hn::LoadInterleaved4(d, bytes, c0, c1, c2, alpha);
  }
  template <class D, class V>
  HWY_INLINE void Store(D d, V c0, V c1, V c2, V alpha, std::uint8_t* to) const {
    HWY_ALIGN std::uint8_t bytes[4 * hn::MaxLanes(d)];
    hn::StoreInterleaved4(c0, c1, c2, alpha, d, bytes);
    std::memcpy(to, bytes, 4 * count);
  }
};

HWY_INLINE WholeAlpha AlphaAccess(WholeColour /*colour*/) { return {}; }
HWY_INLINE PartAlpha AlphaAccess(PartColour colour) { return {colour.count}; }

// Colour to colour with alpha, which comes from source 2 or stays.
template <bool kMerge>
void ToAlpha(const PixelMap& map) {
  const BytesTag d;
  for (std::size_t y = 0; y < map.height; ++y) {
    const auto* const from = map.sources[0].Row<const std::uint8_t>(y);
    const auto* const plane = map.sources[1].Row<const std::uint8_t>(y);
    auto* const to = map.destination.Row<std::uint8_t>(y);
    ForEachColour(d, map.width,
                  [&](std::size_t x, [[maybe_unused]] auto access, auto colour) HWY_ATTR {
                    const auto pixels = AlphaAccess(colour);
                    hn::Vec<BytesTag> c0, c1, c2, alpha;
                    if constexpr (kMerge) {
                      alpha = access.Load(d, plane + x);
                    } else {
                      pixels.Load(d, to + 4 * x, c0, c1, c2, alpha);
                    }
                    colour.Load(d, from + 3 * x, c0, c1, c2);
                    pixels.Store(d, c0, c1, c2, alpha, to + 4 * x);
                  });
  }
}

void KeepAlpha(const PixelMap& map) { ToAlpha<false>(map); }
void WithAlpha(const PixelMap& map) { ToAlpha<true>(map); }

// Colour with alpha to colour and, unless its address is null, a plane.
void FromAlpha(const PixelMap& map, const Rows& alphas) {
  const BytesTag d;
  for (std::size_t y = 0; y < map.height; ++y) {
    const auto* const from = map.sources[0].Row<const std::uint8_t>(y);
    auto* const to = map.destination.Row<std::uint8_t>(y);
    auto* const plane = alphas.Row<std::uint8_t>(y);
    ForEachColour(d, map.width, [&](std::size_t x, auto access, auto colour) HWY_ATTR {
      hn::Vec<BytesTag> c0, c1, c2, alpha;
      AlphaAccess(colour).Load(d, from + 4 * x, c0, c1, c2, alpha);
      if (alphas.data != nullptr) access.Store(d, alpha, plane + x);
      colour.Store(d, c0, c1, c2, to + 3 * x);
    });
  }
}

}  // namespace
}  // namespace lx::point::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::point {

HWY_EXPORT(GreyTriple);
HWY_EXPORT(Grey);
HWY_EXPORT(KeepAlpha);
HWY_EXPORT(WithAlpha);
HWY_EXPORT(FromAlpha);

void GreyToColour(const PixelMap& map, bool invert) { LX_CALL(map.path, GreyTriple, map, invert); }
void ColourToGrey(const PixelMap& map) { LX_CALL(map.path, Grey, map); }
void AddAlpha(const PixelMap& map) { LX_CALL(map.path, KeepAlpha, map); }
void MergeAlpha(const PixelMap& map) { LX_CALL(map.path, WithAlpha, map); }
void DropAlpha(const PixelMap& map) { LX_CALL(map.path, FromAlpha, map, Rows{}); }
void SplitAlpha(const PixelMap& map, const Rows& alpha) {
  LX_CALL(map.path, FromAlpha, map, alpha);
}

}  // namespace lx::point
#endif
