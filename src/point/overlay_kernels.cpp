// SPDX-License-Identifier: Apache-2.0
#include "point/overlay_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "point/overlay_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "point/packed_pixels-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::point::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

using namespace packed;

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

void ExceptKey(Packing packing, const PixelMap& map) {
  Choose(packing, &FromColourExceptKey<Packing::kC15>, &FromColourExceptKey<Packing::kC16>, map);
}

}  // namespace
}  // namespace lx::point::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::point {

HWY_EXPORT(ExceptKey);

void PackExceptKey(Packing packing, const PixelMap& map) {
  LX_CALL(map.path, ExceptKey, packing, map);
}

}  // namespace lx::point
#endif
