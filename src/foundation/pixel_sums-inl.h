// SPDX-License-Identifier: Apache-2.0
// The rules of sums and counts, and pairs of rules. Included once for each instruction set.

#if defined(LXPIC_FOUNDATION_PIXEL_SUMS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_PIXEL_SUMS_INL_H_
#undef LXPIC_FOUNDATION_PIXEL_SUMS_INL_H_
#else
#define LXPIC_FOUNDATION_PIXEL_SUMS_INL_H_
#endif

#include "foundation/reduction-inl.h"
#include "foundation/spans.h"
#include "foundation/wide-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

// The sum of bytes, or of 16-bit elements.
template <typename T>
class Sum;

template <>
class Sum<std::uint8_t> {
 public:
  using Element = std::uint8_t;
  static constexpr Element kNeutral = 0;
  static constexpr std::size_t kVectors = SIZE_MAX;

  HWY_INLINE Sum() : lanes_(hn::Zero(wide_)) {}

  template <class D>
  HWY_INLINE void Add(D /*d*/, hn::Vec<D> v) {
#if LX_HAS_LANES
    lanes_ = hn::Add(lanes_, hn::SumsOf8(v));
#else
    lanes_ = hn::Add(lanes_, hn::Set(wide_, hn::GetLane(v)));
#endif
  }
  HWY_INLINE void Spill() {}
  HWY_INLINE void Join(const Sum& other) { lanes_ = hn::Add(lanes_, other.lanes_); }
  HWY_INLINE std::uint64_t Result() const { return hn::GetLane(hn::SumOfLanes(wide_, lanes_)); }

 private:
  static constexpr hn::ScalableTag<std::uint64_t> wide_{};
  hn::Vec<hn::ScalableTag<std::uint64_t>> lanes_;
};

// 32-bit lanes of which each vector fills 1 / `vectors` at most.
template <typename T, std::size_t vectors>
class NarrowSum {
 public:
  using Element = T;
  static constexpr Element kNeutral = 0;
  static constexpr std::size_t kVectors = vectors;

  HWY_INLINE NarrowSum() : lanes_(hn::Zero(d32_)) {}

  HWY_INLINE void Spill() {
    total_.Add(d32_, lanes_);
    lanes_ = hn::Zero(d32_);
  }
  // Of what has been spilled, as have the other's lanes.
  HWY_INLINE void Join(const NarrowSum& other) { total_.Join(other.total_); }
  HWY_INLINE std::uint64_t Result() const { return total_.Result(); }

 protected:
  template <class V>
  HWY_INLINE void AddWide(V v) {
    lanes_ = hn::Add(lanes_, hn::BitCast(d32_, v));
  }

 private:
  static constexpr hn::ScalableTag<std::uint32_t> d32_{};
  hn::Vec<hn::ScalableTag<std::uint32_t>> lanes_;
  Sum32 total_;
};

template <>
class Sum<std::uint16_t> : public NarrowSum<std::uint16_t, 32768> {
 public:
  HWY_INLINE Sum() {}

  template <class D>
  HWY_INLINE void Add(D d, hn::Vec<D> v) {
    for (const auto& half : Widen(d, v).half) AddWide(half);
  }
};

// The sum of products of bytes, four to a lane.
class ByteProducts : public NarrowSum<std::uint8_t, UINT32_MAX / (4 * 255 * 255)> {
 public:
  HWY_INLINE ByteProducts() {}

  template <class D>
  HWY_INLINE void Add(D d, hn::Vec<D> a, hn::Vec<D> b) {
    AddHalves<D>(Widen(d, a), Widen(d, b));
  }
  template <class D>
  HWY_INLINE void AddHalves(const Halves<D>& a, const Halves<D>& b) {
#if LX_HAS_LANES
    const hn::RebindToSigned<WideTag<D>> words;
    for (std::size_t i = 0; i < kHalves; ++i) {
      AddWide(PairProducts(hn::BitCast(words, a.half[i]), hn::BitCast(words, b.half[i])));
    }
#else
    const hn::ScalableTag<std::uint32_t> wide;
    AddWide(hn::Mul(hn::PromoteTo(wide, a.half[0]), hn::PromoteTo(wide, b.half[0])));
#endif
  }
};

class ByteSquares : public ByteProducts {
 public:
  HWY_INLINE ByteSquares() {}

  template <class D>
  HWY_INLINE void Add(D d, hn::Vec<D> v) {
    const Halves<D> halves = Widen(d, v);
    AddHalves<D>(halves, halves);
  }
};

// The sum of the squares of (v - 32768): those of two words fit a lane.
class CentredWordSquares {
 public:
  using Element = std::uint16_t;
  static constexpr Element kNeutral = 0x8000;
  static constexpr std::size_t kVectors = SIZE_MAX;

  HWY_INLINE CentredWordSquares() {}

  template <class D>
  HWY_INLINE void Add(D d, hn::Vec<D> v) {
    const hn::RebindToSigned<D> whole;
    const hn::ScalableTag<std::uint32_t> wide;
    const auto centred = hn::BitCast(whole, hn::Xor(v, hn::Set(d, kNeutral)));
#if LX_HAS_LANES
    total_.Add(wide, hn::BitCast(wide, PairProducts(centred, centred)));
#else
    const auto product = hn::PromoteTo(hn::ScalableTag<std::int32_t>(), centred);
    total_.Add(wide, hn::BitCast(wide, hn::Mul(product, product)));
#endif
  }
  HWY_INLINE void Spill() {}
  HWY_INLINE void Join(const CentredWordSquares& other) { total_.Join(other.total_); }
  HWY_INLINE std::uint64_t Result() const { return total_.Result(); }

 private:
  Sum32 total_;
};

// How many lanes of masks are set, for vectors of elements of type T.
#if LX_HAS_MASK_REGISTERS

template <typename T>
class LaneCount {
 public:
  static constexpr std::size_t kVectors = SIZE_MAX;

  HWY_INLINE LaneCount() : count_(0) {}

  template <class D, class M>
  HWY_INLINE void AddMask(D d, M mask) {
    count_ += hn::CountTrue(d, mask);
  }
  HWY_INLINE void Spill() {}
  HWY_INLINE void Join(const LaneCount& other) { count_ += other.count_; }
  HWY_INLINE std::uint64_t Result() const { return count_; }

 private:
  std::uint64_t count_;
};

#else

template <typename T>
class LaneCount {
 public:
  static constexpr std::size_t kVectors = static_cast<T>(-1);

  HWY_INLINE LaneCount() : lanes_(hn::Zero(d_)) {}

  template <class D, class M>
  HWY_INLINE void AddMask(D d, M mask) {
    lanes_ = hn::Sub(lanes_, hn::VecFromMask(d, mask));
  }
  HWY_INLINE void Spill() {
    total_.Add(d_, lanes_);
    total_.Spill();
    lanes_ = hn::Zero(d_);
  }
  // Of what has been spilled, as have the other's lanes.
  HWY_INLINE void Join(const LaneCount& other) { total_.Join(other.total_); }
  HWY_INLINE std::uint64_t Result() const { return total_.Result(); }

 private:
  static constexpr hn::ScalableTag<T> d_{};
  hn::Vec<hn::ScalableTag<T>> lanes_;
  Sum<T> total_;
};

#endif

// How many elements are `level` or more, which is not 0.
template <typename T>
class CountFrom : public LaneCount<T> {
 public:
  using Element = T;
  static constexpr Element kNeutral = 0;

  explicit HWY_INLINE CountFrom(T level) : level_(hn::Set(hn::ScalableTag<T>(), level)) {}

  template <class D>
  HWY_INLINE void Add(D d, hn::Vec<D> v) {
    this->AddMask(d, hn::Eq(hn::Max(v, level_), v));
  }

 private:
  hn::Vec<hn::ScalableTag<T>> level_;
};

// Two rules over the same elements.
template <class A, class B>
class Both {
 public:
  using Element = typename A::Element;
  static constexpr std::size_t kVectors = HWY_MIN(A::kVectors, B::kVectors);

  HWY_INLINE Both(const A& a, const B& b) : first(a), second(b) {}

  template <class D>
  HWY_INLINE void Add(D d, hn::Vec<D> v) {
    first.Add(d, v);
    second.Add(d, v);
  }
  HWY_INLINE void Spill() {
    first.Spill();
    second.Spill();
  }
  HWY_INLINE void Join(const Both& other) {
    first.Join(other.first);
    second.Join(other.second);
  }

  A first;
  B second;
};

// What fills up the last vector of a row differs for the two.
template <class A, class B, class D, class Row>
HWY_INLINE void AddPart(Both<A, B>& rule, D d, const Row& row, std::size_t x, std::size_t count) {
  AddPart(rule.first, d, row, x, count);
  AddPart(rule.second, d, row, x, count);
}

// Reduces all pixels of the spans.
template <class Rule>
HWY_INLINE Rule ReduceSpans(const Spans& spans, const Rule& start) {
  Reduction<Rule> reduction(start);
  spans.ForEach([&](const std::uint8_t* pixels, std::size_t count) HWY_ATTR {
    reduction.AddRow(PlainRow<typename Rule::Element>{pixels}, count);
  });
  return reduction.Total();
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_PIXEL_SUMS_INL_H_
