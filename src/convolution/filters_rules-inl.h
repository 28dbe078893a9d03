// SPDX-License-Identifier: Apache-2.0
// The filters as rules of the 3 × 3 driver. Wide lanes are unsigned; differences wrap and are read as
// signed. The horizontal step gets the pixel with its left and right neighbours; the vertical step
// gets the planes of the row above, the pixel's row and the row below.
// Included once for each instruction set.

#if defined(LXPIC_CONVOLUTION_FILTERS_RULES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_CONVOLUTION_FILTERS_RULES_INL_H_
#undef LXPIC_CONVOLUTION_FILTERS_RULES_INL_H_
#else
#define LXPIC_CONVOLUTION_FILTERS_RULES_INL_H_
#endif

#include "foundation/neighbourhood-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::convolution::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

template <class V>
HWY_INLINE V Absolute(V v) {
  const hn::DFromV<V> d;
  return hn::BitCast(d, hn::Abs(hn::BitCast(hn::RebindToSigned<decltype(d)>(), v)));
}

// a + b and a - b, saturated. Where a lane is a pixel, in steps that the compiler has vectors for.
template <class V>
HWY_INLINE V AddUpTo(V a, V b) {
#if LX_HAS_LANES
  return hn::SaturatedAdd(a, b);
#else
  return hn::Add(a, hn::Min(b, hn::Not(a)));
#endif
}

template <class V>
HWY_INLINE V Above(V a, V b) {
#if LX_HAS_LANES
  return hn::SaturatedSub(a, b);
#else
  return hn::Sub(hn::Max(a, b), b);
#endif
}

// |a - b| in unsigned lanes.
template <class V>
HWY_INLINE V Distance(V a, V b) {
  return hn::Or(Above(a, b), Above(b, a));
}

// (a + b) / 2, rounded down.
template <class V>
HWY_INLINE V Average(V a, V b) {
  const auto odd = hn::And(hn::Xor(a, b), hn::Set(hn::DFromV<V>(), 1));
  return hn::Sub(hn::AverageRound(a, b), odd);
}

template <class V>
HWY_INLINE V Sum(V a, V b, V c) {
  return hn::Add(hn::Add(b, c), a);
}

// a + 2b + c. Rows that follow each other share b + c.
template <class V>
HWY_INLINE V Binomial(V a, V b, V c) {
  return hn::Add(hn::Add(a, b), hn::Add(b, c));
}

// v * kFactor >> kShift; the product may leave 16-bit lanes.
template <int kFactor, int kShift, class V>
HWY_INLINE V Fraction(V v) {
  const hn::DFromV<V> d;
  if constexpr (sizeof(hn::TFromD<decltype(d)>) == 2) {
    return hn::MulHigh(v, hn::Set(d, kFactor << (16 - kShift)));
  } else {
    return hn::ShiftRight<kShift>(hn::Mul(v, hn::Set(d, kFactor)));
  }
}

struct SobelX : RuleTraits<RuleLanes::kDifferences, 1> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[1]) {
    planes[0] = taps.Difference();
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&above)[1], const V (&here)[1], const V (&below)[1]) {
    return Absolute(Binomial(above[0], here[0], below[0]));
  }
};

struct SobelY : RuleTraits<RuleLanes::kSums, 1> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[1]) {
    planes[0] = taps.Binomial();
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&above)[1], const V (&/*here*/)[1], const V (&below)[1]) {
    return Absolute(hn::Sub(below[0], above[0]));
  }
};

struct Sobel : RuleTraits<RuleLanes::kDifferences, 2> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[2]) {
    planes[0] = taps.Difference();
    planes[1] = taps.Binomial();
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&above)[2], const V (&here)[2], const V (&below)[2]) {
    const V x = Binomial(above[0], here[0], below[0]);
    return hn::Add(Absolute(x), Absolute(hn::Sub(below[1], above[1])));
  }
};

struct PrewittX : RuleTraits<RuleLanes::kDifferences, 1> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[1]) {
    planes[0] = taps.Difference();
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&above)[1], const V (&here)[1], const V (&below)[1]) {
    return Absolute(Sum(above[0], here[0], below[0]));
  }
};

struct PrewittY : RuleTraits<RuleLanes::kSums, 1> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[1]) {
    planes[0] = taps.Sum();
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&above)[1], const V (&/*here*/)[1], const V (&below)[1]) {
    return Absolute(hn::Sub(below[0], above[0]));
  }
};

struct Prewitt : RuleTraits<RuleLanes::kDifferences, 2> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[2]) {
    planes[0] = taps.Difference();
    planes[1] = taps.Sum();
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&above)[2], const V (&here)[2], const V (&below)[2]) {
    const V x = Sum(above[0], here[0], below[0]);
    return hn::Add(Absolute(x), Absolute(hn::Sub(below[1], above[1])));
  }
};

struct Laplacian4 : RuleTraits<RuleLanes::kSums, 2> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[2]) {
    planes[0] = taps.Centre();
    planes[1] = hn::Sub(hn::Add(taps.Left(), taps.Right()), hn::ShiftLeft<2>(planes[0]));
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&above)[2], const V (&here)[2], const V (&below)[2]) {
    return Absolute(hn::Add(hn::Add(above[0], below[0]), here[1]));
  }
};

struct Laplacian8 : RuleTraits<RuleLanes::kSums, 2> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[2]) {
    const V centre = taps.Centre();
    planes[0] = taps.Sum();
    planes[1] = hn::Sub(hn::Sub(planes[0], centre), hn::ShiftLeft<3>(centre));
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&above)[2], const V (&here)[2], const V (&below)[2]) {
    return Absolute(hn::Add(hn::Add(above[0], below[0]), here[1]));
  }
};

// |a + c - 2b|, saturated. What lies above b on one side can only cancel what lies below it on the
// other, so that neither sum saturates unless the result does.
template <class V>
HWY_INLINE V SecondDifference(V a, V b, V c) {
  const V above = AddUpTo(Above(a, b), Above(c, b));
  const V below = AddUpTo(Above(b, a), Above(b, c));
  return Distance(above, below);
}

struct LaplacianX : RuleTraits<RuleLanes::kNarrow, 1, true> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[1]) {
    planes[0] = SecondDifference(taps.Left(), taps.Centre(), taps.Right());
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&/*above*/)[1], const V (&here)[1],
                               const V (&/*below*/)[1]) {
    return here[0];
  }
};

struct LaplacianY : RuleTraits<RuleLanes::kNarrow, 1, true> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[1]) {
    planes[0] = taps.Centre();
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&above)[1], const V (&here)[1], const V (&below)[1]) {
    return SecondDifference(above[0], here[0], below[0]);
  }
};

struct Sharpen4 : RuleTraits<RuleLanes::kSums, 2> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[2]) {
    planes[0] = taps.Centre();
    const V five = hn::Add(hn::ShiftLeft<2>(planes[0]), planes[0]);
    planes[1] = hn::Sub(five, hn::Add(taps.Left(), taps.Right()));
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&above)[2], const V (&here)[2], const V (&below)[2]) {
    return Absolute(hn::Sub(here[1], hn::Add(above[0], below[0])));
  }
};

struct Sharpen8 : RuleTraits<RuleLanes::kSums, 2> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[2]) {
    const V centre = taps.Centre();
    planes[0] = taps.Sum();
    const V ten = hn::Add(hn::ShiftLeft<3>(centre), hn::Add(centre, centre));
    planes[1] = hn::Sub(ten, planes[0]);
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&above)[2], const V (&here)[2], const V (&below)[2]) {
    return Absolute(hn::Sub(here[1], hn::Add(above[0], below[0])));
  }
};

// 14/128 stands for a ninth.
struct Uniform : RuleTraits<RuleLanes::kSums, 1, true> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[1]) {
    planes[0] = taps.Sum();
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&above)[1], const V (&here)[1], const V (&below)[1]) {
    return Fraction<14, 7>(Sum(above[0], here[0], below[0]));
  }
};

struct MeanOfEight : RuleTraits<RuleLanes::kSums, 2, true> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[2]) {
    planes[0] = taps.Sum();
    planes[1] = hn::Sub(planes[0], taps.Centre());
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&above)[2], const V (&here)[2], const V (&below)[2]) {
    return hn::ShiftRight<3>(Sum(above[0], here[1], below[0]));
  }
};

struct Gaussian : RuleTraits<RuleLanes::kSums, 1, true> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[1]) {
    planes[0] = taps.Binomial();
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&above)[1], const V (&here)[1], const V (&below)[1]) {
    return hn::ShiftRight<4>(Binomial(above[0], here[0], below[0]));
  }
};

struct GradientX : RuleTraits<RuleLanes::kNarrow, 1, true> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[1]) {
    planes[0] = Distance(taps.Left(), taps.Right());
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&/*above*/)[1], const V (&here)[1],
                               const V (&/*below*/)[1]) {
    return here[0];
  }
};

struct GradientY : RuleTraits<RuleLanes::kNarrow, 1, true> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[1]) {
    planes[0] = taps.Centre();
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&above)[1], const V (&/*here*/)[1], const V (&below)[1]) {
    return Distance(above[0], below[0]);
  }
};

struct Gradient : RuleTraits<RuleLanes::kNarrow, 2, true> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[2]) {
    planes[0] = taps.Centre();
    planes[1] = Distance(taps.Left(), taps.Right());
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&above)[2], const V (&here)[2], const V (&below)[2]) {
    return AddUpTo(here[1], Distance(above[0], below[0]));
  }
};

struct Roberts : RuleTraits<RuleLanes::kNarrow, 2, true> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[2]) {
    planes[0] = taps.Centre();
    planes[1] = taps.Right();
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&/*above*/)[2], const V (&here)[2], const V (&below)[2]) {
    return AddUpTo(Distance(here[1], below[0]), Distance(here[0], below[1]));
  }
};

// 85/256 stands for a third.
struct UniformX : RuleTraits<RuleLanes::kSums, 1, true> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[1]) {
    planes[0] = Fraction<85, 8>(taps.Sum());
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&/*above*/)[1], const V (&here)[1],
                               const V (&/*below*/)[1]) {
    return here[0];
  }
};

struct UniformY : RuleTraits<RuleLanes::kSums, 1, true> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[1]) {
    planes[0] = taps.Centre();
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&above)[1], const V (&here)[1], const V (&below)[1]) {
    return Fraction<85, 8>(Sum(above[0], here[0], below[0]));
  }
};

// Halves rounded down twice are a quarter rounded down.
struct GaussianX : RuleTraits<RuleLanes::kNarrow, 1, true> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[1]) {
    planes[0] = Average(Average(taps.Left(), taps.Right()), taps.Centre());
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&/*above*/)[1], const V (&here)[1],
                               const V (&/*below*/)[1]) {
    return here[0];
  }
};

struct GaussianY : RuleTraits<RuleLanes::kNarrow, 1, true> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[1]) {
    planes[0] = taps.Centre();
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&above)[1], const V (&here)[1], const V (&below)[1]) {
    return Average(Average(above[0], below[0]), here[0]);
  }
};

}  // namespace lx::convolution::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_CONVOLUTION_FILTERS_RULES_INL_H_
