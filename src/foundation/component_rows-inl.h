// SPDX-License-Identifier: Apache-2.0
// Takes rows apart into components and puts them together. Included once for each instruction set.

#if defined(LXPIC_FOUNDATION_COMPONENT_ROWS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_COMPONENT_ROWS_INL_H_
#undef LXPIC_FOUNDATION_COMPONENT_ROWS_INL_H_
#else
#define LXPIC_FOUNDATION_COMPONENT_ROWS_INL_H_
#endif

#include <algorithm>

#include "foundation/colour_pixels-inl.h"
#include "foundation/component_rows.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

// Source row `y`, component by component, to rows `stride` elements apart that begin at `to`, with
// `left` and `right` copies of their end elements beyond them. What lies between the rows is
// overwritten.
template <typename T>
HWY_INLINE void LoadComponents(const ComponentImage& image, std::size_t y, T* to,
                               std::size_t stride, std::size_t left, std::size_t right) {
  const T* const from = image.source.Row<const T>(y);
  if (image.components == 1) {
    std::memcpy(to, from, image.width * sizeof(T));
  } else if constexpr (sizeof(T) == 1) {
    const hn::ScalableTag<T> d;
    ForEachColour(d, image.width, [&](std::size_t x, auto, auto colour) HWY_ATTR {
      hn::Vec<decltype(d)> c0, c1, c2;
      colour.Load(d, from + 3 * x, c0, c1, c2);
      hn::StoreU(c0, d, to + x);
      hn::StoreU(c1, d, to + stride + x);
      hn::StoreU(c2, d, to + 2 * stride + x);
    });
  }
  for (std::size_t c = 0; c < image.components; ++c) {
    T* const row = to + c * stride;
    std::fill(row - left, row, row[0]);
    std::fill(row + image.width, row + image.width + right, row[image.width - 1]);
  }
}

// Where the results of component `c` of row `y` go: the row itself, or a row of `output` that
// StoreComponents() puts together with the others.
template <typename T>
HWY_INLINE T* ComponentOutput(const ComponentImage& image, std::size_t y, T* output,
                              std::size_t stride, std::size_t c) {
  return image.components == 1 ? image.destination.Row<T>(y) : output + c * stride;
}

template <typename T>
HWY_INLINE void StoreComponents(const ComponentImage& image, std::size_t y, const T* output,
                                std::size_t stride) {
  if constexpr (sizeof(T) == 1) {
    if (image.components == 1) return;
    const hn::ScalableTag<T> d;
    T* const to = image.destination.Row<T>(y);
    ForEachColour(d, image.width, [&](std::size_t x, auto, auto colour) HWY_ATTR {
      colour.Store(d, hn::LoadU(d, output + x), hn::LoadU(d, output + stride + x),
                   hn::LoadU(d, output + 2 * stride + x), to + 3 * x);
    });
  }
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_COMPONENT_ROWS_INL_H_
