// SPDX-License-Identifier: Apache-2.0
// Lanes of twice the width: elements widened and joined, rules applied to wide lanes, values cut
// back. Included once for each instruction set.

#if defined(LXPIC_FOUNDATION_WIDE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_WIDE_INL_H_
#undef LXPIC_FOUNDATION_WIDE_INL_H_
#else
#define LXPIC_FOUNDATION_WIDE_INL_H_
#endif

#include "foundation/products-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

#if LX_HAS_TRUNCATION

// AVX-512 narrows in one instruction what others pack and put in order.
HWY_INLINE hn::Vec256<std::uint8_t> Truncate(hn::Vec256<std::uint8_t> /*to*/,
                                             hn::Vec512<std::uint16_t> v) {
  return hn::Vec256<std::uint8_t>{_mm512_cvtepi16_epi8(v.raw)};
}

HWY_INLINE hn::Vec128<std::uint8_t> Truncate(hn::Vec128<std::uint8_t> /*to*/,
                                             hn::Vec512<std::uint32_t> v) {
  return hn::Vec128<std::uint8_t>{_mm512_cvtepi32_epi8(v.raw)};
}

HWY_INLINE hn::Vec256<std::uint16_t> Truncate(hn::Vec256<std::uint16_t> /*to*/,
                                              hn::Vec512<std::uint32_t> v) {
  return hn::Vec256<std::uint16_t>{_mm512_cvtepi32_epi16(v.raw)};
}

#endif

// Lanes cut to a narrower type; every value must fit it.
template <class D, class V>
HWY_INLINE hn::Vec<D> Narrow(D d, V v) {
#if LX_HAS_TRUNCATION
  return Truncate(hn::Zero(d), v);
#else
  const hn::RebindToSigned<hn::DFromV<V>> whole;
  return hn::DemoteTo(d, hn::BitCast(whole, v));
#endif
}

#if LX_IS_X86_SINCE(HWY_SSSE3)

// Real lanes cut to integers, which must fit: Highway's own conversion also mends those that do not.
HWY_INLINE hn::Vec128<std::int32_t> TruncateFitting(hn::Vec128<float> v) {
  return hn::Vec128<std::int32_t>{_mm_cvttps_epi32(v.raw)};
}
#if LX_IS_X86_SINCE(HWY_AVX2)
HWY_INLINE hn::Vec256<std::int32_t> TruncateFitting(hn::Vec256<float> v) {
  return hn::Vec256<std::int32_t>{_mm256_cvttps_epi32(v.raw)};
}
#endif
#if LX_IS_X86_SINCE(HWY_AVX3)
HWY_INLINE hn::Vec512<std::int32_t> TruncateFitting(hn::Vec512<float> v) {
  return hn::Vec512<std::int32_t>{_mm512_cvttps_epi32(v.raw)};
}
#endif

// 1 / v to 11 bits at least, which all of these processors give.
template <class V>
HWY_INLINE V ReciprocalEstimate(V v) {
  return hn::ApproximateReciprocal(v);
}

#else

template <class V>
HWY_INLINE auto TruncateFitting(V v) {
  return hn::ConvertTo(hn::RebindToSigned<hn::DFromV<V>>(), v);
}
template <class V>
HWY_INLINE V ReciprocalEstimate(V v) {
  return hn::Div(hn::Set(hn::DFromV<V>(), 1.0F), v);
}

#endif

// Wide lanes of a vector: its even and its odd elements, or its only element.
#if LX_HAS_LANES
inline constexpr std::size_t kHalves = 2;
template <class D>
using WideTag = hn::RepartitionToWide<D>;
#else
inline constexpr std::size_t kHalves = 1;
template <class D>
using WideTag = hn::Rebind<hwy::MakeWide<hn::TFromD<D>>, D>;
#endif

template <class D>
struct Halves {
  hn::Vec<WideTag<D>> half[kHalves];
};

template <class D>
HWY_INLINE hn::Vec<WideTag<D>> EvenHalf(D /*d*/, hn::Vec<D> v) {
  const WideTag<D> wide;
#if LX_HAS_LANES
  return hn::And(hn::BitCast(wide, v), hn::Set(wide, hwy::LimitsMax<hn::TFromD<D>>()));
#else
  return hn::PromoteTo(wide, v);
#endif
}

#if LX_HAS_LANES
template <class D>
HWY_INLINE hn::Vec<WideTag<D>> OddHalf(D /*d*/, hn::Vec<D> v) {
  return hn::ShiftRight<8 * sizeof(hn::TFromD<D>)>(hn::BitCast(WideTag<D>(), v));
}
#endif

template <class D>
HWY_INLINE Halves<D> Widen(D d, hn::Vec<D> v) {
#if LX_HAS_LANES
  return {{EvenHalf(d, v), OddHalf(d, v)}};
#else
  return {{EvenHalf(d, v)}};
#endif
}

// The elements of halves whose values fit them.
template <class D>
HWY_INLINE hn::Vec<D> Join(D d, const Halves<D>& halves) {
#if LX_HAS_LANES
  constexpr int kBits = 8 * sizeof(hn::TFromD<D>);
  return hn::BitCast(d, hn::Or(halves.half[0], hn::ShiftLeft<kBits>(halves.half[1])));
#else
  return Narrow(d, halves.half[0]);
#endif
}

#if LX_HAS_LANES

// Signed lanes cut to the range of pixels of type T, in unsigned lanes.
template <typename T, class V>
HWY_INLINE auto Clamped(V v) {
  const hn::RebindToSigned<hn::DFromV<V>> whole;
  const auto low = hn::Max(hn::BitCast(whole, v), hn::Zero(whole));
  return hn::BitCast(hn::RebindToUnsigned<decltype(whole)>(),
                     hn::Min(low, hn::Set(whole, hwy::LimitsMax<T>())));
}

// The elements of halves of signed lanes, clamped to pixels.
template <class D, class V>
HWY_INLINE hn::Vec<D> JoinClamped(D d, V even, V odd) {
#if LX_HAS_PAIR_PRODUCTS
  const WideTag<D> wide;
  return ZipHalves(d, Pack(hn::BitCast(wide, even), hn::BitCast(wide, odd)));
#else
  using T = hn::TFromD<D>;
  return Join(d, {{Clamped<T>(even), Clamped<T>(odd)}});
#endif
}

// The elements of quarters of 32-bit lanes, clamped to unsigned bytes.
template <class D, class Q>
HWY_INLINE hn::Vec<D> JoinQuartersClamped(D d, Q first, Q second, Q third, Q fourth) {
#if LX_HAS_PAIR_PRODUCTS
  alignas(16) static constexpr std::uint8_t kTurns[16] = {0, 4, 8,  12, 1, 5, 9,  13,
                                                          2, 6, 10, 14, 3, 7, 11, 15};
  const hn::Repartition<std::int16_t, D> words;
  const WideTag<D> wide;
  const auto low = hn::BitCast(wide, hn::ReorderDemote2To(words, first, second));
  const auto high = hn::BitCast(wide, hn::ReorderDemote2To(words, third, fourth));
  return hn::TableLookupBytes(Pack(low, high), hn::LoadDup128(d, kTurns));
#else
  using T = hn::TFromD<D>;
  const auto low = hn::Or(Clamped<T>(first), hn::ShiftLeft<8>(Clamped<T>(second)));
  const auto high = hn::Or(Clamped<T>(third), hn::ShiftLeft<8>(Clamped<T>(fourth)));
  return hn::BitCast(d, hn::Or(low, hn::ShiftLeft<16>(high)));
#endif
}

#endif

// Applies rule(wide, lanes...) to the halves, so that products and sums fit. Each result must fit
// the narrow lane. Even and odd lanes are taken apart where they lie: nothing crosses.
template <class D, class Rule, class... V>
HWY_INLINE hn::Vec<D> MapWide(D d, const Rule& rule, V... v) {
  const WideTag<D> wide;
#if LX_HAS_LANES
  return Join(d, {{rule(wide, EvenHalf(d, v)...), rule(wide, OddHalf(d, v)...)}});
#else
  return Join(d, {{rule(wide, EvenHalf(d, v)...)}});
#endif
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_WIDE_INL_H_
