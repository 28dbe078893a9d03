// SPDX-License-Identifier: Apache-2.0
// Prefix sums of a row. Included once for each instruction set.

#if defined(LXPIC_CONVOLUTION_PREFIX_SUM_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_CONVOLUTION_PREFIX_SUM_INL_H_
#undef LXPIC_CONVOLUTION_PREFIX_SUM_INL_H_
#else
#define LXPIC_CONVOLUTION_PREFIX_SUM_INL_H_
#endif

#include "foundation/simd-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::convolution::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

// Vectors in which sums can travel from lane to lane: of one or two blocks of 128 bits, or of any
// number where whole vectors can be permuted.
#if !LX_HAS_LANES || LX_HAS_LANE_PERMUTE
template <typename T>
using PrefixTag = hn::ScalableTag<T>;
#else
template <typename T>
using PrefixTag = hn::CappedTag<T, 32 / sizeof(T)>;
#endif

#if LX_HAS_LANE_PERMUTE

// Lane i of the result is lane index[i] of v where the mask has a bit, else 0.
template <typename T>
HWY_INLINE hn::Vec512<T> Spread(hn::Vec512<T> v, __m512i index, std::uint32_t mask) {
  if constexpr (sizeof(T) == 2) {
    return hn::Vec512<T>{_mm512_maskz_permutexvar_epi16(mask, index, v.raw)};
  } else {
    return hn::Vec512<T>{
        _mm512_maskz_permutexvar_epi32(static_cast<__mmask16>(mask), index, v.raw)};
  }
}

// Where each lane finds the last lane of the block before its own.
template <typename Lane>
struct LastOfBlockBefore {
  static constexpr std::size_t kBlock = 16 / sizeof(Lane);

  alignas(64) Lane lanes[4 * kBlock] = {};

  constexpr LastOfBlockBefore() {
    for (std::size_t i = 0; i < 4 * kBlock; ++i) {
      lanes[i] = static_cast<Lane>((i / kBlock + 3) % 4 * kBlock + kBlock - 1);
    }
  }
};

template <typename Lane>
inline constexpr LastOfBlockBefore<Lane> kLastOfBlockBefore{};

#endif

#if LX_HAS_LANES && !LX_HAS_LANE_PERMUTE

// The last lane of every block of 128 bits, in all of its lanes.
template <class D>
HWY_INLINE hn::Vec<D> LastOfBlock(D d, hn::Vec<D> v) {
  if constexpr (sizeof(hn::TFromD<D>) == 4) {
    return hn::Broadcast<3>(v);
  } else {
    alignas(16) static constexpr std::uint8_t kLast[16] = {14, 15, 14, 15, 14, 15, 14, 15,
                                                           14, 15, 14, 15, 14, 15, 14, 15};
    const hn::Repartition<std::uint8_t, D> bytes;
    const auto moved = hn::TableLookupBytes(hn::BitCast(bytes, v), hn::LoadDup128(bytes, kLast));
    return hn::BitCast(d, moved);
  }
}

#endif

// Sums of the lanes up to and including each, and their total in every lane of `total`.
template <class D>
HWY_INLINE hn::Vec<D> PrefixOfVector(D d, hn::Vec<D> v, hn::Vec<D>& total) {
#if !LX_HAS_LANES
  (void)d;
  total = v;
  return v;
#else
  constexpr std::size_t kBlock = 16 / sizeof(hn::TFromD<D>);
  v = hn::Add(v, hn::ShiftLeftLanes<1>(d, v));
  v = hn::Add(v, hn::ShiftLeftLanes<2>(d, v));
  if constexpr (kBlock == 8) v = hn::Add(v, hn::ShiftLeftLanes<4>(d, v));
#if LX_HAS_LANE_PERMUTE
  constexpr std::uint32_t kBlockBits = (1U << kBlock) - 1;
  const __m512i before = _mm512_load_si512(kLastOfBlockBefore<hn::TFromD<D> >.lanes);
  // Odd blocks take the total of the block before, then the upper half that of the lower.
  v = hn::Add(v, Spread(v, before, kBlockBits << kBlock | kBlockBits << 3 * kBlock));
  const __m512i middle = hn::Set(d, 2 * kBlock - 1).raw;
  v = hn::Add(v, Spread(v, middle, kBlock == 8 ? 0xFFFF0000U : 0xFF00U));
  total = Spread(v, hn::Set(d, 4 * kBlock - 1).raw, 0xFFFFFFFFU);
#else
  const auto last = LastOfBlock(d, v);
  if constexpr (hn::MaxLanes(d) > kBlock) {
    // The upper block takes the total of the lower one.
    v = hn::Add(v, hn::ConcatLowerLower(d, last, hn::Zero(d)));
    total = hn::Add(hn::ConcatUpperUpper(d, last, last), hn::ConcatLowerLower(d, last, last));
  } else {
    total = last;
  }
#endif
  return v;
#endif
}

// prefix[i] = sum of the elements 0 to i - 1, for i = 0 to count, modulo the lane; load(d, i) gives a
// vector of elements from i on. `prefix` has room for a whole vector beyond.
template <typename Lane, class Load>
HWY_INLINE void PrefixSums(std::size_t count, Lane* prefix, const Load& load) {
  const PrefixTag<Lane> d;
  auto carry = hn::Zero(d);
  prefix[0] = 0;
  for (std::size_t i = 0; i < count; i += hn::Lanes(d)) {
    auto total = hn::Zero(d);
    const auto sums = PrefixOfVector(d, load(d, i), total);
    hn::StoreU(hn::Add(sums, carry), d, prefix + 1 + i);
    carry = hn::Add(carry, total);
  }
}

}  // namespace lx::convolution::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_CONVOLUTION_PREFIX_SUM_INL_H_
