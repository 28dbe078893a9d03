// SPDX-License-Identifier: Apache-2.0
#include "measure/regression_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "measure/regression_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/image_sums-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::measure::HWY_NAMESPACE {
namespace {

using namespace lx::HWY_NAMESPACE;

template <bool kExclude>
class Pairs {
 public:
  using Element = std::uint8_t;
  static constexpr std::size_t kVectors = ByteProducts::kVectors;

  HWY_INLINE Pairs() {}

  template <class D>
  HWY_INLINE void Add(D d, hn::Vec<D> a, hn::Vec<D> b) {
    if constexpr (kExclude) {
      // 1 to 254 are those that are at most 253 above 1; 0 is far above it.
      const auto one = hn::Set(d, 1);
      const auto farthest = hn::Max(hn::Sub(a, one), hn::Sub(b, one));
      const auto keep = hn::Eq(hn::Min(farthest, hn::Set(d, 253)), farthest);
      a = hn::IfThenElseZero(keep, a);
      b = hn::IfThenElseZero(keep, b);
      count_.Add(d, hn::IfThenElseZero(keep, one));
    }
    a_.Add(d, a);
    b_.Add(d, b);
    aa_.Add(d, a, a);
    ab_.Add(d, a, b);
    bb_.Add(d, b, b);
  }
  HWY_INLINE void Spill() {
    aa_.Spill();
    ab_.Spill();
    bb_.Spill();
  }
  HWY_INLINE PairSums Result() const {
    return {count_.Result(), a_.Result(), b_.Result(), aa_.Result(), ab_.Result(), bb_.Result()};
  }

 private:
  Sum<std::uint8_t> count_;
  Sum<std::uint8_t> a_;
  Sum<std::uint8_t> b_;
  ByteProducts aa_;
  ByteProducts ab_;
  ByteProducts bb_;
};

PairSums BytePairs(const PixelMap& map, bool excludeSaturated) {
  using Byte = std::uint8_t;
  if (excludeSaturated) return SumImages<Pairs<true>, Byte, Byte>(map, {}).Result();
  PairSums sums = SumImages<Pairs<false>, Byte, Byte>(map, {}).Result();
  sums.count = map.width * map.height;
  return sums;
}

}  // namespace
}  // namespace lx::measure::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::measure {

HWY_EXPORT(BytePairs);

PairSums SumPairs(const PixelMap& map, bool excludeSaturated) {
  return LX_CALL(map.path, BytePairs, map, excludeSaturated);
}

}  // namespace lx::measure
#endif
