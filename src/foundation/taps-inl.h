// SPDX-License-Identifier: Apache-2.0
// A vector of pixels with its left and right neighbours, in the lanes that suit a rule: a rule asks
// for the neighbours themselves or for sums and differences, which some lanes give in fewer steps.
// The lanes of a vector come in parts, and results are saturated where the parts are joined.
// Included once for each instruction set.

#if defined(LXPIC_FOUNDATION_TAPS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_TAPS_INL_H_
#undef LXPIC_FOUNDATION_TAPS_INL_H_
#else
#define LXPIC_FOUNDATION_TAPS_INL_H_
#endif

#include <type_traits>

#include "foundation/wide-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

// What lanes a rule asks for: lanes of twice the width, which it mostly adds up or mostly takes
// differences of, or the narrow lanes of the pixels themselves.
enum class RuleLanes {
  kSums,
  kDifferences,
  kNarrow
};

// What the driver must know of a rule. Results of wide lanes are signed, and saturated to pixels
// unless all of them fit.
template <RuleLanes kWanted, std::size_t kCount, bool kAllFit = false>
struct RuleTraits {
  static constexpr RuleLanes kLanes = kWanted;
  static constexpr std::size_t kPlanes = kCount;  // values that wait for the next two rows
  static constexpr bool kFits = kAllFit;
  // Whether the three rows are all the same to the vertical step, which may then get them in any
  // order. What it makes of `here` and `below` alone serves two rows of results.
  static constexpr bool kAnyOrder = false;
};

// What all taps are made of.
template <typename T>
struct LoadedTaps {
  hn::Vec<hn::ScalableTag<T>> left, centre, right;
};

template <std::size_t kStride, typename T>
HWY_INLINE LoadedTaps<T> LoadTaps(const T* at) {
  const hn::ScalableTag<T> d;
  return {hn::LoadU(d, at - kStride), hn::LoadU(d, at), hn::LoadU(d, at + kStride)};
}

// The pixels as they are.
template <typename T, std::size_t kStride>
struct NarrowTaps : LoadedTaps<T> {
  using Lanes = hn::ScalableTag<T>;
  using V = hn::Vec<Lanes>;
  static constexpr std::size_t kParts = 1;

  template <std::size_t kPart>
  struct Part {
    const NarrowTaps& taps;

    HWY_INLINE V Left() const { return taps.left; }
    HWY_INLINE V Centre() const { return taps.centre; }
    HWY_INLINE V Right() const { return taps.right; }
  };

  template <bool kFits>
  static HWY_INLINE V Join(const V (&parts)[1]) {
    return parts[0];
  }
};

// Sums and differences of three wide lanes, for taps that have nothing better.
template <class Taps, class V>
struct PlainSums {
  HWY_INLINE V Sum() const { return hn::Add(hn::Add(Self().Left(), Self().Right()), Middle()); }
  HWY_INLINE V Binomial() const {
    return hn::Add(hn::Add(Self().Left(), Self().Right()), hn::Add(Middle(), Middle()));
  }
  HWY_INLINE V Difference() const { return hn::Sub(Self().Right(), Self().Left()); }

 private:
  HWY_INLINE const Taps& Self() const { return static_cast<const Taps&>(*this); }
  HWY_INLINE V Middle() const { return Self().Centre(); }
};

#if LX_HAS_LANES

// The even and the odd pixels of a vector.
template <typename T, std::size_t kStride>
struct EvenOddTaps : LoadedTaps<T> {
  using Tag = hn::ScalableTag<T>;
  using Lanes = WideTag<Tag>;
  using V = hn::Vec<Lanes>;
  static constexpr std::size_t kParts = 2;
  static constexpr bool kHasPairs = LX_HAS_PAIR_PRODUCTS && kStride == 1 && sizeof(T) == 1;

  template <std::size_t kPart>
  struct Part : PlainSums<Part<kPart>, V> {
    using Plain = PlainSums<Part<kPart>, V>;

    const EvenOddTaps& taps;

    HWY_INLINE explicit Part(const EvenOddTaps& of) : taps(of) {}

    static HWY_INLINE V Pick(hn::Vec<Tag> v) {
      return kPart == 0 ? EvenHalf(Tag(), v) : OddHalf(Tag(), v);
    }
    // The odd pixels' left neighbours are the even pixels, and the other way round.
    HWY_INLINE V Left() const {
      return kStride == 1 && kPart == 1 ? EvenHalf(Tag(), taps.centre) : Pick(taps.left);
    }
    HWY_INLINE V Centre() const { return Pick(taps.centre); }
    HWY_INLINE V Right() const {
      return kStride == 1 && kPart == 0 ? OddHalf(Tag(), taps.centre) : Pick(taps.right);
    }
#if LX_HAS_PAIR_PRODUCTS
    // A pair of neighbours is a pixel and the neighbour on one side.
    HWY_INLINE V Sum() const {
      if constexpr (kHasPairs) {
        return hn::Add(PairSums<1, 1>(taps.centre), kPart == 0 ? Left() : Right());
      } else {
        return Plain::Sum();
      }
    }
    HWY_INLINE V Binomial() const {
      if constexpr (kHasPairs) {
        return hn::Add(PairSums<1, 1>(taps.centre),
                       PairSums<1, 1>(kPart == 0 ? taps.left : taps.right));
      } else {
        return Plain::Binomial();
      }
    }
#endif
  };

  template <bool kFits>
  static HWY_INLINE hn::Vec<Tag> Join(const V (&parts)[2]) {
    const Tag d;
    if constexpr (kFits) return lx::HWY_NAMESPACE::Join(d, {{parts[0], parts[1]}});
    return JoinClamped(d, parts[0], parts[1]);
  }
};

#if LX_HAS_PAIR_PRODUCTS

// The lower and the upper bytes of every block of 16. Two bytes that belong together lie side by
// side, so that any sum or difference of two is one product of pairs.
template <typename T, std::size_t kStride>
struct ZippedTaps : LoadedTaps<T> {
  using Tag = hn::ScalableTag<T>;
  using Lanes = WideTag<Tag>;
  using V = hn::Vec<Lanes>;
  static constexpr std::size_t kParts = 2;

  template <std::size_t kPart>
  struct Part {
    const ZippedTaps& taps;

    static HWY_INLINE hn::Vec<Tag> Zip(hn::Vec<Tag> a, hn::Vec<Tag> b) {
      if constexpr (kPart == 0) return hn::InterleaveLower(Tag(), a, b);
      return hn::InterleaveUpper(Tag(), a, b);
    }
    static HWY_INLINE V Widened(hn::Vec<Tag> v) {
      return hn::BitCast(Lanes(), Zip(v, hn::Zero(Tag())));
    }
    HWY_INLINE V Left() const { return Widened(taps.left); }
    HWY_INLINE V Centre() const { return Widened(taps.centre); }
    HWY_INLINE V Right() const { return Widened(taps.right); }
    HWY_INLINE V Sum() const {
      return hn::Add(PairSums<1, 1>(Zip(taps.left, taps.right)), Centre());
    }
    HWY_INLINE V Binomial() const {
      return hn::Add(PairSums<1, 2>(Zip(taps.left, taps.centre)), Right());
    }
    HWY_INLINE V Difference() const { return PairSums<-1, 1>(Zip(taps.left, taps.right)); }
  };

  template <bool kFits>
  static HWY_INLINE hn::Vec<Tag> Join(const V (&parts)[2]) {
    return Pack(parts[0], parts[1]);
  }
};

#endif

template <typename T, std::size_t kStride, RuleLanes kLanes>
struct ChooseTaps {
#if LX_HAS_PAIR_PRODUCTS
  static constexpr bool kZips =
      sizeof(T) == 1 && (kStride > 1 || kLanes == RuleLanes::kDifferences);
  template <bool kZip>
  using WideTaps =
      std::conditional_t<kZip, ZippedTaps<std::uint8_t, kStride>, EvenOddTaps<T, kStride>>;
  using Type =
      std::conditional_t<kLanes == RuleLanes::kNarrow, NarrowTaps<T, kStride>, WideTaps<kZips>>;
#else
  using Type = std::conditional_t<kLanes == RuleLanes::kNarrow, NarrowTaps<T, kStride>,
                                  EvenOddTaps<T, kStride>>;
#endif
};

#else

// One pixel in a lane of twice the width.
template <typename T, std::size_t kStride>
struct SingleTaps : LoadedTaps<T> {
  using Tag = hn::ScalableTag<T>;
  using Lanes = WideTag<Tag>;
  using V = hn::Vec<Lanes>;
  static constexpr std::size_t kParts = 1;

  template <std::size_t kPart>
  struct Part : PlainSums<Part<kPart>, V> {
    const SingleTaps& taps;

    HWY_INLINE explicit Part(const SingleTaps& of) : taps(of) {}

    HWY_INLINE V Left() const { return EvenHalf(Tag(), taps.left); }
    HWY_INLINE V Centre() const { return EvenHalf(Tag(), taps.centre); }
    HWY_INLINE V Right() const { return EvenHalf(Tag(), taps.right); }
  };

  template <bool kFits>
  static HWY_INLINE hn::Vec<Tag> Join(const V (&parts)[1]) {
    using Signed = hwy::MakeSigned<hn::TFromD<Lanes>>;
    const auto v = static_cast<Signed>(hn::GetLane(parts[0]));
    constexpr Signed kLargest = hwy::LimitsMax<T>();
    const Signed saturated = kFits ? v : v < 0 ? Signed{0} : v > kLargest ? kLargest : v;
    return hn::Set(Tag(), static_cast<T>(saturated));
  }
};

template <typename T, std::size_t kStride, RuleLanes kLanes>
struct ChooseTaps {
  using Type = std::conditional_t<kLanes == RuleLanes::kNarrow, NarrowTaps<T, kStride>,
                                  SingleTaps<T, kStride>>;
};

#endif

template <typename T, std::size_t kStride, class Rule>
using TapsFor = typename ChooseTaps<T, kStride, Rule::kLanes>::Type;

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_TAPS_INL_H_
