// SPDX-License-Identifier: Apache-2.0
// Vectors of a row: access to whole ones and to parts, and the walk over them. Included once for
// each instruction set.

#if defined(LXPIC_FOUNDATION_SIMD_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_SIMD_INL_H_
#undef LXPIC_FOUNDATION_SIMD_INL_H_
#else
#define LXPIC_FOUNDATION_SIMD_INL_H_
#endif

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "foundation/features.h"
#include "hwy/highway.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

// Access to a whole vector at any address.
struct WholeVector {
  template <class D>
  HWY_INLINE hn::Vec<D> Load(D d, const hn::TFromD<D>* from) const {
    return hn::LoadU(d, from);
  }
  template <class D>
  HWY_INLINE void Store(D d, hn::Vec<D> v, hn::TFromD<D>* to) const {
    hn::StoreU(v, d, to);
  }
};

// Access to the first `count` lanes of a vector; nothing beyond them is read or written. The other
// lanes are unspecified but initialised.
struct PartVector {
  std::size_t count;

  template <class D>
  HWY_INLINE hn::Vec<D> Load(D d, const hn::TFromD<D>* from) const {
#if LX_HAS_MASKED_ACCESS
    return hn::MaskedLoad(hn::FirstN(d, count), d, from);
#else
    HWY_ALIGN hn::TFromD<D> lanes[hn::MaxLanes(d)] = {};
    std::memcpy(lanes, from, count * sizeof(lanes[0]));
    return hn::Load(d, lanes);
#endif
  }
  template <class D>
  HWY_INLINE void Store(D d, hn::Vec<D> v, hn::TFromD<D>* to) const {
#if LX_HAS_MASKED_ACCESS
    hn::BlendedStore(v, hn::FirstN(d, count), d, to);
#else
    HWY_ALIGN hn::TFromD<D> lanes[hn::MaxLanes(d)];
    hn::Store(v, d, lanes);
    std::memcpy(to, lanes, count * sizeof(lanes[0]));
#endif
  }
};

// Calls step(x, access) for each vector of a row of `width` elements, the last one possibly a part.
template <class D, class Step>
HWY_INLINE void ForEachVector(D d, std::size_t width, const Step& step) {
  const std::size_t n = hn::Lanes(d);
  std::size_t x = 0;
  for (; x + n <= width; x += n) step(x, WholeVector{});
  if (x < width) step(x, PartVector{width - x});
}

// Lanes first..end of `at`; the others are those of `otherwise`. Nothing else is read.
template <class D>
HWY_INLINE hn::Vec<D> LoadLanes(D d, const hn::TFromD<D>* at, std::size_t first, std::size_t end,
                                hn::Vec<D> otherwise) {
#if LX_HAS_MASKED_ACCESS
  const auto mask = hn::AndNot(hn::FirstN(d, first), hn::FirstN(d, end));
  return hn::IfThenElse(mask, hn::MaskedLoad(mask, d, at), otherwise);
#else
  HWY_ALIGN hn::TFromD<D> lanes[hn::MaxLanes(d)];
  hn::Store(otherwise, d, lanes);
  if (first < end) std::memcpy(lanes + first, at + first, (end - first) * sizeof(lanes[0]));
  return hn::Load(d, lanes);
#endif
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_SIMD_INL_H_
