// SPDX-License-Identifier: Apache-2.0
// Runs predefined filters on checked regions.
#pragma once

#include "convolution/filters_kernels.h"
#include "foundation/frame.h"
#include "foundation/scratch.h"

namespace lx {

inline Border PlainBorder(Filter filter) {
  static constexpr Border kBorders[] = {
#define LX_BORDER_OF(name, border) Border::border,
      LX_FILTERS(LX_BORDER_OF)
#undef LX_BORDER_OF
  };
  return kBorders[static_cast<std::size_t>(filter)];
}

// The border of the path that a call takes: only the plain path from one grey image to another
// knows zeros, and 16-bit images have no other path.
template <class T>
Border BorderOf(Filter filter, bool inPlace) {
  const bool plain = sizeof(T) == 2 || (sizeof(T) == 1 && !FastPath());
  return plain && !inPlace ? PlainBorder(filter) : Border::kReplicate;
}

// destination = filter(source); sets LX_ERROR_ALLOCATION_FAILED when there is no scratch memory.
template <class T>
void ApplyFilter(Filter filter, const LxROI<T>* source, const LxROI<T>* destination) {
  Neighbourhood map = NeighbourhoodOf(destination, source);
  if (map.elements == 0 || map.height == 0) return;
  map.border = BorderOf<T>(filter, SamePixels(source, destination));
  constexpr std::size_t kElementBytes = sizeof(T) == 2 ? 2 : 1;
  const Scratch<std::uint8_t> scratch(FilterScratch(map, kElementBytes));
  if (!scratch) return;
  (kElementBytes == 2 ? FilterWords : FilterBytes)(filter, map, scratch.get());
}

}  // namespace lx
