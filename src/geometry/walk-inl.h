// SPDX-License-Identifier: Apache-2.0
// Coordinates, weights and mixtures of pixels in vectors. Included once for each instruction set.

#if defined(LXPIC_GEOMETRY_WALK_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_GEOMETRY_WALK_INL_H_
#undef LXPIC_GEOMETRY_WALK_INL_H_
#else
#define LXPIC_GEOMETRY_WALK_INL_H_
#endif

#include "foundation/products-inl.h"
#include "geometry/sampling-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::geometry::HWY_NAMESPACE {

#if LX_HAS_PAIR_PRODUCTS

using Shorts = hn::Repartition<std::int16_t, Words>;
using Octets = hn::Repartition<std::uint8_t, Words>;
using WordVector = hn::Vec<Words>;
using ShortVector = hn::Vec<Shorts>;

// Fractions as weights, in both halves of every lane.
HWY_INLINE ShortVector Fractions(WordVector coordinates, ShortVector mask) {
  alignas(16) static constexpr std::uint8_t kSecond[16] = {1, 0x80, 1, 0x80, 5,  0x80, 5,  0x80,
                                                           9, 0x80, 9, 0x80, 13, 0x80, 13, 0x80};
  const Octets d;
  const auto picked =
      hn::TableLookupBytesOr0(hn::BitCast(d, coordinates), hn::LoadDup128(d, kSecond));
  return hn::And(hn::BitCast(Shorts(), picked), mask);
}

// (256 - f, f) of a fraction in both halves of a lane.
HWY_INLINE ShortVector WeightPairs(ShortVector fraction) {
  const Words d;
  const auto flip = hn::BitCast(Shorts(), hn::Set(d, 0xFFFF));
  const auto one = hn::BitCast(Shorts(), hn::Set(d, 257));
  return hn::Add(hn::Xor(fraction, flip), one);
}

// The sums of four bytes with their weights, as parts of 65536 and less 128. Columns are upper bytes
// with those below them. 2^15 is taken from 256 times the upper one; what the lower one adds wraps,
// and the sum of them does not.
HWY_INLINE WordVector MixBytes(hn::Vec<Octets> columns, ShortVector fy, ShortVector pairs) {
  const Shorts d;
  const auto step = hn::BitCast(d, PairSums<-1, 1>(columns));
  const auto above = hn::ShiftLeft<8>(hn::BitCast(d, columns));
  const auto mixed = hn::Add(hn::Xor(above, hn::Set(d, INT16_MIN)), hn::Mul(fy, step));
  return hn::ShiftRight<16>(PairProducts(mixed, pairs));
}

// Sums of left and right 16-bit pixels with weights (256 - f, f), less 2^23.
HWY_INLINE WordVector MixWordPairs(WordVector pixels, ShortVector pairs) {
  const auto lowest = hn::Set(Shorts(), INT16_MIN);
  return PairProducts(hn::Xor(hn::BitCast(Shorts(), pixels), lowest), pairs);
}

// first + f (second - first) / 256 of such sums, cut to pixels: all but the wraps stays in 32 bits.
HWY_INLINE hn::Vec<hn::RebindToUnsigned<Words>> MixSums(WordVector first, WordVector second,
                                                        WordVector f) {
  const Words d;
  const hn::RebindToUnsigned<Words> whole;
  const auto sum = hn::Add(hn::ShiftLeft<8>(first), hn::Mul(f, hn::Sub(second, first)));
  return hn::ShiftRight<16>(hn::BitCast(whole, hn::Xor(sum, hn::Set(d, INT32_MIN))));
}

// Four vectors of bytes less 128, cut to bytes: block i of the result has the blocks i of all.
HWY_INLINE hn::Vec<Octets> PackBytes(const WordVector (&v)[4]) {
  const Shorts d;
  const hn::RebindToUnsigned<Shorts> whole;
  const auto zero = hn::Set(d, 128);
  const auto low = hn::Add(hn::ReorderDemote2To(d, v[0], v[1]), zero);
  const auto high = hn::Add(hn::ReorderDemote2To(d, v[2], v[3]), zero);
  return Pack(hn::BitCast(whole, low), hn::BitCast(whole, high));
}

// Walks along a row with as many vectors of points as packs join: their blocks of four points take
// turns, so that packs leave points in order.
template <int kTurns>
struct Walk {
  WordVector x;
  WordVector y;
  WordVector right;  // to the next vector
  WordVector down;
  WordVector rightOn;  // and from the last one to the first of the next turn
  WordVector downOn;

  HWY_INLINE void Next() {
    x = hn::Add(x, right);
    y = hn::Add(y, down);
  }
  HWY_INLINE void NextTurn() {
    x = hn::Add(x, rightOn);
    y = hn::Add(y, downOn);
  }
};

struct Step {
  std::int32_t x;
  std::int32_t y;
};

template <int kTurns>
HWY_INLINE Walk<kTurns> WalkFrom(Step start, Step step) {
  const Words d;
  const auto lanes = hn::Iota(d, 0);
  const auto blocks = hn::AndNot(hn::Set(d, 3), lanes);
  const auto places = hn::Add(hn::And(lanes, hn::Set(d, 3)), hn::Mul(blocks, hn::Set(d, kTurns)));
  const auto times = [d](std::int32_t by, std::size_t n) HWY_ATTR {
    return hn::Set(d, static_cast<std::int32_t>(static_cast<std::uint32_t>(by) *
                                                static_cast<std::uint32_t>(n)));
  };
  const auto along = [=](std::int32_t from, std::int32_t by) HWY_ATTR {
    return hn::Add(hn::Set(d, from), hn::Mul(places, hn::Set(d, by)));
  };
  const std::size_t on = kTurns * hn::Lanes(d) - 4 * (kTurns - 1);
  return {along(start.x, step.x), along(start.y, step.y), times(step.x, 4),
          times(step.y, 4),       times(step.x, on),      times(step.y, on)};
}

#endif  // LX_HAS_PAIR_PRODUCTS

}  // namespace lx::geometry::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_GEOMETRY_WALK_INL_H_
