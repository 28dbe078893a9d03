// SPDX-License-Identifier: Apache-2.0
// Runs predefined filters on checked regions.
#pragma once

#include "convolution/filters_kernels.h"
#include "foundation/frame.h"
#include "foundation/scratch.h"

namespace lx::convolution {

inline Border PlainBorder(Filter filter) {
  constexpr Border kReplicate = Border::kReplicate;
  constexpr Border kZero = Border::kConstant;
  static constexpr Border kBorders[] = {
#define LX_OF_OPERATION(function, rule, border, trace, summary) border,
#define LX_OF_STEP(rule, border) border,
      LX_FILTERS(LX_OF_OPERATION, LX_OF_STEP)
#undef LX_OF_OPERATION
#undef LX_OF_STEP
  };
  return kBorders[static_cast<std::size_t>(filter)];
}

// The border of the path that a call takes: only the plain path from one grey image to another
// knows zeros, and 16-bit images have no other path.
template <class T>
Border BorderOf(Filter filter, Path path, bool inPlace) {
  const bool plain = sizeof(T) == 2 || (sizeof(T) == 1 && path == Path::kPlain);
  return plain && !inPlace ? PlainBorder(filter) : Border::kReplicate;
}

// The kernel and the element size of a pixel type.
template <class T>
struct FilterKernel;

template <>
struct FilterKernel<LxBW8> {
  static constexpr auto kRun = &FilterBytes;
  static constexpr std::size_t kElementBytes = 1;
};

template <>
struct FilterKernel<LxBW16> {
  static constexpr auto kRun = &FilterWords;
  static constexpr std::size_t kElementBytes = 2;
};

template <>
struct FilterKernel<LxC24> {
  static constexpr auto kRun = &FilterColours;
  static constexpr std::size_t kElementBytes = 1;
};

template <class T>
Neighbourhood FilterMapOf(Filter filter, Path path, const LxROI<T>* source,
                          const LxROI<T>* destination) {
  Neighbourhood map = NeighbourhoodOf(destination, source);
  map.path = path;
  map.border = BorderOf<T>(filter, path, SamePixels(source, destination));
  return map;
}

// destination = filter(source). Sets LX_ERROR_ALLOCATION_FAILED when there is no scratch memory.
template <class T>
void ApplyFilter(Filter filter, Path path, const LxROI<T>* source, const LxROI<T>* destination) {
  using Kernel = FilterKernel<T>;
  const Neighbourhood map = FilterMapOf(filter, path, source, destination);
  if (map.elements == 0 || map.height == 0) return;
  const Scratch<std::uint8_t> scratch(FilterScratch(map, Kernel::kElementBytes));
  if (scratch) Kernel::kRun(filter, map, 1, scratch.get());
}

}  // namespace lx::convolution
