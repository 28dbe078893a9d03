// SPDX-License-Identifier: Apache-2.0
#include "convolution/filters_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "convolution/filters_word_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "convolution/filters_table-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::convolution::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

void Run(Filter filter, const Neighbourhood& map, std::size_t passes, std::uint8_t* scratch) {
  RunFilter<std::uint16_t, 1>(filter, map, passes, scratch);
}

}  // namespace
}  // namespace lx::convolution::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::convolution {

HWY_EXPORT(Run);

void FilterWords(Filter filter, const Neighbourhood& map, std::size_t passes,
                 std::uint8_t* scratch) {
  LX_CALL(map.path, Run, filter, map, passes, scratch);
}

}  // namespace lx::convolution
#endif
