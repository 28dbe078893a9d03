// SPDX-License-Identifier: Apache-2.0
#include "geometry/resampling_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "geometry/bilinear_colour_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "geometry/walk-inl.h"
#include "hwy/cache_control.h"

HWY_BEFORE_NAMESPACE();
namespace lx::geometry::HWY_NAMESPACE {

namespace {

using ColourPoint = BilinearPoint<std::uint8_t, 3>;

#if LX_HAS_PAIR_PRODUCTS

constexpr std::int64_t kTile = 64;  // columns
constexpr std::size_t kLanes = hn::MaxLanes(Words());
using Block = hn::Simd<std::uint8_t, 16, 0>;

// Bytes of two neighbouring pixels and of those below, alternating. Eight bytes are read of either
// row: no pixel that is mixed here is the last but one of a row.
HWY_INLINE hn::Vec<Block> FourAt(const std::uint8_t* at, std::ptrdiff_t pitch) {
  const Block d;
  const hn::Half<Block> half;
  const auto above = hn::ZeroExtendVector(d, hn::LoadU(half, at));
  const auto below = hn::ZeroExtendVector(d, hn::LoadU(half, at + pitch));
  return hn::InterleaveLower(d, above, below);
}

// The same for every fourth pixel of a vector of points, one to a block.
template <class D>
HWY_INLINE hn::Vec<D> FoursAt(D d, const std::uint8_t* base, std::ptrdiff_t pitch,
                              const std::int32_t* offsets) {
  if constexpr (hn::MaxLanes(d) == 16) {
    return FourAt(base + offsets[0], pitch);
  } else {
    const hn::Half<D> half;
    const std::size_t on = hn::MaxLanes(d) / 8;
    return hn::Combine(d, FoursAt(half, base, pitch, offsets + on),
                       FoursAt(half, base, pitch, offsets));
  }
}

// Components of pixels kPlace of all blocks, less 128.
template <int kPlace>
HWY_INLINE WordVector MixColours(hn::Vec<Octets> fours, ShortVector fy, ShortVector pairs) {
  // Components of the left and the right pixel side by side.
  alignas(16) static constexpr std::uint8_t kPairs[16] = {0, 1, 6,  7,  2,  3,  8,  9,
                                                          4, 5, 10, 11, 12, 13, 14, 15};
  const Shorts d;
  const auto columns = hn::TableLookupBytes(fours, hn::LoadDup128(Octets(), kPairs));
  const auto of = [=](ShortVector v) HWY_ATTR {
    return hn::BitCast(d, hn::Broadcast<kPlace>(hn::BitCast(Words(), v)));
  };
  return MixBytes(columns, of(fy), of(pairs));
}

// Writes the twelve bytes of each block, and four bytes more.
template <class D>
HWY_INLINE void StoreBlocks(D d, hn::Vec<D> blocks, std::uint8_t* to) {
  if constexpr (hn::MaxLanes(d) == 16) {
    hn::StoreU(blocks, d, to);
  } else {
    const hn::Half<D> half;
    StoreBlocks(half, hn::LowerHalf(half, blocks), to);
    StoreBlocks(half, hn::UpperHalf(half, blocks), to + hn::MaxLanes(half) / 16 * 12);
  }
}

// Components of four pixels in each block, the fourth of each thrown away.
HWY_INLINE void StoreColours(hn::Vec<Octets> pixels, std::uint8_t* to) {
  alignas(16) static constexpr std::uint8_t kClose[16] = {0,  1,  2,  4,  5,    6,    8,    9,
                                                          10, 12, 13, 14, 0x80, 0x80, 0x80, 0x80};
  const Octets d;
  StoreBlocks(d, hn::TableLookupBytesOr0(pixels, hn::LoadDup128(d, kClose)), to);
}

// `count` pixels in whole vectors.
HWY_INLINE void MixSpan(const Resampling& job, Point start, std::int64_t count, std::uint8_t* to) {
  constexpr std::size_t kPixel = 3;
  const auto mask = hn::Set(Shorts(), static_cast<std::int16_t>(FractionMask(job)));
  const auto* const base =
      job.source.Row<const std::uint8_t>(static_cast<std::size_t>((start.y >> 16) - 1)) +
      ((start.x >> 16) - 1) * static_cast<std::int64_t>(kPixel);
  HWY_ALIGN std::int32_t offsets[kTile];
  MakeOffsets<kPixel>(job, start, static_cast<std::size_t>(count), offsets);
  auto walk = WalkFrom<1>({static_cast<std::int32_t>(start.x & (kOnePixel - 1)),
                           static_cast<std::int32_t>(start.y & (kOnePixel - 1))},
                          {static_cast<std::int32_t>(job.inverse.x.column),
                           static_cast<std::int32_t>(job.inverse.y.column)});
  for (std::size_t i = 0; i < static_cast<std::size_t>(count); i += kLanes) {
    const auto fy = Fractions(walk.y, mask);
    const auto pairs = WeightPairs(Fractions(walk.x, mask));
    const auto fours = [&](std::size_t place) HWY_ATTR {
      return FoursAt(Octets(), base, job.source.pitch, offsets + i + place);
    };
    const WordVector mixed[4] = {
        MixColours<0>(fours(0), fy, pairs), MixColours<1>(fours(1), fy, pairs),
        MixColours<2>(fours(2), fy, pairs), MixColours<3>(fours(3), fy, pairs)};
    StoreColours(PackBytes(mixed), to + i * kPixel);
    walk.NextTurn();
  }
}

// The columns of a row whose points have four neighbours in the source, and a pixel beyond them.
HWY_INLINE Span Core(const Resampling& job, std::int64_t y, Span inside) {
  const Span across = Cut(inside, job.inverse.x.Start(y), job.inverse.x.column, kOnePixel,
                          (job.sourceWidth - 1) * kOnePixel);
  return Cut(across, job.inverse.y.Start(y), job.inverse.y.column, kOnePixel,
             job.sourceHeight * kOnePixel);
}

// Part of a row. Whole vectors first: what they write beyond their pixels is written again.
HWY_INLINE void MixRow(const Resampling& job, std::int64_t y, Span part, Span core, Span inside) {
  constexpr std::int64_t kSpare = 2;  // pixels that the last store reaches into
  const ColourPoint sample{job};
  const std::int64_t from = std::max(core.from, part.from);
  const std::int64_t most = std::min(std::min(core.to, part.to), inside.to - kSpare) - from;
  constexpr auto kStep = static_cast<std::int64_t>(kLanes);
  if (most < kStep) return SampleSpan(job, y, part, sample);
  const std::int64_t count = most / kStep * kStep;
  auto* const row = job.destination.Row<std::uint8_t>(static_cast<std::size_t>(y));
  MixSpan(job, PointOf(job, from, y), count, row + from * 3);
  SampleSpan(job, y, {part.from, from}, sample);
  SampleSpan(job, y, {from + count, part.to}, sample);
}

// Asks for the source of a tile, some rows at a time: it comes from too many places for the processor
// to see what will be needed.
struct Ahead {
  const Resampling& job;
  Box box;
  std::int64_t next = 0;

  HWY_INLINE void Fetch(std::int64_t end) {
    constexpr std::int64_t kLine = 64;
    const std::int64_t from = std::max<std::int64_t>(box.x, 0) * 3;
    const std::int64_t to = std::min(box.x + box.width, job.sourceWidth) * 3;
    for (; next < end; ++next) {
      const std::int64_t y = std::clamp<std::int64_t>(box.y + next, 0, job.sourceHeight - 1);
      const auto* const row = job.source.Row<const std::uint8_t>(static_cast<std::size_t>(y));
      for (std::int64_t x = from; x < to; x += kLine) hwy::Prefetch(row + x);
    }
  }
};

void MixTile(const Resampling& job, const Band& band, const Span* cores, Span columns) {
  const Span following = {columns.to, std::min(columns.to + kTile, job.width)};
  const bool isLast = following.Length() <= 0;
  Ahead ahead = {job, isLast ? Box{} : BoxOf(job, following, {band.first, band.end})};
  for (std::int64_t y = band.first; y < band.end; ++y) {
    const std::int64_t row = y - band.first;
    ahead.Fetch(ahead.box.height * (row + 1) / (band.end - band.first));
    const Span part = band.InRow(y, columns);
    if (part.Length() > 0) MixRow(job, y, part, cores[row], band.inside[row]);
  }
}

void Colours(const Resampling& job) {
  if (!FitsWords(job, kTile)) return SampleAll(job, ColourPoint{job});
  ForEachBand(job, [&](const Band& band) HWY_ATTR {
    Span cores[kBandRows];
    for (std::int64_t y = band.first; y < band.end; ++y) {
      cores[y - band.first] = Core(job, y, band.inside[y - band.first]);
    }
    band.ForEachTile(kTile, [&](Span columns) HWY_ATTR { MixTile(job, band, cores, columns); });
  });
}

#else

void Colours(const Resampling& job) { SampleAll(job, ColourPoint{job}); }

#endif

}  // namespace
}  // namespace lx::geometry::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::geometry {

HWY_EXPORT(Colours);

void ResampleColours(const Resampling& job) { LX_CALL(job.path, Colours, job); }

}  // namespace lx::geometry
#endif
