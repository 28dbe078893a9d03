// SPDX-License-Identifier: Apache-2.0
#include "measure/moments_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "measure/moments_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/byte_table-inl.h"
#include "measure/moment_blocks-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::measure::HWY_NAMESPACE {
namespace {

struct OwnValue {
  template <class D>
  HWY_INLINE hn::Vec<D> operator()(D /*d*/, hn::Vec<D> v) const {
    return v;
  }
};

template <typename T>
struct OneFrom {
  T level;

  template <class D>
  HWY_INLINE hn::Vec<D> operator()(D d, hn::Vec<D> v) const {
    const auto reaches = hn::Eq(hn::Max(v, hn::Set(d, level)), v);
    return hn::IfThenElseZero(reaches, hn::Set(d, T{1}));
  }
};

template <typename T, class Weigh>
void AddLow(const MomentArea& area, const Weigh& weigh, MomentSums& sums) {
  if (sums.Order() == 1) {
    AddBlocks<T, 1>(area, weigh, sums);
  } else {
    AddBlocks<T, 2>(area, weigh, sums);
  }
}

template <typename T>
void AddValues(const MomentArea& area, MomentSums& sums) {
  if (sums.Order() <= 2) {
    AddLow<T>(area, OwnValue{}, sums);
  } else if (sums.Order() == 3) {
    AddBlocks<T, 3>(area, OwnValue{}, sums);
  } else {
    AddBlocks<T, 4>(area, OwnValue{}, sums);
  }
}

void ByteMoments(const MomentArea& area, const Weighing& weighing, MomentSums& sums) {
  if (weighing.kind == Weighing::Kind::kReaching) {
    const auto level = static_cast<std::uint8_t>(weighing.level);
    AddLow<std::uint8_t>(area, OneFrom<std::uint8_t>{level}, sums);
  } else if (weighing.kind == Weighing::Kind::kTable) {
    AddLow<std::uint8_t>(area, ByteTable(weighing.table), sums);
  } else {
    AddValues<std::uint8_t>(area, sums);
  }
}

void WordMoments(const MomentArea& area, const Weighing& weighing, MomentSums& sums) {
  if (weighing.kind == Weighing::Kind::kReaching) {
    const auto level = static_cast<std::uint16_t>(weighing.level);
    AddLow<std::uint16_t>(area, OneFrom<std::uint16_t>{level}, sums);
  } else {
    AddValues<std::uint16_t>(area, sums);
  }
}

}  // namespace
}  // namespace lx::measure::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::measure {

HWY_EXPORT(ByteMoments);
HWY_EXPORT(WordMoments);

void AddByteMoments(const MomentArea& area, const Weighing& weighing, Path path, MomentSums& sums) {
  LX_CALL(path, ByteMoments, area, weighing, sums);
}

void AddWordMoments(const MomentArea& area, const Weighing& weighing, Path path, MomentSums& sums) {
  LX_CALL(path, WordMoments, area, weighing, sums);
}

}  // namespace lx::measure
#endif
