// SPDX-License-Identifier: Apache-2.0
// Moves of whole rows: two rows change places, a row is turned round. Included once for each
// instruction set.

#if defined(LXPIC_FOUNDATION_ROW_MOVES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_ROW_MOVES_INL_H_
#undef LXPIC_FOUNDATION_ROW_MOVES_INL_H_
#else
#define LXPIC_FOUNDATION_ROW_MOVES_INL_H_
#endif

#include "foundation/colour_pixels-inl.h"
#include "foundation/pixel_map-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

// Two rows of `bytes` bytes, which do not overlap, arrive crosswise: `a` at `toB` and `b` at `toA`,
// which may be these rows themselves.
HWY_INLINE void CrossRows(const std::uint8_t* a, const std::uint8_t* b, std::uint8_t* toA,
                          std::uint8_t* toB, std::size_t bytes) {
  const hn::CappedTag<std::uint8_t, 32> d;
  ForEachPair(d, bytes, [&](std::size_t x, auto access) HWY_ATTR {
    const auto first = access.Load(d, a + x);
    const auto second = access.Load(d, b + x);
    access.Store(d, second, toA + x);
    access.Store(d, first, toB + x);
  });
}

// Two rows change places.
HWY_INLINE void SwapRows(std::uint8_t* a, std::uint8_t* b, std::size_t bytes) {
  CrossRows(a, b, a, b, bytes);
}

#if LX_HAS_LANES

// The lanes of bytes or words, last one first.
template <class D>
HWY_INLINE hn::Vec<D> Backwards(D d, hn::Vec<D> v) {
  alignas(16) static constexpr std::uint8_t kBytes[16] = {15, 14, 13, 12, 11, 10, 9, 8,
                                                          7,  6,  5,  4,  3,  2,  1, 0};
  alignas(16) static constexpr std::uint8_t kWords[16] = {14, 15, 12, 13, 10, 11, 8, 9,
                                                          6,  7,  4,  5,  2,  3,  0, 1};
  constexpr std::size_t kSize = sizeof(hn::TFromD<D>);
  const hn::Repartition<std::uint8_t, D> bytes;
  if constexpr (hn::MaxLanes(d) * kSize < 16) {
    static_assert(hn::MaxLanes(d) == 1);
    return v;
  } else {
    const auto order = hn::LoadDup128(bytes, kSize == 1 ? kBytes : kWords);
    const auto turned = hn::TableLookupBytes(hn::BitCast(bytes, v), order);
    if constexpr (hn::MaxLanes(bytes) == 16) {
      return hn::BitCast(d, turned);
    } else {
      return hn::BitCast(d, hn::ReverseBlocks(bytes, turned));
    }
  }
}

#else

template <class D>
HWY_INLINE hn::Vec<D> Backwards(D /*d*/, hn::Vec<D> v) {
  return v;
}

#endif

// Vectors of pixels as they are turned round: one of elements, or three of components.
template <typename T, std::size_t kComponents>
struct TurnedPixels;

template <typename T>
struct TurnedPixels<T, 1> {
  template <class D>
  static HWY_INLINE void Exchange(D d, T* left, T* right) {
    const auto first = hn::LoadU(d, left);
    const auto last = hn::LoadU(d, right);
    hn::StoreU(Backwards(d, last), d, left);
    hn::StoreU(Backwards(d, first), d, right);
  }
};

template <>
struct TurnedPixels<std::uint8_t, 3> {
  template <class D>
  static HWY_INLINE void Exchange(D d, std::uint8_t* left, std::uint8_t* right) {
    hn::Vec<D> a0, a1, a2, b0, b1, b2;
    LoadColour(d, left, a0, a1, a2);
    LoadColour(d, right, b0, b1, b2);
    StoreColour(d, Backwards(d, b0), Backwards(d, b1), Backwards(d, b2), left);
    StoreColour(d, Backwards(d, a0), Backwards(d, a1), Backwards(d, a2), right);
  }
};

// Turns the pixels first..end round from both ends, a vector of each at a time, as long as there is
// one; the last two may overlap, because both are read before either is written. True when nothing
// is left to turn.
template <class D, std::size_t kComponents>
HWY_INLINE bool TurnEnds(D d, hn::TFromD<D>* row, std::size_t& first, std::size_t& end) {
  using T = hn::TFromD<D>;
  const std::size_t n = hn::Lanes(d);
  while (end - first >= n) {
    TurnedPixels<T, kComponents>::Exchange(d, row + kComponents * first,
                                           row + kComponents * (end - n));
    if (end - first <= 2 * n) return true;
    first += n;
    end -= n;
  }
  return end - first < 2;
}

// Turns a row of pixels of `kComponents` elements of type T round.
template <typename T, std::size_t kComponents>
HWY_INLINE void TurnRow(T* row, std::size_t width) {
  std::size_t first = 0;
  std::size_t end = width;
  if (TurnEnds<hn::ScalableTag<T>, kComponents>({}, row, first, end)) return;
  if (TurnEnds<hn::CappedTag<T, 16 / sizeof(T)>, kComponents>({}, row, first, end)) return;
  TurnEnds<hn::CappedTag<T, 1>, kComponents>({}, row, first, end);
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_ROW_MOVES_INL_H_
