// SPDX-License-Identifier: Apache-2.0
// Pixels from computed addresses: coordinates and bounds in vectors, strip by strip, loads one by
// one. Included once for each instruction set.

#if defined(LXPIC_FOUNDATION_FETCH_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_FETCH_INL_H_
#undef LXPIC_FOUNDATION_FETCH_INL_H_
#else
#define LXPIC_FOUNDATION_FETCH_INL_H_
#endif

#include <algorithm>

#include "foundation/rows.h"
#include "foundation/simd-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

using Coordinate = hn::ScalableTag<std::int32_t>;

// Source points of one vector of destination pixels.
struct Points {
  hn::Vec<Coordinate> x;
  hn::Vec<Coordinate> y;
};

// An image that pixels of `kBytes` bytes are fetched from; not empty.
template <std::size_t kBytes>
struct FetchSource {
  Rows rows;
  std::int32_t width;
  std::int32_t height;

  // Whether every pixel lies within 32 bits of the first one.
  bool IsNear() const {
    const std::int64_t pitch = rows.pitch < 0 ? -rows.pitch : rows.pitch;
    return pitch <= INT32_MAX && pitch * height + std::int64_t{kBytes} * width <= INT32_MAX;
  }
};

// Where the pixels of a strip of a destination row lie. Those outside stand for pixel (0, 0).
struct FetchStrip {
  static constexpr std::size_t kPixels = 256;

  alignas(64) std::int32_t x[kPixels];  // or, of a near source, the offset in bytes
  alignas(64) std::int32_t y[kPixels];
  alignas(64) std::int32_t inside[kPixels];  // -1, or 0
  std::size_t count = 0;
  bool allInside = false;

  std::size_t FirstOutside() const {
    return static_cast<std::size_t>(std::find(inside, inside + count, 0) - inside);
  }
};

// Fills a strip: at(i, access) gives the points of the destination pixels from i on.
template <bool kNear, std::size_t kBytes, class At>
HWY_INLINE void Locate(const FetchSource<kBytes>& source, std::size_t first, const At& at,
                       FetchStrip& strip) {
  const Coordinate d;
  const auto none = hn::Set(d, -1);
  const auto width = hn::Set(d, source.width);
  const auto height = hn::Set(d, source.height);
  const auto pitch = hn::Set(d, static_cast<std::int32_t>(source.rows.pitch));
  auto all = none;
  ForEachVector(d, strip.count, [&](std::size_t i, auto access) HWY_ATTR {
    const Points points = at(first + i, access);
    const auto isInside = hn::And(hn::And(hn::Gt(points.x, none), hn::Gt(points.y, none)),
                                  hn::And(hn::Lt(points.x, width), hn::Lt(points.y, height)));
    const auto inside = hn::VecFromMask(d, isInside);
    const auto x = hn::And(points.x, inside);
    const auto y = hn::And(points.y, inside);
    if constexpr (kNear) {
      const auto bytes = kBytes == 1 ? x : hn::Mul(x, hn::Set(d, std::int32_t{kBytes}));
      hn::Store(hn::Add(hn::Mul(y, pitch), bytes), d, strip.x + i);
    } else {
      hn::Store(x, d, strip.x + i);
      hn::Store(y, d, strip.y + i);
    }
    hn::Store(inside, d, strip.inside + i);
    all = hn::And(all, inside);
  });
  strip.allInside = hn::AllTrue(d, hn::Eq(all, none));
}

// Calls step(i) for each i below `count`, eight at a time.
template <class Step>
HWY_INLINE void ForEachOfEight(std::size_t count, const Step& step) {
  constexpr std::size_t kStep = 8;
  std::size_t i = 0;
  for (; i + kStep <= count; i += kStep) {
    LX_UNROLL
    for (std::size_t k = 0; k < kStep; ++k) step(i + k);
  }
  for (; i < count; ++i) step(i);
}

// Fetches the first `count` pixels of a strip; 0 for those outside.
template <bool kNear, std::size_t kBytes>
HWY_INLINE void Fetch(const FetchSource<kBytes>& source, const FetchStrip& strip, std::size_t count,
                      std::uint8_t* HWY_RESTRICT to) {
  struct Pixel {
    std::uint8_t bytes[kBytes];
  };
  const std::uint8_t* const from = source.rows.data;
  const std::ptrdiff_t pitch = source.rows.pitch;
  const auto at = [=, &strip](std::size_t i) HWY_ATTR {
    Pixel pixel;
    if constexpr (kNear) {
      std::memcpy(&pixel, from + strip.x[i], kBytes);
    } else {
      const std::ptrdiff_t x = std::ptrdiff_t{strip.x[i]} * std::ptrdiff_t{kBytes};
      std::memcpy(&pixel, from + strip.y[i] * pitch + x, kBytes);
    }
    return pixel;
  };
  if (strip.allInside) {
    ForEachOfEight(count, [&](std::size_t i) HWY_ATTR {
      const Pixel pixel = at(i);
      std::memcpy(to + kBytes * i, &pixel, kBytes);
    });
    return;
  }
  ForEachOfEight(count, [&](std::size_t i) HWY_ATTR {
    Pixel pixel = at(i);
    for (std::uint8_t& byte : pixel.bytes) byte = static_cast<std::uint8_t>(byte & strip.inside[i]);
    std::memcpy(to + kBytes * i, &pixel, kBytes);
  });
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_FETCH_INL_H_
