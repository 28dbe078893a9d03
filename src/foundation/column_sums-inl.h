// SPDX-License-Identifier: Apache-2.0
// Sums over columns of an image, which go down it with a window: a row comes, a row goes. Included
// once for each instruction set.

#if defined(LXPIC_FOUNDATION_COLUMN_SUMS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_COLUMN_SUMS_INL_H_
#undef LXPIC_FOUNDATION_COLUMN_SUMS_INL_H_
#else
#define LXPIC_FOUNDATION_COLUMN_SUMS_INL_H_
#endif

#include <cstddef>
#include <cstdint>

#include "foundation/wide-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

// Where the sums of columns lie: those of column kHalves * k + h at half[h][k], as the halves of
// vectors come. Sums of columns beyond the ends follow them on both sides.
template <typename Lane>
struct ColumnSums {
  Lane* half[kHalves];
};

// sums += coming - going, of rows of `width` elements half as wide as the sums. Sums may wrap.
template <typename T, typename Lane>
HWY_INLINE void AddRow(const T* coming, const T* going, std::size_t width,
                       const ColumnSums<Lane>& sums) {
  static_assert(sizeof(Lane) == 2 * sizeof(T));
  const hn::ScalableTag<T> d;
  const WideTag<decltype(d)> wide;
  // Copies, because the compiler must take every stored vector for a change of the originals.
  Lane* half[kHalves];
  for (std::size_t h = 0; h < kHalves; ++h) half[h] = sums.half[h];
  ForEachVector(d, width, [&](std::size_t x, auto access) HWY_ATTR {
    const auto plus = Widen(d, access.Load(d, coming + x));
    const auto minus = Widen(d, access.Load(d, going + x));
    for (std::size_t h = 0; h < kHalves; ++h) {
      Lane* const at = half[h] + x / kHalves;
      const auto change = hn::Sub(plus.half[h], minus.half[h]);
      hn::StoreU(hn::Add(hn::LoadU(wide, at), change), wide, at);
    }
  });
}

// Repeats the sums of the first and the last column `reach` times beyond the ends, in each half; a
// vector more may be written.
template <typename Lane>
HWY_INLINE void ReplicateEnds(std::size_t width, std::size_t reach, const ColumnSums<Lane>& sums) {
  const hn::ScalableTag<Lane> d;
  const std::size_t n = hn::Lanes(d);
  const std::size_t last = (width - 1) / kHalves;
  const auto before = hn::Set(d, sums.half[0][0]);
  const Lane behind = sums.half[(width - 1) % kHalves][last];
  sums.half[kHalves - 1][last] = behind;
  for (std::size_t h = 0; h < kHalves; ++h) {
    Lane* const at = sums.half[h];
    for (std::size_t i = 0; i < reach; i += n) {
      hn::StoreU(before, d, at - n - i);
      hn::StoreU(hn::Set(d, behind), d, at + last + 1 + i);
    }
  }
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_COLUMN_SUMS_INL_H_
