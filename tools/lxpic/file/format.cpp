// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/file/format.h"

#include <cerrno>
#include <cstring>

namespace lx::tool {

namespace {

// Far beyond any camera, and still something that can be allocated.
constexpr unsigned long kMaxSide = 1UL << 20;
constexpr unsigned long kMaxPixels = 1UL << 28;

std::string SystemError() { return std::strerror(errno); }

}  // namespace

File OpenFile(const std::string& path, const char* mode) {
  File file(std::fopen(path.c_str(), mode));
  if (!file) throw Failure(kFileFailed, "cannot be opened: " + SystemError());
  return file;
}

void CloseWritten(File file) {
  const bool written = std::fflush(file.get()) == 0 && std::ferror(file.get()) == 0;
  if (!written || std::fclose(file.release()) != 0) {
    throw Failure(kFileFailed, "cannot be written: " + SystemError());
  }
}

ImageValue MakeImageFor(Pixel pixel, unsigned long width, unsigned long height) {
  const bool possible = width >= 1 && height >= 1 && width <= kMaxSide && height <= kMaxSide &&
                        width * height <= kMaxPixels;
  if (!possible) {
    throw Failure(kFileFailed, "damaged, or too large: " + std::to_string(width) + "x" +
                                   std::to_string(height) + " pixels");
  }
  return {pixel, static_cast<int>(width), static_cast<int>(height)};
}

std::vector<unsigned char*> Rows(const ImageValue& image) {
  std::vector<unsigned char*> rows;
  rows.reserve(static_cast<std::size_t>(image.Height()));
  for (int y = 0; y < image.Height(); ++y) rows.push_back(image.Row(y));
  return rows;
}

}  // namespace lx::tool
