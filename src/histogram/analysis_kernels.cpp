// SPDX-License-Identifier: Apache-2.0
#include "histogram/analysis_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "histogram/analysis_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/pixel_map.h"
#include "foundation/reduction-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::histogram::HWY_NAMESPACE {
namespace {

using namespace lx::HWY_NAMESPACE;

// The largest of the counts' differences from 2^32, as 0 has none.
class LargestNegative32 : public LargestOf<std::uint32_t> {
 public:
  HWY_INLINE LargestNegative32() {}

  template <class D>
  HWY_INLINE void Add(D d, hn::Vec<D> v) {
    LargestOf::Add(d, hn::Sub(hn::Zero(d), v));
  }
};

std::uint64_t Total(const std::uint32_t* counts, std::size_t bins) {
  return ReduceRow<Sum32>(counts, bins);
}

std::uint32_t Largest(const std::uint32_t* counts, std::size_t bins) {
  return ReduceRow<LargestOf<std::uint32_t>>(counts, bins);
}

std::uint32_t Smallest(const std::uint32_t* counts, std::size_t bins) {
  return 0 - ReduceRow<LargestNegative32>(counts, bins);
}

}  // namespace
}  // namespace lx::histogram::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::histogram {

HWY_EXPORT(Total);
HWY_EXPORT(Largest);
HWY_EXPORT(Smallest);

std::uint64_t TotalCount(const std::uint32_t* counts, std::size_t bins) {
  return LX_CALL(CurrentPath(), Total, counts, bins);
}

std::uint32_t LargestCount(const std::uint32_t* counts, std::size_t bins) {
  return LX_CALL(CurrentPath(), Largest, counts, bins);
}

std::uint32_t SmallestCount(const std::uint32_t* counts, std::size_t bins) {
  return LX_CALL(CurrentPath(), Smallest, counts, bins);
}

}  // namespace lx::histogram
#endif
