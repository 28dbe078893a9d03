// SPDX-License-Identifier: Apache-2.0
// Levels between images and the points of paths.
#include <cstring>

#include "foundation/frame.h"
#include "foundation/rows.h"
#include "lxpic/profile/contour.h"

namespace {

using namespace lx;

LxBW8& LevelOf(LxBW8Path& point) { return point.m_bw8Pixel; }
LxBW16& LevelOf(LxBW16Path& point) { return point.m_bw16Pixel; }
LxC24& LevelOf(LxC24Path& point) { return point.m_c24Pixel; }

// Calls `exchange(pixel, level)` for each point in the region, with the address of its pixel.
template <class T, class Vector, class Exchange>
void ForEachPoint(const char* trace, LxROI<T>* region, Vector* path, const Exchange& exchange) {
  bool isLeftOut = false;
  RunOperation(trace, [&] {
    if (!Attached({region}) || !Require(path != nullptr, LX_ERROR_VECTOR_NO_DATA)) return;
    const Rows rows = RowsOf(region);
    const unsigned width = region->GetWidth();
    const unsigned height = region->GetHeight();
    for (auto& point : *path) {
      const auto x = static_cast<unsigned>(int{point.m_n16X});
      const auto y = static_cast<unsigned>(int{point.m_n16Y});
      if (x < width && y < height) {
        exchange(rows.Row<std::uint8_t>(y) + x * sizeof(T), LevelOf(point));
      } else {
        isLeftOut = true;
      }
    }
  });
  if (isLeftOut) LxSetError(LX_ERROR_POINT_OUTSIDE_IMAGE);
}

template <class T, class Vector>
void ToPath(const char* trace, LxROI<T>* region, Vector* path) {
  ForEachPoint(trace, region, path,
               [](const std::uint8_t* pixel, T& level) { std::memcpy(&level, pixel, sizeof(T)); });
}

template <class T, class Vector>
void ToImage(const char* trace, LxROI<T>* region, Vector* path) {
  ForEachPoint(trace, region, path,
               [](std::uint8_t* pixel, const T& level) { std::memcpy(pixel, &level, sizeof(T)); });
}

}  // namespace

void PicImageToPath(LxROI<LxBW8>* region, LxBW8PathVector* path) {
  ToPath("PicImageToPath ( BW8)", region, path);
}

void PicImageToPath(LxROI<LxBW16>* region, LxBW16PathVector* path) {
  ToPath("PicImageToPath (BW16)", region, path);
}

void PicImageToPath(LxROI<LxC24>* region, LxC24PathVector* path) {
  ToPath("PicImageToPath ( C24)", region, path);
}

void PicPathToImage(LxROI<LxBW8>* region, LxBW8PathVector* path) {
  ToImage("PicPathToImage ( BW8)", region, path);
}

void PicPathToImage(LxROI<LxBW16>* region, LxBW16PathVector* path) {
  ToImage("PicPathToImage ( BW16)", region, path);
}

void PicPathToImage(LxROI<LxC24>* region, LxC24PathVector* path) {
  ToImage("PicPathToImage ( C24)", region, path);
}
