// SPDX-License-Identifier: Apache-2.0
// The kernels of all filters for one kind of image, which the file that includes this names:
// LX_FILTER_KERNEL is the function that runs them, on elements of type LX_FILTER_ELEMENT whose
// neighbours in a row are LX_FILTER_STRIDE elements apart. Included once for each instruction set.

#include "convolution/filters_kernels.h"
#include "convolution/filters_rules-inl.h"

// NOLINTBEGIN(misc-definitions-in-headers): a body that each file includes for a function of its own

HWY_BEFORE_NAMESPACE();
namespace lx::convolution::HWY_NAMESPACE {
namespace {

void Run(Filter filter, const Neighbourhood& map, std::size_t passes, std::uint8_t* scratch) {
  using Kernel = void (*)(const Neighbourhood&, std::size_t, std::uint8_t*);
  static constexpr Kernel kKernels[] = {
#define LX_OF_OPERATION(function, rule, border, trace, summary) LX_OF_STEP(rule, border)
#define LX_OF_STEP(rule, border) &Map3x3<LX_FILTER_ELEMENT, LX_FILTER_STRIDE, rule>,
      LX_FILTERS(LX_OF_OPERATION, LX_OF_STEP)
#undef LX_OF_OPERATION
#undef LX_OF_STEP
  };
  kKernels[static_cast<std::size_t>(filter)](map, passes, scratch);
}

}  // namespace
}  // namespace lx::convolution::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::convolution {

HWY_EXPORT(Run);

void LX_FILTER_KERNEL(Filter filter, const Neighbourhood& map, std::size_t passes,
                      std::uint8_t* scratch) {
  LX_CALL(map.path, Run, filter, map, passes, scratch);
}

}  // namespace lx::convolution
#endif

// NOLINTEND(misc-definitions-in-headers)
