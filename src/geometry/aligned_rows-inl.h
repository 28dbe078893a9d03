// SPDX-License-Identifier: Apache-2.0
// Rows that are mixed from left to right, and pairs of them from top to bottom. Included once for
// each instruction set.

#if defined(LXPIC_GEOMETRY_ALIGNED_ROWS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_GEOMETRY_ALIGNED_ROWS_INL_H_
#undef LXPIC_GEOMETRY_ALIGNED_ROWS_INL_H_
#else
#define LXPIC_GEOMETRY_ALIGNED_ROWS_INL_H_
#endif

#include "geometry/aligned_plan.h"
#include "geometry/walk-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::geometry::HWY_NAMESPACE {

// Calls work(y coordinate, pixels) for the rows whose points lie in the source, with their first
// pixel inside, and clears all else.
template <class Work>
void ForEachAlignedRow(const Resampling& job, const AlignedPlan& plan, const Work& work) {
  const std::int64_t margin = job.Margin();
  const FixedAxis& axis = job.inverse.y;
  const Span rows =
      Cut({0, job.height}, axis.origin, axis.row, margin, job.sourceHeight * kOnePixel + margin);
  const auto skipped = static_cast<std::size_t>(plan.columns.from) * job.pixelBytes;
  for (std::int64_t y = 0; y < job.height; ++y) {
    const bool isInside = y >= rows.from && y < rows.to && plan.Count() > 0;
    ClearOutside(job, y, isInside ? plan.columns : Span{});
    if (!isInside) continue;
    auto* const row = job.destination.Row<std::uint8_t>(static_cast<std::size_t>(y));
    work(static_cast<std::int64_t>(axis.Start(y)), row + skipped);
  }
}

#if LX_HAS_PAIR_PRODUCTS

// The columns of a source row that a plan needs, those beyond its ends as at its ends.
HWY_INLINE void LoadLine(const Resampling& job, const AlignedPlan& plan, std::int64_t y,
                         std::uint8_t* line) {
  const auto* const row = job.source.Row<const std::uint8_t>(static_cast<std::size_t>(y));
  const std::int64_t from = std::max<std::int64_t>(plan.first, 0);
  const std::int64_t to = std::min(plan.first + plan.length, job.sourceWidth);
  const auto bytes = [&job](std::int64_t pixels)
                         HWY_ATTR { return static_cast<std::size_t>(pixels) * job.pixelBytes; };
  std::uint8_t* const inner = line + bytes(from - plan.first);
  std::memcpy(inner, row + bytes(from), bytes(to - from));
  if (from > plan.first) std::memcpy(line, inner, job.pixelBytes);
  if (to < plan.first + plan.length) {
    std::uint8_t* const end = inner + bytes(to - from);
    std::memcpy(end, end - job.pixelBytes, job.pixelBytes);
  }
}

// How the columns of a row are mixed: all alike, or each from its offset with its own weights.
struct AlignedColumns {
  const std::int32_t* offsets;  // null when all columns lie one after the other
  const std::int32_t* weights;  // 256 - f, and f in the upper half
  std::size_t count;
  std::uint32_t fraction;  // of all columns
};

template <class Rule>
HWY_INLINE AlignedColumns MakeColumns(const Resampling& job, const AlignedPlan& plan,
                                      const AlignedLayout& layout, std::uint8_t* scratch) {
  auto* const offsets = reinterpret_cast<std::int32_t*>(scratch + layout.Offsets());
  auto* const weights = reinterpret_cast<std::int32_t*>(scratch + layout.Weights());
  const std::uint32_t mask = FractionMask(job);
  const std::int64_t step = job.inverse.x.column;
  const auto fraction = [&](std::int64_t x) HWY_ATTR {
    return Fraction(static_cast<std::int64_t>(job.inverse.x.At(x, 0)), mask);
  };
  const std::size_t count = plan.Count();
  if (count == 0) return {nullptr, nullptr, 0, 0};
  if (step == kOnePixel) return {nullptr, nullptr, count, fraction(plan.columns.from)};
  // What fills the last vectors lies at the first column.
  std::fill(offsets, weights, 0);
  std::fill(weights, weights + (weights - offsets), 0);
  for (std::size_t i = 0; i < count; ++i) {
    const std::int64_t x = plan.columns.from + static_cast<std::int64_t>(i);
    const std::int64_t place = AlignedPlan::Place(job, x) - plan.first;
    const std::uint32_t f = fraction(x);
    offsets[Rule::Slot(i)] =
        static_cast<std::int32_t>(place * static_cast<std::int64_t>(job.pixelBytes));
    weights[Rule::Slot(i)] = static_cast<std::int32_t>(256 - f + (f << 16));
  }
  return {offsets, weights, count, 0};
}

HWY_INLINE ShortVector WeightsOf(std::uint32_t fraction) {
  return hn::BitCast(
      Shorts(), hn::Set(Words(), static_cast<std::int32_t>(256 - fraction + (fraction << 16))));
}

// Two rows of sums of bytes, less 2^15, mixed to `count` bytes.
HWY_INLINE void MixByteRows(const std::int16_t* above, const std::int16_t* below,
                            std::uint32_t fraction, std::size_t count, std::uint8_t* to) {
  const Shorts d;
  const hn::Rebind<std::uint8_t, Shorts> narrow;
  const auto weights = WeightsOf(fraction);
  ForEachVector(narrow, count, [&](std::size_t x, auto access) HWY_ATTR {
    const auto a = hn::Load(d, above + x);
    const auto b = hn::Load(d, below + x);
    const auto low = hn::ShiftRight<16>(PairProducts(hn::InterleaveLower(d, a, b), weights));
    const auto high = hn::ShiftRight<16>(PairProducts(hn::InterleaveUpper(d, a, b), weights));
    const auto mixed = hn::Add(hn::ReorderDemote2To(d, low, high), hn::Set(d, 128));
    access.Store(narrow, hn::DemoteTo(narrow, mixed), to + x);
  });
}

// Neighbours `distance` bytes apart, mixed alike: 256 a + f (b - a), less 2^15.
HWY_INLINE void MixShiftedBytes(const std::uint8_t* line, std::size_t distance,
                                std::uint32_t fraction, std::size_t count, std::int16_t* to) {
  const Shorts d;
  const hn::Rebind<std::uint8_t, Shorts> narrow;
  const auto f = hn::Set(d, static_cast<std::int16_t>(fraction));
  const auto lowest = hn::Set(d, INT16_MIN);
  for (std::size_t x = 0; x < count; x += hn::Lanes(d)) {
    const auto a = hn::PromoteTo(d, hn::LoadU(narrow, line + x));
    const auto b = hn::PromoteTo(d, hn::LoadU(narrow, line + x + distance));
    const auto first = hn::Xor(hn::ShiftLeft<8>(a), lowest);
    hn::Store(hn::Add(first, hn::Mul(f, hn::Sub(b, a))), d, to + x);
  }
}

struct ByteRule {
  using Sum = std::int16_t;
  static constexpr std::size_t kLanes = hn::MaxLanes(Words());

  // Blocks of four columns go to two vectors in turn, which a pack joins in order.
  static HWY_INLINE std::size_t Slot(std::size_t i) {
    const std::size_t in = i % (2 * kLanes);
    return i - in + in / 4 % 2 * kLanes + in / 8 * 4 + in % 4;
  }

  static HWY_INLINE WordVector Mix(const AlignedColumns& columns, const std::uint8_t* line,
                                   std::size_t i) {
    alignas(16) static constexpr std::uint8_t kPairs[16] = {0, 0x80, 1, 0x80, 4,  0x80, 5,  0x80,
                                                            8, 0x80, 9, 0x80, 12, 0x80, 13, 0x80};
    const Octets bytes;
    const auto words = WordsAt(Words(), line, columns.offsets + i);
    const auto pairs =
        hn::TableLookupBytesOr0(hn::BitCast(bytes, words), hn::LoadDup128(bytes, kPairs));
    const auto weights = hn::BitCast(Shorts(), hn::Load(Words(), columns.weights + i));
    const auto sums = PairProducts(hn::BitCast(Shorts(), pairs), weights);
    return hn::Add(sums, hn::Set(Words(), INT16_MIN));
  }

  static HWY_INLINE void Across(const AlignedColumns& columns, const std::uint8_t* line, Sum* to) {
    if (columns.offsets == nullptr) {
      return MixShiftedBytes(line, 1, columns.fraction, columns.count, to);
    }
    for (std::size_t i = 0; i < columns.count; i += 2 * kLanes) {
      const auto low = Mix(columns, line, i);
      const auto high = Mix(columns, line, i + kLanes);
      hn::Store(hn::ReorderDemote2To(Shorts(), low, high), Shorts(), to + i);
    }
  }

  static HWY_INLINE void Down(const Sum* above, const Sum* below, std::uint32_t fraction,
                              std::size_t count, std::uint8_t* to) {
    MixByteRows(above, below, fraction, count, to);
  }
};

struct ColourRule {
  using Sum = std::int16_t;
  using Block = hn::Simd<std::uint8_t, 16, 0>;

  static HWY_INLINE std::size_t Slot(std::size_t i) { return i; }

  // Components of a pixel, less 2^15, and one more.
  static HWY_INLINE auto Mix(const AlignedColumns& columns, const std::uint8_t* line,
                             std::size_t i) {
    alignas(16) static constexpr std::uint8_t kPairs[16] = {
        0, 0x80, 3, 0x80, 1, 0x80, 4, 0x80, 2, 0x80, 5, 0x80, 0x80, 0x80, 0x80, 0x80};
    const Block d;
    const hn::Half<Block> half;
    const hn::Repartition<std::int16_t, Block> shorts;
    const hn::Repartition<std::int32_t, Block> words;
    const auto two = hn::ZeroExtendVector(d, hn::LoadU(half, line + columns.offsets[i]));
    const auto pairs = hn::TableLookupBytesOr0(two, hn::Load(d, kPairs));
    const auto weights = hn::BitCast(shorts, hn::Set(words, columns.weights[i]));
    const auto sums = PairProducts(hn::BitCast(shorts, pairs), weights);
    return hn::Add(sums, hn::Set(words, INT16_MIN));
  }

  static HWY_INLINE void Across(const AlignedColumns& columns, const std::uint8_t* line, Sum* to) {
    if (columns.offsets == nullptr) {
      return MixShiftedBytes(line, 3, columns.fraction, 3 * columns.count, to);
    }
    alignas(16) static constexpr std::uint8_t kClose[16] = {0,  1,  2,  3,  4,    5,    8,    9,
                                                            10, 11, 12, 13, 0x80, 0x80, 0x80, 0x80};
    const Block d;
    const hn::Repartition<std::int16_t, Block> shorts;
    for (std::size_t i = 0; i < columns.count; i += 2) {
      const auto sums =
          hn::ReorderDemote2To(shorts, Mix(columns, line, i), Mix(columns, line, i + 1));
      const auto close = hn::TableLookupBytesOr0(hn::BitCast(d, sums), hn::Load(d, kClose));
      hn::StoreU(hn::BitCast(shorts, close), shorts, to + 3 * i);
    }
  }

  static HWY_INLINE void Down(const Sum* above, const Sum* below, std::uint32_t fraction,
                              std::size_t count, std::uint8_t* to) {
    MixByteRows(above, below, fraction, 3 * count, to);
  }
};

struct WordRule {
  using Sum = std::int32_t;
  static constexpr std::size_t kLanes = hn::MaxLanes(Words());

  static HWY_INLINE std::size_t Slot(std::size_t i) { return i; }

  static HWY_INLINE void Across(const AlignedColumns& columns, const std::uint8_t* line, Sum* to) {
    const Words d;
    const hn::Rebind<std::uint16_t, Words> narrow;
    if (columns.offsets != nullptr) {
      for (std::size_t i = 0; i < columns.count; i += kLanes) {
        const auto weights = hn::BitCast(Shorts(), hn::Load(d, columns.weights + i));
        hn::Store(MixWordPairs(WordsAt(d, line, columns.offsets + i), weights), d, to + i);
      }
      return;
    }
    const auto* const pixels = reinterpret_cast<const std::uint16_t*>(line);
    const auto f = hn::Set(d, static_cast<std::int32_t>(columns.fraction));
    for (std::size_t i = 0; i < columns.count; i += kLanes) {
      const auto a = hn::PromoteTo(d, hn::LoadU(narrow, pixels + i));
      const auto b = hn::PromoteTo(d, hn::LoadU(narrow, pixels + i + 1));
      const auto sum = hn::Add(hn::ShiftLeft<8>(a), hn::Mul(f, hn::Sub(b, a)));
      hn::Store(hn::Sub(sum, hn::Set(d, 1 << 23)), d, to + i);
    }
  }

  static HWY_INLINE void Down(const Sum* above, const Sum* below, std::uint32_t fraction,
                              std::size_t count, std::uint8_t* to) {
    const Words d;
    const hn::Rebind<std::uint16_t, Words> narrow;
    const auto f = hn::Set(d, static_cast<std::int32_t>(fraction));
    ForEachVector(narrow, count, [&](std::size_t x, auto access) HWY_ATTR {
      const auto mixed = MixSums(hn::Load(d, above + x), hn::Load(d, below + x), f);
      access.Store(narrow, hn::DemoteTo(narrow, hn::BitCast(d, mixed)),
                   reinterpret_cast<std::uint16_t*>(to) + x);
    });
  }
};

#endif  // LX_HAS_PAIR_PRODUCTS

}  // namespace lx::geometry::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_GEOMETRY_ALIGNED_ROWS_INL_H_
