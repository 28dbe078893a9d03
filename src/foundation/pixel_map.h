// SPDX-License-Identifier: Apache-2.0
// What a pixel map works on: the rows of a destination and up to two sources, and constants.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "lxpic/base/roi.h"
#include "lxpic/base/settings.h"

namespace lx {

// Rows of pixels in memory, at any address and pitch.
struct Rows {
  std::uint8_t* data = nullptr;
  std::ptrdiff_t pitch = 0;

  template <typename T>
  T* Row(std::size_t y) const {
    return reinterpret_cast<T*>(data + static_cast<std::ptrdiff_t>(y) * pitch);
  }
};

template <class T>
Rows RowsOf(const LxROI<T>* region) {
  return {static_cast<std::uint8_t*>(region->GetPixelPtr(0, 0)), region->GetPitch()};
}

struct PixelMap {
  Rows destination;
  std::array<Rows, 2> sources;
  std::array<std::uint16_t, 3> constants{};  // one for each component; all equal for grey images
  std::size_t width = 0;
  std::size_t height = 0;
};

namespace internal {

template <class T>
bool IsContiguous(const LxROI<T>* region) {
  return region->GetPitch() == static_cast<std::ptrdiff_t>(region->GetWidth() * sizeof(T));
}

}  // namespace internal

// The map over these regions, which all have the same size. Regions without gaps between their rows
// become one long row.
template <class D, class... S>
PixelMap MapOf(const LxROI<D>* destination, const LxROI<S>*... sources) {
  PixelMap map;
  map.destination = RowsOf(destination);
  std::size_t count = 0;
  ((map.sources[count++] = RowsOf(sources)), ...);
  map.width = destination->GetWidth();
  map.height = destination->GetHeight();
  if (internal::IsContiguous(destination) && (internal::IsContiguous(sources) && ...)) {
    map.width *= map.height;
    map.height = map.height == 0 ? 0 : 1;
  }
  return map;
}

// MapOf() over the components of colour pixels: every byte is an element.
template <class... S>
PixelMap ComponentMapOf(const LxROI<LxC24>* destination, const LxROI<S>*... sources) {
  PixelMap map = MapOf(destination, sources...);
  map.width *= 3;
  return map;
}

inline PixelMap WithConstant(PixelMap map, std::uint16_t constant) {
  map.constants = {constant, constant, constant};
  return map;
}

inline PixelMap WithConstant(PixelMap map, LxC24 constant) {
  map.constants = {constant.c0, constant.c1, constant.c2};
  return map;
}

// Whether this call takes the fast path. Read once per call.
inline bool FastPath() { return LxGetMMX() != 0; }

}  // namespace lx

// The kernel `name` for the path of this call: the best instruction set of this processor, or the
// baseline that the library is compiled for.
#define LX_KERNEL(name) (::lx::FastPath() ? HWY_DYNAMIC_DISPATCH(name) : &HWY_STATIC_DISPATCH(name))
