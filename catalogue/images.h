// SPDX-License-Identifier: Apache-2.0
// Images whose pixel type is a value.
#pragma once

#include <memory>
#include <stdexcept>

#include "catalogue/kinds.h"

namespace lx::catalogue {

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

/// An image that owns its pixels, which are not initialised. The error state tells whether there
/// was memory for it.
std::unique_ptr<LxGenericROI> MakeImage(Pixel pixel, int width, int height);

}  // namespace lx::catalogue
