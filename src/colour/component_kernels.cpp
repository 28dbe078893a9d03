// SPDX-License-Identifier: Apache-2.0
#include "colour/component_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "colour/component_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/colour_pixels-inl.h"
#include "foundation/pixel_map-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::colour::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

using BytesTag = hn::ScalableTag<std::uint8_t>;
using Bytes = hn::Vec<BytesTag>;

template <unsigned kIndex>
void Extract(const PixelMap& map) {
  const BytesTag d;
  for (std::size_t y = 0; y < map.height; ++y) {
    const auto* const from = map.sources[0].Row<const std::uint8_t>(y);
    auto* const to = map.destination.Row<std::uint8_t>(y);
    ForEachColour(d, map.width, [&](std::size_t x, auto access, auto colour) HWY_ATTR {
      Bytes c0, c1, c2;
      colour.Load(d, from + 3 * x, c0, c1, c2);
      access.Store(d, kIndex == 0 ? c0 : kIndex == 1 ? c1 : c2, to + x);
    });
  }
}

template <unsigned kIndex>
void Insert(const PixelMap& map) {
  const BytesTag d;
  for (std::size_t y = 0; y < map.height; ++y) {
    const auto* const from = map.sources[0].Row<const std::uint8_t>(y);
    auto* const to = map.destination.Row<std::uint8_t>(y);
    ForEachColour(d, map.width, [&](std::size_t x, auto access, auto colour) HWY_ATTR {
      Bytes c0, c1, c2;
      colour.Load(d, to + 3 * x, c0, c1, c2);
      (kIndex == 0 ? c0 : kIndex == 1 ? c1 : c2) = access.Load(d, from + x);
      colour.Store(d, c0, c1, c2, to + 3 * x);
    });
  }
}

using Kernel = void (*)(const PixelMap&);
constexpr Kernel kExtract[] = {Extract<0>, Extract<1>, Extract<2>};
constexpr Kernel kInsert[] = {Insert<0>, Insert<1>, Insert<2>};

void ExtractOne(const PixelMap& map, unsigned index) { kExtract[index](map); }
void InsertOne(const PixelMap& map, unsigned index) { kInsert[index](map); }

}  // namespace
}  // namespace lx::colour::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::colour {

HWY_EXPORT(ExtractOne);
HWY_EXPORT(InsertOne);

void ExtractComponent(const PixelMap& map, unsigned index) {
  LX_CALL(map.path, ExtractOne, map, index);
}
void InsertComponent(const PixelMap& map, unsigned index) {
  LX_CALL(map.path, InsertOne, map, index);
}

}  // namespace lx::colour
#endif
