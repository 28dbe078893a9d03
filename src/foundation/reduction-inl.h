// SPDX-License-Identifier: Apache-2.0
// The reduction driver: many elements become one number. Included once for each instruction set.
//
// A rule is made for its `Element`s and holds lanes: Add() accumulates a vector in them, Join() those
// of another object of the rule, and Result() makes one number of them. Elements that are `kNeutral`
// change nothing. Lanes that could wrap hold `kVectors` vectors, and Spill() empties them into wider
// ones; it comes before Join() and Result().

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
  static constexpr std::size_t kVectors = SIZE_MAX;

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
  HWY_INLINE void Spill() {}
  HWY_INLINE void Join(const Sum32& other) { lanes_ = hn::Add(lanes_, other.lanes_); }
  HWY_INLINE std::uint64_t Result() const { return hn::GetLane(hn::SumOfLanes(wide_, lanes_)); }

 private:
  static constexpr hn::ScalableTag<std::uint64_t> wide_{};
  hn::Vec<hn::ScalableTag<std::uint64_t>> lanes_;
};

// The largest element, 0 of none.
template <typename T>
class LargestOf {
 public:
  using Element = T;
  static constexpr Element kNeutral = 0;
  static constexpr std::size_t kVectors = SIZE_MAX;

  HWY_INLINE LargestOf() : lanes_(hn::Zero(d_)) {}

  template <class D>
  HWY_INLINE void Add(D /*d*/, hn::Vec<D> v) {
    lanes_ = hn::Max(lanes_, v);
  }
  HWY_INLINE void Spill() {}
  HWY_INLINE void Join(const LargestOf& other) { lanes_ = hn::Max(lanes_, other.lanes_); }
  HWY_INLINE T Result() const {
    HWY_ALIGN T lanes[hn::MaxLanes(d_)];
    hn::Store(lanes_, d_, lanes);
    return *std::max_element(lanes, lanes + hn::Lanes(d_));
  }

 private:
  static constexpr hn::ScalableTag<T> d_{};
  hn::Vec<hn::ScalableTag<T>> lanes_;
};

// The smallest element, the largest value of none.
template <typename T>
class SmallestOf {
 public:
  using Element = T;
  static constexpr Element kNeutral = static_cast<T>(-1);
  static constexpr std::size_t kVectors = SIZE_MAX;

  HWY_INLINE SmallestOf() : lanes_(hn::Set(d_, kNeutral)) {}

  template <class D>
  HWY_INLINE void Add(D /*d*/, hn::Vec<D> v) {
    lanes_ = hn::Min(lanes_, v);
  }
  HWY_INLINE void Spill() {}
  HWY_INLINE void Join(const SmallestOf& other) { lanes_ = hn::Min(lanes_, other.lanes_); }
  HWY_INLINE T Result() const {
    HWY_ALIGN T lanes[hn::MaxLanes(d_)];
    hn::Store(lanes_, d_, lanes);
    return *std::min_element(lanes, lanes + hn::Lanes(d_));
  }

 private:
  static constexpr hn::ScalableTag<T> d_{};
  hn::Vec<hn::ScalableTag<T>> lanes_;
};

// Lanes filled up with `neutral` behind the first `count` elements.
template <class D, typename T = hn::TFromD<D>>
HWY_INLINE hn::Vec<D> LoadFilled(D d, const std::uint8_t* from, std::size_t count, T neutral) {
  HWY_ALIGN T lanes[hn::MaxLanes(d)];
  std::fill(std::begin(lanes), std::end(lanes), neutral);
  std::memcpy(lanes, from, count * sizeof(T));
  return hn::Load(d, lanes);
}

// Pixels as they lie in memory.
template <typename T>
struct PlainRow {
  const std::uint8_t* pixels;

  template <class D>
  HWY_INLINE hn::Vec<D> Load(D d, std::size_t x) const {
    return hn::LoadU(d, reinterpret_cast<const T*>(pixels) + x);
  }
  template <class D>
  HWY_INLINE hn::Vec<D> LoadPart(D d, std::size_t x, std::size_t count, T neutral) const {
    return LoadFilled(d, pixels + x * sizeof(T), count, neutral);
  }
};

template <class Rule, class D, class Row>
HWY_INLINE void AddPart(Rule& rule, D d, const Row& row, std::size_t x, std::size_t count) {
  rule.Add(d, row.LoadPart(d, x, count, Rule::kNeutral));
}

// Rows of elements, reduced by four sets of lanes, so that no vector waits for the one before.
template <class Rule>
class Reduction {
 public:
  explicit HWY_INLINE Reduction(const Rule& start)
      : first_(start), second_(start), third_(start), fourth_(start) {}

  template <class Row>
  HWY_INLINE void AddRow(const Row& row, std::size_t count) {
    const hn::ScalableTag<typename Rule::Element> d;
    const std::size_t n = hn::Lanes(d);
    std::size_t x = 0;
    while (x + n <= count) {
      const std::size_t vectors = HWY_MIN((count - x) / n, room_);
      AddVectors(d, row, x, vectors);
      x += vectors * n;
      TakeRoom(vectors);
    }
    if (x == count) return;
    AddPart(first_, d, row, x, count - x);
    TakeRoom(1);
  }

  HWY_INLINE Rule Total() {
    Spill();
    Rule total = first_;
    total.Join(second_);
    total.Join(third_);
    total.Join(fourth_);
    return total;
  }

 private:
  // The lanes are in registers meanwhile: pixels may lie anywhere in memory.
  template <class D, class Row>
  HWY_INLINE void AddVectors(D d, const Row& row, std::size_t x, std::size_t vectors) {
    const std::size_t n = hn::Lanes(d);
    const std::size_t end = x + vectors * n;
    Rule first = first_;
    Rule second = second_;
    Rule third = third_;
    Rule fourth = fourth_;
    for (; x + 4 * n <= end; x += 4 * n) {
      first.Add(d, row.Load(d, x));
      second.Add(d, row.Load(d, x + n));
      third.Add(d, row.Load(d, x + 2 * n));
      fourth.Add(d, row.Load(d, x + 3 * n));
    }
    for (; x < end; x += n) first.Add(d, row.Load(d, x));
    first_ = first;
    second_ = second;
    third_ = third;
    fourth_ = fourth;
  }

  HWY_INLINE void TakeRoom(std::size_t vectors) {
    room_ -= vectors;
    if (room_ == 0) Spill();
  }
  HWY_INLINE void Spill() {
    first_.Spill();
    second_.Spill();
    third_.Spill();
    fourth_.Spill();
    room_ = Rule::kVectors;
  }

  Rule first_;
  Rule second_;
  Rule third_;
  Rule fourth_;
  std::size_t room_ = Rule::kVectors;
};

// Reduces one row of elements.
template <class Rule>
HWY_INLINE auto ReduceRow(const typename Rule::Element* row, std::size_t count) {
  using Element = typename Rule::Element;
  Reduction<Rule> reduction{Rule()};
  reduction.AddRow(PlainRow<Element>{reinterpret_cast<const std::uint8_t*>(row)}, count);
  return reduction.Total().Result();
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_REDUCTION_INL_H_
