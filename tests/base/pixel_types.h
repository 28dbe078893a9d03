// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "lxpic/base/pixel.h"

namespace lx::test {

using PixelTypes =
    testing::Types<LxBW8, LxBW16, LxBW32, LxC24, LxC15, LxC16, LxC24A, LxComplex64, int>;

template <class T>
constexpr bool kBinary = std::is_same_v<T, int>;

/// Whether SetPixel() leaves the topmost bit of a pixel as it was.
template <class T>
constexpr bool kKeepsBit15 = std::is_same_v<T, LxC15>;

/// Pixel number `seed` of a sequence with few repetitions.
template <class T>
T MakePixel(unsigned seed) {
  if constexpr (kBinary<T>) {
    return static_cast<int>((seed * 2654435761U) >> 31);
  } else {
    T pixel;
    for (std::size_t i = 0; i < sizeof(T); ++i) {
      const unsigned byte = (seed * 2654435761U + static_cast<unsigned>(i) * 40503U) >> 9;
      reinterpret_cast<unsigned char*>(&pixel)[i] = static_cast<unsigned char>(byte);
    }
    return pixel;
  }
}

template <class T>
bool SameBytes(const T& a, const T& b) {
  // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison): two NaNs may well be the same bytes.
  return std::memcmp(&a, &b, sizeof(T)) == 0;
}

}  // namespace lx::test
