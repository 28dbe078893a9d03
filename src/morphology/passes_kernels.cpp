// SPDX-License-Identifier: Apache-2.0
#include "morphology/passes_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "morphology/passes_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "morphology/passes_rules-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::morphology::HWY_NAMESPACE {
namespace {

using Kernel = void (*)(const Neighbourhood&, std::size_t, std::uint8_t*);

// The kernels of one kind of image, by extreme and pass.
template <typename T, std::size_t kStride>
Kernel KernelOf(Extreme extreme, Pass pass) {
  static constexpr Kernel kKernels[][4] = {
      {&Map3x3<T, kStride, Square<Minimum>>, &Map3x3<T, kStride, Cross<Minimum>>,
       &Map3x3<T, kStride, Line<Minimum>>, &Map3x3<T, kStride, Column<Minimum>>},
      {&Map3x3<T, kStride, Square<Maximum>>, &Map3x3<T, kStride, Cross<Maximum>>,
       &Map3x3<T, kStride, Line<Maximum>>, &Map3x3<T, kStride, Column<Maximum>>}};
  return kKernels[static_cast<std::size_t>(extreme)][static_cast<std::size_t>(pass)];
}

void Run(Extreme extreme, Pass pass, const Plane& plane, std::size_t passes,
         std::uint8_t* scratch) {
  const Kernel kernel = plane.elementBytes == 2 ? KernelOf<std::uint16_t, 1>(extreme, pass)
                        : plane.stride == 3     ? KernelOf<std::uint8_t, 3>(extreme, pass)
                                                : KernelOf<std::uint8_t, 1>(extreme, pass);
  kernel(plane, passes, scratch);
}

}  // namespace
}  // namespace lx::morphology::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::morphology {

HWY_EXPORT(Run);

void RunPasses(Extreme extreme, Pass pass, const Plane& plane, std::size_t passes,
               std::uint8_t* scratch) {
  LX_CALL(plane.path, Run, extreme, pass, plane, passes, scratch);
}

}  // namespace lx::morphology
#endif
