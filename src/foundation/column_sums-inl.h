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

#include "foundation/rows.h"
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

// So many rows of bytes fit sums of 16 bits.
inline constexpr std::size_t kByteRows = 256;

// sums += rows `first` to first + kRows - 1, of bytes. Where there are halves, the first one sums
// pairs of bytes as 16-bit numbers, from which the odd ones are subtracted in the end: nothing need
// be masked on the way.
template <std::size_t kRows>
HWY_INLINE void AddByteRows(const Rows& source, std::size_t first, std::size_t width,
                            const ColumnSums<std::uint16_t>& sums) {
  const hn::ScalableTag<std::uint8_t> d;
  const WideTag<decltype(d)> wide;
  const std::uint8_t* rows[kRows];
  for (std::size_t i = 0; i < kRows; ++i) rows[i] = source.Row<const std::uint8_t>(first + i);
  ColumnSums<std::uint16_t> to = sums;
  ForEachVector(d, width, [&](std::size_t x, auto access) HWY_ATTR {
#if LX_HAS_LANES
    auto pairs = hn::LoadU(wide, to.half[0] + x / kHalves);
    auto odd = hn::LoadU(wide, to.half[1] + x / kHalves);
    for (std::size_t i = 0; i < kRows; ++i) {
      const auto v = hn::BitCast(wide, access.Load(d, rows[i] + x));
      pairs = hn::Add(pairs, v);
      odd = hn::Add(odd, hn::ShiftRight<8>(v));
    }
    hn::StoreU(pairs, wide, to.half[0] + x / kHalves);
    hn::StoreU(odd, wide, to.half[1] + x / kHalves);
#else
    auto sum = hn::LoadU(wide, to.half[0] + x);
    for (std::size_t i = 0; i < kRows; ++i) {
      sum = hn::Add(sum, hn::PromoteTo(wide, access.Load(d, rows[i] + x)));
    }
    hn::StoreU(sum, wide, to.half[0] + x);
#endif
  });
}

// Adds the sums of AddByteRows() to those of the columns.
HWY_INLINE void SpillByteRows(const ColumnSums<std::uint16_t>& sums, std::size_t width,
                              std::uint64_t* columns) {
#if LX_HAS_LANES
  for (std::size_t k = 0; 2 * k < width; ++k) {
    const std::uint16_t odd = sums.half[1][k];
    columns[2 * k] += static_cast<std::uint16_t>(sums.half[0][k] - 256 * odd);
    if (2 * k + 1 < width) columns[2 * k + 1] += odd;
  }
#else
  for (std::size_t x = 0; x < width; ++x) columns[x] += sums.half[0][x];
#endif
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
