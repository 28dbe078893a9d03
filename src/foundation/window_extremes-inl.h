// SPDX-License-Identifier: Apache-2.0
// Minima and maxima of several rows, or of one row at several places: what windows are made of.
// Included once for each instruction set.

#if defined(LXPIC_FOUNDATION_WINDOW_EXTREMES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_WINDOW_EXTREMES_INL_H_
#undef LXPIC_FOUNDATION_WINDOW_EXTREMES_INL_H_
#else
#define LXPIC_FOUNDATION_WINDOW_EXTREMES_INL_H_
#endif

#include <iterator>

#include "foundation/simd-inl.h"
#include "foundation/window_plan.h"

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

#if LX_HAS_LANES

// Calls step(x) for vectors that cover a row of at least one; the last may overlap with the one
// before it.
template <class D, class Step>
HWY_INLINE void ForEachWhole(D d, std::size_t width, const Step& step) {
  const std::size_t n = hn::Lanes(d);
  std::size_t x = 0;
  for (; x + 2 * n <= width; x += 2 * n) {
    step(x);
    step(x + n);
  }
  for (; x + n <= width; x += n) step(x);
  if (x < width) step(width - n);
}

// to = the extreme of kTaps rows, which lie elsewhere.
template <class D, class Op, std::size_t kTaps>
void JoinTaps(const hn::TFromD<D>* const* rows, hn::TFromD<D>* HWY_RESTRICT to, std::size_t width) {
  const D d;
  const hn::TFromD<D>* from[kTaps];
  for (std::size_t k = 0; k < kTaps; ++k) from[k] = rows[k];
  ForEachWhole(d, width, [&](std::size_t x) HWY_ATTR {
    auto v = hn::LoadU(d, from[0] + x);
    LX_UNROLL
    for (std::size_t k = 1; k < kTaps; ++k) v = Op::Of(v, hn::LoadU(d, from[k] + x));
    hn::StoreU(v, d, to + x);
  });
}

#else

// to = the extreme of two rows, either of which it may be: a loop that compilers have vectors for.
template <class D, class Op>
void JoinTwo(const hn::TFromD<D>* a, const hn::TFromD<D>* b, hn::TFromD<D>* to, std::size_t width) {
  const D d;
  for (std::size_t x = 0; x < width; ++x) {
    hn::StoreU(Op::Of(hn::LoadU(d, a + x), hn::LoadU(d, b + x)), d, to + x);
  }
}

template <class D, class Op, std::size_t kTaps>
void JoinTaps(const hn::TFromD<D>* const* rows, hn::TFromD<D>* to, std::size_t width) {
  JoinTwo<D, Op>(rows[0], rows[kTaps > 1 ? 1 : 0], to, width);
  for (std::size_t k = 2; k < kTaps; ++k) JoinTwo<D, Op>(to, rows[k], to, width);
}

#endif

// to = the extreme of `taps` rows, up to WindowPlan::kMostTaps.
template <class D, class Op>
void JoinRows(const hn::TFromD<D>* const* rows, std::size_t taps, hn::TFromD<D>* to,
              std::size_t width) {
  using Join = void (*)(const hn::TFromD<D>* const*, hn::TFromD<D>*, std::size_t);
  static constexpr Join kJoins[] = {&JoinTaps<D, Op, 1>, &JoinTaps<D, Op, 2>, &JoinTaps<D, Op, 3>,
                                    &JoinTaps<D, Op, 4>, &JoinTaps<D, Op, 5>, &JoinTaps<D, Op, 6>,
                                    &JoinTaps<D, Op, 7>};
  static_assert(std::size(kJoins) == WindowPlan::kMostTaps);
  kJoins[taps - 1](rows, to, width);
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_WINDOW_EXTREMES_INL_H_
