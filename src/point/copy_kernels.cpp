// SPDX-License-Identifier: Apache-2.0
#include "point/copy_rows.h"

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

void FillBytes(const PixelMap& map) { LX_CALL(map.path, Bytes, map); }
void FillWords(const PixelMap& map) { LX_CALL(map.path, Words, map); }

void CopyRows(const PixelMap& map, std::size_t pixelBytes) {
  const Rows& from = map.sources[0];
  const Rows& to = map.destination;
  if (from.data == to.data && from.pitch == to.pitch) return;
  for (std::size_t y = 0; y < map.height; ++y) {
    std::memmove(to.Row<std::uint8_t>(y), from.Row<std::uint8_t>(y), map.width * pixelBytes);
  }
}

}  // namespace lx::point
#endif
