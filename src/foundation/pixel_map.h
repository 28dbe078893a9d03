// SPDX-License-Identifier: Apache-2.0
// What a pixel map works on: the rows of a destination and up to three sources, and constants.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "foundation/path.h"
#include "foundation/rows.h"

namespace lx {

struct PixelMap {
  Rows destination;
  std::array<Rows, 3> sources;
  std::array<std::uint16_t, 3> constants{};  // one for each component; all equal for grey images
  std::size_t width = 0;
  std::size_t height = 0;
  Path path = CurrentPath();
};

// The map over these regions, which all have the same size. Regions without gaps between their rows
// become one long row, and rows of nothing none.
template <class D, class... S>
PixelMap MapOf(const LxROI<D>* destination, const LxROI<S>*... sources) {
  PixelMap map;
  map.destination = RowsOf(destination);
  std::size_t count = 0;
  ((map.sources[count++] = RowsOf(sources)), ...);
  map.width = destination->GetWidth();
  map.height = map.width == 0 ? 0 : destination->GetHeight();
  if (IsContiguous(destination) && (IsContiguous(sources) && ...)) {
    map.width *= map.height;
    map.height = map.height == 0 ? 0 : 1;
  }
  return map;
}

// The map of two sources that nothing is written for: the first one tells the size.
template <class S, class R>
PixelMap MapOfPair(const LxROI<S>* first, const LxROI<R>* second) {
  return MapOf(first, first, second);
}

// MapOf() over the components of colour pixels: every byte is an element.
template <class... S>
PixelMap ComponentMapOf(const LxROI<LxC24>* destination, const LxROI<S>*... sources) {
  PixelMap map = MapOf(destination, sources...);
  map.width *= 3;
  return map;
}

// destination = rule(pixel, column), one after the other in the order of rows, on what is no work for
// vectors. Pixels of both types lie at any address.
template <class From, class To, class Rule>
void MapEach(const PixelMap& map, const Rule& rule) {
  for (std::size_t y = 0; y < map.height; ++y) {
    const auto* const from = map.sources[0].Row<const std::uint8_t>(y);
    auto* const to = map.destination.Row<std::uint8_t>(y);
    for (std::size_t x = 0; x < map.width; ++x) {
      From pixel;
      std::memcpy(&pixel, from + x * sizeof(From), sizeof(From));
      const To made = rule(pixel, x);
      std::memcpy(to + x * sizeof(To), &made, sizeof(To));
    }
  }
}

inline PixelMap WithConstant(PixelMap map, std::uint16_t constant) {
  map.constants = {constant, constant, constant};
  return map;
}

inline PixelMap WithConstant(PixelMap map, LxC24 constant) {
  map.constants = {constant.c0, constant.c1, constant.c2};
  return map;
}

}  // namespace lx
