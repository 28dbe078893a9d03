// SPDX-License-Identifier: Apache-2.0
#include "geometry/shrink_kernels.h"

#include "foundation/exact_division.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "geometry/shrink_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/block_sums-inl.h"
#include "foundation/wide-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::geometry::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

// Sums of kWidth neighbours each.
template <std::size_t kWidth, class D>
HWY_INLINE hn::Vec<D> NeighbourSums(D d, const hn::TFromD<D>* sums) {
  if constexpr (kWidth == 1) return hn::LoadU(d, sums);
  hn::Vec<D> a = hn::Zero(d), b = a, c = a, e = a;
  if constexpr (kWidth == 2) hn::LoadInterleaved2(d, sums, a, b);
  if constexpr (kWidth == 3) hn::LoadInterleaved3(d, sums, a, b, c);
  if constexpr (kWidth == 4) hn::LoadInterleaved4(d, sums, a, b, c, e);
  return hn::Add(hn::Add(a, b), hn::Add(c, e));
}

// Averages of blocks that all are kWidth columns wide.
template <std::size_t kWidth>
HWY_INLINE void AverageEqual(const std::uint16_t* sums, std::size_t rows, std::size_t count,
                             std::uint8_t* to) {
  const hn::ScalableTag<std::uint16_t> d;
  const hn::Rebind<std::uint8_t, decltype(d)> narrow;
  const ShortAverage average = ShortAverage::Of(kWidth * rows);
  const auto multiplier = hn::Set(d, average.multiplier);
  ForEachVector(narrow, count, [&](std::size_t x, auto access) HWY_ATTR {
    const auto twice = hn::ShiftLeft<1>(NeighbourSums<kWidth>(d, sums + kWidth * x));
    const auto quotient = hn::ShiftRightSame(hn::MulHigh(twice, multiplier), average.shift);
    access.Store(narrow, Narrow(narrow, quotient), to + x);
  });
}

HWY_INLINE void AverageEqual(std::size_t width, const std::uint16_t* sums, std::size_t rows,
                             std::size_t count, std::uint8_t* to) {
  switch (width) {
    case 1:
      return AverageEqual<1>(sums, rows, count, to);
    case 2:
      return AverageEqual<2>(sums, rows, count, to);
    case 3:
      return AverageEqual<3>(sums, rows, count, to);
    default:
      return AverageEqual<4>(sums, rows, count, to);
  }
}

// How many blocks from `x` on are taken as vectors: all, all but the last, or one vector of them,
// whichever have one width.
HWY_INLINE std::size_t EqualBlocks(const Shrinking& s, const std::uint32_t* starts, std::size_t x) {
  const std::size_t rest = s.columns - x;
  const std::size_t width = starts[x + 1] - starts[x];
  const std::size_t vector = HWY_MIN(rest, hn::Lanes(hn::ScalableTag<std::uint16_t>()));
  for (const std::size_t count : {rest, rest - 1, vector}) {
    if (starts[x + count] - starts[x] == count * width) return count;
  }
  return 0;
}

template <std::size_t kComponents, typename T, typename Lane>
HWY_INLINE void AverageOne(const Lane* sums, std::size_t width, const PixelAverage<T>& average,
                           T* to) {
  std::uint64_t sum[kComponents] = {};
  for (std::size_t i = 0; i < kComponents * width; i += kComponents) {
    for (std::size_t c = 0; c < kComponents; ++c) sum[c] += sums[i + c];
  }
  for (std::size_t c = 0; c < kComponents; ++c) {
    const T pixel = average(sum[c]);  // rows lie at any address
    std::memcpy(to + c, &pixel, sizeof(T));
  }
}

// Blocks have two widths at most, which differ by one.
template <std::size_t kComponents, typename T, typename Lane>
HWY_INLINE void AverageRow(const Shrinking& s, const std::uint32_t* starts, const Lane* sums,
                           std::size_t rows, T* to) {
  const std::size_t narrow = s.width / s.columns;
  const PixelAverage<T> averages[2] = {PixelAverage<T>(narrow * rows),
                                       PixelAverage<T>((narrow + 1) * rows)};
  std::size_t x = 0;
  while (x < s.columns) {
    const std::size_t start = starts[x];
    const std::size_t width = starts[x + 1] - start;
    if constexpr (kComponents == 1 && sizeof(Lane) == 2) {
      const std::size_t count =
          width <= 4 && width * rows <= ShortAverage::kMost ? EqualBlocks(s, starts, x) : 0;
      if (count > 1) {
        AverageEqual(width, sums + start, rows, count, to + x);
        x += count;
        continue;
      }
    }
    AverageOne<kComponents>(sums + kComponents * start, width, averages[width - narrow],
                            to + kComponents * x);
    ++x;
  }
}

template <typename T, typename Lane>
HWY_INLINE void Shrink(const Shrinking& s, const std::uint32_t* starts, Lane* sums) {
  std::size_t first = 0;
  for (std::size_t y = 0; y < s.rows; ++y) {
    const std::size_t end = BlockStart(y + 1, s.height, s.rows);
    T* const to = s.destination.Row<T>(y);
    SumBlockOfRows<T>(s.source, first, end, s.width * s.components, sums);
    if (s.components == 3) {
      AverageRow<3>(s, starts, sums, end - first, to);
    } else {
      AverageRow<1>(s, starts, sums, end - first, to);
    }
    first = end;
  }
}

#define LX_SHRINK(name, Pixel, Sums)                                              \
  void name(const Shrinking& shrinking, const std::uint32_t* starts, Sums sums) { \
    Shrink<Pixel>(shrinking, starts, sums);                                       \
  }
LX_SHRINK(BytesShort, std::uint8_t, std::uint16_t*)
LX_SHRINK(BytesLong, std::uint8_t, std::uint32_t*)
LX_SHRINK(BytesLongest, std::uint8_t, std::uint64_t*)
LX_SHRINK(WordsLong, std::uint16_t, std::uint32_t*)
LX_SHRINK(WordsLongest, std::uint16_t, std::uint64_t*)
#undef LX_SHRINK

}  // namespace
}  // namespace lx::geometry::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::geometry {

#define LX_SHRINK(name, function, Sums)                                               \
  HWY_EXPORT(name);                                                                   \
  void function(const Shrinking& shrinking, const std::uint32_t* starts, Sums sums) { \
    LX_CALL(shrinking.path, name, shrinking, starts, sums);                           \
  }
LX_SHRINK(BytesShort, ShrinkBytes, std::uint16_t*)
LX_SHRINK(BytesLong, ShrinkBytes, std::uint32_t*)
LX_SHRINK(BytesLongest, ShrinkBytes, std::uint64_t*)
LX_SHRINK(WordsLong, ShrinkWords, std::uint32_t*)
LX_SHRINK(WordsLongest, ShrinkWords, std::uint64_t*)
#undef LX_SHRINK

}  // namespace lx::geometry
#endif
