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

#include "foundation/neighbourhood.h"
#include "foundation/simd-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

// Wide lanes of a vector: its even and its odd elements, or its only element.
#if HWY_TARGET == HWY_SCALAR
inline constexpr int kHalves = 1;
template <class D>
using WideTag = hn::Rebind<hwy::MakeWide<hn::TFromD<D>>, D>;
#else
inline constexpr int kHalves = 2;
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

// One pass of a rule over an image: feed it the source rows in order, then finish it.
template <typename T, std::size_t kStride, class Rule>
class Pass {
 public:
  using D = hn::ScalableTag<T>;
  using W = WideTag<D>;
  using WideT = hn::TFromD<W>;
  static constexpr std::size_t kPlanes = Rule::kPlanes;
  using Planes = hn::Vec<W>[kPlanes];

  HWY_INLINE Pass(const Neighbourhood& map, std::uint8_t* scratch, const Rule& rule)
      : rule_(rule), width_(map.elements), height_(map.height), border_(map.border) {
    const std::size_t bytes = PassBytes(map, sizeof(T), kPlanes) / 3;
    for (std::size_t i = 0; i < 3; ++i) rows_[i] = reinterpret_cast<WideT*>(scratch + i * bytes);
    if (border_ == Border::kZero) std::memset(rows_[2], 0, bytes);
  }

  // Takes source row `n` and, unless it is the first, writes row n - 1 to `to`.
  void Feed(std::size_t n, const T* from, T* to) {
    WideT* const fresh = rows_[n % 2];
    const WideT* const here = rows_[(n + 1) % 2];
    if (n == 0) {
      Run(
          [&](const Neighbours<D>& pixels, std::size_t at, auto) HWY_ATTR {
            for (int h = 0; h < kHalves; ++h) {
              Planes planes;
              rule_.Horizontal(W(), pixels.left.half[h], pixels.centre.half[h],
                               pixels.right.half[h], planes);
              StorePlanes(planes, fresh, at, h);
            }
          },
          from);
      return;
    }
    const WideT* const above = n == 1 ? Missing(here) : fresh;
    Run(
        [&](const Neighbours<D>& pixels, std::size_t at, auto store) HWY_ATTR {
          Halves<D> result;
          for (int h = 0; h < kHalves; ++h) {
            Planes up, middle, down;
            LoadPlanes(above, at, h, up);
            LoadPlanes(here, at, h, middle);
            rule_.Horizontal(W(), pixels.left.half[h], pixels.centre.half[h], pixels.right.half[h],
                             down);
            StorePlanes(down, fresh, at, h);
            result.half[h] = rule_.Vertical(W(), up, middle, down);
          }
          store(Join(D(), result), to);
        },
        from);
  }

  // Writes the last row to `to`.
  void Finish(T* to) {
    const WideT* const here = rows_[(height_ + 1) % 2];
    const WideT* const below = Missing(here);
    const WideT* const above = height_ == 1 ? below : rows_[height_ % 2];
    const D d;
    std::size_t at = 0;
    ForEachVector(d, width_, [&](std::size_t x, auto access) HWY_ATTR {
      Halves<D> result;
      for (int h = 0; h < kHalves; ++h) {
        Planes up, middle, down;
        LoadPlanes(above, at, h, up);
        LoadPlanes(here, at, h, middle);
        LoadPlanes(below, at, h, down);
        result.half[h] = rule_.Vertical(W(), up, middle, down);
      }
      access.Store(d, Join(d, result), to + x);
      ++at;
    });
  }

 private:
  // What stands for the planes of a row outside, beside the border row's own planes.
  const WideT* Missing(const WideT* row) const {
    return border_ == Border::kReplicate ? row : rows_[2];
  }

  // Calls step(neighbours, vector number, store) along a row.
  template <class Step>
  HWY_INLINE void Run(const Step& step, const T* from) const {
    const D d;
    const std::size_t n = hn::Lanes(d);
    std::size_t x = 0;
    std::size_t at = 0;
    const auto border = [&]() HWY_ATTR {
      const std::size_t count = HWY_MIN(n, width_ - x);
      step(LoadAtBorder<kStride>(d, from, x, width_, border_), at++,
           [&](hn::Vec<D> v, T* to) HWY_ATTR { PartVector{count}.Store(d, v, to + x); });
      x += n;
    };
    while (x < width_ && x < kStride) border();
    for (; x + n + kStride <= width_; x += n) {
      step(LoadInside<kStride>(d, from + x), at++,
           [&](hn::Vec<D> v, T* to) HWY_ATTR { hn::StoreU(v, d, to + x); });
    }
    while (x < width_) border();
  }

  // Planes of one vector lie together, half after half.
  static HWY_INLINE void LoadPlanes(const WideT* row, std::size_t at, int half, Planes& planes) {
    const W w;
    const WideT* const from = row + (at * kHalves + half) * kPlanes * hn::Lanes(w);
    for (std::size_t p = 0; p < kPlanes; ++p) planes[p] = hn::Load(w, from + p * hn::Lanes(w));
  }

  static HWY_INLINE void StorePlanes(const Planes& planes, WideT* row, std::size_t at, int half) {
    const W w;
    WideT* const to = row + (at * kHalves + half) * kPlanes * hn::Lanes(w);
    for (std::size_t p = 0; p < kPlanes; ++p) hn::Store(planes[p], w, to + p * hn::Lanes(w));
  }

  const Rule& rule_;
  std::size_t width_;
  std::size_t height_;
  Border border_;
  WideT* rows_[3];  // the ring of two, and zeros
};

template <typename T, std::size_t kStride, class Rule>
HWY_INLINE void RunPass(const Neighbourhood& map, std::uint8_t* scratch, const Rule& rule) {
  Pass<T, kStride, Rule> pass(map, scratch, rule);
  for (std::size_t n = 0; n < map.height; ++n) {
    pass.Feed(n, map.source.Row<const T>(n), map.destination.Row<T>(n == 0 ? 0 : n - 1));
  }
  pass.Finish(map.destination.Row<T>(map.height - 1));
}

// destination = rule(3 × 3 neighbourhood of source); `scratch` has PassBytes() bytes. The image is
// not empty.
template <typename T, class Rule>
void Map3x3(const Neighbourhood& map, std::uint8_t* scratch, const Rule& rule) {
  if constexpr (sizeof(T) == 1) {
    if (map.stride == 3) {
      RunPass<T, 3>(map, scratch, rule);
      return;
    }
  }
  RunPass<T, 1>(map, scratch, rule);
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_NEIGHBOURHOOD_INL_H_
