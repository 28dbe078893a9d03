// SPDX-License-Identifier: Apache-2.0
// Division, remainder and scaled division of unsigned lanes of 8 or 16 bits. Included once for each
// instruction set.

#if defined(LXPIC_POINT_DIVISION_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_POINT_DIVISION_INL_H_
#undef LXPIC_POINT_DIVISION_INL_H_
#else
#define LXPIC_POINT_DIVISION_INL_H_
#endif

#include "foundation/byte_table-inl.h"
#include "foundation/wide-inl.h"
#include "point/reciprocals.h"

HWY_BEFORE_NAMESPACE();
namespace lx::point::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

template <class D>
inline constexpr bool kIsByte = sizeof(hn::TFromD<D>) == 1;

// All ones where true.
template <class D, class M>
HWY_INLINE hn::Vec<D> Truth(D d, M mask) {
  return hn::VecFromMask(d, mask);
}

template <class D, class V>
HWY_INLINE V IsZero(D d, V v) {
  return Truth(d, hn::Eq(v, hn::Zero(d)));
}

template <class D, class V>
HWY_INLINE V AtLeastOne(D d, V v) {
  return hn::Max(v, hn::Set(d, 1));
}

// Constructors are written out because one that the compiler adds would lack the instruction set.

#if LX_HAS_LANES && !LX_HAS_BYTE_PERMUTE

// Division of bytes in single precision, a quarter of 32-bit lanes at a time. Quarters are taken
// where they lie: powers of two cancel.
class ByteDivision {
 public:
  template <class D, class V>
  HWY_INLINE V Quotient(D d, V a, V b) const {
    return hn::Or(Truncated(d, a, AtLeastOne(d, b)), IsZero(d, b));
  }

  // A divisor of 1 in place of 0 leaves nothing.
  template <class D, class V>
  HWY_INLINE V Rest(D d, V a, V b) const {
    const V divisor = AtLeastOne(d, b);
    const auto product = [](auto, auto p, auto q) HWY_ATTR { return hn::Mul(p, q); };
    return hn::Sub(a, MapWide(d, product, Truncated(d, a, divisor), divisor));
  }

  // Rounded quotients below 2^24 never reach an integer from below.
  template <class D, class V>
  HWY_INLINE V Scaled(D d, V a, V b) const {
    const auto ratio = [](auto real, auto p, auto q, float /*unit*/)
                           HWY_ATTR { return hn::Div(hn::Mul(p, hn::Set(real, 256.0F)), q); };
    return hn::Or(Quarters(d, a, AtLeastOne(d, b), ratio), IsZero(d, b));
  }

 private:
  // (a + 1/2) / b stays 1 / (2 b) away from every integer, and an estimate of 1 / b that is good to
  // 11 bits moves it by no more than an eighth of 1 / b.
  template <class D, class V>
  static HWY_INLINE V Truncated(D d, V a, V b) {
    const auto ratio = [](auto real, auto p, auto q, float unit) HWY_ATTR {
      return hn::Mul(hn::Add(p, hn::Set(real, unit / 2)), ReciprocalEstimate(q));
    };
    return Quarters(d, a, b, ratio);
  }

  // ratio(real, a, b, unit) truncated and clamped, where a and b are whole numbers of `unit`.
  template <class D, class V, class Ratio>
  static HWY_INLINE V Quarters(D d, V a, V b, const Ratio& ratio) {
    const hn::Repartition<std::int32_t, D> whole;
    const hn::RebindToFloat<decltype(whole)> real;
    const hn::RebindToUnsigned<decltype(whole)> quads;
    const auto p = hn::BitCast(quads, a);
    const auto q = hn::BitCast(quads, b);
    const auto quarter = [&](auto x, auto y, float unit) HWY_ATTR {
      const auto dividend = hn::ConvertTo(real, hn::BitCast(whole, x));
      const auto divisor = hn::ConvertTo(real, hn::BitCast(whole, y));
      return TruncateFitting(ratio(real, dividend, divisor, unit));
    };
    const auto masked = [&](std::uint32_t mask, float unit) HWY_ATTR {
      const auto of = hn::Set(quads, mask);
      return quarter(hn::And(p, of), hn::And(q, of), unit);
    };
    return JoinQuartersClamped(d, masked(0xFF, 1), masked(0xFF00, 0x1P8F),
                               masked(0xFF0000, 0x1P16F),
                               quarter(hn::ShiftRight<24>(p), hn::ShiftRight<24>(q), 1));
  }
};

#else

// Division of bytes by reciprocals from a table: see reciprocals.h.
class ByteDivision {
 public:
  HWY_INLINE ByteDivision() : low_(kReciprocals.low), high_(kReciprocals.high) {}

  template <class D, class V>
  HWY_INLINE V Quotient(D d, V a, V b) const {
    const V quotient =
        Apply(d, a, b, [](auto, auto p, auto, auto r) HWY_ATTR { return hn::MulHigh(p, r); });
    const V byOne = hn::IfThenElse(hn::Eq(b, hn::Set(d, 1)), a, quotient);
    return hn::Or(byOne, IsZero(d, b));
  }

  template <class D, class V>
  HWY_INLINE V Rest(D d, V a, V b) const {
    const V rest = Apply(d, a, b, [](auto, auto p, auto q, auto r) HWY_ATTR {
      return hn::Sub(p, hn::Mul(hn::MulHigh(p, r), q));
    });
    return hn::IfThenZeroElse(hn::Eq(hn::Min(b, hn::Set(d, 1)), b), rest);
  }

  // With a < b the estimate is the quotient or one more.
  template <class D, class V>
  HWY_INLINE V Scaled(D d, V a, V b) const {
    const V quotient = Apply(d, a, b, [](auto wide, auto p, auto q, auto r) HWY_ATTR {
      const auto dividend = hn::ShiftLeft<8>(p);
      const auto estimate = hn::MulHigh(dividend, r);
      const auto excess = hn::SaturatedSub(hn::Mul(estimate, q), dividend);
      const auto one = hn::Set(wide, 1);
      return hn::And(hn::Sub(estimate, hn::Min(excess, one)), hn::Set(wide, 255));
    });
    return hn::Or(quotient, Truth(d, hn::Eq(hn::Max(a, b), a)));
  }

 private:
  // rule(wide, a, b, reciprocal of b) in 16-bit lanes.
  template <class D, class V, class Rule>
  HWY_INLINE V Apply(D d, V a, V b, const Rule& rule) const {
    return MapWide(
        d,
        [&rule](auto wide, auto p, auto q, auto low, auto high)
            HWY_ATTR { return rule(wide, p, q, hn::Or(low, hn::ShiftLeft<8>(high))); },
        a, b, low_(d, b), high_(d, b));
  }

  ByteTable low_;
  ByteTable high_;
};

#endif

// min((a << kShift) / b, 0xFFFF) of 16-bit lanes, where no b is 0. Numerators stay below 2^24, where
// the truncated quotient of single precision is exact.
template <int kShift, class D, class V>
HWY_INLINE V QuotientOfWords(D d, V a, V b) {
  return MapWide(
      d,
      [](auto wide, auto p, auto q) HWY_ATTR {
        const hn::RebindToSigned<decltype(wide)> whole;
        const hn::RebindToFloat<decltype(wide)> real;
        const auto dividend = hn::ConvertTo(real, hn::BitCast(whole, hn::ShiftLeft<kShift>(p)));
        const auto divisor = hn::ConvertTo(real, hn::BitCast(whole, q));
        const auto ratio = hn::BitCast(wide, TruncateFitting(hn::Div(dividend, divisor)));
        return kShift == 0 ? ratio : hn::Min(ratio, hn::Set(wide, 0xFFFF));
      },
      a, b);
}

class Divide {
 public:
  static constexpr bool kComputes = true;

  HWY_INLINE Divide() {}

  template <class D, class V>
  HWY_INLINE V operator()(D d, V a, V b) const {
    if constexpr (kIsByte<D>) {
      return bytes_.Quotient(d, a, b);
    } else {
      return hn::Or(QuotientOfWords<0>(d, a, AtLeastOne(d, b)), IsZero(d, b));
    }
  }

 private:
  ByteDivision bytes_;
};

class Modulo {
 public:
  static constexpr bool kComputes = true;

  HWY_INLINE Modulo() {}

  template <class D, class V>
  HWY_INLINE V operator()(D d, V a, V b) const {
    if constexpr (kIsByte<D>) {
      return bytes_.Rest(d, a, b);
    } else {
      const V divisor = AtLeastOne(d, b);
      return hn::Sub(a, hn::Mul(QuotientOfWords<0>(d, a, divisor), divisor));
    }
  }

 private:
  ByteDivision bytes_;
};

class ScaledDivide {
 public:
  static constexpr bool kComputes = true;

  HWY_INLINE ScaledDivide() {}

  template <class D, class V>
  HWY_INLINE V operator()(D d, V a, V b) const {
    if constexpr (kIsByte<D>) {
      return bytes_.Scaled(d, a, b);
    } else {
      return hn::Or(QuotientOfWords<8>(d, a, AtLeastOne(d, b)), IsZero(d, b));
    }
  }

 private:
  ByteDivision bytes_;
};

}  // namespace lx::point::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_POINT_DIVISION_INL_H_
