// SPDX-License-Identifier: Apache-2.0
// Sums of rows and of columns.
#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/path.h"
#include "foundation/rows.h"
#include "foundation/scratch.h"

namespace lx::measure {

// An image whose rows or columns are summed.
struct Projection {
  Rows source;
  std::size_t elements;  // of a row: pixels, or components of colours
  std::size_t rows;
  Path path = CurrentPath();
};

// Bytes of scratch memory for the sums of columns of elements.
inline std::size_t ColumnScratch(std::size_t elements) {
  return 2 * WholeVectors(2 * elements) + 2 * kLargestVector;
}

// columns[x] = sum of column x, of bytes or of words.
void SumByteColumns(const Projection& projection, std::uint8_t* scratch, std::uint64_t* columns);
void SumWordColumns(const Projection& projection, std::uint8_t* scratch, std::uint64_t* columns);

// sums[y] = sum of row y; of a row of colours, sums[3 * y + c] is that of component c.
void SumByteRows(const Projection& projection, std::uint64_t* sums);
void SumWordRows(const Projection& projection, std::uint64_t* sums);
void SumColourRows(const Projection& projection, std::uint64_t* sums);

}  // namespace lx::measure
