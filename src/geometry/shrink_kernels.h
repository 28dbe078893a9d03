// SPDX-License-Identifier: Apache-2.0
// Averages over the blocks of a destination.
#pragma once

#include "foundation/path.h"
#include "foundation/rows.h"
#include "foundation/scratch.h"

namespace lx::geometry {

// The first source row or column of block `index` of `count` blocks that tile `size` of them.
inline std::size_t BlockStart(std::size_t index, std::size_t size, std::size_t count) {
  return index * size / count;
}

// Both sizes are above 0, the destination's not beyond the source's.
struct Shrinking {
  Rows source;
  Rows destination;
  std::size_t width = 0;
  std::size_t height = 0;
  std::size_t columns = 0;  // of the destination
  std::size_t rows = 0;
  std::size_t components = 1;
  Path path = CurrentPath();

  // How many rows a block has at most.
  std::size_t TallestBlock() const { return (height + rows - 1) / rows; }
  // Elements of the sums of columns, with what vectors load beyond the last block.
  std::size_t SumCount() const { return WholeVectors(width * components) + 4 * kLargestVector; }
};

// Whether sums of `rows` pixels of type T fit Lane.
template <typename T, typename Lane>
constexpr bool SumsFit(std::size_t rows) {
  return rows <= static_cast<Lane>(~Lane{0}) / static_cast<T>(~T{0});
}

// `starts` has BlockStart() of every column and, behind them, the width.
void ShrinkBytes(const Shrinking& shrinking, const std::uint32_t* starts, std::uint16_t* sums);
void ShrinkBytes(const Shrinking& shrinking, const std::uint32_t* starts, std::uint32_t* sums);
void ShrinkBytes(const Shrinking& shrinking, const std::uint32_t* starts, std::uint64_t* sums);
void ShrinkWords(const Shrinking& shrinking, const std::uint32_t* starts, std::uint32_t* sums);
void ShrinkWords(const Shrinking& shrinking, const std::uint32_t* starts, std::uint64_t* sums);

}  // namespace lx::geometry
