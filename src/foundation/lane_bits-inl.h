// SPDX-License-Identifier: Apache-2.0
// Lanes of vectors as bits in memory, from the lowest of a byte up, and back. Included once for each instruction set.

#if defined(LXPIC_FOUNDATION_LANE_BITS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_LANE_BITS_INL_H_
#undef LXPIC_FOUNDATION_LANE_BITS_INL_H_
#else
#define LXPIC_FOUNDATION_LANE_BITS_INL_H_
#endif

#include "foundation/simd-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

#if LX_HAS_LANES

// Bytes that the bits of a vector fill.
template <class D>
inline constexpr std::size_t kBitBytes = hn::MaxLanes(D()) / 8;

// Stores a bit for each lane at bit `x`, a multiple of the lanes.
template <class D>
HWY_INLINE void StoreLaneBits(D d, hn::Mask<D> mask, std::uint8_t* bits, std::size_t x) {
  std::uint8_t made[8];  // as many as Highway may write
  hn::StoreMaskBits(d, mask, made);
  std::memcpy(bits + x / 8, made, kBitBytes<D>);
}

// Lanes of ones where a bit from bit `x` on is set, 0 elsewhere.
template <class D>
HWY_INLINE hn::Vec<D> LoadLaneBits(D d, const std::uint8_t* bits, std::size_t x) {
  std::uint8_t read[8] = {};
  std::memcpy(read, bits + x / 8, kBitBytes<D>);
  return hn::VecFromMask(d, hn::LoadMaskBits(d, read));
}

#else

template <class D>
HWY_INLINE void StoreLaneBits(D d, hn::Mask<D> mask, std::uint8_t* bits, std::size_t x) {
  const unsigned others = bits[x / 8] & ~(1U << x % 8);
  const unsigned set = hn::AllTrue(d, mask) ? 1 : 0;
  bits[x / 8] = static_cast<std::uint8_t>(others | set << x % 8);
}

template <class D>
HWY_INLINE hn::Vec<D> LoadLaneBits(D d, const std::uint8_t* bits, std::size_t x) {
  using T = hn::TFromD<D>;
  return hn::Set(d, (bits[x / 8] >> x % 8 & 1) != 0 ? hwy::LimitsMax<T>() : T{0});
}

#endif

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_LANE_BITS_INL_H_
