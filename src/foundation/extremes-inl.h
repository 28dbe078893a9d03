// SPDX-License-Identifier: Apache-2.0
// Minimum and maximum as types, for what is written once for both. Included once for each
// instruction set.

#if defined(LXPIC_FOUNDATION_EXTREMES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_EXTREMES_INL_H_
#undef LXPIC_FOUNDATION_EXTREMES_INL_H_
#else
#define LXPIC_FOUNDATION_EXTREMES_INL_H_
#endif

#include "foundation/simd-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

struct Minimum {
  template <class V>
  static HWY_INLINE V Of(V a, V b) {
    return hn::Min(a, b);
  }
  // Changes nothing.
  template <typename T>
  static constexpr T kNeutral = hwy::LimitsMax<T>();
};

struct Maximum {
  template <class V>
  static HWY_INLINE V Of(V a, V b) {
    return hn::Max(a, b);
  }
  template <typename T>
  static constexpr T kNeutral = hwy::LimitsMin<T>();
};

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_EXTREMES_INL_H_
