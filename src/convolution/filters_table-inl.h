// SPDX-License-Identifier: Apache-2.0
// Which rule serves which filter. Included once for each instruction set.

#if defined(LXPIC_CONVOLUTION_FILTERS_TABLE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_CONVOLUTION_FILTERS_TABLE_INL_H_
#undef LXPIC_CONVOLUTION_FILTERS_TABLE_INL_H_
#else
#define LXPIC_CONVOLUTION_FILTERS_TABLE_INL_H_
#endif

#include "convolution/filter_list.h"
#include "convolution/filters_rules-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::convolution::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

template <typename T, std::size_t kStride>
void RunFilter(Filter filter, const Neighbourhood& map, std::size_t passes, std::uint8_t* scratch) {
  using Kernel = void (*)(const Neighbourhood&, std::size_t, std::uint8_t*);
  static constexpr Kernel kKernels[] = {
#define LX_KERNEL_OF(name, border) &Map3x3<T, kStride, name>,
      LX_FILTERS(LX_KERNEL_OF)
#undef LX_KERNEL_OF
  };
  kKernels[static_cast<std::size_t>(filter)](map, passes, scratch);
}

}  // namespace lx::convolution::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_CONVOLUTION_FILTERS_TABLE_INL_H_
