// SPDX-License-Identifier: Apache-2.0
#include "lxpic/point/overlay.h"

#include <algorithm>
#include <cstdint>

#include "base/thread_block.h"
#include "foundation/frame.h"
#include "point/overlay_kernels.h"

namespace {

using namespace lx;
using namespace lx::point;

// The part of a span of `length` pixels, moved to `at`, that lies in 0..limit: its first pixel and
// count.
struct Clip {
  std::int64_t first;
  std::int64_t count;

  Clip(std::int64_t at, std::int64_t length, std::int64_t limit)
      : first(std::max<std::int64_t>(0, -at)), count(std::min(length, limit - at) - first) {}
};

template <class T>
Rows RowsFrom(const LxROI<T>* region, std::int64_t x, std::int64_t y) {
  Rows rows = RowsOf(region);
  rows.data += y * rows.pitch + x * static_cast<std::int64_t>(sizeof(T));
  return rows;
}

template <class Packed>
void Draw(Packing packing, LxROI<LxC24>* source, LxROI<Packed>* destination, std::int64_t x,
          std::int64_t y, LxC24 keyColor) {
  const Clip columns(x, source->GetWidth(), destination->GetWidth());
  const Clip rows(y, source->GetHeight(), destination->GetHeight());
  if (columns.count <= 0 || rows.count <= 0) return;
  PixelMap map;
  map.sources[0] = RowsFrom(source, columns.first, rows.first);
  map.destination = RowsFrom(destination, x + columns.first, y + rows.first);
  map.width = static_cast<std::size_t>(columns.count);
  map.height = static_cast<std::size_t>(rows.count);
  PackExceptKey(packing, WithConstant(map, keyColor));
}

template <class Packed>
void Overlay(const char* trace, Packing packing, LxROI<LxC24>* source, LxROI<Packed>* destination,
             int x, int y, LxC24 keyColor) {
  bool tooLarge = false;
  RunOperation(trace, [&] {
    if (!Attached({source, destination})) return;
    tooLarge = source->GetWidth() > destination->GetWidth() ||
               source->GetHeight() > destination->GetHeight();
    if (!tooLarge) Draw(packing, source, destination, x, y, keyColor);
  });
  if (tooLarge) LxTraceError(trace);
}

}  // namespace

void PicOverlay(LxROI<LxC24>* source, LxROI<LxC16>* destination, int x, int y, LxC24 keyColor) {
  Overlay("PicOverlay ( C24 on C16 Image)", Packing::kC16, source, destination, x, y, keyColor);
}

void PicOverlay(LxROI<LxC24>* source, LxROI<LxC15>* destination, int x, int y, LxC24 keyColor) {
  Overlay("PicOverlay ( C24 on C15 Image)", Packing::kC15, source, destination, x, y, keyColor);
}

void PicSetOverlayColor(LxC24 color) {
  RunOperation(nullptr, [&] { static_cast<ThreadBlock*>(LxGetTLSPtr())->overlayColour = color; });
}

LxC24 PicGetOverlayColor() { return static_cast<ThreadBlock*>(LxGetTLSPtr())->overlayColour; }
