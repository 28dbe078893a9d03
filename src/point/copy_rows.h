// SPDX-License-Identifier: Apache-2.0
// Copies and fills of rows.
#pragma once

#include "foundation/pixel_map.h"

namespace lx::point {

// Copies rows of `map.width` pixels of `pixelBytes` bytes.
void CopyRows(const PixelMap& map, std::size_t pixelBytes);

// Sets every element to its constant: bytes (a colour's in turn) or words.
void FillBytes(const PixelMap& map);
void FillWords(const PixelMap& map);

}  // namespace lx::point
