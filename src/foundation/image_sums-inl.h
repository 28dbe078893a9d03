// SPDX-License-Identifier: Apache-2.0
// Sums over several images at once: the driver, and the sums that rules are made of. Included once
// for each instruction set.
//
// A rule has an `Element`, the type of its lanes, to which narrower pixels are widened; Add(d, v...)
// takes a vector of each image; Spill() empties lanes that hold kVectors of them and no more.
// Lanes beyond the end of a row are 0 in all images, which must change nothing.

#if defined(LXPIC_FOUNDATION_IMAGE_SUMS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_IMAGE_SUMS_INL_H_
#undef LXPIC_FOUNDATION_IMAGE_SUMS_INL_H_
#else
#define LXPIC_FOUNDATION_IMAGE_SUMS_INL_H_
#endif

#include "foundation/pixel_map.h"
#include "foundation/pixel_sums-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

// The sum of the products of 16-bit elements.
class SumOfWordProducts {
 public:
  static constexpr std::size_t kVectors = SIZE_MAX;

  HWY_INLINE SumOfWordProducts() {}

  template <class D>
  HWY_INLINE void Add(D d, hn::Vec<D> a, hn::Vec<D> b) {
    const auto first = Widen(d, a);
    const auto second = Widen(d, b);
    for (std::size_t h = 0; h < kHalves; ++h) {
      total_.Add(WideTag<D>(), hn::Mul(first.half[h], second.half[h]));
    }
  }
  HWY_INLINE void Spill() {}
  HWY_INLINE std::uint64_t Result() const { return total_.Result(); }

 private:
  Sum32 total_;
};

template <typename T>
using SumOfProducts = std::conditional_t<sizeof(T) == 1, ByteProducts, SumOfWordProducts>;

// `count` elements of a narrower or the same type as lanes; the others are 0.
template <class D, typename T>
HWY_INLINE hn::Vec<D> LoadWidened(D d, const T* from, std::size_t count) {
  const hn::Rebind<T, D> narrow;
  const bool whole = count >= hn::Lanes(d);
  const auto v =
      whole ? hn::LoadU(narrow, from) : LoadLanes(narrow, from, 0, count, hn::Zero(narrow));
  if constexpr (sizeof(T) == sizeof(hn::TFromD<D>)) {
    return v;
  } else {
    return hn::PromoteTo(d, v);
  }
}

// Adds rows of `width` pixels to the rule.
template <class Rule, typename... T>
HWY_INLINE void AddRows(Rule& rule, std::size_t width, const T*... rows) {
  const hn::ScalableTag<typename Rule::Element> d;
  const std::size_t n = hn::Lanes(d);
  std::size_t x = 0;
  while (x + n <= width) {
    const std::size_t end = x + HWY_MIN((width - x) / n, Rule::kVectors) * n;
    for (; x < end; x += n) rule.Add(d, LoadWidened(d, rows + x, n)...);
    rule.Spill();
  }
  if (x == width) return;
  rule.Add(d, LoadWidened(d, rows + x, width - x)...);
  rule.Spill();
}

// Adds all pixels of as many sources of the map as there are types T.
template <class Rule, typename... T, std::size_t... I>
HWY_INLINE void AddSources(Rule& rule, const PixelMap& map, std::index_sequence<I...> /*order*/) {
  for (std::size_t y = 0; y < map.height; ++y) {
    AddRows(rule, map.width, map.sources[I].template Row<const T>(y)...);
  }
}

// The rule, with all pixels of the sources added.
template <class Rule, typename... T>
HWY_INLINE Rule SumImages(const PixelMap& map, Rule rule) {
  AddSources<Rule, T...>(rule, map, std::index_sequence_for<T...>());
  return rule;
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_IMAGE_SUMS_INL_H_
