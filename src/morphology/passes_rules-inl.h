// SPDX-License-Identifier: Apache-2.0
// Minimum and maximum over the smallest structuring elements, as rules of the 3 × 3 driver. Included
// once for each instruction set.

#if defined(LXPIC_MORPHOLOGY_PASSES_RULES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_MORPHOLOGY_PASSES_RULES_INL_H_
#undef LXPIC_MORPHOLOGY_PASSES_RULES_INL_H_
#else
#define LXPIC_MORPHOLOGY_PASSES_RULES_INL_H_
#endif

#include "foundation/neighbourhood-inl.h"
#include "foundation/window_extremes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::morphology::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

template <class Op, class V>
HWY_INLINE V ExtremeOf(V a, V b, V c) {
  return Op::Of(Op::Of(b, c), a);
}

template <class Op>
struct Line : RuleTraits<RuleLanes::kNarrow, 1, true> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[1]) {
    planes[0] = ExtremeOf<Op>(taps.Left(), taps.Centre(), taps.Right());
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&/*above*/)[1], const V (&here)[1],
                               const V (&/*below*/)[1]) {
    return here[0];
  }
};

template <class Op>
struct Column : RuleTraits<RuleLanes::kNarrow, 1, true> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[1]) {
    planes[0] = taps.Centre();
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&above)[1], const V (&here)[1], const V (&below)[1]) {
    return ExtremeOf<Op>(above[0], here[0], below[0]);
  }
};

template <class Op>
struct Square : RuleTraits<RuleLanes::kNarrow, 1, true> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[1]) {
    Line<Op>::Horizontal(taps, planes);
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&above)[1], const V (&here)[1], const V (&below)[1]) {
    return ExtremeOf<Op>(above[0], here[0], below[0]);
  }
};

template <class Op>
struct Cross : RuleTraits<RuleLanes::kNarrow, 2, true> {
  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&planes)[2]) {
    planes[0] = taps.Centre();
    planes[1] = ExtremeOf<Op>(taps.Left(), taps.Centre(), taps.Right());
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&above)[2], const V (&here)[2], const V (&below)[2]) {
    return ExtremeOf<Op>(above[0], here[1], below[0]);
  }
};

}  // namespace lx::morphology::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_MORPHOLOGY_PASSES_RULES_INL_H_
