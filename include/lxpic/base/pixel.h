// SPDX-License-Identifier: Apache-2.0
/// @file pixel.h
/// Pixel types. All are trivial, standard-layout and stored exactly as described, byte 0 first.
#pragma once

#include <cstdint>

#include "lxpic/base/export.h"

/// 8-bit grey level, 0..255.
struct LXPIC_API LxBW8 {
  std::uint8_t value;
  LxBW8() = default;
  constexpr LxBW8(std::uint8_t level) noexcept : value(level) {}
  constexpr operator std::uint8_t() const noexcept { return value; }
};

/// 16-bit grey level, 0..65535.
struct LXPIC_API LxBW16 {
  std::uint16_t value;
  LxBW16() = default;
  constexpr LxBW16(std::uint16_t level) noexcept : value(level) {}
  constexpr operator std::uint16_t() const noexcept { return value; }
};

/// 32-bit unsigned value.
struct LXPIC_API LxBW32 {
  std::uint32_t value;
  LxBW32() = default;
  constexpr LxBW32(std::uint32_t level) noexcept : value(level) {}
  constexpr operator std::uint32_t() const noexcept { return value; }
};

/// 24-bit colour: component k in byte k, no padding between pixels. The file loaders put blue in
/// byte 0, green in byte 1 and red in byte 2.
struct LXPIC_API LxC24 {
  std::uint8_t c0;
  std::uint8_t c1;
  std::uint8_t c2;
};

/// 24-bit colour with alpha in byte 3.
struct LXPIC_API LxC24A {
  std::uint8_t c0;
  std::uint8_t c1;
  std::uint8_t c2;
  std::uint8_t alpha;
};

/// 15-bit colour: bits 0-4 component 0, 5-9 component 1, 10-14 component 2. Bit 15 is not a colour
/// bit: writing a pixel leaves it as it was.
struct LXPIC_API LxC15 {
  std::uint16_t word;
};

/// 16-bit colour: bits 0-4 component 0, 5-10 component 1, 11-15 component 2.
struct LXPIC_API LxC16 {
  std::uint16_t word;
};

/// Complex value of two 32-bit floats.
struct LXPIC_API LxComplex64 {
  float re;
  float im;
};

/// Three floats that parametrise colour operations. The order is the reverse of a pixel's bytes:
/// `c0` goes with byte 2, `c1` with byte 1, `c2` with byte 0.
struct LXPIC_API LxColor {
  float c0;
  float c1;
  float c2;
};

constexpr bool operator==(LxC24 a, LxC24 b) noexcept {
  return a.c0 == b.c0 && a.c1 == b.c1 && a.c2 == b.c2;
}
constexpr bool operator!=(LxC24 a, LxC24 b) noexcept { return !(a == b); }
constexpr bool operator==(LxC24A a, LxC24A b) noexcept {
  return a.c0 == b.c0 && a.c1 == b.c1 && a.c2 == b.c2 && a.alpha == b.alpha;
}
constexpr bool operator!=(LxC24A a, LxC24A b) noexcept { return !(a == b); }
constexpr bool operator==(LxC15 a, LxC15 b) noexcept { return a.word == b.word; }
constexpr bool operator!=(LxC15 a, LxC15 b) noexcept { return !(a == b); }
constexpr bool operator==(LxC16 a, LxC16 b) noexcept { return a.word == b.word; }
constexpr bool operator!=(LxC16 a, LxC16 b) noexcept { return !(a == b); }

static_assert(sizeof(LxBW8) == 1 && sizeof(LxBW16) == 2 && sizeof(LxBW32) == 4);
static_assert(sizeof(LxC24) == 3 && sizeof(LxC24A) == 4 && sizeof(LxC15) == 2);
static_assert(sizeof(LxC16) == 2 && sizeof(LxComplex64) == 8);

/// A run of pixels of a region. `start` and `end` (exclusive) are byte offsets from the address of
/// the region's pixel (0, 0), or absolute addresses; the region knows which. `position` holds the x
/// of the run's first pixel in its low and the y in its high 16 bits, both signed.
struct LXPIC_API LxRun {
  std::uintptr_t start;
  std::uintptr_t end;
  std::uint32_t position;
};
