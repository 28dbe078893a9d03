// SPDX-License-Identifier: Apache-2.0
#include "point/convert_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "point/convert_packed_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/pixel_map-inl.h"
#include "point/packed_pixels-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::point::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

using namespace packed;

template <Packing kPacking>
void FromColour(const PixelMap& map) {
  const WordsTag words;
  const BytesTag bytes;
  for (std::size_t y = 0; y < map.height; ++y) {
    const auto* const from = map.sources[0].Row<const std::uint8_t>(y);
    auto* const to = map.destination.Row<std::uint16_t>(y);
    ForEachColour(words, map.width, [&](std::size_t x, auto access, auto colour) HWY_ATTR {
      Bytes c0, c1, c2;
      colour.Load(bytes, from + 3 * x, c0, c1, c2);
      StorePacked<kPacking>(access, Pack<kPacking>(c0, c1, c2), to + x);
    });
  }
}

template <Packing kPacking>
void FromGrey(const PixelMap& map) {
  const WordsTag words;
  const BytesTag bytes;
  for (std::size_t y = 0; y < map.height; ++y) {
    const auto* const from = map.sources[0].Row<const std::uint8_t>(y);
    auto* const to = map.destination.Row<std::uint16_t>(y);
    ForEachVector(words, map.width, [&](std::size_t x, auto access) HWY_ATTR {
      const auto level = access.Load(bytes, from + x);
      StorePacked<kPacking>(access, Pack<kPacking>(level, level, level), to + x);
    });
  }
}

template <Packing kPacking>
void ToColour(const PixelMap& map) {
  const WordsTag words;
  const BytesTag bytes;
  for (std::size_t y = 0; y < map.height; ++y) {
    const auto* const from = map.sources[0].Row<const std::uint16_t>(y);
    auto* const to = map.destination.Row<std::uint8_t>(y);
    ForEachColour(words, map.width, [&](std::size_t x, auto access, auto colour) HWY_ATTR {
      Words c0, c1, c2;
      Unpack<kPacking>(access.Load(words, from + x), c0, c1, c2);
      colour.Store(bytes, Narrow(bytes, c0), Narrow(bytes, c1), Narrow(bytes, c2), to + 3 * x);
    });
  }
}

template <Packing kPacking>
void ToGrey(const PixelMap& map) {
  const WordsTag words;
  const BytesTag bytes;
  for (std::size_t y = 0; y < map.height; ++y) {
    const auto* const from = map.sources[0].Row<const std::uint16_t>(y);
    auto* const to = map.destination.Row<std::uint8_t>(y);
    ForEachVector(words, map.width, [&](std::size_t x, auto access) HWY_ATTR {
      Words c0, c1, c2;
      Unpack<kPacking>(access.Load(words, from + x), c0, c1, c2);
      // A third by a reciprocal that is exact for sums this small.
      const auto third = hn::MulHigh(hn::Add(hn::Add(c0, c1), c2), hn::Set(words, 21846));
      access.Store(bytes, Narrow(bytes, third), to + x);
    });
  }
}

void PackColours(Packing packing, const PixelMap& map) {
  Choose(packing, &FromColour<Packing::kC15>, &FromColour<Packing::kC16>, map);
}

void PackLevels(Packing packing, const PixelMap& map) {
  Choose(packing, &FromGrey<Packing::kC15>, &FromGrey<Packing::kC16>, map);
}

void UnpackColours(Packing packing, const PixelMap& map) {
  Choose(packing, &ToColour<Packing::kC15>, &ToColour<Packing::kC16>, map);
}

void UnpackLevels(Packing packing, const PixelMap& map) {
  Choose(packing, &ToGrey<Packing::kC15>, &ToGrey<Packing::kC16>, map);
}

}  // namespace
}  // namespace lx::point::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::point {

HWY_EXPORT(PackColours);
HWY_EXPORT(PackLevels);
HWY_EXPORT(UnpackColours);
HWY_EXPORT(UnpackLevels);

void PackColour(Packing packing, const PixelMap& map) {
  LX_CALL(map.path, PackColours, packing, map);
}
void PackGrey(Packing packing, const PixelMap& map) { LX_CALL(map.path, PackLevels, packing, map); }
void UnpackToColour(Packing packing, const PixelMap& map) {
  LX_CALL(map.path, UnpackColours, packing, map);
}
void UnpackToGrey(Packing packing, const PixelMap& map) {
  LX_CALL(map.path, UnpackLevels, packing, map);
}

}  // namespace lx::point
#endif
