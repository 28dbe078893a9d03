// SPDX-License-Identifier: Apache-2.0
// Rows of pixels to rows of bits, and back. Bits go from the lowest up. Included once for each
// instruction set.

#if defined(LXPIC_MORPHOLOGY_BIT_ROWS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_MORPHOLOGY_BIT_ROWS_INL_H_
#undef LXPIC_MORPHOLOGY_BIT_ROWS_INL_H_
#else
#define LXPIC_MORPHOLOGY_BIT_ROWS_INL_H_
#endif

#include "foundation/colour_pixels-inl.h"
#include "foundation/lane_bits-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::morphology::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

// A bit for each pixel that is not 0. Up to a vector of bits behind the last one are written too,
// and unspecified.
template <typename T>
HWY_INLINE void PackRow(const T* from, std::size_t width, std::uint64_t* row) {
  const hn::ScalableTag<T> d;
  auto* const bits = reinterpret_cast<std::uint8_t*>(row);
  ForEachVector(d, width, [&](std::size_t x, auto access) HWY_ATTR {
    StoreLaneBits(d, hn::Ne(access.Load(d, from + x), hn::Zero(d)), bits, x);
  });
}

// The same of one component of colours.
HWY_INLINE void PackColourRow(const std::uint8_t* from, std::size_t width, std::size_t component,
                              std::uint64_t* row) {
  const hn::ScalableTag<std::uint8_t> d;
  auto* const bits = reinterpret_cast<std::uint8_t*>(row);
  ForEachColour(d, width, [&](std::size_t x, auto, auto colour) HWY_ATTR {
    auto c0 = hn::Zero(d);
    auto c1 = c0;
    auto c2 = c0;
    colour.Load(d, from + 3 * x, c0, c1, c2);
    const auto v = component == 0 ? c0 : component == 1 ? c1 : c2;
    StoreLaneBits(d, hn::Ne(v, hn::Zero(d)), bits, x);
  });
}

// The largest value where a bit is set, 0 elsewhere.
template <class D>
HWY_INLINE hn::Vec<D> FromBits(D d, const std::uint64_t* row, std::size_t x) {
  return LoadLaneBits(d, reinterpret_cast<const std::uint8_t*>(row), x);
}

template <typename T>
HWY_INLINE void UnpackRow(const std::uint64_t* row, std::size_t width, T* to) {
  const hn::ScalableTag<T> d;
  ForEachVector(d, width, [&](std::size_t x, auto access) HWY_ATTR {
    access.Store(d, FromBits(d, row, x), to + x);
  });
}

// `plane` words lie between the rows of the components.
HWY_INLINE void UnpackColourRow(const std::uint64_t* row, std::size_t plane, std::size_t width,
                                std::uint8_t* to) {
  const hn::ScalableTag<std::uint8_t> d;
  ForEachColour(d, width, [&](std::size_t x, auto, auto colour) HWY_ATTR {
    colour.Store(d, FromBits(d, row, x), FromBits(d, row + plane, x),
                 FromBits(d, row + 2 * plane, x), to + 3 * x);
  });
}

}  // namespace lx::morphology::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_MORPHOLOGY_BIT_ROWS_INL_H_
