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
#include "foundation/wide-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

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
#if LX_HAS_LANES
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

// Asks for the bytes `distance` from `at`, which may lie outside everything, to be read or written
// soon. Rows that are cut into strips are too short for the processor to see the next one coming.
template <bool kWrite>
HWY_INLINE void PrefetchBytes(const void* at, std::ptrdiff_t distance, std::size_t bytes) {
  const char* const first = static_cast<const char*>(at) + distance;
  for (std::size_t i = 0; i < bytes; i += kLargestVector) __builtin_prefetch(first + i, kWrite);
}

// One pass of a rule over an image. Feed it the row before the first, the rows in order, and the
// row after the last; each feeding writes the row before it, from the third on.
template <typename T, std::size_t kStride, class Rule>
class Pass {
 public:
  using Element = T;

  HWY_INLINE Pass() {}

  // `scratch` has PassBytes() bytes.
  HWY_INLINE void Start(const Neighbourhood& map, std::uint8_t* scratch) {
    width_ = map.elements;
    border_ = map.border;
    nextSource_ = map.source.pitch;
    nextDestination_ = map.destination.pitch;
    const PassLayout layout(map, sizeof(T), kPlanes);
    previous_ = reinterpret_cast<Wide*>(scratch);
    older_ = reinterpret_cast<Wide*>(scratch + layout.planeRow);
    unused_ = reinterpret_cast<T*>(scratch + 2 * layout.planeRow);
    zeros_ = reinterpret_cast<T*>(scratch + 2 * layout.planeRow + layout.row);
    if (border_ == Border::kZero) std::memset(zeros_, 0, width_ * sizeof(T));
  }

  // What stands for the row beyond a border row.
  const T* Beyond(const T* row) const { return border_ == Border::kReplicate ? row : zeros_; }
  // The same below the last row. In place, or after another pass, it is written while it is fed for
  // the row beyond: a copy. Strips are never in place.
  const T* BeyondLast(const T* row, bool strips) const {
    if (border_ == Border::kZero) return zeros_;
    if (strips) return row;
    std::memcpy(unused_, row, width_ * sizeof(T));
    return unused_;
  }
  // Where the rows go that the first two feedings write.
  T* Unused() const { return unused_; }

  // Takes the columns first..end of a row; `first` is a multiple of the vector length, and so is
  // `end` unless it is the width.
  void Feed(const T* from, T* to, std::size_t first, std::size_t end) {
    // Copies, because the compiler must take every stored byte for a change of the members.
    const std::size_t width = width_;
    const Border border = border_;
    const Wide* const previous = previous_;
    Wide* const older = older_;
    if (end - first < width) {
      PrefetchBytes<false>(from + first, nextSource_, (end - first) * sizeof(T));
      PrefetchBytes<true>(to + first, nextDestination_, (end - first) * sizeof(T));
    }
    const D d;
    const std::size_t n = hn::Lanes(d);
    const std::size_t inside = width < kStride ? 0 : width - kStride;
    for (std::size_t x = first; x < end; x += n) {
      if (x >= kStride && x + n <= inside) {
        hn::StoreU(Step(LoadInside<kStride>(d, from + x), previous, older, x - first), d, to + x);
      } else {
        const auto pixels = LoadAtBorder<kStride>(d, from, x, width, border);
        const PartVector part{HWY_MIN(n, width - x)};
        part.Store(d, Step(pixels, previous, older, x - first), to + x);
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

  // The result for the vector of the row before at element x; its planes of the older row make room
  // for the fresh ones.
  static HWY_INLINE hn::Vec<D> Step(const Neighbours<D>& pixels, const Wide* previous, Wide* older,
                                    std::size_t x) {
    const W w;
    const Rule rule;
    Halves<D> result;
    for (std::size_t h = 0; h < kHalves; ++h) {
      const std::size_t offset = kPlanes * (x + h * hn::Lanes(w));
      Planes above, here, below;
      for (std::size_t p = 0; p < kPlanes; ++p) {
        above[p] = hn::Load(w, older + offset + p * hn::Lanes(w));
        here[p] = hn::Load(w, previous + offset + p * hn::Lanes(w));
      }
      rule.Horizontal(w, pixels.left.half[h], pixels.centre.half[h], pixels.right.half[h], below);
      for (std::size_t p = 0; p < kPlanes; ++p) {
        hn::Store(below[p], w, older + offset + p * hn::Lanes(w));
      }
      result.half[h] = rule.Vertical(w, above, here, below);
    }
    return Join(D(), result);
  }

  std::size_t width_ = 0;
  Border border_ = Border::kReplicate;
  std::ptrdiff_t nextSource_ = 0;
  std::ptrdiff_t nextDestination_ = 0;
  Wide* previous_ = nullptr;  // planes of the row fed last
  Wide* older_ = nullptr;     // and of the one before
  T* unused_ = nullptr;
  T* zeros_ = nullptr;
};

// Rows of planes beyond this many bytes would leave the first-level cache.
inline constexpr std::size_t kMostRingBytes = 24576;

// The columns that run together: all, unless their rows of planes are too long. A pass in place
// cannot be cut: the columns beside the cut would have been written over.
template <typename T, class Rule>
HWY_INLINE std::size_t StripWidth(const Neighbourhood& map, std::size_t passes) {
  const bool inPlace = map.source.data == map.destination.data;
  const std::size_t bytes = 4 * Rule::kPlanes * sizeof(T) * map.elements;
  if (inPlace || passes > 1 || bytes <= kMostRingBytes) return map.elements;
  const std::size_t strips = (bytes + kMostRingBytes - 1) / kMostRingBytes;
  return (map.elements / strips / kLargestVector + 1) * kLargestVector;
}

// Feeds row `row` of `source` to a pass: the first row after what stands for the row above it, and
// `height` for what stands for the row below the last.
template <class P>
HWY_INLINE void FeedRow(P& pass, const Neighbourhood& map, const Rows& source, std::size_t row,
                        std::size_t first, std::size_t end) {
  using T = typename P::Element;
  if (row == 0) {
    const T* const top = source.Row<const T>(0);
    pass.Feed(pass.Beyond(top), pass.Unused(), first, end);
    pass.Feed(top, pass.Unused(), first, end);
    return;
  }
  const T* const from = row < map.height ? source.Row<const T>(row)
                                         : pass.BeyondLast(source.Row<const T>(map.height - 1),
                                                           end - first < map.elements);
  pass.Feed(from, map.destination.Row<T>(row - 1), first, end);
}

// destination = rule(3 × 3 neighbourhood of source), `passes` times over; `scratch` has PassBytes()
// bytes for each pass. The image is not empty. A row goes through all passes while it is in the
// cache: at step n, pass k takes row n - k, which pass k - 1 has just written.
template <typename T, std::size_t kStride, class Rule>
void Map3x3(const Neighbourhood& map, std::size_t passes, std::uint8_t* scratch) {
  Pass<T, kStride, Rule> chain[kMostPasses];
  for (std::size_t k = 0; k < passes; ++k) {
    chain[k].Start(map, scratch + k * PassBytes(map, sizeof(T), Rule::kPlanes));
  }
  const std::size_t strip = StripWidth<T, Rule>(map, passes);
  for (std::size_t first = 0; first < map.elements; first += strip) {
    const std::size_t end = HWY_MIN(map.elements, first + strip);
    for (std::size_t n = 0; n < map.height + passes; ++n) {
      for (std::size_t k = n < map.height ? 0 : n - map.height; k < passes && k <= n; ++k) {
        FeedRow(chain[k], map, k == 0 ? map.source : map.destination, n - k, first, end);
      }
    }
  }
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_NEIGHBOURHOOD_INL_H_
