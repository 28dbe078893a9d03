// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "foundation/path.h"
#include "foundation/rows.h"
#include "measure/moment_sums.h"

namespace lx::measure {

// What pixels weigh.
struct Weighing {
  enum class Kind {
    kValue,
    kReaching,  // 1 if they are `level` or more
    kTable      // the entry of their value
  };
  Kind kind = Kind::kValue;
  unsigned level = 0;
  const std::uint8_t* table = nullptr;
};

// A rectangle of pixels whose first one is (x, y).
struct MomentArea {
  Rows rows;
  std::uint64_t width;
  std::uint64_t height;
  std::uint64_t x = 0;
  std::uint64_t y = 0;
};

// Adds the moments of the area, up to the order of the sums: 2, unless pixels weigh their value.
// Tables are for bytes only.
void AddByteMoments(const MomentArea& area, const Weighing& weighing, Path path, MomentSums& sums);
void AddWordMoments(const MomentArea& area, const Weighing& weighing, Path path, MomentSums& sums);

}  // namespace lx::measure
