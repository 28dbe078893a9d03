// SPDX-License-Identifier: Apache-2.0
// Sums over the windows of a row, from sums over columns. Included once for each instruction set.

#if defined(LXPIC_CONVOLUTION_WINDOWS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_CONVOLUTION_WINDOWS_INL_H_
#undef LXPIC_CONVOLUTION_WINDOWS_INL_H_
#else
#define LXPIC_CONVOLUTION_WINDOWS_INL_H_
#endif

#include "convolution/prefix_sum-inl.h"
#include "foundation/column_sums-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::convolution::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

#if LX_HAS_LANES

// The sums over the windows of a row. Those at columns 2k and 2k + 1 share all columns but one at
// either end; what they share are `half` pairs of neighbours, which begin at an even column when
// `half` is odd.
template <typename Lane>
class Windows {
 public:
  HWY_INLINE Windows(const ColumnSums<Lane>& sums, std::size_t half)
      : half_(static_cast<std::ptrdiff_t>(half)) {
    const bool isOdd = half % 2 != 0;
    pairFirst_ = sums.half[isOdd ? 0 : 1] - half_ / 2;
    pairSecond_ = sums.half[isOdd ? 1 : 0] - half_ / 2 + (isOdd ? 0 : 1);
    first_ = sums.half[isOdd ? 1 : 0] - (half_ + 1) / 2;
    last_ = sums.half[isOdd ? 0 : 1] + (half_ + 1) / 2;
  }

  // Pair i of the shared columns at k = 0 and beyond, and the columns before and behind them.
  template <class D>
  HWY_INLINE hn::Vec<D> Pair(D d, std::size_t i) const {
    return hn::Add(Load(d, pairFirst_ + i), Load(d, pairSecond_ + i));
  }
  template <class D>
  HWY_INLINE hn::Vec<D> First(D d, std::size_t k) const {
    return Load(d, first_ + k);
  }
  template <class D>
  HWY_INLINE hn::Vec<D> Last(D d, std::size_t k) const {
    return Load(d, last_ + k);
  }

 private:
  template <class D>
  static HWY_INLINE hn::Vec<D> Load(D d, const Lane* at) {
    if constexpr (sizeof(Lane) == sizeof(hn::TFromD<D>)) {
      return hn::LoadU(d, at);
    } else {
      return hn::PromoteTo(d, hn::LoadU(hn::Rebind<Lane, D>(), at));
    }
  }

  std::ptrdiff_t half_;
  const Lane* pairFirst_;
  const Lane* pairSecond_;
  const Lane* first_;
  const Lane* last_;
};

// How the pairs are added up.
inline constexpr int kOfPrefixes = -1;  // as a difference of their prefix sums
inline constexpr int kMostDirect = 4;   // one by one, each made where it is wanted
inline constexpr int kMostStored = 8;   // one by one, each made once

// Makes what SumOfPairs() reads.
template <int kHalf, typename Sum, typename Lane>
HWY_INLINE void PreparePairs(const Windows<Lane>& windows, std::size_t count, std::size_t half,
                             Sum* pairs) {
  if constexpr (kHalf == kOfPrefixes) {
    PrefixSums(count + half, pairs,
               [&](auto d, std::size_t i) HWY_ATTR { return windows.Pair(d, i); });
  } else if constexpr (kHalf > kMostDirect) {
    const hn::ScalableTag<Sum> d;
    for (std::size_t i = 0; i < count + half; i += hn::Lanes(d)) {
      hn::StoreU(windows.Pair(d, i), d, pairs + i);
    }
  }
}

template <int kHalf, int kDirect = kMostDirect, class D, typename Lane>
HWY_INLINE hn::Vec<D> SumOfPairs(D d, const Windows<Lane>& windows, const hn::TFromD<D>* pairs,
                                 std::size_t half, std::size_t k) {
  if constexpr (kHalf == kOfPrefixes) {
    return hn::Sub(hn::LoadU(d, pairs + k + half), hn::LoadU(d, pairs + k));
  } else {
    auto sum = hn::Zero(d);
    LX_UNROLL
    for (std::size_t i = 0; i < kHalf; ++i) {
      const auto pair = kHalf > kDirect ? hn::LoadU(d, pairs + k + i) : windows.Pair(d, k + i);
      sum = i == 0 ? pair : hn::Add(sum, pair);
    }
    return sum;
  }
}

#endif

}  // namespace lx::convolution::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_CONVOLUTION_WINDOWS_INL_H_
