// SPDX-License-Identifier: Apache-2.0
#include "support/trial/picture.h"

#include <array>

namespace lx::test {

PixelFormat FormatOf(Pixel pixel) {
  static constexpr std::array<PixelFormat, 10> kFormats = {{{0, 0, 0},
                                                            {1, 1, 0xFF},
                                                            {1, 2, 0xFFFF},
                                                            {1, 4, 0xFFFFFFFF},
                                                            {3, 1, 0xFF},
                                                            {1, 2, 0xFFFF},
                                                            {1, 2, 0xFFFF},
                                                            {4, 1, 0xFF},
                                                            {2, 4, 0xFFFFFFFF},
                                                            {1, 0, 1}}};
  return kFormats[static_cast<std::size_t>(pixel)];
}

std::ptrdiff_t RowBytes(Pixel pixel, int width, int firstBit) {
  const PixelFormat format = FormatOf(pixel);
  if (pixel == Pixel::kBinary) return width == 0 ? 0 : (firstBit + width + 7) / 8;
  return static_cast<std::ptrdiff_t>(width) * format.components * format.bytes;
}

Picture::Picture(Pixel type, int w, int h)
    : pixel(type), width(w), height(h), components(FormatOf(type).components) {
  values.resize(Index(0, h, 0));
}

std::vector<int> Selected(const Picture& picture) {
  std::vector<int> selected(
      picture.Index(0, picture.height, 0) / static_cast<std::size_t>(picture.components),
      picture.runs.empty() ? 1 : 0);
  for (const Run& run : picture.runs) {
    for (int i = 0; i < run.length; ++i) {
      ++selected[static_cast<std::size_t>(run.y * picture.width + run.x + i)];
    }
  }
  return selected;
}

namespace {

void StoreBits(const Picture& picture, std::uint8_t* row, int firstBit, int y) {
  for (int x = 0; x < picture.width; ++x) {
    std::uint8_t& byte = row[(firstBit + x) / 8];
    const int mask = 0x80 >> ((firstBit + x) % 8);
    const bool set = picture.At(x, y) != 0;
    byte = static_cast<std::uint8_t>(set ? byte | mask : byte & ~mask);
  }
}

// Components in storage order, the least significant byte first.
void StoreBytes(const Picture& picture, std::uint8_t* row, int bytes, int y) {
  const std::size_t first = picture.Index(0, y, 0);
  const std::size_t last = picture.Index(0, y + 1, 0);
  for (std::size_t i = first; i < last; ++i) {
    for (int k = 0; k < bytes; ++k) {
      *row++ = static_cast<std::uint8_t>(picture.values[i] >> (8 * k));
    }
  }
}

}  // namespace

void Store(const Picture& picture, const Placement& place) {
  const int bytes = FormatOf(picture.pixel).bytes;
  for (int y = 0; y < picture.height; ++y) {
    std::uint8_t* const row = place.base + y * place.pitch;
    if (bytes == 0) {
      StoreBits(picture, row, place.firstBit, y);
    } else {
      StoreBytes(picture, row, bytes, y);
    }
  }
}

}  // namespace lx::test
