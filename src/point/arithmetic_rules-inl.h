// SPDX-License-Identifier: Apache-2.0
// The arithmetic of PicOper() on one vector of unsigned lanes of 8 or 16 bits. Included once for
// each instruction set.

#if defined(LXPIC_POINT_ARITHMETIC_RULES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_POINT_ARITHMETIC_RULES_INL_H_
#undef LXPIC_POINT_ARITHMETIC_RULES_INL_H_
#else
#define LXPIC_POINT_ARITHMETIC_RULES_INL_H_
#endif

#include <type_traits>

#include "foundation/wide-inl.h"
#include "point/division-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::point::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

template <class D>
HWY_INLINE hn::Vec<D> Ones(D d) {
  return hn::Set(d, hwy::LimitsMax<hn::TFromD<D>>());
}

// M - v by a subtraction that the compiler leaves alone: its own complement would make each vector
// wait for the one before.
template <class D, class V>
HWY_INLINE V Complement(D d, V v) {
  return hn::SaturatedSub(Ones(d), v);
}

struct Invert {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V a) const {
    return Complement(d, a);
  }
};

struct Add {
  template <class D, class V>
  HWY_INLINE V operator()(D /*d*/, V a, V b) const {
    return hn::SaturatedAdd(a, b);
  }
};

struct Subtract {
  template <class D, class V>
  HWY_INLINE V operator()(D /*d*/, V a, V b) const {
    return hn::SaturatedSub(a, b);
  }
};

struct AddWrap {
  template <class D, class V>
  HWY_INLINE V operator()(D /*d*/, V a, V b) const {
    return hn::Add(a, b);
  }
};

struct SubtractWrap {
  template <class D, class V>
  HWY_INLINE V operator()(D /*d*/, V a, V b) const {
    return hn::Sub(a, b);
  }
};

struct Multiply {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V a, V b) const {
    if constexpr (kIsByte<D>) {
      return MapWide(
          d,
          [](auto wide, auto p, auto q)
              HWY_ATTR { return hn::Min(hn::Mul(p, q), hn::Set(wide, 255)); },
          a, b);
    } else {
      const auto overflows = hn::Ne(hn::MulHigh(a, b), hn::Zero(d));
      return hn::Or(hn::Mul(a, b), Truth(d, overflows));
    }
  }
};

struct ScaledMultiply {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V a, V b) const {
    if constexpr (kIsByte<D>) {
      return MapWide(
          d, [](auto, auto p, auto q) HWY_ATTR { return hn::ShiftRight<8>(hn::Mul(p, q)); }, a, b);
    } else {
      return hn::MulHigh(a, b);
    }
  }
};

// Shifts take a power of two in place of the count: 2^count, or 2^(bits - 1 - count) to the right,
// and 0 when everything is shifted out.
struct ShiftLeft {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V a, V power) const {
    if constexpr (kIsByte<D>) {
      return MapWide(
          d,
          [](auto wide, auto p, auto q)
              HWY_ATTR { return hn::And(hn::Mul(p, q), hn::Set(wide, 255)); },
          a, power);
    } else {
      return hn::Mul(a, power);
    }
  }
};

struct ShiftRight {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V a, V power) const {
    return MapWide(
        d,
        [](auto, auto p, auto q)
            HWY_ATTR { return hn::ShiftRight<8 * sizeof(hn::TFromD<D>) - 1>(hn::Mul(p, q)); },
        a, power);
  }
};

struct Average {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V a, V b) const {
    // The instruction rounds up.
    return hn::Sub(hn::AverageRound(a, b), hn::And(hn::Xor(a, b), hn::Set(d, 1)));
  }
};

struct HalfDifference {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V a, V b) const {
    // Rounding up the complement rounds down.
    return Complement(d, hn::AverageRound(Complement(d, a), b));
  }
};

struct BitwiseAnd {
  template <class D, class V>
  HWY_INLINE V operator()(D /*d*/, V a, V b) const {
    return hn::And(a, b);
  }
};

struct BitwiseOr {
  template <class D, class V>
  HWY_INLINE V operator()(D /*d*/, V a, V b) const {
    return hn::Or(a, b);
  }
};

struct BitwiseXor {
  template <class D, class V>
  HWY_INLINE V operator()(D /*d*/, V a, V b) const {
    return hn::Xor(a, b);
  }
};

struct LogicalAnd {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V a, V b) const {
    return Truth(d, hn::Ne(hn::Min(a, b), hn::Zero(d)));
  }
};

struct LogicalOr {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V a, V b) const {
    return Truth(d, hn::Ne(hn::Or(a, b), hn::Zero(d)));
  }
};

struct LogicalXor {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V a, V b) const {
    return hn::Xor(Truth(d, hn::Eq(a, hn::Zero(d))), Truth(d, hn::Eq(b, hn::Zero(d))));
  }
};

struct Minimum {
  template <class D, class V>
  HWY_INLINE V operator()(D /*d*/, V a, V b) const {
    return hn::Min(a, b);
  }
};

struct Maximum {
  template <class D, class V>
  HWY_INLINE V operator()(D /*d*/, V a, V b) const {
    return hn::Max(a, b);
  }
};

struct SetWhereZero {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V a, V b, V old) const {
    return hn::IfThenElse(hn::Eq(a, hn::Zero(d)), b, old);
  }
};

struct SetWhereNonzero {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V a, V b, V old) const {
    return hn::IfThenElse(hn::Eq(a, hn::Zero(d)), old, b);
  }
};

struct Equal {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V a, V b) const {
    return Truth(d, hn::Eq(a, b));
  }
};

struct NotEqual {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V a, V b) const {
    return Truth(d, hn::Ne(a, b));
  }
};

// The order of unsigned lanes through minimum and maximum, which every instruction set has.
struct GreaterOrEqual {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V a, V b) const {
    return Truth(d, hn::Eq(hn::Max(a, b), a));
  }
};

struct LessOrEqual {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V a, V b) const {
    return Truth(d, hn::Eq(hn::Min(a, b), a));
  }
};

struct Greater {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V a, V b) const {
    return Truth(d, hn::Ne(hn::Min(a, b), a));
  }
};

struct Less {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V a, V b) const {
    return Truth(d, hn::Ne(hn::Max(a, b), a));
  }
};

struct AbsoluteDifference {
  template <class D, class V>
  HWY_INLINE V operator()(D /*d*/, V a, V b) const {
    return hn::Or(hn::SaturatedSub(a, b), hn::SaturatedSub(b, a));
  }
};

// A rule with its operands exchanged.
template <class Rule>
class Swapped;

}  // namespace lx::point::HWY_NAMESPACE
namespace lx::HWY_NAMESPACE {
template <class Rule>
inline constexpr bool kComputes<point::HWY_NAMESPACE::Swapped<Rule>> = kComputes<Rule>;
}
namespace lx::point::HWY_NAMESPACE {

template <class Rule>
class Swapped {
 public:
  HWY_INLINE Swapped() {}

  template <class D, class V>
  HWY_INLINE V operator()(D d, V a, V b) const {
    return rule_(d, b, a);
  }
  template <class D, class V>
  requires std::is_invocable_v<const Rule&, D, V, V, V> HWY_INLINE V operator()(D d, V a, V b,
                                                                                V old) const {
    return rule_(d, b, a, old);
  }

 private:
  Rule rule_;
};

}  // namespace lx::point::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_POINT_ARITHMETIC_RULES_INL_H_
