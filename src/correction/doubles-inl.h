// SPDX-License-Identifier: Apache-2.0
// Rules in double precision on lanes of 32 bits. Included once for each instruction set.

#if defined(LXPIC_CORRECTION_DOUBLES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_CORRECTION_DOUBLES_INL_H_
#undef LXPIC_CORRECTION_DOUBLES_INL_H_
#else
#define LXPIC_CORRECTION_DOUBLES_INL_H_
#endif

#include "foundation/wide-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::correction::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

// Applies rule(real, lanes...) to whole lanes as doubles. Results are truncated, and must fit.
template <class D, class Rule, class... V>
HWY_INLINE hn::Vec<D> MapDoubles(D d, const Rule& rule, V... v) {
  const auto part = [&rule](auto lanes, auto... whole) HWY_ATTR {
    const hn::Rebind<double, decltype(lanes)> real;
    return hn::DemoteTo(lanes, rule(real, hn::PromoteTo(real, whole)...));
  };
#if LX_HAS_LANES
  const hn::Half<D> half;
  return hn::Combine(d, part(half, hn::UpperHalf(half, v)...),
                     part(half, hn::LowerHalf(half, v)...));
#else
  return part(d, v...);
#endif
}

}  // namespace lx::correction::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_CORRECTION_DOUBLES_INL_H_
