// SPDX-License-Identifier: Apache-2.0
// What a neighbourhood filter works on, and the passes it is made of.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "foundation/path.h"
#include "foundation/rows.h"
#include "foundation/scratch.h"

namespace lx {

// What stands for pixels outside the region.
enum class Border {
  kReplicate,  // the nearest pixel of the region
  kConstant,   // Neighbourhood::outside
};

// A filter from a source to a destination, which may be the same pixels. Rows hold `elements`
// elements; neighbours in a row are `stride` elements apart: 3 for interleaved colours, whose
// components then never mix.
struct Neighbourhood {
  Rows destination;
  Rows source;
  std::size_t elements = 0;
  std::size_t stride = 1;
  std::size_t height = 0;
  Border border = Border::kReplicate;
  std::array<std::uint16_t, 3> outside = {};  // by component
  Path path = CurrentPath();

  // Rows are written over before the row below is read.
  bool IsInPlace() const { return source.data == destination.data; }
};

template <class T>
Neighbourhood NeighbourhoodOf(const LxROI<T>* destination, const LxROI<T>* source) {
  Neighbourhood made;
  made.destination = RowsOf(destination);
  made.source = RowsOf(source);
  made.stride = sizeof(T) == 3 ? 3 : 1;
  made.elements = destination->GetWidth() * made.stride;
  made.height = destination->GetHeight();
  return made;
}

// The most passes that run side by side.
inline constexpr std::size_t kMostPasses = 8;

// Calls run(n) for `passes` passes of a map, n at a time. Those behind the first work on the
// destination.
template <class Run>
void RunInBatches(Neighbourhood& map, std::size_t passes, const Run& run) {
  while (passes > 0) {
    const std::size_t batch = std::min(passes, kMostPasses);
    run(batch);
    map.source = map.destination;
    passes -= batch;
  }
}

// Result rows of a sweep down the image.
inline constexpr std::size_t kSweepRows = 4;

// The scratch memory of one 3 × 3 pass, in bytes. Every row of elements has room for a vector before
// and behind its pixels.
struct PassLayout {
  static constexpr std::size_t kCopies = kSweepRows;

  std::size_t row;  // from one row of elements to the next
  std::size_t
      rows;  // of what is outside, of results that nobody wants, and the copies of source rows
  std::size_t records;  // planes in wide lanes, of two rows; where a lane is a pixel, of four

  PassLayout(const Neighbourhood& map, std::size_t elementBytes, std::size_t planes)
      : row(WholeVectors(map.elements * elementBytes) + 3 * kLargestVector),
        rows((2 + kCopies) * row),
        records(8 * planes * (row + kLargestVector)) {}

  std::size_t Bytes() const { return rows + records; }
};

}  // namespace lx
