// SPDX-License-Identifier: Apache-2.0
#include "point/lut_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "point/lut_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/byte_table-inl.h"
#include "foundation/colour_pixels-inl.h"
#include "foundation/pixel_map-inl.h"
#include "foundation/wide-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::point::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

void Bytes(const PixelMap& map, const std::uint8_t* table) {
  MapOne<std::uint8_t>(map, ByteTable(table));
}

void Components(const PixelMap& map, const ByteTableData (&tables)[3]) {
  const hn::ScalableTag<std::uint8_t> d;
  const ByteTable table0(tables[0]);
  const ByteTable table1(tables[1]);
  const ByteTable table2(tables[2]);
  for (std::size_t y = 0; y < map.height; ++y) {
    const std::uint8_t* const from = map.sources[0].Row<const std::uint8_t>(y);
    std::uint8_t* const to = map.destination.Row<std::uint8_t>(y);
    ForEachColour(d, map.width, [&](std::size_t x, auto, auto colour) HWY_ATTR {
      hn::Vec<decltype(d)> c0, c1, c2;
      colour.Load(d, from + 3 * x, c0, c1, c2);
      colour.Store(d, table0(d, c0), table1(d, c1), table2(d, c2), to + 3 * x);
    });
  }
}

// Sixteen-bit indices in tables of up to 256 entries go through the byte table.
void FewBits(const PixelMap& map, const std::uint8_t* table, unsigned shift, unsigned mask) {
  const hn::ScalableTag<std::uint16_t> words;
  const hn::Rebind<std::uint8_t, decltype(words)> bytes;
  const ByteTable entries(table);
  const auto low = hn::Set(words, static_cast<std::uint16_t>(mask));
  for (std::size_t y = 0; y < map.height; ++y) {
    const std::uint16_t* const from = map.sources[0].Row<const std::uint16_t>(y);
    std::uint8_t* const to = map.destination.Row<std::uint8_t>(y);
    ForEachVector(words, map.width, [&](std::size_t x, auto access) HWY_ATTR {
      const auto pixels = hn::ShiftRightSame(access.Load(words, from + x), static_cast<int>(shift));
      access.Store(bytes, entries(bytes, Narrow(bytes, hn::And(pixels, low))), to + x);
    });
  }
}

}  // namespace
}  // namespace lx::point::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::point {

HWY_EXPORT(Bytes);
HWY_EXPORT(Components);
HWY_EXPORT(FewBits);

namespace {

// Large tables are read pixel by pixel on every path: there is nothing wider than a load.
template <typename To, class Index>
void LookUpEach(const PixelMap& map, const To* table, Index index) {
  MapEach<std::uint16_t, To>(map, [&](std::uint16_t pixel, std::size_t) {
    To entry;
    std::memcpy(&entry, table + index(pixel), sizeof(To));
    return entry;
  });
}

}  // namespace

void LookUpBytes(const PixelMap& map, const std::uint8_t* table) {
  LX_CALL(map.path, Bytes, map, table);
}

void LookUpComponents(const PixelMap& map, const ByteTableData (&tables)[3]) {
  LX_CALL(map.path, Components, map, tables);
}

void LookUpWords(const PixelMap& map, const std::uint16_t* table) {
  LookUpEach(map, table, [](unsigned pixel) { return pixel; });
}

void LookUpBits(const PixelMap& map, const std::uint8_t* table, unsigned shift, unsigned mask) {
  if (mask < 256) {
    // The byte table reads 256 entries; the index never passes the mask.
    ByteTableData padded = {};
    std::memcpy(padded, table, mask + 1);
    LX_CALL(map.path, FewBits, map, padded, shift, mask);
    return;
  }
  LookUpEach(map, table, [shift, mask](unsigned pixel) { return (pixel >> shift) & mask; });
}

}  // namespace lx::point
#endif
