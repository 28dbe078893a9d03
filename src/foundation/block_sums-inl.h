// SPDX-License-Identifier: Apache-2.0
// Sums over blocks of rows, column by column, in lanes that hold them. Included once for each
// instruction set.

#if defined(LXPIC_FOUNDATION_BLOCK_SUMS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_BLOCK_SUMS_INL_H_
#undef LXPIC_FOUNDATION_BLOCK_SUMS_INL_H_
#else
#define LXPIC_FOUNDATION_BLOCK_SUMS_INL_H_
#endif

#include "foundation/rows.h"
#include "foundation/simd-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

// sums = sums + rows `first` to first + kRows - 1, or without the old sums when they are the first.
template <std::size_t kRows, bool kStarts, typename T, typename Lane>
HWY_INLINE void SumRows(const Rows& source, std::size_t first, std::size_t elements, Lane* sums) {
  const hn::ScalableTag<Lane> wide;
  const hn::Rebind<T, decltype(wide)> d;
  const T* rows[kRows];
  for (std::size_t i = 0; i < kRows; ++i) rows[i] = source.Row<const T>(first + i);
  ForEachVector(d, elements, [&](std::size_t x, auto access) HWY_ATTR {
    auto sum = hn::PromoteTo(wide, access.Load(d, rows[0] + x));
    for (std::size_t i = 1; i < kRows; ++i) {
      sum = hn::Add(sum, hn::PromoteTo(wide, access.Load(d, rows[i] + x)));
    }
    if constexpr (!kStarts) sum = hn::Add(sum, hn::Load(wide, sums + x));
    hn::Store(sum, wide, sums + x);
  });
}

// Lanes of 64 bits are for images of a size that nobody waits for.
template <typename T>
HWY_INLINE void SumRowsWide(const Rows& source, std::size_t first, std::size_t end,
                            std::size_t elements, std::uint64_t* sums) {
  std::memset(sums, 0, elements * sizeof(*sums));
  for (std::size_t y = first; y < end; ++y) {
    const T* const row = source.Row<const T>(y);
    for (std::size_t x = 0; x < elements; ++x) {
      T pixel;  // rows lie at any address
      std::memcpy(&pixel, row + x, sizeof(T));
      sums[x] += pixel;
    }
  }
}

// The sums over rows `first` to end - 1 of each of their elements, of type T. Lanes must hold them;
// `sums` is aligned and a vector longer than the row.
template <typename T, typename Lane>
HWY_INLINE void SumBlockOfRows(const Rows& source, std::size_t first, std::size_t end,
                               std::size_t elements, Lane* sums) {
  if constexpr (sizeof(Lane) == 8) {
    SumRowsWide<T>(source, first, end, elements, sums);
  } else {
    std::size_t y = first;
    switch ((end - first) % 4) {
      case 1:
        SumRows<1, true, T>(source, y, elements, sums);
        break;
      case 2:
        SumRows<2, true, T>(source, y, elements, sums);
        break;
      case 3:
        SumRows<3, true, T>(source, y, elements, sums);
        break;
      default:
        SumRows<4, true, T>(source, y, elements, sums);
        y += 4;
    }
    for (y += (end - first) % 4; y < end; y += 4) SumRows<4, false, T>(source, y, elements, sums);
  }
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_BLOCK_SUMS_INL_H_
