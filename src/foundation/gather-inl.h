// SPDX-License-Identifier: Apache-2.0
// Pixels from anywhere in memory: words and pixels at byte offsets. Included once for each
// instruction set.

#if defined(LXPIC_FOUNDATION_GATHER_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_GATHER_INL_H_
#undef LXPIC_FOUNDATION_GATHER_INL_H_
#else
#define LXPIC_FOUNDATION_GATHER_INL_H_
#endif

#include <type_traits>

#include "foundation/simd-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

// The value at any address.
template <typename T>
HWY_INLINE T ValueAt(const std::uint8_t* at) {
  T value;
  std::memcpy(&value, at, sizeof(T));
  return value;
}

#if LX_HAS_LANE_LOADS

HWY_INLINE hn::Vec128<std::int32_t> FourWordsAt(const std::uint8_t* base,
                                                const std::int32_t* offsets) {
  const auto at = [=](int i) HWY_ATTR { return ValueAt<std::int32_t>(base + offsets[i]); };
  return hn::Vec128<std::int32_t>{_mm_setr_epi32(at(0), at(1), at(2), at(3))};
}

#endif

// The words that begin at `base` and the offsets, one for each lane.
template <class D>
HWY_INLINE hn::Vec<D> WordsAt(D d, const std::uint8_t* base, const std::int32_t* offsets) {
#if LX_HAS_FAST_GATHER
  if constexpr (hn::MaxLanes(d) == 16) {
    return hn::GatherOffset(d, reinterpret_cast<const std::int32_t*>(base), hn::LoadU(d, offsets));
  }
#endif
#if LX_HAS_LANE_LOADS
  // Through memory, the vector would wait for the lanes to be stored.
  if constexpr (hn::MaxLanes(d) == 4) {
    return FourWordsAt(base, offsets);
  } else {
    const hn::Half<D> half;
    const std::int32_t* const upper = offsets + hn::MaxLanes(half);
    return hn::Combine(d, WordsAt(half, base, upper), WordsAt(half, base, offsets));
  }
#else
  HWY_ALIGN std::int32_t words[hn::MaxLanes(d)];
  for (std::size_t i = 0; i < hn::MaxLanes(d); ++i) {
    words[i] = ValueAt<std::int32_t>(base + offsets[i]);
  }
  return hn::Load(d, words);
#endif
}

#if LX_HAS_LANE_LOADS

HWY_INLINE hn::Vec128<std::int16_t> EightShortsAt(const std::uint8_t* base,
                                                  const std::uint16_t* offsets) {
  const auto at = [=](int i) HWY_ATTR { return ValueAt<std::int16_t>(base + offsets[i]); };
  return hn::Vec128<std::int16_t>{
      _mm_setr_epi16(at(0), at(1), at(2), at(3), at(4), at(5), at(6), at(7))};
}

#endif

// The words of 16 bits at `base` and the offsets, one for each lane.
template <class D>
HWY_INLINE hn::Vec<D> ShortsAt(D d, const std::uint8_t* base, const std::uint16_t* offsets) {
#if LX_HAS_LANE_LOADS
  if constexpr (hn::MaxLanes(d) == 8) {
    return EightShortsAt(base, offsets);
  } else {
    const hn::Half<D> half;
    const std::uint16_t* const upper = offsets + hn::MaxLanes(half);
    return hn::Combine(d, ShortsAt(half, base, upper), ShortsAt(half, base, offsets));
  }
#else
  HWY_ALIGN std::int16_t words[hn::MaxLanes(d)];
  for (std::size_t i = 0; i < hn::MaxLanes(d); ++i) {
    words[i] = ValueAt<std::int16_t>(base + offsets[i]);
  }
  return hn::Load(d, words);
#endif
}

// `count` pixels of kBytes bytes, side by side.
template <std::size_t kBytes>
HWY_INLINE void PixelsAt(const std::uint8_t* base, const std::int32_t* offsets, std::size_t count,
                         std::uint8_t* to) {
  std::size_t i = 0;
  if constexpr (kBytes < 3) {
    // Loads before stores, which might go where the next pixel is, for all that is known.
    using Pixel = std::conditional_t<kBytes == 1, std::uint8_t, std::uint16_t>;
    for (; i + 4 <= count; i += 4) {
      const auto first = ValueAt<Pixel>(base + offsets[i]);
      const auto second = ValueAt<Pixel>(base + offsets[i + 1]);
      const auto third = ValueAt<Pixel>(base + offsets[i + 2]);
      const auto fourth = ValueAt<Pixel>(base + offsets[i + 3]);
      std::memcpy(to + i * kBytes, &first, kBytes);
      std::memcpy(to + (i + 1) * kBytes, &second, kBytes);
      std::memcpy(to + (i + 2) * kBytes, &third, kBytes);
      std::memcpy(to + (i + 3) * kBytes, &fourth, kBytes);
    }
  }
  for (; i < count; ++i) std::memcpy(to + i * kBytes, base + offsets[i], kBytes);
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_GATHER_INL_H_
