// SPDX-License-Identifier: Apache-2.0
#include "measure/projection_kernels.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "measure/projection_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/block_sums-inl.h"
#include "foundation/colour_pixels-inl.h"
#include "foundation/column_sums-inl.h"
#include "foundation/image_sums-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::measure::HWY_NAMESPACE {
namespace {

using namespace lx::HWY_NAMESPACE;

void ByteColumns(const Projection& p, std::uint8_t* scratch, std::uint64_t* columns) {
  const std::size_t half = WholeVectors(2 * p.elements / kHalves) + kLargestVector;
  ColumnSums<std::uint16_t> sums;
  for (std::size_t h = 0; h < kHalves; ++h) {
    sums.half[h] = reinterpret_cast<std::uint16_t*>(scratch + h * half);
  }
  std::fill_n(columns, p.elements, std::uint64_t{0});
  for (std::size_t y = 0; y < p.rows;) {
    const std::size_t end = y + std::min(p.rows - y, kByteRows);
    std::memset(scratch, 0, kHalves * half);
    for (; y + 16 <= end; y += 16) AddByteRows<16>(p.source, y, p.elements, sums);
    for (; y + 4 <= end; y += 4) AddByteRows<4>(p.source, y, p.elements, sums);
    for (; y < end; ++y) AddByteRows<1>(p.source, y, p.elements, sums);
    SpillByteRows(sums, p.elements, columns);
  }
}

// 65536 words at most fit lanes of 32 bits.
constexpr std::size_t kFewWords = 65536;

void WordColumns(const Projection& p, std::uint8_t* scratch, std::uint64_t* columns) {
  auto* const sums = reinterpret_cast<std::uint32_t*>(scratch);
  std::fill_n(columns, p.elements, std::uint64_t{0});
  for (std::size_t y = 0; y < p.rows; y += kFewWords) {
    const std::size_t end = y + std::min(p.rows - y, kFewWords);
    SumBlockOfRows<std::uint16_t>(p.source, y, end, p.elements, sums);
    for (std::size_t x = 0; x < p.elements; ++x) columns[x] += sums[x];
  }
}

void ByteRows(const Projection& p, std::uint64_t* sums) {
  for (std::size_t y = 0; y < p.rows; ++y) {
    sums[y] = ReduceRow<Sum<std::uint8_t>>(p.source.Row<const std::uint8_t>(y), p.elements);
  }
}

void WordRows(const Projection& p, std::uint64_t* sums) {
  for (std::size_t y = 0; y < p.rows; ++y) {
    sums[y] = ReduceRow<Sum<std::uint16_t>>(p.source.Row<const std::uint16_t>(y), p.elements);
  }
}

void SumColourRow(const std::uint8_t* row, std::size_t bytes, std::uint64_t* sums) {
  const hn::ScalableTag<std::uint8_t> d;
  const std::size_t vector = 3 * hn::Lanes(d);
  Sum<std::uint8_t> c[3];
  std::size_t x = 0;
  for (; x + vector <= bytes; x += vector) {
    auto c0 = hn::Zero(d);
    auto c1 = c0;
    auto c2 = c0;
    LoadColour(d, row + x, c0, c1, c2);
    c[0].Add(d, c0);
    c[1].Add(d, c1);
    c[2].Add(d, c2);
  }
  for (std::size_t k = 0; k < 3; ++k) sums[k] = c[k].Result();
  for (; x < bytes; x += 3) {
    for (std::size_t k = 0; k < 3; ++k) sums[k] += row[x + k];
  }
}

void ColourRows(const Projection& p, std::uint64_t* sums) {
  for (std::size_t y = 0; y < p.rows; ++y) {
    SumColourRow(p.source.Row<const std::uint8_t>(y), p.elements, sums + 3 * y);
  }
}

}  // namespace
}  // namespace lx::measure::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::measure {

HWY_EXPORT(ByteColumns);
HWY_EXPORT(WordColumns);
HWY_EXPORT(ByteRows);
HWY_EXPORT(WordRows);
HWY_EXPORT(ColourRows);

void SumByteColumns(const Projection& projection, std::uint8_t* scratch, std::uint64_t* columns) {
  LX_CALL(projection.path, ByteColumns, projection, scratch, columns);
}

void SumWordColumns(const Projection& projection, std::uint8_t* scratch, std::uint64_t* columns) {
  LX_CALL(projection.path, WordColumns, projection, scratch, columns);
}

void SumByteRows(const Projection& projection, std::uint64_t* sums) {
  LX_CALL(projection.path, ByteRows, projection, sums);
}

void SumWordRows(const Projection& projection, std::uint64_t* sums) {
  LX_CALL(projection.path, WordRows, projection, sums);
}

void SumColourRows(const Projection& projection, std::uint64_t* sums) {
  LX_CALL(projection.path, ColourRows, projection, sums);
}

}  // namespace lx::measure
#endif
