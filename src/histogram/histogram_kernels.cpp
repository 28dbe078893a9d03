// SPDX-License-Identifier: Apache-2.0
#include "histogram/histogram_kernels.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "histogram/histogram_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/counting-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::histogram::HWY_NAMESPACE {
namespace {

using namespace lx::HWY_NAMESPACE;

using ByteTables = CountTables<8, 256>;

void Bytes(const Spans& spans, std::uint32_t* counts) {
  HWY_ALIGN std::uint32_t tables[ByteTables::kTables * ByteTables::kStride] = {};
  CountSpans<std::uint8_t, ByteTables>(spans, tables, [](std::size_t value) { return value; });
  JoinTables<ByteTables>(tables, counts, 256);
}

// Where every pixel has a bin.
struct BinOfAny {
  unsigned shift;

  HWY_INLINE std::size_t operator()(std::size_t value) const { return value >> shift; }
};

struct BinOfSome {
  Binning binning;

  HWY_INLINE std::size_t operator()(std::size_t value) const {
    const std::size_t index = value >> binning.shift;
    return index <= binning.last ? index : binning.beyond;
  }
};

// The most bins of which several tables are kept: four fill half of a first-level cache.
constexpr std::size_t kFewBins = 1024;
using FewTables = CountTables<4, kFewBins>;
// Pixels seldom meet in one of many bins, and more tables would not stay in the cache.
using OneTable = CountTables<1, 0>;

template <typename T, class Bin>
void CountInto(const Spans& spans, const Bin& bin, std::uint32_t* counts, std::size_t places) {
  if (places > kFewBins) {
    std::fill_n(counts, places, 0U);
    CountSpans<T, OneTable>(spans, counts, bin);
    return;
  }
  HWY_ALIGN std::uint32_t tables[FewTables::kTables * FewTables::kStride] = {};
  CountSpans<T, FewTables>(spans, tables, bin);
  JoinTables<FewTables>(tables, counts, places);
}

template <typename T>
void Count(const Spans& spans, const Binning& binning, std::uint32_t* counts) {
  const std::size_t places = std::size_t{std::max(binning.last, binning.beyond)} + 1;
  if (std::uint64_t{static_cast<T>(-1)} >> binning.shift == binning.last) {
    CountInto<T>(spans, BinOfAny{binning.shift}, counts, places);
  } else {
    CountInto<T>(spans, BinOfSome{binning}, counts, places);
  }
}

void Words(const Spans& spans, const Binning& binning, std::uint32_t* counts) {
  Count<std::uint16_t>(spans, binning, counts);
}

void Longs(const Spans& spans, const Binning& binning, std::uint32_t* counts) {
  Count<std::uint32_t>(spans, binning, counts);
}

}  // namespace
}  // namespace lx::histogram::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::histogram {

HWY_EXPORT(Bytes);
HWY_EXPORT(Words);
HWY_EXPORT(Longs);

void CountBytes(const Spans& spans, std::uint32_t* counts) {
  LX_CALL(spans.GetPath(), Bytes, spans, counts);
}

void CountWords(const Spans& spans, const Binning& binning, std::uint32_t* counts) {
  LX_CALL(spans.GetPath(), Words, spans, binning, counts);
}

void CountLongs(const Spans& spans, const Binning& binning, std::uint32_t* counts) {
  LX_CALL(spans.GetPath(), Longs, spans, binning, counts);
}

}  // namespace lx::histogram
#endif
