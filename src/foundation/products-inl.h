// SPDX-License-Identifier: Apache-2.0
// Products of neighbouring lanes, added up in lanes of twice the width, and the packs that cut sums
// back. Included once for each instruction set.

#if defined(LXPIC_FOUNDATION_PRODUCTS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_PRODUCTS_INL_H_
#undef LXPIC_FOUNDATION_PRODUCTS_INL_H_
#else
#define LXPIC_FOUNDATION_PRODUCTS_INL_H_
#endif

#include "foundation/simd-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

#if LX_HAS_PAIR_PRODUCTS

template <int kEven, int kOdd>
inline constexpr auto kPairOfFactors = static_cast<std::int16_t>(kOdd * 256 + (kEven & 0xFF));

// kEven * even byte + kOdd * odd byte, for each pair of bytes.
template <int kEven, int kOdd>
HWY_INLINE hn::Vec128<std::uint16_t> PairSums(hn::Vec128<std::uint8_t> v) {
  return hn::Vec128<std::uint16_t>{
      _mm_maddubs_epi16(v.raw, _mm_set1_epi16(kPairOfFactors<kEven, kOdd>))};
}

// Signed lanes cut to bytes or words; those of `b` follow those of `a` in every block of 16 bytes.
HWY_INLINE hn::Vec128<std::uint8_t> Pack(hn::Vec128<std::uint16_t> a, hn::Vec128<std::uint16_t> b) {
  return hn::Vec128<std::uint8_t>{_mm_packus_epi16(a.raw, b.raw)};
}
HWY_INLINE hn::Vec128<std::uint16_t> Pack(hn::Vec128<std::uint32_t> a,
                                          hn::Vec128<std::uint32_t> b) {
  return hn::Vec128<std::uint16_t>{_mm_packus_epi32(a.raw, b.raw)};
}

// a[2i] * b[2i] + a[2i + 1] * b[2i + 1]
HWY_INLINE hn::Vec128<std::int32_t> WordPairSums(hn::Vec128<std::int16_t> a,
                                                 hn::Vec128<std::int16_t> b) {
  return hn::Vec128<std::int32_t>{_mm_madd_epi16(a.raw, b.raw)};
}

#if LX_IS_X86_SINCE(HWY_AVX2)
template <int kEven, int kOdd>
HWY_INLINE hn::Vec256<std::uint16_t> PairSums(hn::Vec256<std::uint8_t> v) {
  return hn::Vec256<std::uint16_t>{
      _mm256_maddubs_epi16(v.raw, _mm256_set1_epi16(kPairOfFactors<kEven, kOdd>))};
}
HWY_INLINE hn::Vec256<std::uint8_t> Pack(hn::Vec256<std::uint16_t> a, hn::Vec256<std::uint16_t> b) {
  return hn::Vec256<std::uint8_t>{_mm256_packus_epi16(a.raw, b.raw)};
}
HWY_INLINE hn::Vec256<std::uint16_t> Pack(hn::Vec256<std::uint32_t> a,
                                          hn::Vec256<std::uint32_t> b) {
  return hn::Vec256<std::uint16_t>{_mm256_packus_epi32(a.raw, b.raw)};
}
HWY_INLINE hn::Vec256<std::int32_t> WordPairSums(hn::Vec256<std::int16_t> a,
                                                 hn::Vec256<std::int16_t> b) {
  return hn::Vec256<std::int32_t>{_mm256_madd_epi16(a.raw, b.raw)};
}
#endif

#if LX_IS_X86_SINCE(HWY_AVX3)
template <int kEven, int kOdd>
HWY_INLINE hn::Vec512<std::uint16_t> PairSums(hn::Vec512<std::uint8_t> v) {
  return hn::Vec512<std::uint16_t>{
      _mm512_maddubs_epi16(v.raw, _mm512_set1_epi16(kPairOfFactors<kEven, kOdd>))};
}
HWY_INLINE hn::Vec512<std::uint8_t> Pack(hn::Vec512<std::uint16_t> a, hn::Vec512<std::uint16_t> b) {
  return hn::Vec512<std::uint8_t>{_mm512_packus_epi16(a.raw, b.raw)};
}
HWY_INLINE hn::Vec512<std::uint16_t> Pack(hn::Vec512<std::uint32_t> a,
                                          hn::Vec512<std::uint32_t> b) {
  return hn::Vec512<std::uint16_t>{_mm512_packus_epi32(a.raw, b.raw)};
}
HWY_INLINE hn::Vec512<std::int32_t> WordPairSums(hn::Vec512<std::int16_t> a,
                                                 hn::Vec512<std::int16_t> b) {
  return hn::Vec512<std::int32_t>{_mm512_madd_epi16(a.raw, b.raw)};
}
#endif

// What Pack() gives, in the order of the lanes of `a` and then `b`.
HWY_INLINE hn::Vec128<std::uint8_t> PackInOrder(hn::Vec128<std::uint16_t> a,
                                                hn::Vec128<std::uint16_t> b) {
  return Pack(a, b);
}
#if LX_IS_X86_SINCE(HWY_AVX2)
HWY_INLINE hn::Vec256<std::uint8_t> PackInOrder(hn::Vec256<std::uint16_t> a,
                                                hn::Vec256<std::uint16_t> b) {
  return hn::Vec256<std::uint8_t>{_mm256_permute4x64_epi64(Pack(a, b).raw, 0xD8)};
}
#endif
#if LX_IS_X86_SINCE(HWY_AVX3)
HWY_INLINE hn::Vec512<std::uint8_t> PackInOrder(hn::Vec512<std::uint16_t> a,
                                                hn::Vec512<std::uint16_t> b) {
  const __m512i order = _mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7);
  return hn::Vec512<std::uint8_t>{_mm512_permutexvar_epi64(order, Pack(a, b).raw)};
}
#endif

#endif  // LX_HAS_PAIR_PRODUCTS

#if LX_HAS_PAIR_PRODUCTS

// Puts what Pack() has put one behind the other in every block side by side.
template <class D>
HWY_INLINE hn::Vec<D> ZipHalves(D d, hn::Vec<D> packed) {
  alignas(16) static constexpr std::uint8_t kBytes[16] = {0, 8,  1, 9,  2, 10, 3, 11,
                                                          4, 12, 5, 13, 6, 14, 7, 15};
  alignas(16) static constexpr std::uint8_t kWords[16] = {0, 1, 8,  9,  2, 3, 10, 11,
                                                          4, 5, 12, 13, 6, 7, 14, 15};
  const hn::Repartition<std::uint8_t, D> bytes;
  const auto order = hn::LoadDup128(bytes, sizeof(hn::TFromD<D>) == 1 ? kBytes : kWords);
  return hn::BitCast(d, hn::TableLookupBytes(hn::BitCast(bytes, packed), order));
}

#endif

#if LX_HAS_LANES

// a * b of the even lanes, and of the odd lanes.
template <class V>
HWY_INLINE auto EvenProducts(V a, V b) {
  const hn::RepartitionToWide<hn::DFromV<V>> wide;
#if LX_HAS_PAIR_PRODUCTS
  const auto even = hn::And(hn::BitCast(wide, a), hn::Set(wide, 0xFFFF));
  return WordPairSums(hn::BitCast(hn::DFromV<V>(), even), b);
#else
  const auto even = [wide](V v) HWY_ATTR {
    return hn::ShiftRight<16>(hn::ShiftLeft<16>(hn::BitCast(wide, v)));
  };
  return hn::Mul(even(a), even(b));
#endif
}

template <class V>
HWY_INLINE auto OddProducts(V a, V b) {
  const hn::RepartitionToWide<hn::DFromV<V>> wide;
#if LX_HAS_PAIR_PRODUCTS
  const auto odd = hn::AndNot(hn::Set(wide, 0xFFFF), hn::BitCast(wide, a));
  return WordPairSums(hn::BitCast(hn::DFromV<V>(), odd), b);
#else
  return hn::Mul(hn::ShiftRight<16>(hn::BitCast(wide, a)),
                 hn::ShiftRight<16>(hn::BitCast(wide, b)));
#endif
}

// The sum of both.
template <class V>
HWY_INLINE auto PairProducts(V a, V b) {
#if LX_HAS_PAIR_PRODUCTS
  return WordPairSums(a, b);
#else
  return hn::Add(EvenProducts(a, b), OddProducts(a, b));
#endif
}

#endif

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_PRODUCTS_INL_H_
