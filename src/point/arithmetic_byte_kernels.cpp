// SPDX-License-Identifier: Apache-2.0
#include "point/arithmetic_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "point/arithmetic_byte_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/colour_pixels-inl.h"
#include "point/arithmetic_tables-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::point::HWY_NAMESPACE {
namespace {

using Tag = hn::ScalableTag<std::uint8_t>;

// destination = rule(source 1, source 2) per component, where source 1 is grey and counts for all
// three.
template <class Rule>
void MapMixed(const PixelMap& map, const Rule& rule) {
  const Tag d;
  const std::size_t n = hn::Lanes(d);
  for (std::size_t y = 0; y < map.height; ++y) {
    const std::uint8_t* const grey = map.sources[0].Row<const std::uint8_t>(y);
    const std::uint8_t* const colour = map.sources[1].Row<const std::uint8_t>(y);
    std::uint8_t* const to = map.destination.Row<std::uint8_t>(y);
    const auto combine = [&](std::size_t i, hn::Vec<Tag> levels, auto access) HWY_ATTR {
      access.Store(d, ApplyTwo(d, rule, levels, access.Load(d, colour + i), access, to + i),
                   to + i);
    };
    std::size_t x = 0;
    for (; x + n <= map.width; x += n) {
      hn::Vec<Tag> levels[3];
      Triple(d, hn::LoadU(d, grey + x), levels);
      for (std::size_t v = 0; v < 3; ++v) combine(3 * x + v * n, levels[v], WholeVector{});
    }
    if (x == map.width) continue;
    hn::Vec<Tag> levels[3];
    Triple(d, PartVector{map.width - x}.Load(d, grey + x), levels);
#pragma GCC unroll 1
    for (std::size_t v = 0; 3 * x + v * n < 3 * map.width; ++v) {
      const std::size_t i = 3 * x + v * n;
      combine(i, levels[v], PartVector{HWY_MIN(n, 3 * map.width - i)});
    }
  }
}

template <typename /*T*/, class Rule>
struct OnGreyAndColour {
  static void Run(const PixelMap& map) { MapMixed(map, Rule{}); }
};

MapKernel Bytes(Operands operands, ARITH_LOGIC_OPERATIONS operation) {
  switch (operands) {
    case Operands::kGreyWithColour:
      return FindImages<OnGreyAndColour, std::uint8_t>(operation);
    case Operands::kColourWithGrey:
      return FindTurned<OnGreyAndColour, std::uint8_t>(operation);
    default:
      return FindCommon<std::uint8_t>(operands, operation);
  }
}

void Inverse(const PixelMap& map) { MapOne<std::uint8_t>(map, Invert{}); }

}  // namespace
}  // namespace lx::point::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::point {

HWY_EXPORT(Bytes);
HWY_EXPORT(Inverse);

MapKernel ByteKernel(Operands operands, ARITH_LOGIC_OPERATIONS operation, Path path) {
  return LX_CALL(path, Bytes, operands, operation);
}

void InvertBytes(const PixelMap& map) { LX_CALL(map.path, Inverse, map); }

}  // namespace lx::point
#endif
