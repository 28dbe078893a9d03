// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/value/image_value.h"

#include <cstring>

#include "catalogue/images.h"
#include "tools/lxpic/common/failure.h"

namespace lx::tool {

ImageValue::ImageValue(Pixel pixelType, int width, int height) : pixel(pixelType) {
  LxOk();
  region = catalogue::MakeImage(pixel, width, height);
  if (LxGetError() == LX_OK) return;
  throw Failure(kOperationFailed, "an image of " + std::to_string(width) + "x" +
                                      std::to_string(height) +
                                      " pixels: " + catalogue::ErrorName(LxGetError()));
}

void ImageValue::Clear() {
  if (Width() == 0) return;
  for (int y = 0; y < Height(); ++y) std::memset(Row(y), 0, RowBytes());
}

bool ImageValue::SameSize(const ImageValue& other) const {
  return Width() == other.Width() && Height() == other.Height();
}

std::string ImageValue::SizeText() const {
  return std::to_string(Width()) + "x" + std::to_string(Height());
}

std::size_t ImageValue::RowBytes() const {
  const auto width = static_cast<std::size_t>(Width());
  return pixel == Pixel::kBinary ? (width + 7) / 8 : width * region->GetPixelSize();
}

ImageValue ImageValue::Clone() const {
  ImageValue copy(pixel, Width(), Height());
  if (Width() == 0) return copy;
  for (int y = 0; y < Height(); ++y) std::memcpy(copy.Row(y), Row(y), RowBytes());
  return copy;
}

}  // namespace lx::tool
