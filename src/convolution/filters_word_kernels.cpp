// SPDX-License-Identifier: Apache-2.0
#include "convolution/filters_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "convolution/filters_word_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "convolution/filters_rules-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {
namespace {

using Kernel = void (*)(const Neighbourhood&, std::size_t, std::uint8_t*);

void RunFilter(Filter filter, const Neighbourhood& map, std::size_t passes, std::uint8_t* scratch) {
  static constexpr Kernel kKernels[] = {
#define LX_KERNEL_OF(name, border) &Map3x3<std::uint16_t, 1, name>,
      LX_FILTERS(LX_KERNEL_OF)
#undef LX_KERNEL_OF
  };
  kKernels[static_cast<std::size_t>(filter)](map, passes, scratch);
}

}  // namespace
}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx {

HWY_EXPORT(RunFilter);

void FilterWords(Filter filter, const Neighbourhood& map, std::size_t passes,
                 std::uint8_t* scratch) {
  LX_KERNEL(RunFilter)(filter, map, passes, scratch);
}

}  // namespace lx
#endif
