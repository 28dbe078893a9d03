// SPDX-License-Identifier: Apache-2.0
#include "point/convert_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "point/convert_packed_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/colour_pixels-inl.h"
#include "foundation/pixel_map-inl.h"
#include "foundation/wide-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::point::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

using WordsTag = hn::ScalableTag<std::uint16_t>;
using BytesTag = hn::Rebind<std::uint8_t, WordsTag>;
using Words = hn::Vec<WordsTag>;
using Bytes = hn::Vec<BytesTag>;

// Packed pixels have five bits of components 0 and 2, and five (C15) or six (C16) of component 1.
template <Packing kPacking>
struct Fields;

template <>
struct Fields<Packing::kC15> {
  static constexpr std::uint16_t kKept = 0x8000;
  static constexpr std::uint16_t kMiddle = 0xF8;
  static constexpr int kMiddleShift = 2;
  static constexpr int kHighShift = 7;
};

template <>
struct Fields<Packing::kC16> {
  static constexpr std::uint16_t kKept = 0;
  static constexpr std::uint16_t kMiddle = 0xFC;
  static constexpr int kMiddleShift = 3;
  static constexpr int kHighShift = 8;
};

template <Packing kPacking>
HWY_INLINE Words Pack(Bytes c0, Bytes c1, Bytes c2) {
  using F = Fields<kPacking>;
  const WordsTag d;
  const auto low = hn::ShiftRight<3>(hn::PromoteTo(d, c0));
  const auto middle = hn::And(hn::PromoteTo(d, c1), hn::Set(d, F::kMiddle));
  const auto high = hn::And(hn::PromoteTo(d, c2), hn::Set(d, 0xF8));
  return hn::Or(low,
                hn::Or(hn::ShiftLeft<F::kMiddleShift>(middle), hn::ShiftLeft<F::kHighShift>(high)));
}

// The components, widened, with zeros below their fields.
template <Packing kPacking>
HWY_INLINE void Unpack(Words packed, Words& c0, Words& c1, Words& c2) {
  using F = Fields<kPacking>;
  const WordsTag d;
  c0 = hn::And(hn::ShiftLeft<3>(packed), hn::Set(d, 0xF8));
  c1 = hn::And(hn::ShiftRight<F::kMiddleShift>(packed), hn::Set(d, F::kMiddle));
  c2 = hn::And(hn::ShiftRight<F::kHighShift>(packed), hn::Set(d, 0xF8));
}

// Stores packed pixels; a bit that is no colour bit stays.
template <Packing kPacking, class Access>
HWY_INLINE void StorePacked(Access access, Words packed, std::uint16_t* to) {
  const WordsTag d;
  if constexpr (Fields<kPacking>::kKept != 0) {
    const auto kept = hn::And(access.Load(d, to), hn::Set(d, Fields<kPacking>::kKept));
    packed = hn::Or(packed, kept);
  }
  access.Store(d, packed, to);
}

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
void FromColourExceptKey(const PixelMap& map) {
  const WordsTag words;
  const BytesTag bytes;
  const auto key = [&](std::size_t c) HWY_ATTR {
    return hn::Set(bytes, static_cast<std::uint8_t>(map.constants[c]));
  };
  const auto key0 = key(0);
  const auto key1 = key(1);
  const auto key2 = key(2);
  for (std::size_t y = 0; y < map.height; ++y) {
    const auto* const from = map.sources[0].Row<const std::uint8_t>(y);
    auto* const to = map.destination.Row<std::uint16_t>(y);
    ForEachColour(words, map.width, [&](std::size_t x, auto access, auto colour) HWY_ATTR {
      Bytes c0, c1, c2;
      colour.Load(bytes, from + 3 * x, c0, c1, c2);
      const auto differs = hn::Or(hn::Xor(c0, key0), hn::Or(hn::Xor(c1, key1), hn::Xor(c2, key2)));
      const auto isKey = hn::Eq(hn::PromoteTo(words, differs), hn::Zero(words));
      const auto old = access.Load(words, to + x);
      StorePacked<kPacking>(access, hn::IfThenElse(isKey, old, Pack<kPacking>(c0, c1, c2)), to + x);
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

// One kernel for both packings, chosen once per call.
template <class C15Kernel, class C16Kernel>
HWY_INLINE void Choose(Packing packing, C15Kernel c15, C16Kernel c16, const PixelMap& map) {
  if (packing == Packing::kC15) {
    c15(map);
  } else {
    c16(map);
  }
}

void PackColours(Packing packing, const PixelMap& map) {
  Choose(packing, FromColour<Packing::kC15>, FromColour<Packing::kC16>, map);
}

void PackColoursExceptKey(Packing packing, const PixelMap& map) {
  Choose(packing, FromColourExceptKey<Packing::kC15>, FromColourExceptKey<Packing::kC16>, map);
}

void PackLevels(Packing packing, const PixelMap& map) {
  Choose(packing, FromGrey<Packing::kC15>, FromGrey<Packing::kC16>, map);
}

void UnpackColours(Packing packing, const PixelMap& map) {
  Choose(packing, ToColour<Packing::kC15>, ToColour<Packing::kC16>, map);
}

void UnpackLevels(Packing packing, const PixelMap& map) {
  Choose(packing, ToGrey<Packing::kC15>, ToGrey<Packing::kC16>, map);
}

}  // namespace
}  // namespace lx::point::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::point {

HWY_EXPORT(PackColours);
HWY_EXPORT(PackColoursExceptKey);
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

void PackExceptKey(Packing packing, const PixelMap& map) {
  LX_CALL(map.path, PackColoursExceptKey, packing, map);
}

}  // namespace lx::point
#endif
