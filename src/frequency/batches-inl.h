// SPDX-License-Identifier: Apache-2.0
// Batches of rows or columns that are transformed side by side, each in a lane of its own. Included
// once for each instruction set.

#if defined(LXPIC_FREQUENCY_BATCHES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FREQUENCY_BATCHES_INL_H_
#undef LXPIC_FREQUENCY_BATCHES_INL_H_
#else
#define LXPIC_FREQUENCY_BATCHES_INL_H_
#endif

#include <algorithm>
#include <cstring>

#include "foundation/simd-inl.h"
#include "frequency/transform.h"

HWY_BEFORE_NAMESPACE();
namespace lx::frequency::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

using Reals = hn::ScalableTag<float>;
using Real = hn::Vec<Reals>;
inline constexpr std::size_t kBatch = hn::MaxLanes(Reals());

struct Complex {
  Real re;
  Real im;
};

// Element `i` of a batch: kBatch real parts and as many imaginary ones.
HWY_INLINE float* Element(float* batch, std::size_t i) { return batch + 2 * kBatch * i; }

HWY_INLINE Complex Get(const float* element) {
  const Reals d;
  return {hn::Load(d, element), hn::Load(d, element + kBatch)};
}

HWY_INLINE void Put(Complex value, float* element) {
  const Reals d;
  hn::Store(value.re, d, element);
  hn::Store(value.im, d, element + kBatch);
}

#if LX_HAS_LANES

// Pairs of parts to vectors of real and of imaginary ones, in an order of their own, and back.
HWY_INLINE Complex Regroup(Complex pairs) {
  return {hn::OddEven(hn::Shuffle2301(pairs.im), pairs.re),
          hn::OddEven(pairs.im, hn::Shuffle2301(pairs.re))};
}

using Bytes = hn::FixedTag<std::uint8_t, 16>;
inline constexpr std::size_t kColumns = hn::MaxLanes(Bytes());

// The bytes of kBatch rows, column by column.
template <class Access>
HWY_INLINE void TakeColumns(const Rows& source, std::size_t y, std::size_t rows, std::size_t x,
                            const Access& access, std::uint8_t* columns) {
  const Bytes d;
  hn::Vec<Bytes> v[kBatch];
  for (std::size_t r = 0; r < kBatch; ++r) {
    v[r] = r < rows ? access.Load(d, source.Row<const std::uint8_t>(y + r) + x) : hn::Zero(d);
  }
  // Each step moves one bit of the row's number behind those of the column's.
  for (std::size_t step = 1; step < kBatch; step *= 2) {
    hn::Vec<Bytes> next[kBatch];
    for (std::size_t i = 0; i < kBatch / 2; ++i) {
      next[2 * i] = hn::InterleaveLower(d, v[i], v[i + kBatch / 2]);
      next[2 * i + 1] = hn::InterleaveUpper(d, v[i], v[i + kBatch / 2]);
    }
    for (std::size_t i = 0; i < kBatch; ++i) v[i] = next[i];
  }
  for (std::size_t i = 0; i < kBatch; ++i) hn::Store(v[i], d, columns + kColumns * i);
}

HWY_INLINE Real Levels(const std::uint8_t* bytes) {
  const hn::Rebind<std::uint8_t, Reals> narrow;
  const hn::RebindToSigned<Reals> whole;
  return hn::ConvertTo(Reals(), hn::PromoteTo(whole, hn::LoadU(narrow, bytes)));
}

#else

HWY_INLINE Complex Regroup(Complex pairs) { return pairs; }

inline constexpr std::size_t kColumns = 1;

template <class Access>
HWY_INLINE void TakeColumns(const Rows& source, std::size_t y, std::size_t /*rows*/, std::size_t x,
                            const Access& /*access*/, std::uint8_t* columns) {
  *columns = source.Row<const std::uint8_t>(y)[x];
}

HWY_INLINE Real Levels(const std::uint8_t* bytes) {
  return hn::Set(Reals(), static_cast<float>(*bytes));
}

#endif

// The samples of the rows from `y` on: scaled pixels, of which every other one is negative. Lanes
// without a row are 0.
class Samples {
 public:
  // `pixels` are PixelBytes() of scratch memory.
  HWY_INLINE Samples(const Transform& work, std::size_t y, std::uint8_t* pixels) : pixels_(pixels) {
    const Reals d;
    HWY_ALIGN float scales[kBatch];
    for (std::size_t r = 0; r < kBatch; ++r) {
      scales[r] = ((y + r) & 1) != 0 ? -work.scale : work.scale;
    }
    even_ = hn::Load(d, scales);
    const std::size_t rows = std::min(kBatch, work.height - y);
    std::size_t x = 0;
    for (; x + kColumns <= work.width; x += kColumns) {
      TakeColumns(work.source, y, rows, x, WholeVector{}, pixels + kBatch * x);
    }
    if (x < work.width) {
      TakeColumns(work.source, y, rows, x, PartVector{work.width - x}, pixels + kBatch * x);
    }
  }

  HWY_INLINE Real operator()(std::size_t x) const {
    const Real scale = x % 2 == 0 ? even_ : hn::Neg(even_);
    return hn::Mul(scale, Levels(pixels_ + kBatch * x));
  }

 private:
  const std::uint8_t* pixels_;
  Real even_;  // the scales of columns 0, 2, ...
};

#if LX_HAS_LANES

// Every 16 bytes go to a row of their own, four rows apart.
template <class D>
HWY_INLINE void ScatterBlocks(D d, hn::Vec<D> v, const Rows& rows, std::size_t y, std::size_t x) {
  if constexpr (hn::MaxLanes(d) > 4) {
    const hn::Half<D> half;
    ScatterBlocks(half, hn::LowerHalf(half, v), rows, y, x);
    ScatterBlocks(half, hn::UpperHalf(half, v), rows, y + hn::MaxLanes(half), x);
  } else {
    hn::StoreU(v, d, rows.Row<float>(y) + 2 * x);
  }
}

// Elements x and x + 1 of a batch of whole kBatch rows.
HWY_INLINE void StorePair(const float* element, const Rows& rows, std::size_t y, std::size_t x) {
  const Reals d;
  const hn::RepartitionToWide<hn::RebindToUnsigned<Reals>> pairs;
  const Complex a = Get(element);
  const Complex b = Get(element + 2 * kBatch);
  const auto store = [&](Real first, Real second, std::size_t row) HWY_ATTR {
    const auto one = hn::BitCast(pairs, first);
    const auto other = hn::BitCast(pairs, second);
    ScatterBlocks(d, hn::BitCast(d, hn::InterleaveLower(pairs, one, other)), rows, row, x);
    ScatterBlocks(d, hn::BitCast(d, hn::InterleaveUpper(pairs, one, other)), rows, row + 1, x);
  };
  store(hn::InterleaveLower(d, a.re, a.im), hn::InterleaveLower(d, b.re, b.im), y);
  store(hn::InterleaveUpper(d, a.re, a.im), hn::InterleaveUpper(d, b.re, b.im), y + 2);
}

#endif

// A batch becomes the rows of the destination from `y` on.
HWY_INLINE void StoreRows(const float* batch, const Transform& work, std::size_t y) {
  const std::size_t rows = std::min(kBatch, work.height - y);
  std::size_t x = 0;
#if LX_HAS_LANES
  for (; rows == kBatch && x + 2 <= work.width; x += 2) {
    StorePair(batch + 2 * kBatch * x, work.destination, y, x);
  }
#endif
  for (; x < work.width; ++x) {
    for (std::size_t r = 0; r < rows; ++r) {
      const float pixel[2] = {batch[2 * kBatch * x + r], batch[2 * kBatch * x + kBatch + r]};
      std::memcpy(work.destination.Row<float>(y + r) + 2 * x, pixel, sizeof(pixel));
    }
  }
}

// The parts of kBatch pixels, or of fewer: access to the two vectors that they fill.
struct WholeColumns {
  WholeVector low;
  WholeVector high;
};
struct PartColumns {
  PartVector low;
  PartVector high;
};

// Calls step(access) for the columns of the destination from `x` on.
template <class Step>
HWY_INLINE void WithColumns(const Transform& work, std::size_t x, const Step& step) {
  const std::size_t floats = 2 * (work.width - x);
  if (floats >= 2 * kBatch) {
    step(WholeColumns{});
  } else {
    const std::size_t low = std::min(kBatch, floats);
    step(PartColumns{{low}, {floats - low}});
  }
}

// Lanes are columns, in the order of Regroup().
template <class Access>
HWY_INLINE Complex LoadPixels(const float* pixels, const Access& access) {
  const Reals d;
  return Regroup({access.low.Load(d, pixels), access.high.Load(d, pixels + kBatch)});
}

template <class Access>
HWY_INLINE void StorePixels(Complex value, float* pixels, const Access& access) {
  const Reals d;
  const Complex pairs = Regroup(value);
  access.low.Store(d, pairs.re, pixels);
  access.high.Store(d, pairs.im, pixels + kBatch);
}

}  // namespace lx::frequency::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FREQUENCY_BATCHES_INL_H_
