// SPDX-License-Identifier: Apache-2.0
#include "foundation/scratch.h"
#include "geometry/resampling_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "geometry/bilinear_grey_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "geometry/walk-inl.h"

#ifndef LXPIC_GEOMETRY_BILINEAR_GREY_ONCE_
#define LXPIC_GEOMETRY_BILINEAR_GREY_ONCE_
namespace lx::geometry {

constexpr std::int64_t kTile = 64;  // columns and rows

}  // namespace lx::geometry
#endif

HWY_BEFORE_NAMESPACE();
namespace lx::geometry::HWY_NAMESPACE {

namespace {

void BytePoints(const Resampling& job) { SampleAll(job, BilinearPoint<std::uint8_t, 1>{job}); }
void WordPoints(const Resampling& job) { SampleAll(job, BilinearPoint<std::uint16_t, 1>{job}); }

#if LX_HAS_PAIR_PRODUCTS

// Two rows, alternating.
template <typename T>
HWY_INLINE void Zip(const std::uint8_t* a, const std::uint8_t* b, std::size_t count,
                    std::uint8_t* to) {
  const hn::Simd<T, 16 / sizeof(T), 0> d;
  constexpr std::size_t kBlock = 16 / sizeof(T);
  const auto zip = [=](std::size_t i) HWY_ATTR {
    const auto va = hn::LoadU(d, reinterpret_cast<const T*>(a) + i);
    const auto vb = hn::LoadU(d, reinterpret_cast<const T*>(b) + i);
    T* const cells = reinterpret_cast<T*>(to) + 2 * i;
    hn::StoreU(hn::InterleaveLower(d, va, vb), d, cells);
    hn::StoreU(hn::InterleaveUpper(d, va, vb), d, cells + kBlock);
  };
  std::size_t i = 0;
  for (; i + kBlock <= count; i += kBlock) zip(i);
  if (i < count && count >= kBlock) return zip(count - kBlock);
  for (; i < count; ++i) {
    std::memcpy(to + 2 * i * sizeof(T), a + i * sizeof(T), sizeof(T));
    std::memcpy(to + (2 * i + 1) * sizeof(T), b + i * sizeof(T), sizeof(T));
  }
}

// Every cell holds a pixel and the one below it, so that two neighbouring cells, which one load gets,
// are the four neighbours of a point. Pixels outside of the source are those at its edge.
template <typename T>
HWY_INLINE void FillCells(const Resampling& job, const Box& box, std::uint8_t* cells,
                          std::size_t pitch) {
  constexpr std::size_t kCell = 2 * sizeof(T);
  const auto row = [&job](std::int64_t y) HWY_ATTR {
    const auto inside = std::clamp<std::int64_t>(y, 0, job.sourceHeight - 1);
    return job.source.Row<const std::uint8_t>(static_cast<std::size_t>(inside));
  };
  const std::int64_t from = std::max<std::int64_t>(box.x, 0);
  const auto count = static_cast<std::size_t>(std::min(box.x + box.width, job.sourceWidth) - from);
  const bool isLeft = box.x < 0;
  const bool isRight = box.x + box.width > job.sourceWidth;
  for (std::int64_t r = 0; r < box.height; ++r) {
    const std::size_t skipped = static_cast<std::size_t>(from) * sizeof(T);
    std::uint8_t* const to = cells + static_cast<std::size_t>(r) * pitch;
    std::uint8_t* const inner = to + (isLeft ? kCell : 0);
    Zip<T>(row(box.y + r) + skipped, row(box.y + r + 1) + skipped, count, inner);
    if (isLeft) std::memcpy(to, inner, kCell);
    std::uint8_t* const end = inner + count * kCell;
    if (isRight) std::memcpy(end, end - kCell, kCell);
  }
}

// Cells in memory, and how points find theirs.
struct Cells {
  const std::uint8_t* data;
  ShortVector scale;  // bytes per cell and per row of cells
  WordVector last;    // no lane reads beyond this offset, not even one that is thrown away
  ShortVector mask;
};

HWY_INLINE Cells CellsAt(const Resampling& job, const std::uint8_t* data, std::size_t cell,
                         std::size_t pitch, std::int64_t rows) {
  const Words d;
  const auto scale = static_cast<std::int32_t>(pitch << 16 | cell);
  const auto last = static_cast<std::size_t>(rows) * pitch - 2 * cell;
  const auto mask = static_cast<std::int16_t>(FractionMask(job));
  return {data, hn::BitCast(Shorts(), hn::Set(d, scale)),
          hn::Set(d, static_cast<std::int32_t>(last)), hn::Set(Shorts(), mask)};
}

// Offsets of the cells of a row's points, in the order of the walk. They go through memory because
// that is the shortest way from lanes to addresses.
template <int kTurns>
HWY_INLINE void FindCells(const Cells& cells, Walk<kTurns> walk, std::size_t count,
                          std::int32_t* offsets) {
  const Shorts d;
  const hn::RebindToUnsigned<Words> whole;
  for (std::size_t i = 0; i < count; i += kTurns * hn::MaxLanes(Words())) {
    for (std::size_t turn = 0; turn < kTurns; ++turn) {
      if (turn > 0) walk.Next();
      const auto places =
          hn::OddEven(hn::BitCast(d, walk.y), hn::BitCast(d, hn::ShiftRight<16>(walk.x)));
      const auto offset = hn::BitCast(whole, PairProducts(places, cells.scale));
      hn::Store(hn::BitCast(Words(), hn::Min(offset, hn::BitCast(whole, cells.last))), Words(),
                offsets + i + turn * hn::MaxLanes(Words()));
    }
    walk.NextTurn();
  }
}

struct ByteCells {
  using Pixel = std::uint8_t;
  static constexpr std::size_t kStep = 4 * hn::MaxLanes(Words());

  static HWY_INLINE void Run(const Cells& cells, Step start, Step step, std::size_t count,
                             std::uint8_t* to) {
    HWY_ALIGN std::int32_t offsets[kTile + kStep];
    auto walk = WalkFrom<4>(start, step);
    FindCells(cells, walk, count, offsets);
    for (std::size_t i = 0; i < count; i += kStep) {
      WordVector mixed[4];
      for (std::size_t turn = 0; turn < 4; ++turn) {
        if (turn > 0) walk.Next();
        const auto four = WordsAt(Words(), cells.data, offsets + i + turn * kStep / 4);
        const auto fy = Fractions(walk.y, cells.mask);
        const auto pairs = WeightPairs(Fractions(walk.x, cells.mask));
        mixed[turn] = MixBytes(hn::BitCast(Octets(), four), fy, pairs);
      }
      walk.NextTurn();
      hn::StoreU(PackBytes(mixed), Octets(), to + i);
    }
  }
};

struct WordCells {
  using Pixel = std::uint16_t;
  static constexpr std::size_t kStep = 2 * hn::MaxLanes(Words());

  static HWY_INLINE auto Mix(const Cells& cells, const Walk<2>& walk, const std::int32_t* offsets) {
    const auto weights = WeightPairs(Fractions(walk.y, cells.mask));
    const auto left = MixWordPairs(WordsAt(Words(), cells.data, offsets), weights);
    const auto right = MixWordPairs(WordsAt(Words(), cells.data + 4, offsets), weights);
    const auto fx =
        hn::And(hn::BitCast(Words(), Fractions(walk.x, cells.mask)), hn::Set(Words(), 0xFFFF));
    return MixSums(left, right, fx);
  }

  static HWY_INLINE void Run(const Cells& cells, Step start, Step step, std::size_t count,
                             std::uint8_t* to) {
    HWY_ALIGN std::int32_t offsets[kTile + kStep];
    auto walk = WalkFrom<2>(start, step);
    FindCells(cells, walk, count, offsets);
    for (std::size_t i = 0; i < count; i += kStep) {
      const auto first = Mix(cells, walk, offsets + i);
      walk.Next();
      const auto second = Mix(cells, walk, offsets + i + kStep / 2);
      walk.NextTurn();
      hn::StoreU(hn::BitCast(Octets(), Pack(first, second)), Octets(), to + i * sizeof(Pixel));
    }
  }
};

template <class Rule>
void Tiles(const Resampling& job, std::uint8_t* scratch) {
  using Pixel = typename Rule::Pixel;
  constexpr auto kBytes = static_cast<std::int64_t>(sizeof(Pixel));
  ForEachTile(job, kTile, [&](const Band& band, Span columns) HWY_ATTR {
    const Box box = BoxOf(job, columns, {band.first, band.end});
    const std::size_t pitch = WholeVectors(static_cast<std::size_t>(box.width * kBytes * 2));
    FillCells<Pixel>(job, box, scratch, pitch);
    const Cells cells = CellsAt(job, scratch, sizeof(Pixel) * 2, pitch, box.height);
    const Step step = {static_cast<std::int32_t>(job.inverse.x.column),
                       static_cast<std::int32_t>(job.inverse.y.column)};
    HWY_ALIGN std::uint8_t end[(kTile + static_cast<std::int64_t>(Rule::kStep)) * kBytes];
    for (std::int64_t y = band.first; y < band.end; ++y) {
      const Span span = band.InRow(y, columns);
      if (span.Length() <= 0) continue;
      const Point point = PointOf(job, span.from, y);
      const Step start = {static_cast<std::int32_t>(point.x - (box.x + 1) * kOnePixel),
                          static_cast<std::int32_t>(point.y - (box.y + 1) * kOnePixel)};
      const auto count = static_cast<std::size_t>(span.Length());
      // What whole vectors write beyond a tile, the next one to the right writes again.
      const auto written =
          static_cast<std::int64_t>((count + Rule::kStep - 1) / Rule::kStep * Rule::kStep);
      const bool fits = span.from + written <= band.inside[y - band.first].to;
      std::uint8_t* const to =
          job.destination.Row<std::uint8_t>(static_cast<std::size_t>(y)) + span.from * kBytes;
      Rule::Run(cells, start, step, count, fits ? to : end);
      if (!fits) std::memcpy(to, end, count * sizeof(Pixel));
    }
  });
}

void ByteTiles(const Resampling& job, std::uint8_t* scratch) { Tiles<ByteCells>(job, scratch); }
void WordTiles(const Resampling& job, std::uint8_t* scratch) { Tiles<WordCells>(job, scratch); }

#else

void ByteTiles(const Resampling& job, std::uint8_t* /*scratch*/) { BytePoints(job); }
void WordTiles(const Resampling& job, std::uint8_t* /*scratch*/) { WordPoints(job); }

#endif

}  // namespace
}  // namespace lx::geometry::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::geometry {

HWY_EXPORT(ByteTiles);
HWY_EXPORT(WordTiles);
HWY_EXPORT(BytePoints);
HWY_EXPORT(WordPoints);

namespace {

// Cells of the largest box along one axis.
Int128 LargestBox(const FixedAxis& axis, std::int64_t size) {
  const auto magnitude = [](std::int64_t v) { return v < 0 ? -Int128{v} : Int128{v}; };
  const Int128 points = (magnitude(axis.column) + magnitude(axis.row)) * (kTile - 1);
  return std::min<Int128>(points / kOnePixel + 3, size + 2);
}

// Bytes for the boxes of all tiles; 0 when it takes longer to fill them than to fetch pixels one by
// one, or when they are too wide for offsets of 16 bits.
std::size_t TileBytes(const Resampling& job) {
  constexpr Int128 kMostCells = 65536;
  constexpr Int128 kLongest = 4096;
  const Int128 width = LargestBox(job.inverse.x, job.sourceWidth);
  const Int128 height = LargestBox(job.inverse.y, job.sourceHeight);
  if (width > kLongest || height > kLongest || width * height > kMostCells) return 0;
  const std::size_t rowBytes = WholeVectors(static_cast<std::size_t>(width) * 2 * job.pixelBytes);
  return rowBytes * static_cast<std::size_t>(height);
}

}  // namespace

void ResampleGrey(const Resampling& job) {
  const bool isByte = job.pixelBytes == 1;
  const std::size_t bytes = TileBytes(job);
  if (bytes == 0) {
    const auto kernel = isByte ? LX_KERNEL(job.path, BytePoints) : LX_KERNEL(job.path, WordPoints);
    return kernel(job);
  }
  const Scratch<std::uint8_t> scratch(bytes);
  if (!scratch) return;
  const auto kernel = isByte ? LX_KERNEL(job.path, ByteTiles) : LX_KERNEL(job.path, WordTiles);
  kernel(job, scratch.get());
}

}  // namespace lx::geometry
#endif
