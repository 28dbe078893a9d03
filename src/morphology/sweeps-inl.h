// SPDX-License-Identifier: Apache-2.0
// What sweeps over planes share. Included once for each instruction set.

#if defined(LXPIC_MORPHOLOGY_SWEEPS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_MORPHOLOGY_SWEEPS_INL_H_
#undef LXPIC_MORPHOLOGY_SWEEPS_INL_H_
#else
#define LXPIC_MORPHOLOGY_SWEEPS_INL_H_
#endif

#include "foundation/box_extremes-inl.h"
#include "morphology/plane.h"

HWY_BEFORE_NAMESPACE();
namespace lx::morphology::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

template <typename T>
struct SourceRows {
  const Plane& plane;

  const T* operator()(std::size_t y) const { return plane.source.template Row<const T>(y); }
};

template <typename T>
struct DestinationRows {
  const Plane& plane;

  T* Row(std::size_t y) const { return plane.destination.template Row<T>(y); }
  void Finish(std::size_t /*y*/) const {}
};

// Calls Kernel::Run<D, Op>(plane, arguments...) for the elements of the plane, in the largest
// vectors that its rows hold.
template <class Kernel, typename T, class Op, class... Arguments>
void RunOnRows(const Plane& plane, const Arguments&... arguments) {
  using Whole = hn::ScalableTag<T>;
  using Small = hn::CappedTag<T, 16 / sizeof(T)>;
  using Single = hn::CappedTag<T, 1>;
  if (plane.elements >= hn::MaxLanes(Whole())) {
    Kernel::template Run<Whole, Op>(plane, arguments...);
  } else if (plane.elements >= hn::MaxLanes(Small())) {
    Kernel::template Run<Small, Op>(plane, arguments...);
  } else {
    Kernel::template Run<Single, Op>(plane, arguments...);
  }
}

template <class Kernel, class... Arguments>
void RunOnLanes(Extreme extreme, const Plane& plane, const Arguments&... arguments) {
  const bool isMinimum = extreme == Extreme::kMinimum;
  if (plane.elementBytes == 1) {
    isMinimum ? RunOnRows<Kernel, std::uint8_t, Minimum>(plane, arguments...)
              : RunOnRows<Kernel, std::uint8_t, Maximum>(plane, arguments...);
  } else {
    isMinimum ? RunOnRows<Kernel, std::uint16_t, Minimum>(plane, arguments...)
              : RunOnRows<Kernel, std::uint16_t, Maximum>(plane, arguments...);
  }
}

}  // namespace lx::morphology::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_MORPHOLOGY_SWEEPS_INL_H_
