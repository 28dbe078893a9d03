// SPDX-License-Identifier: Apache-2.0
#include "sequence/frames_kernels.h"

#include <algorithm>
#include <limits>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "sequence/frames_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/reduction-inl.h"
#include "foundation/row_moves-inl.h"
#include "foundation/wide-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::sequence::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

void Cross(const PixelMap& map) {
  for (std::size_t y = 0; y + 1 < map.height; y += 2) {
    CrossRows(map.sources[0].Row<const std::uint8_t>(y),
              map.sources[0].Row<const std::uint8_t>(y + 1), map.destination.Row<std::uint8_t>(y),
              map.destination.Row<std::uint8_t>(y + 1), map.width);
  }
}

// Squares of differences, which 32 bits hold: one lane each, of bytes two to a lane.
template <class D>
HWY_INLINE void AddSquares([[maybe_unused]] D d, hn::Vec<D> a, hn::Vec<D> b, Sum32& sum) {
  const auto difference = hn::Sub(hn::Max(a, b), hn::Min(a, b));
  const hn::ScalableTag<std::uint32_t> lanes;
#if LX_HAS_LANES
  const auto even = EvenHalf(d, difference);
  const auto odd = OddHalf(d, difference);
  if constexpr (sizeof(hn::TFromD<D>) == 1) {
    const hn::Repartition<std::int16_t, D> words;
    const auto squares = [&](auto v) HWY_ATTR {
      return hn::BitCast(lanes, PairProducts(hn::BitCast(words, v), hn::BitCast(words, v)));
    };
    sum.Add(lanes, hn::Add(squares(even), squares(odd)));
  } else {
    sum.Add(lanes, hn::Mul(even, even));
    sum.Add(lanes, hn::Mul(odd, odd));
  }
#else
  const auto wide = hn::PromoteTo(lanes, difference);
  sum.Add(lanes, hn::Mul(wide, wide));
#endif
}

template <typename T>
HWY_INLINE std::uint64_t SquaredDifferences(const T* a, const T* b, std::size_t count) {
  const hn::ScalableTag<T> d;
  const std::size_t n = hn::Lanes(d);
  Sum32 sum;
  std::size_t x = 0;
  for (; x + n <= count; x += n) AddSquares(d, hn::LoadU(d, a + x), hn::LoadU(d, b + x), sum);
  if (x < count) {
    const auto none = hn::Zero(d);
    AddSquares(d, LoadLanes(d, a + x, 0, count - x, none), LoadLanes(d, b + x, 0, count - x, none),
               sum);
  }
  return sum.Result();
}

template <typename T>
int BestShift(const RowMatch& match) {
  const auto* const upper = reinterpret_cast<const T*>(match.upper) + match.first;
  const auto* const lower = reinterpret_cast<const T*>(match.lower) + match.first;
  std::uint64_t least = std::numeric_limits<std::uint64_t>::max();
  int best = match.lowest;
  for (std::int64_t shift = match.lowest; shift <= match.highest; ++shift) {
    const std::uint64_t sum = SquaredDifferences<T>(
        upper, lower - shift * match.stride, static_cast<std::size_t>(match.end - match.first));
    if (sum >= least) continue;
    least = sum;
    best = static_cast<int>(shift);
  }
  return best;
}

int OfBytes(const RowMatch& match) { return BestShift<std::uint8_t>(match); }
int OfWords(const RowMatch& match) { return BestShift<std::uint16_t>(match); }

}  // namespace
}  // namespace lx::sequence::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::sequence {

HWY_EXPORT(Cross);
HWY_EXPORT(OfBytes);
HWY_EXPORT(OfWords);

void CrossPairs(const PixelMap& map) { LX_CALL(map.path, Cross, map); }

int BestShiftOfBytes(const RowMatch& match) { return LX_CALL(match.path, OfBytes, match); }
int BestShiftOfWords(const RowMatch& match) { return LX_CALL(match.path, OfWords, match); }

}  // namespace lx::sequence
#endif
