// SPDX-License-Identifier: Apache-2.0
#include "lxpic/geometry/shrink.h"

#include <type_traits>

#include "geometry/halve.h"
#include "geometry/shrink_kernels.h"
#include "point/copy_rows.h"

namespace {

using namespace lx;
using namespace lx::geometry;

template <typename T, typename Lane>
void ShrinkWith(const Shrinking& shrinking) {
  const Scratch<std::uint32_t> starts(shrinking.columns + 1);
  const Scratch<Lane> sums(starts ? shrinking.SumCount() : 0);
  if (!starts || !sums) return;
  for (std::size_t x = 0; x <= shrinking.columns; ++x) {
    starts.get()[x] = static_cast<std::uint32_t>(BlockStart(x, shrinking.width, shrinking.columns));
  }
  if constexpr (sizeof(T) == 1) {
    ShrinkBytes(shrinking, starts.get(), sums.get());
  } else {
    ShrinkWords(shrinking, starts.get(), sums.get());
  }
}

// In the narrowest lanes that hold the sums of a block's rows.
template <typename T>
void ShrinkPixels(const Shrinking& shrinking) {
  const std::size_t rows = shrinking.TallestBlock();
  if (sizeof(T) == 1 && SumsFit<T, std::uint16_t>(rows)) {
    if constexpr (sizeof(T) == 1) ShrinkWith<T, std::uint16_t>(shrinking);
  } else if (SumsFit<T, std::uint32_t>(rows)) {
    ShrinkWith<T, std::uint32_t>(shrinking);
  } else {
    ShrinkWith<T, std::uint64_t>(shrinking);
  }
}

// Sizes that have a driver of their own.
template <class T>
bool ShrinkSimply(const Shrinking& s, const LxROI<T>* source, const LxROI<T>* destination) {
  if (s.columns == s.width && s.rows == s.height) {
    point::CopyRows(MapOf(destination, source), sizeof(T));
    return true;
  }
  if (2 * s.columns != s.width || 2 * s.rows != s.height) return false;
  Halving halving;
  halving.source = s.source;
  halving.destination = s.destination;
  halving.columns = s.columns;
  halving.rows = s.rows;
  halving.path = s.path;
  (sizeof(T) == 1 ? HalveBytes : sizeof(T) == 2 ? HalveWords : HalveColours)(halving);
  return true;
}

template <class T>
void RunShrink(const char* trace, LxROI<T>* source, LxROI<T>* destination) {
  RunOperation(trace, [&] {
    if (!Attached({source, destination})) return;
    const Shrinking shrinking{RowsOf(source),          RowsOf(destination),
                              source->GetWidth(),      source->GetHeight(),
                              destination->GetWidth(), destination->GetHeight(),
                              sizeof(T) == 3 ? 3U : 1U};
    if (!Require(shrinking.columns <= shrinking.width && shrinking.rows <= shrinking.height,
                 LX_ERROR_SIZE_MISMATCH)) {
      return;
    }
    if (shrinking.columns == 0 || shrinking.rows == 0) return;
    if (ShrinkSimply(shrinking, source, destination)) return;
    ShrinkPixels<std::conditional_t<sizeof(T) == 2, std::uint16_t, std::uint8_t>>(shrinking);
  });
}

}  // namespace

void PicShrink(LxROI<LxBW8>* source, LxROI<LxBW8>* destination) {
  RunShrink("PicShrink", source, destination);
}

void PicShrink(LxROI<LxBW16>* source, LxROI<LxBW16>* destination) {
  RunShrink("PicShrink (BW16)", source, destination);
}

void PicShrink(LxROI<LxC24>* source, LxROI<LxC24>* destination) {
  RunShrink("PicShrink ( C24)", source, destination);
}

void PicHalve(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, int dropOdd) {
  RunOperation("PicHalve ( BW8)", [&] { HalveRegion(source, destination, dropOdd, HalveBytes); });
}
