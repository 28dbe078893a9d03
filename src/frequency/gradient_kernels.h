// SPDX-License-Identifier: Apache-2.0
// Differences of an image's neighbours, and what a table holds for them.
#pragma once

#include "foundation/path.h"
#include "foundation/pixel_map.h"
#include "foundation/rows.h"
#include "foundation/scratch.h"

namespace lx::frequency {

// The sides of a table, and the row and column of the differences 0.
inline constexpr int kTableSide = 512;
inline constexpr int kTableCentre = 256;
// Tables of larger pitches have places beyond 32 bits.
inline constexpr std::ptrdiff_t kLargestTablePitch = std::ptrdiff_t{1} << 22;

// An image that is not empty; source and destination may be the same pixels.
struct GradientImage {
  Rows destination;
  Rows source;
  std::size_t width;
  std::size_t height;
  Path path = CurrentPath();
};

// Scratch memory: copies of three rows with room around them.
inline std::size_t GradientRowBytes(std::size_t width) {
  return WholeVectors(width) + 2 * kLargestVector;
}
inline std::size_t GradientBytes(std::size_t width) { return 3 * GradientRowBytes(width); }

// Destination pixels are words of 32 bits: the differences.
void FindDifferences(const GradientImage& image, std::uint8_t* scratch);

// Destination pixels are bytes of the table.
void LookUpGradients(const GradientImage& image, const Rows& table, std::uint8_t* scratch);

// Source pixels are differences.
void LookUpDifferences(const PixelMap& map, const Rows& table);

}  // namespace lx::frequency
