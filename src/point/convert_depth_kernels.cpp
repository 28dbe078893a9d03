// SPDX-License-Identifier: Apache-2.0
#include "point/convert_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "point/convert_depth_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/pixel_map-inl.h"
#include "foundation/wide-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::point::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

// destination = the low bits of source >> shift; a shift by all bits and more gives 0.
template <typename From, typename To>
HWY_INLINE void Narrower(const PixelMap& map, unsigned shift) {
  const hn::ScalableTag<From> wide;
  const hn::Rebind<To, decltype(wide)> narrow;
  const bool vanishes = shift >= 8 * sizeof(From);
  const auto low = hn::Set(wide, vanishes ? From{0} : From{hwy::LimitsMax<To>()});
  const int count = vanishes ? 0 : static_cast<int>(shift);
  for (std::size_t y = 0; y < map.height; ++y) {
    const From* const from = map.sources[0].Row<const From>(y);
    To* const to = map.destination.Row<To>(y);
    ForEachVector(wide, map.width, [&](std::size_t x, auto access) HWY_ATTR {
      const auto shifted = hn::ShiftRightSame(access.Load(wide, from + x), count);
      access.Store(narrow, Narrow(narrow, hn::And(shifted, low)), to + x);
    });
  }
}

// destination = (source << shift) | bits, bits beyond the destination lost.
template <typename From, typename To>
HWY_INLINE void Wider(const PixelMap& map, unsigned shift, To bits = 0) {
  const hn::ScalableTag<To> wide;
  const hn::Rebind<From, decltype(wide)> narrow;
  const bool vanishes = shift >= 8 * sizeof(To);
  const auto all = hn::Set(wide, vanishes ? To{0} : hwy::LimitsMax<To>());
  const auto also = hn::Set(wide, bits);
  const int count = vanishes ? 0 : static_cast<int>(shift);
  for (std::size_t y = 0; y < map.height; ++y) {
    const From* const from = map.sources[0].Row<const From>(y);
    To* const to = map.destination.Row<To>(y);
    ForEachPair(wide, map.width, [&](std::size_t x, auto access) HWY_ATTR {
      const auto pixels = hn::And(hn::PromoteTo(wide, access.Load(narrow, from + x)), all);
      access.Store(wide, hn::Or(hn::ShiftLeftSame(pixels, count), also), to + x);
    });
  }
}

using U8 = std::uint8_t;
using U16 = std::uint16_t;
using U32 = std::uint32_t;

void From16To8(const PixelMap& map, unsigned shift) { Narrower<U16, U8>(map, shift); }
void From32To8(const PixelMap& map, unsigned shift) { Narrower<U32, U8>(map, shift); }
void From32To16(const PixelMap& map, unsigned shift) { Narrower<U32, U16>(map, shift); }
void From8To16(const PixelMap& map, unsigned shift) { Wider<U8, U16>(map, shift); }
void From8To32(const PixelMap& map, unsigned shift) { Wider<U8, U32>(map, shift); }
void From16To32(const PixelMap& map, unsigned shift) { Wider<U16, U32>(map, shift); }
void To422(const PixelMap& map) { Wider<U8, U16>(map, 0, 0x8000); }

}  // namespace
}  // namespace lx::point::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::point {

HWY_EXPORT(From16To8);
HWY_EXPORT(From32To8);
HWY_EXPORT(From32To16);
HWY_EXPORT(From8To16);
HWY_EXPORT(From8To32);
HWY_EXPORT(From16To32);
HWY_EXPORT(To422);

void Bits16To8(const PixelMap& map, unsigned shift) { LX_CALL(map.path, From16To8, map, shift); }
void Bits32To8(const PixelMap& map, unsigned shift) { LX_CALL(map.path, From32To8, map, shift); }
void Bits32To16(const PixelMap& map, unsigned shift) { LX_CALL(map.path, From32To16, map, shift); }
void Bits8To16(const PixelMap& map, unsigned shift) { LX_CALL(map.path, From8To16, map, shift); }
void Bits8To32(const PixelMap& map, unsigned shift) { LX_CALL(map.path, From8To32, map, shift); }
void Bits16To32(const PixelMap& map, unsigned shift) { LX_CALL(map.path, From16To32, map, shift); }
void GreyTo422(const PixelMap& map) { LX_CALL(map.path, To422, map); }

}  // namespace lx::point
#endif
