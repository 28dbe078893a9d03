// SPDX-License-Identifier: Apache-2.0
// Images as plain numbers: what references compute on.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "catalogue/catalogue.h"

namespace lx::test {

using catalogue::Pixel;

/// A component of a pixel. Packed colours are one component, their word; the components of complex
/// pixels are the bits of the floats.
using Value = std::int64_t;

/// How a pixel type is stored.
struct PixelFormat {
  int components;
  int bytes;  ///< of one component; 0 for binary pixels, which take a bit
  Value maximum;
};
PixelFormat FormatOf(Pixel pixel);
/// Bytes of a row of `width` pixels whose first one starts `firstBit` bits into its byte.
std::ptrdiff_t RowBytes(Pixel pixel, int width, int firstBit = 0);

/// Where the pixels of a region lie in memory.
struct Placement {
  std::uint8_t* base = nullptr;
  std::ptrdiff_t pitch = 0;
  int firstBit = 0;  ///< of binary pixels
};

/// `length` pixels of a row, from (x, y) on.
struct Run {
  int x;
  int y;
  int length;
};

struct Picture {
  Picture() = default;
  Picture(Pixel type, int w, int h);

  Value& At(int x, int y, int component = 0) { return values[Index(x, y, component)]; }
  Value At(int x, int y, int component = 0) const { return values[Index(x, y, component)]; }
  std::size_t Index(int x, int y, int component) const {
    return (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
            static_cast<std::size_t>(x)) *
               static_cast<std::size_t>(components) +
           static_cast<std::size_t>(component);
  }

  Pixel pixel = Pixel::kNone;
  int width = 0;
  int height = 0;
  int components = 0;
  std::vector<Value> values;
  std::vector<Run> runs;  ///< the run list of the region; none stands for all pixels
};

/// For each pixel, row by row, how often it counts: once, or once for each run that it lies in.
std::vector<int> Selected(const Picture& picture);

/// Writes the pixels to memory and nothing beside them.
void Store(const Picture& picture, const Placement& place);

}  // namespace lx::test
