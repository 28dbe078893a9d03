// SPDX-License-Identifier: Apache-2.0
// Windows along a row, joined from shorter ones in registers: a window of twice the length is two
// of them, one moved by the length. Included once for each instruction set.

#if defined(LXPIC_FOUNDATION_WINDOW_DOUBLING_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_WINDOW_DOUBLING_INL_H_
#undef LXPIC_FOUNDATION_WINDOW_DOUBLING_INL_H_
#else
#define LXPIC_FOUNDATION_WINDOW_DOUBLING_INL_H_
#endif

#include "foundation/box_extremes.h"
#include "foundation/window_extremes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

#if LX_HAS_LANES

// The bytes of `here` from kBytes on, and then those of `next`.
template <std::size_t kBytes, class D>
HWY_INLINE hn::Vec<D> MovedTowards(D d, hn::Vec<D> here, hn::Vec<D> next) {
  constexpr std::size_t kVector = hn::MaxLanes(D()) * sizeof(hn::TFromD<D>);
  constexpr std::size_t kInBlock = kBytes % 16;
  if constexpr (kBytes == kVector) {
    return next;
#if LX_HAS_LANE_PERMUTE
  } else if constexpr (kVector == 64) {
    constexpr int kBlock = static_cast<int>(kBytes / 16) * 2;
    const __m512i first = _mm512_alignr_epi64(next.raw, here.raw, kBlock);
    if constexpr (kInBlock == 0) return hn::Vec<D>{first};
    const __m512i second =
        kBlock == 6 ? next.raw : _mm512_alignr_epi64(next.raw, here.raw, (kBlock + 2) % 8);
    return hn::Vec<D>{_mm512_alignr_epi8(second, first, kInBlock)};
#endif
#if HWY_MAX_BYTES >= 32
  } else if constexpr (kVector == 32) {
    const auto middle = hn::ConcatLowerUpper(d, next, here);
    if constexpr (kInBlock == 0) return middle;
    if constexpr (kBytes < 16) {
      return hn::CombineShiftRightBytes<kInBlock>(d, middle, here);
    } else {
      return hn::CombineShiftRightBytes<kInBlock>(d, next, middle);
    }
#endif
  } else {
    return hn::CombineShiftRightBytes<kInBlock>(d, next, here);
  }
}

// The windows of a vector that follows those in `before`, each of which is one level behind the one
// below it.
template <class D, class Op, std::size_t kCount, std::size_t kStride, std::size_t kLevel = 0>
HWY_INLINE hn::Vec<D> Climb(D d, hn::Vec<D> v, hn::Vec<D>* before) {
  if constexpr (kLevel == kCount) {
    return v;
  } else {
    constexpr std::size_t kBytes = (kStride * sizeof(hn::TFromD<D>)) << kLevel;
    const auto here = before[kLevel];
    before[kLevel] = v;
    const auto joined = Op::Of(here, MovedTowards<kBytes>(d, here, v));
    return Climb<D, Op, kCount, kStride, kLevel + 1>(d, joined, before);
  }
}

// to = windows of 2^kCount elements, kStride elements apart, that begin at each of `width` elements.
// Whole vectors are written, and kCount more are read.
template <class D, class Op, std::size_t kCount, std::size_t kStride>
void DoubleWindows(const hn::TFromD<D>* from, hn::TFromD<D>* HWY_RESTRICT to, std::size_t width) {
  const D d;
  const std::size_t n = hn::Lanes(d);
  hn::Vec<D> before[kCount];
  for (std::size_t i = 0; i < kCount; ++i) before[i] = hn::Zero(d);
  for (std::size_t i = 0; i < kCount; ++i, from += n) {
    Climb<D, Op, kCount, kStride>(d, hn::LoadU(d, from), before);
  }
  for (std::size_t x = 0; x < width; x += n) {
    hn::StoreU(Climb<D, Op, kCount, kStride>(d, hn::LoadU(d, from + x), before), d, to + x);
  }
}

#endif

// How often windows may be doubled: the last move is by a vector at most.
template <class D>
constexpr std::size_t MostDoublings(std::size_t stride) {
  const std::size_t bytes = hn::MaxLanes(D()) * sizeof(hn::TFromD<D>);
  if (bytes < 16) return 0;
  std::size_t count = 0;
  while (count < BoxLayout::kMostDoublings &&
         ((stride * sizeof(hn::TFromD<D>)) << count) <= bytes) {
    ++count;
  }
  return count;
}

template <class D>
using WindowDoubler = void (*)(const hn::TFromD<D>*, hn::TFromD<D>*, std::size_t);

// The kernel that doubles `count` times, at most MostDoublings(); else null.
template <class D, class Op, std::size_t kStride, std::size_t kCount = 1>
WindowDoubler<D> DoublerOf([[maybe_unused]] std::size_t count) {
#if LX_HAS_LANES
  if constexpr (kCount <= MostDoublings<D>(kStride)) {
    return count == kCount ? &DoubleWindows<D, Op, kCount, kStride>
                           : DoublerOf<D, Op, kStride, kCount + 1>(count);
  }
#endif
  return nullptr;
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_WINDOW_DOUBLING_INL_H_
