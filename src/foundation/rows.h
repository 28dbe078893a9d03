// SPDX-License-Identifier: Apache-2.0
// Rows of pixels in memory.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lxpic/base/roi.h"

namespace lx {

// The rows of an image, at any address and pitch.
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

// Whether the rows of a region follow each other without gaps.
template <class T>
bool IsContiguous(const LxROI<T>* region) {
  return region->GetPitch() == static_cast<std::ptrdiff_t>(region->GetWidth() * sizeof(T));
}

}  // namespace lx
