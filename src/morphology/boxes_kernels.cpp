// SPDX-License-Identifier: Apache-2.0
#include "morphology/boxes_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "morphology/boxes_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "morphology/sweeps-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::morphology::HWY_NAMESPACE {
namespace {

struct Box {
  template <class D, class Op>
  static void Run(const Plane& plane, const ExtremeBox& box, std::uint8_t* scratch) {
    using T = hn::TFromD<D>;
    BoxSweep<D, Op> sweep(box, scratch);
    while (!sweep.IsDone()) sweep.Advance(SourceRows<T>{plane}, DestinationRows<T>{plane});
  }
};

void Run(Extreme extreme, const Plane& plane, const ExtremeBox& box, std::uint8_t* scratch) {
  RunOnLanes<Box>(extreme, plane, box, scratch);
}

}  // namespace
}  // namespace lx::morphology::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::morphology {

HWY_EXPORT(Run);

void RunBox(Extreme extreme, const Plane& plane, const ExtremeBox& box, std::uint8_t* scratch) {
  LX_CALL(plane.path, Run, extreme, plane, box, scratch);
}

}  // namespace lx::morphology
#endif
