// SPDX-License-Identifier: Apache-2.0
// Distances along a row, vector by vector. Included once for each instruction set.

#if defined(LXPIC_MORPHOLOGY_RUNNING_DISTANCE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_MORPHOLOGY_RUNNING_DISTANCE_INL_H_
#undef LXPIC_MORPHOLOGY_RUNNING_DISTANCE_INL_H_
#else
#define LXPIC_MORPHOLOGY_RUNNING_DISTANCE_INL_H_
#endif

#include "foundation/simd-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::morphology::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

template <class V>
HWY_INLINE V OneMore(V v) {
  return hn::SaturatedAdd(v, hn::Set(hn::DFromV<V>(), 1));
}

// Each lane becomes the least of itself and of those before it, plus one for each step from there.
// Before means left, or right when the walk goes backward. Distances are saturated bytes.
template <bool kBackward>
class RunningDistance {
 public:
  using D = hn::ScalableTag<std::uint8_t>;
  using V = hn::Vec<D>;

  // `outside` is what lies before the row.
  HWY_INLINE explicit RunningDistance(std::uint8_t outside) : last_(hn::Set(D(), outside)) {}

#if LX_HAS_LANES

  HWY_INLINE V Next(V v) {
    v = Within(v);
    const V joined = hn::Min(v, hn::SaturatedAdd(last_, all_));
    // What goes on to the next vector does not wait for what came from the one before.
    last_ = hn::Min(Last(v), hn::SaturatedAdd(last_, hn::Set(D(), kLanes)));
    return joined;
  }

 private:
  static constexpr std::size_t kLanes = hn::MaxLanes(D());
  static constexpr std::size_t kBlock = 16;
  static_assert(kLanes <= 4 * kBlock);

  // In each group of so many lanes, how far each lies from what came before the group.
  static HWY_INLINE V Steps(std::size_t lanes) {
    HWY_ALIGN std::uint8_t steps[kLanes];
    for (std::size_t i = 0; i < kLanes; ++i) {
      const std::size_t step = i % lanes;
      steps[i] = static_cast<std::uint8_t>(kBackward ? lanes - step : step + 1);
    }
    return hn::Load(D(), steps);
  }

  // By powers of two within blocks, from block to block, and from half to half.
  HWY_INLINE V Within(V v) const {
    const V most = hn::Set(D(), 255);
    v = Reach<1>(v, most);
    v = Reach<2>(v, most);
    v = Reach<4>(v, most);
    v = Reach<8>(v, most);
    if constexpr (kLanes > kBlock) {
      const V other = hn::SwapAdjacentBlocks(LastOfBlocks(v));
      v = Reduced(v, kBackward ? hn::OddEvenBlocks(most, other) : hn::OddEvenBlocks(other, most),
                  block_);
    }
    if constexpr (kLanes > 2 * kBlock) {
      const V last = LastOfPairs(v);
      v = Reduced(
          v,
          kBackward ? hn::ConcatUpperUpper(D(), most, last) : hn::ConcatLowerLower(D(), last, most),
          pair_);
    }
    return v;
  }

  static HWY_INLINE V Reduced(V v, V before, V steps) {
    return hn::Min(v, hn::SaturatedAdd(before, steps));
  }

  template <int kSteps>
  static HWY_INLINE V Reach(V v, V most) {
    const D d;
    const V moved = kBackward ? hn::CombineShiftRightBytes<kSteps>(d, most, v)
                              : hn::CombineShiftRightBytes<kBlock - kSteps>(d, v, most);
    return Reduced(v, moved, hn::Set(d, kSteps));
  }

  // The last lane of each block, in the whole block; of each pair of blocks; of all.
  static HWY_INLINE V LastOfBlocks(V v) {
    return hn::TableLookupBytes(v, hn::Set(D(), kBackward ? 0 : kBlock - 1));
  }
  static HWY_INLINE V LastOfPairs(V v) {
    const V last = LastOfBlocks(v);
    if constexpr (kLanes == kBlock) return last;
    const V other = hn::SwapAdjacentBlocks(last);
    return kBackward ? hn::OddEvenBlocks(other, last) : hn::OddEvenBlocks(last, other);
  }
  static HWY_INLINE V Last(V v) {
    const V last = LastOfPairs(v);
    if constexpr (kLanes <= 2 * kBlock) return last;
    return kBackward ? hn::ConcatLowerLower(D(), last, last)
                     : hn::ConcatUpperUpper(D(), last, last);
  }

  V block_ = Steps(kBlock);
  V pair_ = Steps(2 * kBlock);
  V all_ = Steps(kLanes);

#else

  HWY_INLINE V Next(V v) {
    last_ = hn::Min(v, OneMore(last_));
    return last_;
  }

 private:
#endif

  V last_;  // of the vector before, in all lanes
};

}  // namespace lx::morphology::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_MORPHOLOGY_RUNNING_DISTANCE_INL_H_
