// SPDX-License-Identifier: Apache-2.0
// The reduction driver: many elements become one number. Included once for each instruction set.
//
// A rule is made for its `Element`s and holds lanes: Add() accumulates a vector in lanes that are
// wide enough never to wrap, Join() those of another object of the rule, and Result() makes one
// number of them. Elements that are `kNeutral` change nothing.

#if defined(LXPIC_FOUNDATION_REDUCTION_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_REDUCTION_INL_H_
#undef LXPIC_FOUNDATION_REDUCTION_INL_H_
#else
#define LXPIC_FOUNDATION_REDUCTION_INL_H_
#endif

#include <algorithm>
#include <cstring>

#include "foundation/simd-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

// The sum of 32-bit elements, in 64 bits.
class Sum32 {
 public:
  using Element = std::uint32_t;
  static constexpr Element kNeutral = 0;

  HWY_INLINE Sum32() : lanes_(hn::Zero(wide_)) {}

  template <class D>
  HWY_INLINE void Add(D /*d*/, hn::Vec<D> v) {
#if HWY_TARGET == HWY_SCALAR
    lanes_ = hn::Add(lanes_, hn::PromoteTo(wide_, v));
#else
    const auto pairs = hn::BitCast(wide_, v);
    const auto low = hn::And(pairs, hn::Set(wide_, 0xFFFFFFFF));
    lanes_ = hn::Add(lanes_, hn::Add(low, hn::ShiftRight<32>(pairs)));
#endif
  }
  HWY_INLINE void Join(const Sum32& other) { lanes_ = hn::Add(lanes_, other.lanes_); }
  HWY_INLINE std::uint64_t Result() const { return hn::GetLane(hn::SumOfLanes(wide_, lanes_)); }

 private:
  static constexpr hn::ScalableTag<std::uint64_t> wide_{};
  hn::Vec<hn::ScalableTag<std::uint64_t> > lanes_;
};

// The largest 32-bit element, 0 of none.
class Largest32 {
 public:
  using Element = std::uint32_t;
  static constexpr Element kNeutral = 0;

  HWY_INLINE Largest32() : lanes_(hn::Zero(d_)) {}

  template <class D>
  HWY_INLINE void Add(D /*d*/, hn::Vec<D> v) {
    lanes_ = hn::Max(lanes_, v);
  }
  HWY_INLINE void Join(const Largest32& other) { lanes_ = hn::Max(lanes_, other.lanes_); }
  HWY_INLINE std::uint32_t Result() const { return hn::GetLane(hn::MaxOfLanes(d_, lanes_)); }

 private:
  static constexpr hn::ScalableTag<std::uint32_t> d_{};
  hn::Vec<hn::ScalableTag<std::uint32_t> > lanes_;
};

// Reduces a row of elements. Four sets of lanes, so that no vector waits for the one before.
template <class Rule, typename T = typename Rule::Element>
HWY_INLINE auto ReduceRow(const T* row, std::size_t count) {
  const hn::ScalableTag<T> d;
  const std::size_t n = hn::Lanes(d);
  Rule rule;
  Rule second;
  Rule third;
  Rule fourth;
  std::size_t x = 0;
  for (; x + 4 * n <= count; x += 4 * n) {
    rule.Add(d, hn::LoadU(d, row + x));
    second.Add(d, hn::LoadU(d, row + x + n));
    third.Add(d, hn::LoadU(d, row + x + 2 * n));
    fourth.Add(d, hn::LoadU(d, row + x + 3 * n));
  }
  for (; x + n <= count; x += n) rule.Add(d, hn::LoadU(d, row + x));
  if (x < count) {
    HWY_ALIGN T lanes[hn::MaxLanes(d)];
    std::fill(std::begin(lanes), std::end(lanes), Rule::kNeutral);
    std::memcpy(lanes, row + x, (count - x) * sizeof(T));
    rule.Add(d, hn::Load(d, lanes));
  }
  second.Join(third);
  rule.Join(fourth);
  rule.Join(second);
  return rule.Result();
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_REDUCTION_INL_H_
