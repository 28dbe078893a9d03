// SPDX-License-Identifier: Apache-2.0
// Maps between pixels and rows of bits that start at any bit of a byte, the most significant first.
// Bits of the first and the last byte that belong to others stay. Included once for each
// instruction set.

#if defined(LXPIC_FOUNDATION_BIT_MAP_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_BIT_MAP_INL_H_
#undef LXPIC_FOUNDATION_BIT_MAP_INL_H_
#else
#define LXPIC_FOUNDATION_BIT_MAP_INL_H_
#endif

#include "foundation/bit_map.h"
#include "foundation/lane_bits-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

#if LX_HAS_LANES

// For sixteen bytes of lanes of `kSize` bytes each: which byte a byte comes from when every eight
// lanes are turned round.
template <std::size_t kSize>
struct EightReversed {
  alignas(16) std::uint8_t from[16] = {};

  constexpr EightReversed() {
    for (std::size_t i = 0; i < 16; ++i) {
      from[i] = static_cast<std::uint8_t>((i / kSize ^ 7) * kSize + i % kSize);
    }
  }
};

template <std::size_t kSize>
inline constexpr EightReversed<kSize> kEightReversed;

template <class D>
HWY_INLINE hn::Vec<D> ReverseEights(D d, hn::Vec<D> v) {
  const hn::Repartition<std::uint8_t, D> bytes;
  const auto index = hn::LoadDup128(bytes, kEightReversed<sizeof(hn::TFromD<D>)>.from);
  return hn::BitCast(d, hn::TableLookupBytes(hn::BitCast(bytes, v), index));
}

// Where lanes have their highest bit set.
template <class D>
HWY_INLINE hn::Mask<D> MaskOfSigns(D d, hn::Vec<D> v) {
#if LX_IS_X86_SINCE(HWY_SSE4)
  (void)d;
  return hn::MaskFromVec(v);  // looks at no other bit
#else
  const hn::RebindToSigned<D> whole;
  return hn::RebindMask(d, hn::Lt(hn::BitCast(whole, v), hn::Zero(whole)));
#endif
}

template <class D>
HWY_INLINE void StoreSigns(D d, hn::Vec<D> v, std::uint8_t* bits) {
  StoreLaneBits(d, MaskOfSigns(d, ReverseEights(d, v)), bits, 0);
}

#if LX_IS_X86_SINCE(HWY_SSE4) && !LX_HAS_MASK_REGISTERS

struct BitOfLane {
  alignas(32) std::uint8_t byte[32] = {};  // within sixteen
  alignas(16) std::uint8_t bit[16] = {};

  constexpr BitOfLane() {
    for (unsigned i = 0; i < 32; ++i) byte[i] = static_cast<std::uint8_t>(i / 8);
    for (unsigned i = 0; i < 16; ++i) bit[i] = static_cast<std::uint8_t>(0x80 >> i % 8);
  }
};

inline constexpr BitOfLane kBitOfLane;

// Lanes of ones where a bit is set, 0 elsewhere.
template <class D>
HWY_INLINE hn::Vec<D> LoadBits(D d, const std::uint8_t* bits) {
  static_assert(sizeof(hn::TFromD<D>) == 1 && kBitBytes<D> <= 4);
  std::uint32_t read = 0;
  std::memcpy(&read, bits, kBitBytes<D>);
  const auto all = hn::BitCast(d, hn::Set(hn::Repartition<std::uint32_t, D>(), read));
  const auto own = hn::TableLookupBytes(all, hn::Load(d, kBitOfLane.byte));
  return hn::VecFromMask(d, hn::TestBit(own, hn::LoadDup128(d, kBitOfLane.bit)));
}

#else

template <class D>
HWY_INLINE hn::Vec<D> LoadBits(D d, const std::uint8_t* bits) {
  return ReverseEights(d, LoadLaneBits(d, bits, 0));
}

#endif
#endif

// The `count` bits of a byte from bit `first` on, the most significant being 0, become those of
// `bits`, which start with the first.
HWY_INLINE void MergeBits(unsigned bits, std::size_t first, std::size_t count, std::uint8_t* to) {
  const unsigned written = (0xFF00U >> count & 0xFF) >> first;
  *to = static_cast<std::uint8_t>((*to & ~written) | (bits >> first & written));
}

// The signs of what the rule makes of `count` pixels, less than a vector of them, go to bit `first`
// of a byte and on: to no other byte unless that is bit 0.
template <class D, class Rule>
HWY_INLINE void PackPart(D d, const Rule& rule, const hn::TFromD<D>* from, std::size_t first,
                         std::size_t count, std::uint8_t* to) {
#if LX_HAS_LANES
  std::uint8_t made[kBitBytes<D>];
  StoreSigns(d, rule(d, PartVector{count}.Load(d, from)), made);
  std::memcpy(to, made, count / 8);
  if (count % 8 != 0) MergeBits(made[count / 8], first, count % 8, to + count / 8);
#else
  constexpr int kSign = 8 * sizeof(hn::TFromD<D>) - 1;
  unsigned made = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const auto sign = hn::ShiftRight<kSign>(rule(d, hn::LoadU(d, from + i)));
    made |= static_cast<unsigned>(hn::GetLane(sign)) << (7 - i);
  }
  MergeBits(made, first, count, to);
#endif
}

// The way back.
template <class D, class Rule>
HWY_INLINE void UnpackPart(D d, const Rule& rule, const std::uint8_t* from, std::size_t first,
                           std::size_t count, hn::TFromD<D>* to) {
#if LX_HAS_LANES
  std::uint8_t read[kBitBytes<D>] = {};
  std::memcpy(read, from, (count + 7) / 8);
  read[0] = static_cast<std::uint8_t>(read[0] << first);
  PartVector{count}.Store(d, rule(d, LoadBits(d, read)), to);
#else
  for (std::size_t i = 0; i < count; ++i) {
    const bool set = (*from << (first + i) & 0x80) != 0;
    const auto lane = hn::Set(d, set ? hwy::LimitsMax<hn::TFromD<D> >() : 0);
    hn::StoreU(rule(d, lane), d, to + i);
  }
#endif
}

// Pixels of which whole bytes are packed and unpacked at a time.
template <class D>
HWY_INLINE std::size_t WholeBits(D d) {
  return HWY_MAX(hn::Lanes(d), std::size_t{8});
}

template <class D, class Rule>
HWY_INLINE void PackWhole(D d, const Rule& rule, const hn::TFromD<D>* from, std::uint8_t* to) {
#if LX_HAS_LANES
  StoreSigns(d, rule(d, hn::LoadU(d, from)), to);
#else
  PackPart(d, rule, from, 0, 8, to);
#endif
}

template <class D, class Rule>
HWY_INLINE void UnpackWhole(D d, const Rule& rule, const std::uint8_t* from, hn::TFromD<D>* to) {
#if LX_HAS_LANES
  hn::StoreU(rule(d, LoadBits(d, from)), d, to);
#else
  UnpackPart(d, rule, from, 0, 8, to);
#endif
}

// Calls whole(x, at) for `n` pixels of a row at a time, from pixel `x` and byte `at` of its bits on,
// and part(x, at, first, count) for fewer, whose bits start at bit `first` of the byte.
template <class Whole, class Part>
HWY_INLINE void ForEachBits(const BitMap& map, std::size_t n, const Whole& whole,
                            const Part& part) {
  constexpr std::size_t kAtATime = 4;
  std::size_t x = HWY_MIN(map.width, (8 - map.firstBit) % 8);
  if (x != 0) part(0, 0, map.firstBit, x);
  std::size_t at = x != 0 ? 1 : 0;
  for (; x + kAtATime * n <= map.width; x += kAtATime * n, at += kAtATime * n / 8) {
    LX_UNROLL for (std::size_t i = 0; i < kAtATime; ++i) whole(x + i * n, at + i * n / 8);
  }
  for (; x + n <= map.width; x += n, at += n / 8) whole(x, at);
  if (x < map.width) part(x, at, 0, map.width - x);
}

// bits = the signs of rule(pixels), which are their highest bits.
template <typename T, class Rule>
void MapToBits(const BitMap& map, const Rule& rule) {
  const hn::ScalableTag<T> d;
  for (std::size_t y = 0; y < map.height; ++y) {
    const T* const from = map.pixels.Row<const T>(y);
    std::uint8_t* const to = map.bits.Row<std::uint8_t>(y);
    ForEachBits(
        map, WholeBits(d),
        [&](std::size_t x, std::size_t at) HWY_ATTR { PackWhole(d, rule, from + x, to + at); },
        [&](std::size_t x, std::size_t at, std::size_t first, std::size_t count)
            HWY_ATTR { PackPart(d, rule, from + x, first, count, to + at); });
  }
}

// pixels = rule(bits), which are lanes of ones or 0.
template <typename T, class Rule>
void MapFromBits(const BitMap& map, const Rule& rule) {
  const hn::ScalableTag<T> d;
  for (std::size_t y = 0; y < map.height; ++y) {
    const std::uint8_t* const from = map.bits.Row<const std::uint8_t>(y);
    T* const to = map.pixels.Row<T>(y);
    ForEachBits(
        map, WholeBits(d),
        [&](std::size_t x, std::size_t at) HWY_ATTR { UnpackWhole(d, rule, from + at, to + x); },
        [&](std::size_t x, std::size_t at, std::size_t first, std::size_t count)
            HWY_ATTR { UnpackPart(d, rule, from + at, first, count, to + x); });
  }
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_BIT_MAP_INL_H_
