// SPDX-License-Identifier: Apache-2.0
// Averages of 2 × 2 pixels.
#pragma once

#include "foundation/path.h"
#include "foundation/rows.h"

namespace lx::geometry {

// What a halving works on. The last column or row of an odd size may become one of its own.
struct Halving {
  Rows source;
  Rows destination;
  std::size_t columns = 0;  // full blocks
  std::size_t rows = 0;
  bool keepsColumn = false;
  bool keepsRow = false;
  Path path = CurrentPath();
};

void HalveBytes(const Halving& halving);
void HalveWords(const Halving& halving);
// Without a column or row of their own.
void HalveColours(const Halving& halving);
// Pixels of two signed components of 16 bits.
void HalveGradients(const Halving& halving);

}  // namespace lx::geometry
