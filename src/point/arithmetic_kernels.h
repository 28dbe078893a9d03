// SPDX-License-Identifier: Apache-2.0
// The kernels behind PicOper().
#pragma once

#include "foundation/pixel_map.h"
#include "lxpic/point/arithmetic.h"

namespace lx::point {

using MapKernel = void (*)(const PixelMap&);

// What a kernel combines: source 1 with source 2, or with the constants of the map.
enum class Operands {
  kImages,
  kImageWithConstant,
  kConstantWithImage,
  kGreyWithColour,  // bytes; source 1 is the grey one, and the map counts pixels
  kColourWithGrey,  // the same sources as operands in the other order
  kBytes,           // to words
  kWordsWithBytes,
};

// The kernel of an operation on destinations of 8 or 16 bits; null when there is none. Shifts take
// powers of two for their counts: 2^count, or 2^(bits - 1 - count) to the right, and 0 when
// everything is shifted out.
MapKernel ByteKernel(Operands operands, ARITH_LOGIC_OPERATIONS operation, Path path);
MapKernel WordKernel(Operands operands, ARITH_LOGIC_OPERATIONS operation, Path path);

// destination = the complement of source: bytes, of elements of any size.
void InvertBytes(const PixelMap& map);

}  // namespace lx::point
