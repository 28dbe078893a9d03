// SPDX-License-Identifier: Apache-2.0
#include "sequence/recursive_average_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "sequence/recursive_average_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/gather-inl.h"
#include "foundation/pixel_map-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::sequence::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

using Words = hn::ScalableTag<std::int16_t>;

// The new state. Differences beyond 16 bits saturate, and so do their places in the table.
HWY_INLINE hn::Vec<Words> NextState(hn::Vec<Words> pixels, hn::Vec<Words> state,
                                    const std::uint8_t* steps) {
  const Words d;
  const hn::RebindToUnsigned<Words> places;
  const auto largest = hn::Set(d, std::int16_t{kLargestStep});
  const auto difference = hn::SaturatedSub(hn::ShiftLeft<4>(pixels), state);
  const auto bounded = hn::Max(hn::Min(difference, largest), hn::Neg(largest));
  HWY_ALIGN std::uint16_t offsets[hn::MaxLanes(d)];
  hn::Store(hn::BitCast(places, hn::ShiftLeft<1>(hn::Add(bounded, largest))), places, offsets);
  return hn::Add(state, ShortsAt(d, steps, offsets));
}

void Average(const PixelMap& map, const std::uint8_t* steps) {
  const Words d;
  const hn::Rebind<std::uint8_t, Words> bytes;
  for (std::size_t y = 0; y < map.height; ++y) {
    const auto* const from = map.sources[0].Row<const std::uint8_t>(y);
    auto* const states = map.sources[1].Row<std::int16_t>(y);
    auto* const to = map.destination.Row<std::uint8_t>(y);
    ForEachVector(d, map.width, [&](std::size_t x, auto access) HWY_ATTR {
      const auto pixels = hn::PromoteTo(d, access.Load(bytes, from + x));
      const auto next = NextState(pixels, access.Load(d, states + x), steps);
      access.Store(d, next, states + x);
      access.Store(bytes, hn::DemoteTo(bytes, hn::ShiftRight<4>(next)), to + x);
    });
  }
}

}  // namespace
}  // namespace lx::sequence::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::sequence {

HWY_EXPORT(Average);

void AverageRecursively(const PixelMap& map, const std::uint8_t* steps) {
  LX_CALL(map.path, Average, map, steps);
}

}  // namespace lx::sequence
#endif
