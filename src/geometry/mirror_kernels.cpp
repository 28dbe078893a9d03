// SPDX-License-Identifier: Apache-2.0
#include "geometry/mirror_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "geometry/mirror_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/row_moves-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::geometry::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

void TopAndBottom(const RowsInPlace& image) {
  for (std::size_t y = 0; y < image.height / 2; ++y) {
    SwapRows(image.rows.Row<std::uint8_t>(y), image.rows.Row<std::uint8_t>(image.height - 1 - y),
             image.width * image.pixelBytes);
  }
}

template <typename T, std::size_t kComponents>
void Columns(const RowsInPlace& image) {
  for (std::size_t y = 0; y < image.height; ++y) {
    TurnRow<T, kComponents>(image.rows.Row<T>(y), image.width);
  }
}

void Bytes(const RowsInPlace& image) { Columns<std::uint8_t, 1>(image); }
void Words(const RowsInPlace& image) { Columns<std::uint16_t, 1>(image); }
void Colours(const RowsInPlace& image) { Columns<std::uint8_t, 3>(image); }

}  // namespace
}  // namespace lx::geometry::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::geometry {

HWY_EXPORT(TopAndBottom);
HWY_EXPORT(Bytes);
HWY_EXPORT(Words);
HWY_EXPORT(Colours);

void SwapTopAndBottom(const RowsInPlace& image) { LX_CALL(image.path, TopAndBottom, image); }

void SwapLeftAndRight(const RowsInPlace& image) {
  if (image.pixelBytes == 1) {
    LX_CALL(image.path, Bytes, image);
  } else if (image.pixelBytes == 2) {
    LX_CALL(image.path, Words, image);
  } else {
    LX_CALL(image.path, Colours, image);
  }
}

}  // namespace lx::geometry
#endif
