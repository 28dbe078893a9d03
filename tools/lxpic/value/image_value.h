// SPDX-License-Identifier: Apache-2.0
// An image of any pixel type, as it travels between files and the steps of a chain.
#pragma once

#include <memory>
#include <string>

#include "catalogue/catalogue.h"

namespace lx::tool {

using catalogue::Pixel;

/// Copies of an ImageValue share their pixels; Clone() has its own.
class ImageValue {
 public:
  /// No image.
  ImageValue() = default;
  /// An image whose pixels are not initialised. Throws Failure when there is no memory for it.
  ImageValue(Pixel pixel, int width, int height);

  explicit operator bool() const { return region != nullptr; }
  Pixel PixelType() const { return pixel; }
  std::string TypeName() const { return std::string(catalogue::PixelName(pixel)); }
  int Width() const { return static_cast<int>(region->GetWidth()); }
  int Height() const { return static_cast<int>(region->GetHeight()); }
  bool SameSize(const ImageValue& other) const;
  /// "640x480".
  std::string SizeText() const;

  LxGenericROI* Region() const { return region.get(); }
  const std::shared_ptr<LxGenericROI>& Owner() const { return region; }
  /// The image as what it is; T must be its pixel type.
  template <class T>
  LxImage<T>& As() const {
    return static_cast<LxImage<T>&>(*region);
  }
  unsigned char* Row(int y) const { return static_cast<unsigned char*>(region->GetPixelPtr(0, y)); }
  /// Bytes of a row that hold pixels.
  std::size_t RowBytes() const;

  /// Makes every pixel 0.
  void Clear();
  ImageValue Clone() const;

 private:
  Pixel pixel = Pixel::kNone;
  std::shared_ptr<LxGenericROI> region;
};

}  // namespace lx::tool
