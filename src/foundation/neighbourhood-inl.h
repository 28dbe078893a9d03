// SPDX-License-Identifier: Apache-2.0
// The driver of 3 × 3 neighbourhoods. A rule has a horizontal step, which turns a pixel and its
// left and right neighbours into values (planes), and a vertical step, which turns the planes of
// three rows into the result. Every source row goes through the horizontal step once; its planes
// wait in a ring of two rows. A row is read before the row above it is written, so that filters run
// in place, and borders are decided here: no rule contains a border case. Included once for each
// instruction set.

#if defined(LXPIC_FOUNDATION_NEIGHBOURHOOD_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_NEIGHBOURHOOD_INL_H_
#undef LXPIC_FOUNDATION_NEIGHBOURHOOD_INL_H_
#else
#define LXPIC_FOUNDATION_NEIGHBOURHOOD_INL_H_
#endif

#include <utility>

#include "foundation/neighbourhood.h"
#include "foundation/simd-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

// Wide lanes of a vector: its even and its odd elements, or its only element.
#if HWY_TARGET == HWY_SCALAR
inline constexpr std::size_t kHalves = 1;
template <class D>
using WideTag = hn::Rebind<hwy::MakeWide<hn::TFromD<D>>, D>;
#else
inline constexpr std::size_t kHalves = 2;
template <class D>
using WideTag = hn::RepartitionToWide<D>;
#endif

template <class D>
struct Halves {
  hn::Vec<WideTag<D>> half[kHalves];
};

template <class D>
HWY_INLINE hn::Vec<WideTag<D>> EvenHalf(D /*d*/, hn::Vec<D> v) {
  const WideTag<D> wide;
#if HWY_TARGET == HWY_SCALAR
  return hn::PromoteTo(wide, v);
#else
  return hn::And(hn::BitCast(wide, v), hn::Set(wide, hwy::LimitsMax<hn::TFromD<D>>()));
#endif
}

#if HWY_TARGET != HWY_SCALAR
template <class D>
HWY_INLINE hn::Vec<WideTag<D>> OddHalf(D /*d*/, hn::Vec<D> v) {
  return hn::ShiftRight<8 * sizeof(hn::TFromD<D>)>(hn::BitCast(WideTag<D>(), v));
}
#endif

template <class D>
HWY_INLINE Halves<D> Widen(D d, hn::Vec<D> v) {
#if HWY_TARGET == HWY_SCALAR
  return {{EvenHalf(d, v)}};
#else
  return {{EvenHalf(d, v), OddHalf(d, v)}};
#endif
}

// The elements of halves whose values fit them.
template <class D>
HWY_INLINE hn::Vec<D> Join(D d, const Halves<D>& halves) {
#if HWY_TARGET == HWY_SCALAR
  return Narrow(d, halves.half[0]);
#else
  constexpr int kBits = 8 * sizeof(hn::TFromD<D>);
  return hn::BitCast(d, hn::Or(halves.half[0], hn::ShiftLeft<kBits>(halves.half[1])));
#endif
}

// A vector of pixels with its neighbours.
template <class D>
struct Neighbours {
  Halves<D> left, centre, right;
};

template <std::size_t kStride, class D>
HWY_INLINE Neighbours<D> LoadInside(D d, const hn::TFromD<D>* at) {
  const auto left = hn::LoadU(d, at - kStride);
  const auto right = hn::LoadU(d, at + kStride);
  Neighbours<D> loaded;
  loaded.centre = Widen(d, hn::LoadU(d, at));
#if HWY_TARGET != HWY_SCALAR
  if constexpr (kStride == 1) {
    // The odd pixels' left neighbours are the even pixels, and the other way round.
    loaded.left = {{EvenHalf(d, left), loaded.centre.half[0]}};
    loaded.right = {{loaded.centre.half[1], OddHalf(d, right)}};
    return loaded;
  }
#endif
  loaded.left = Widen(d, left);
  loaded.right = Widen(d, right);
  return loaded;
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

// The vector at element x of a row of `width` elements, near either end. A replicated neighbour of
// a border pixel is the pixel itself.
template <std::size_t kStride, class D>
HWY_INLINE Neighbours<D> LoadAtBorder(D d, const hn::TFromD<D>* row, std::size_t x,
                                      std::size_t width, Border border) {
  const std::size_t count = HWY_MIN(hn::Lanes(d), width - x);
  const std::size_t outsideLeft = HWY_MIN(count, x < kStride ? kStride - x : 0);
  const std::size_t insideRight = width > x + kStride ? HWY_MIN(count, width - kStride - x) : 0;
  const auto centre = PartVector{count}.Load(d, row + x);
  const auto outside = border == Border::kReplicate ? centre : hn::Zero(d);
  // Addresses of lanes that are not read may lie outside the row.
  const auto* const left =
      row + static_cast<std::ptrdiff_t>(x) - static_cast<std::ptrdiff_t>(kStride);
  return {Widen(d, LoadLanes(d, left, outsideLeft, count, outside)), Widen(d, centre),
          Widen(d, LoadLanes(d, row + x + kStride, 0, insideRight, outside))};
}

// One pass of a rule over an image. Feed it the row before the first, the rows in order, and the
// row after the last; each feeding writes the row before it, from the third on.
template <typename T, std::size_t kStride, class Rule>
class Pass {
 public:
  HWY_INLINE Pass() {}

  // `scratch` has PassBytes() bytes.
  HWY_INLINE void Start(const Neighbourhood& map, std::uint8_t* scratch) {
    width_ = map.elements;
    border_ = map.border;
    const PassLayout layout(map, sizeof(T), kPlanes);
    previous_ = reinterpret_cast<Wide*>(scratch);
    older_ = reinterpret_cast<Wide*>(scratch + layout.planeRow);
    unused_ = reinterpret_cast<T*>(scratch + 2 * layout.planeRow);
    zeros_ = reinterpret_cast<T*>(scratch + 2 * layout.planeRow + layout.row);
    if (border_ == Border::kZero) std::memset(zeros_, 0, width_ * sizeof(T));
  }

  // What stands for the row beyond a border row.
  const T* Beyond(const T* row) const { return border_ == Border::kReplicate ? row : zeros_; }
  // Where the rows go that the first two feedings write.
  T* Unused() const { return unused_; }

  void Feed(const T* from, T* to) {
    const D d;
    const std::size_t n = hn::Lanes(d);
    std::size_t at = 0;
    for (std::size_t x = 0; x < width_; x += n, ++at) {
      if (x >= kStride && x + n + kStride <= width_) {
        hn::StoreU(Step(LoadInside<kStride>(d, from + x), at), d, to + x);
      } else {
        const PartVector part{HWY_MIN(n, width_ - x)};
        part.Store(d, Step(LoadAtBorder<kStride>(d, from, x, width_, border_), at), to + x);
      }
    }
    std::swap(previous_, older_);
  }

 private:
  static constexpr std::size_t kPlanes = Rule::kPlanes;
  using D = hn::ScalableTag<T>;
  using W = WideTag<D>;
  using Wide = hn::TFromD<W>;
  using Planes = hn::Vec<W>[kPlanes];

  // The result for one vector of the row before; the planes of the older row make room for the
  // fresh ones.
  HWY_INLINE hn::Vec<D> Step(const Neighbours<D>& pixels, std::size_t at) const {
    const W w;
    Halves<D> result;
    for (std::size_t h = 0; h < kHalves; ++h) {
      const std::size_t offset = (at * kHalves + h) * kPlanes * hn::Lanes(w);
      Planes above, here, below;
      for (std::size_t p = 0; p < kPlanes; ++p) {
        above[p] = hn::Load(w, older_ + offset + p * hn::Lanes(w));
        here[p] = hn::Load(w, previous_ + offset + p * hn::Lanes(w));
      }
      rule_.Horizontal(w, pixels.left.half[h], pixels.centre.half[h], pixels.right.half[h], below);
      for (std::size_t p = 0; p < kPlanes; ++p) {
        hn::Store(below[p], w, older_ + offset + p * hn::Lanes(w));
      }
      result.half[h] = rule_.Vertical(w, above, here, below);
    }
    return Join(D(), result);
  }

  Rule rule_;
  std::size_t width_ = 0;
  Border border_ = Border::kReplicate;
  Wide* previous_ = nullptr;  // planes of the row fed last
  Wide* older_ = nullptr;     // and of the one before
  T* unused_ = nullptr;
  T* zeros_ = nullptr;
};

// `passes` passes of a rule one after the other: a row goes through all of them while it is in the
// cache. At step n, pass k takes row n - k, which pass k - 1 has just written.
template <typename T, std::size_t kStride, class Rule>
void Map3x3(const Neighbourhood& map, std::size_t passes, std::uint8_t* scratch) {
  Pass<T, kStride, Rule> chain[kMostPasses];
  for (std::size_t k = 0; k < passes; ++k) {
    chain[k].Start(map, scratch + k * PassBytes(map, sizeof(T), Rule::kPlanes));
  }
  for (std::size_t n = 0; n < map.height + passes; ++n) {
    for (std::size_t k = n < map.height ? 0 : n - map.height; k < passes && k <= n; ++k) {
      auto& pass = chain[k];
      const Rows& source = k == 0 ? map.source : map.destination;
      const std::size_t row = n - k;
      if (row == 0) {
        const T* const first = source.Row<const T>(0);
        pass.Feed(pass.Beyond(first), pass.Unused());
        pass.Feed(first, pass.Unused());
      } else if (row < map.height) {
        pass.Feed(source.Row<const T>(row), map.destination.Row<T>(row - 1));
      } else {
        pass.Feed(pass.Beyond(source.Row<const T>(row - 1)), map.destination.Row<T>(row - 1));
      }
    }
  }
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_NEIGHBOURHOOD_INL_H_
