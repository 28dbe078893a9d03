// SPDX-License-Identifier: Apache-2.0
// The comparison with a threshold. Included once for each instruction set.

#if defined(LXPIC_HISTOGRAM_LEVELS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_HISTOGRAM_LEVELS_INL_H_
#undef LXPIC_HISTOGRAM_LEVELS_INL_H_
#else
#define LXPIC_HISTOGRAM_LEVELS_INL_H_
#endif

#include "foundation/simd-inl.h"
#include "histogram/levels_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace lx::histogram::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

template <class D>
using SignedVec = hn::Vec<hn::RebindToSigned<D>>;

// Negative from the cut on.
template <class D>
HWY_INLINE SignedVec<D> Passed(D d, const Cut& cut, hn::Vec<D> v) {
  using T = hn::TFromD<D>;
  const auto up = hn::Set(d, static_cast<T>(cut.up));
  const auto down = hn::Set(d, static_cast<T>(cut.down));
  return hn::BitCast(hn::RebindToSigned<D>(), hn::SaturatedSub(hn::SaturatedAdd(v, up), down));
}

// `yes` where lanes are negative.
template <class D>
HWY_INLINE hn::Vec<D> Choose(D d, SignedVec<D> passed, hn::Vec<D> yes, hn::Vec<D> no) {
  const hn::RebindToSigned<D> whole;
  return hn::BitCast(
      d, hn::IfNegativeThenElse(passed, hn::BitCast(whole, yes), hn::BitCast(whole, no)));
}

template <class D>
HWY_INLINE hn::Vec<D> Level(D d, std::uint16_t level) {
  return hn::Set(d, static_cast<hn::TFromD<D>>(level));
}

}  // namespace lx::histogram::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_HISTOGRAM_LEVELS_INL_H_
