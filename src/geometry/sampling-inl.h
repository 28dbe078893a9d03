// SPDX-License-Identifier: Apache-2.0
// Single source points, and the walk over a destination in bands of rows. Included once for each
// instruction set.

#if defined(LXPIC_GEOMETRY_SAMPLING_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_GEOMETRY_SAMPLING_INL_H_
#undef LXPIC_GEOMETRY_SAMPLING_INL_H_
#else
#define LXPIC_GEOMETRY_SAMPLING_INL_H_
#endif

#include "foundation/gather-inl.h"
#include "geometry/resampling_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace lx::geometry::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

// The bits of a fraction that weigh, as a part of 256: weights of four bits are multiples of 16.
HWY_INLINE std::uint32_t FractionMask(const Resampling& job) { return job.bits == 8 ? 255 : 240; }

HWY_INLINE std::uint32_t Fraction(std::int64_t coordinate, std::uint32_t mask) {
  return static_cast<std::uint32_t>(coordinate >> 8) & mask;
}

// The nearest pixel to a point inside the source.
template <std::size_t kBytes>
struct NearestPoint {
  static constexpr std::size_t kPixelBytes = kBytes;

  const Resampling& job;

  HWY_INLINE void operator()(std::int64_t x, std::int64_t y, std::uint8_t* to) const {
    const auto* const row = job.source.Row<const std::uint8_t>(static_cast<std::size_t>(y >> 16));
    std::memcpy(to, row + (x >> 16) * static_cast<std::int64_t>(kBytes), kBytes);
  }
};

// Between four pixels. Those beyond an edge are those on it, so that half a pixel inside the border
// the edge pixels stand alone: weights add up to 256 each way, and nothing is rounded but the end.
template <typename T, std::size_t kComponents>
struct BilinearPoint {
  static constexpr std::size_t kPixelBytes = sizeof(T) * kComponents;

  const Resampling& job;

  HWY_INLINE void operator()(std::int64_t x, std::int64_t y, std::uint8_t* to) const {
    const std::uint32_t mask = FractionMask(job);
    const std::uint32_t fx = Fraction(x, mask);
    const std::uint32_t fy = Fraction(y, mask);
    const auto* const above = RowAt((y >> 16) - 1);
    const auto* const below = RowAt(y >> 16);
    const std::int64_t left = ColumnAt((x >> 16) - 1);
    const std::int64_t right = ColumnAt(x >> 16);
    for (std::size_t c = 0; c < kPixelBytes; c += sizeof(T)) {
      const auto between = [=](const std::uint8_t* row) HWY_ATTR {
        return (256 - fx) * ValueAt<T>(row + left + c) + fx * ValueAt<T>(row + right + c);
      };
      const auto value = static_cast<T>(((256 - fy) * between(above) + fy * between(below)) >> 16);
      std::memcpy(to + c, &value, sizeof(T));
    }
  }

 private:
  HWY_INLINE const std::uint8_t* RowAt(std::int64_t y) const {
    const auto row = std::clamp<std::int64_t>(y, 0, job.sourceHeight - 1);
    return job.source.Row<const std::uint8_t>(static_cast<std::size_t>(row));
  }
  HWY_INLINE std::int64_t ColumnAt(std::int64_t x) const {
    return std::clamp<std::int64_t>(x, 0, job.sourceWidth - 1) *
           static_cast<std::int64_t>(kPixelBytes);
  }
};

// The source point of a pixel whose point is inside.
struct Point {
  std::int64_t x;
  std::int64_t y;
};

HWY_INLINE Point PointOf(const Resampling& job, std::int64_t x, std::int64_t y) {
  return {static_cast<std::int64_t>(job.inverse.x.At(x, y)),
          static_cast<std::int64_t>(job.inverse.y.At(x, y))};
}

// Pixels of row `y`, one by one.
template <class Sample>
HWY_INLINE void SampleSpan(const Resampling& job, std::int64_t y, Span span, const Sample& sample) {
  if (span.Length() <= 0) return;
  constexpr auto kBytes = static_cast<std::int64_t>(Sample::kPixelBytes);
  auto* const row = job.destination.Row<std::uint8_t>(static_cast<std::size_t>(y));
  Point point = PointOf(job, span.from, y);
  for (std::int64_t x = span.from; x < span.to; ++x) {
    sample(point.x, point.y, row + x * kBytes);
    if (x + 1 == span.to) break;  // the next point may be far outside
    point.x += job.inverse.x.column;
    point.y += job.inverse.y.column;
  }
}

// Sets what lies outside of `inside` to 0.
HWY_INLINE void ClearOutside(const Resampling& job, std::int64_t y, Span inside) {
  auto* const row = job.destination.Row<std::uint8_t>(static_cast<std::size_t>(y));
  const auto at = [&job](std::int64_t x)
                      HWY_ATTR { return static_cast<std::size_t>(x) * job.pixelBytes; };
  std::memset(row, 0, at(inside.from));
  std::memset(row + at(inside.to), 0, at(job.width - inside.to));
}

// The whole destination one by one.
template <class Sample>
void SampleAll(const Resampling& job, const Sample& sample) {
  for (std::int64_t y = 0; y < job.height; ++y) {
    const Span inside = job.Inside(y);
    ClearOutside(job, y, inside);
    SampleSpan(job, y, inside, sample);
  }
}

inline constexpr std::int64_t kBandRows = 64;

// Some rows of a destination, and the columns of each that lie in the source.
struct Band {
  std::int64_t first;
  std::int64_t end;
  Span inside[kBandRows];

  HWY_INLINE Span InRow(std::int64_t y, Span columns) const {
    const Span& row = inside[y - first];
    return {std::max(row.from, columns.from), std::min(row.to, columns.to)};
  }

  // Calls work(columns) for tiles from the left to the right that cover all that is inside.
  template <class Work>
  HWY_INLINE void ForEachTile(std::int64_t width, const Work& work) const {
    Span all = {INT64_MAX, INT64_MIN};
    for (std::int64_t y = first; y < end; ++y) {
      const Span& row = inside[y - first];
      if (row.Length() > 0) all = {std::min(all.from, row.from), std::max(all.to, row.to)};
    }
    for (std::int64_t x = all.from; x < all.to; x += width) {
      work(Span{x, std::min(x + width, all.to)});
    }
  }
};

// Calls work(band) for all rows of the destination, and clears what lies outside. Neighbouring rows
// of a tile have neighbouring sources, which stay in the cache.
template <class Work>
void ForEachBand(const Resampling& job, const Work& work) {
  Band band;
  for (band.first = 0; band.first < job.height; band.first = band.end) {
    band.end = std::min(band.first + kBandRows, job.height);
    for (std::int64_t y = band.first; y < band.end; ++y) {
      const Span inside = job.Inside(y);
      band.inside[y - band.first] = inside;
      ClearOutside(job, y, inside);
    }
    work(band);
  }
}

// ForEachBand() with the tiles of each band: work(band, columns).
template <class Work>
void ForEachTile(const Resampling& job, std::int64_t width, const Work& work) {
  ForEachBand(job, [&](const Band& band) HWY_ATTR {
    band.ForEachTile(width, [&](Span columns) HWY_ATTR { work(band, columns); });
  });
}

// The upper left ones of the four neighbours of a tile's points, and one more column.
struct Box {
  std::int64_t x;  // of the source, -1 where it is left of it
  std::int64_t y;
  std::int64_t width;
  std::int64_t height;
};

// First and number of the upper or left neighbours of a tile.
HWY_INLINE void Bound(const FixedAxis& axis, Span columns, Span rows, std::int64_t size,
                      std::int64_t& first, std::int64_t& count) {
  const Int128 start = axis.At(columns.from, rows.from);
  const Int128 across = Int128{axis.column} * (columns.Length() - 1);
  const Int128 down = Int128{axis.row} * (rows.Length() - 1);
  const auto place = [size](Int128 at) HWY_ATTR {
    return static_cast<std::int64_t>(std::clamp<Int128>((at >> 16) - 1, -1, size - 1));
  };
  first = place(start + std::min<Int128>(across, 0) + std::min<Int128>(down, 0));
  const auto last = place(start + std::max<Int128>(across, 0) + std::max<Int128>(down, 0));
  count = last - first + 1;
}

HWY_INLINE Box BoxOf(const Resampling& job, Span columns, Span rows) {
  Box box;
  Bound(job.inverse.x, columns, rows, job.sourceWidth, box.x, box.width);
  Bound(job.inverse.y, columns, rows, job.sourceHeight, box.y, box.height);
  ++box.width;  // the neighbour of the last one
  return box;
}

// Whether offsets from the start of a walk over `columns` pixels fit 32 bits: coordinates that many
// pixels on, and the bytes between them.
HWY_INLINE bool FitsWords(const Resampling& job, std::int64_t columns) {
  constexpr std::int64_t kLongest = INT32_MAX / 2;
  const Int128 across = Int128{columns} * job.inverse.x.column;
  const Int128 down = Int128{columns} * job.inverse.y.column;
  const auto within = [](Int128 v) HWY_ATTR { return v > -kLongest && v < kLongest; };
  const Int128 bytes = ((down < 0 ? -down : down) / kOnePixel + 2) * job.source.pitch;
  return within(across) && within(down) && within(bytes);
}

using Words = hn::ScalableTag<std::int32_t>;

// Offsets of the nearest pixels to `count` points, from that of the first point; whole vectors of
// them are written. Coordinates are 32-bit ones from there on, and cannot leave them.
template <std::size_t kBytes>
HWY_INLINE void MakeOffsets(const Resampling& job, Point start, std::size_t count,
                            std::int32_t* offsets) {
  const Words d;
  const auto walk = [d](std::int64_t from, std::int64_t step) HWY_ATTR {
    const auto fraction = hn::Set(d, static_cast<std::int32_t>(from & (kOnePixel - 1)));
    return hn::Add(fraction, hn::Mul(hn::Iota(d, 0), hn::Set(d, static_cast<std::int32_t>(step))));
  };
  const auto stride = [d](std::int64_t step) HWY_ATTR {
    return hn::Set(d, static_cast<std::int32_t>(step * static_cast<std::int64_t>(hn::Lanes(d))));
  };
  const auto pitch = hn::Set(d, static_cast<std::int32_t>(job.source.pitch));
  auto x = walk(start.x, job.inverse.x.column);
  auto y = walk(start.y, job.inverse.y.column);
  const auto right = stride(job.inverse.x.column);
  const auto down = stride(job.inverse.y.column);
  for (std::size_t i = 0; i < count; i += hn::Lanes(d)) {
    auto column = hn::ShiftRight<16>(x);
    if constexpr (kBytes == 2) column = hn::Add(column, column);
    if constexpr (kBytes == 3) column = hn::Add(column, hn::Add(column, column));
    hn::Store(hn::Add(hn::Mul(hn::ShiftRight<16>(y), pitch), column), d, offsets + i);
    x = hn::Add(x, right);
    y = hn::Add(y, down);
  }
}

}  // namespace lx::geometry::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_GEOMETRY_SAMPLING_INL_H_
