// SPDX-License-Identifier: Apache-2.0
#include "lxpic/geometry/warp.h"

#include <cstring>

#include "foundation/frame.h"
#include "geometry/warp_kernels.h"

namespace {

using namespace lx;
using namespace lx::geometry;

bool IsEmpty(const LxGenericROI* region) {
  return region->GetWidth() == 0 || region->GetHeight() == 0;
}

template <class T, class M>
Warp WarpOf(const LxROI<T>* source, const LxROI<T>* destination, const LxROI<M>* map) {
  Warp warp{};
  warp.source = RowsOf(source);
  warp.sourceWidth = static_cast<std::int32_t>(source->GetWidth());
  warp.sourceHeight = static_cast<std::int32_t>(source->GetHeight());
  warp.destination = RowsOf(destination);
  warp.width = destination->GetWidth();
  warp.height = destination->GetHeight();
  warp.xMap = RowsOf(map);
  return warp;
}

bool IsApart(const LxGenericROI* source, const LxGenericROI* destination) {
  return Require(destination != nullptr && !SamePixels(source, destination),
                 LX_ERROR_DESTINATION_IS_SOURCE);
}

// The maps, and the destination unless it is missing.
bool MapsUsable(LxGenericROI* destination, LxGenericROI* xMap, LxGenericROI* yMap) {
  return destination == nullptr ? Usable({xMap, yMap}) : Usable({destination, xMap, yMap});
}

void ClearRows(const Warp& warp, std::size_t pixelBytes) {
  for (std::size_t y = 0; y < warp.height; ++y) {
    std::memset(warp.destination.Row<std::uint8_t>(y), 0, warp.width * pixelBytes);
  }
}

template <class T>
void RunTwoMaps(const char* trace, LxROI<T>* source, LxROI<T>* destination, LxImage<LxBW16>* xMap,
                LxImage<LxBW16>* yMap, int xOffset, int yOffset, void (*run)(const Warp&)) {
  RunOperation(trace, [&] {
    if (!Attached({source}) || !MapsUsable(destination, xMap, yMap) ||
        !IsApart(source, destination)) {
      return;
    }
    Warp warp = WarpOf(source, destination, xMap);
    warp.yMap = RowsOf(yMap);
    warp.xOffset = xOffset;
    warp.yOffset = yOffset;
    if (IsEmpty(destination)) return;
    if (IsEmpty(source)) {
      ClearRows(warp, sizeof(T));
    } else {
      run(warp);
    }
  });
}

}  // namespace

void PicWarp(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, LxImage<LxBW16>* xMap,
             LxImage<LxBW16>* yMap, int xOffset, int yOffset) {
  RunTwoMaps("PicWarp", source, destination, xMap, yMap, xOffset, yOffset, WarpBytes);
}

void PicWarp(LxROI<LxC24>* source, LxROI<LxC24>* destination, LxImage<LxBW16>* xMap,
             LxImage<LxBW16>* yMap, int xOffset, int yOffset) {
  RunTwoMaps("PicWarp ( C24)", source, destination, xMap, yMap, xOffset, yOffset, WarpColours);
}

void PicWarp(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, LxImage<LxBW32>* map) {
  RunOperation("PicWarp", [&] {
    if (!Attached({source, map}) || !UsablePair(source, destination) ||
        !IsApart(source, destination) ||
        !Require(map->GetWidth() >= destination->GetWidth() &&
                     map->GetHeight() >= destination->GetHeight(),
                 LX_ERROR_WARP_RANGE) ||
        IsEmpty(destination)) {
      return;
    }
    Require(WarpPacked(WarpOf(source, destination, map)), LX_ERROR_WARP_TABLE);
  });
}
