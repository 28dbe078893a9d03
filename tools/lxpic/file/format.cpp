// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/file/format.h"

#include <atomic>

#include "tools/lxpic/file/files.h"

namespace lx::tool {

namespace {

constexpr unsigned long kMaxSide = 1UL << 20;

std::atomic<unsigned long> maxPixels = kDefaultMaxPixels;

std::string SizeText(unsigned long width, unsigned long height) {
  return std::to_string(width) + "x" + std::to_string(height) + " pixels";
}

}  // namespace

void SetMaxPixels(unsigned long count) { maxPixels = count; }

unsigned long MaxPixels() { return maxPixels; }

ImageValue MakeImageFor(Pixel pixel, unsigned long width, unsigned long height,
                        unsigned long cost) {
  if (width < 1 || height < 1 || width > kMaxSide || height > kMaxSide) {
    throw Failure(kFileFailed, "damaged: " + SizeText(width, height));
  }
  const unsigned long most = MaxPixels() / cost;
  if (width * height > most) {
    throw Failure(kFileFailed, SizeText(width, height) + ", but at most " + std::to_string(most) +
                                   " are read; --max-pixels raises that");
  }
  return {pixel, static_cast<int>(width), static_cast<int>(height)};
}

std::vector<unsigned char*> Rows(const ImageValue& image) {
  std::vector<unsigned char*> rows;
  rows.reserve(static_cast<std::size_t>(image.Height()));
  for (int y = 0; y < image.Height(); ++y) rows.push_back(image.Row(y));
  return rows;
}

Failure NotReadable(const char* format, const std::string& reason) {
  return {kFileFailed, std::string("damaged, or of a kind of ") + format + " that is not read: " +
                           (reason.empty() ? "no reason is known" : reason)};
}

}  // namespace lx::tool
