// SPDX-License-Identifier: Apache-2.0
#include "point/copy_rows.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "point/copy_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/pixel_map-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::point::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

void Bytes(const PixelMap& map) { MapFill<std::uint8_t>(map); }
void Words(const PixelMap& map) { MapFill<std::uint16_t>(map); }

}  // namespace
}  // namespace lx::point::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::point {

HWY_EXPORT(Bytes);
HWY_EXPORT(Words);

namespace {

// memmove() writes past the caches what it takes to be too large for them, at a size that is too
// small for one thread on a processor of many. Pieces stay below it, up to what no cache holds.
constexpr std::size_t kPiece = std::size_t{256} << 10;
constexpr std::size_t kPiecewise = std::size_t{16} << 20;

void CopyRow(std::uint8_t* to, const std::uint8_t* from, std::size_t bytes) {
  const std::size_t piece = bytes > kPiecewise ? bytes : kPiece;
  for (std::size_t x = 0; x < bytes; x += piece) {
    std::memmove(to + x, from + x, std::min(piece, bytes - x));
  }
}

}  // namespace

void FillBytes(const PixelMap& map) { LX_CALL(map.path, Bytes, map); }
void FillWords(const PixelMap& map) { LX_CALL(map.path, Words, map); }

void CopyRows(const PixelMap& map, std::size_t pixelBytes) {
  const Rows& from = map.sources[0];
  const Rows& to = map.destination;
  if (from.data == to.data && from.pitch == to.pitch) return;
  for (std::size_t y = 0; y < map.height; ++y) {
    CopyRow(to.Row<std::uint8_t>(y), from.Row<std::uint8_t>(y), map.width * pixelBytes);
  }
}

}  // namespace lx::point
#endif
