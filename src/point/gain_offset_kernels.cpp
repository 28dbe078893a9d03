// SPDX-License-Identifier: Apache-2.0
#include "point/gain_offset_kernels.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "point/gain_offset_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/byte_table-inl.h"
#include "foundation/pixel_map-inl.h"
#include "foundation/wide-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::point::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

// Products of 16-bit pixels and gains fit 32 bits; so does the sum with an offset that already
// saturates.
struct Scale {
  static constexpr bool kComputes = true;

  std::int32_t gain;
  std::int32_t offset;

  template <class D, class V>
  HWY_INLINE V operator()(D d, V a) const {
    return MapWide(
        d,
        [this](auto wide, auto v) HWY_ATTR {
          const hn::RebindToSigned<decltype(wide)> whole;
          const auto product = hn::Mul(hn::BitCast(whole, v), hn::Set(whole, gain));
          const auto sum = hn::Add(hn::ShiftRight<5>(product), hn::Set(whole, offset));
          const auto clamped = hn::Min(hn::Max(sum, hn::Zero(whole)), hn::Set(whole, 0xFFFF));
          return hn::BitCast(wide, clamped);
        },
        a);
  }
};

void Words(const PixelMap& map, std::int32_t gain, std::int32_t offset) {
  MapOne<std::uint16_t>(map, Scale{gain, offset});
}

#if LX_HAS_LANES

// A gain that 16-bit lanes hold: the high half of (v << 7) * (gain << 4) is floor(v * gain / 32).
constexpr std::int64_t kLargestByteGain = 0x7FF;
// Beyond this an offset saturates whatever the product.
constexpr std::int64_t kLargestByteOffset = 16600;

struct ScaleInHalves {
  std::int16_t gain;  // times 16
  std::int16_t offset;

  template <class D, class V>
  HWY_INLINE V operator()(D d, V a) const {
    const WideTag<D> wide;
    const hn::RebindToSigned<WideTag<D>> whole;
    const auto scaled = [&](auto v) HWY_ATTR {
      const auto lanes = hn::BitCast(whole, hn::And(v, hn::Set(wide, 0xFF << 7)));
      return hn::SaturatedAdd(hn::MulHigh(lanes, hn::Set(whole, gain)), hn::Set(whole, offset));
    };
    const auto pairs = hn::BitCast(wide, a);
    return JoinClamped(d, scaled(hn::ShiftLeft<7>(pairs)), scaled(hn::ShiftRight<1>(pairs)));
  }
};

#endif

void Bytes(const PixelMap& map, std::int64_t gain, std::int64_t offset) {
#if LX_HAS_LANES
  if (gain >= -kLargestByteGain && gain <= kLargestByteGain) {
    const auto bounded = std::clamp(offset, -kLargestByteOffset, kLargestByteOffset);
    MapOne<std::uint8_t>(map, ScaleInHalves{static_cast<std::int16_t>(16 * gain),
                                            static_cast<std::int16_t>(bounded)});
    return;
  }
#endif
  std::uint8_t table[256];
  for (std::int64_t v = 0; v < 256; ++v) {
    const std::int64_t scaled = (v * gain >> 5) + offset;
    table[v] = static_cast<std::uint8_t>(std::clamp<std::int64_t>(scaled, 0, 255));
  }
  MapOne<std::uint8_t>(map, ByteTable(table));
}

}  // namespace
}  // namespace lx::point::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::point {

HWY_EXPORT(Bytes);
HWY_EXPORT(Words);

namespace {

// For gains whose products leave 32 bits.
void ScaleWordsIn64Bits(const PixelMap& map, std::int64_t gain, std::int64_t offset) {
  MapEach<std::uint16_t, std::uint16_t>(map, [=](std::uint16_t pixel, std::size_t) {
    const std::int64_t scaled = ((pixel * gain) >> 5) + offset;
    return static_cast<std::uint16_t>(std::clamp<std::int64_t>(scaled, 0, 0xFFFF));
  });
}

}  // namespace

void ScaleBytes(const PixelMap& map, std::int64_t gain, std::int64_t offset) {
  LX_CALL(map.path, Bytes, map, gain, offset);
}

void ScaleWords(const PixelMap& map, std::int64_t gain, std::int64_t offset) {
  if (gain < -0x7FFF || gain > 0x7FFF) {
    ScaleWordsIn64Bits(map, gain, offset);
    return;
  }
  // Beyond this every sum saturates anyway.
  constexpr std::int64_t kLargest = std::int64_t{1} << 28;
  const std::int64_t bounded = std::clamp(offset, -kLargest, kLargest);
  LX_CALL(map.path, Words, map, static_cast<std::int32_t>(gain),
          static_cast<std::int32_t>(bounded));
}

}  // namespace lx::point
#endif
