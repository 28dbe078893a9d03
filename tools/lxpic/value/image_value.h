// SPDX-License-Identifier: Apache-2.0
// An image of any pixel type, as it travels between files and the steps of a chain.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "catalogue/catalogue.h"

namespace lx::tool {

using catalogue::Pixel;

template <class T>
struct TypeTag {
  using Type = T;
};

/// Calls `visit` with the TypeTag of the pixel type.
template <class Visitor>
decltype(auto) VisitPixel(Pixel pixel, Visitor&& visit) {
  switch (pixel) {
    case Pixel::kBW8:
      return visit(TypeTag<LxBW8>{});
    case Pixel::kBW16:
      return visit(TypeTag<LxBW16>{});
    case Pixel::kBW32:
      return visit(TypeTag<LxBW32>{});
    case Pixel::kC24:
      return visit(TypeTag<LxC24>{});
    case Pixel::kC15:
      return visit(TypeTag<LxC15>{});
    case Pixel::kC16:
      return visit(TypeTag<LxC16>{});
    case Pixel::kC24A:
      return visit(TypeTag<LxC24A>{});
    case Pixel::kComplex64:
      return visit(TypeTag<LxComplex64>{});
    case Pixel::kBinary:
      return visit(TypeTag<int>{});
    case Pixel::kNone:
      break;
  }
  throw std::logic_error("an image without a pixel type");
}

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
