// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>

#include "correction/flat_field_kernels.h"
#include "foundation/scratch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "correction/flat_field_columns_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/pixel_map-inl.h"
#include "foundation/wide-inl.h"

#ifndef LXPIC_CORRECTION_FLAT_FIELD_COLUMNS_
#define LXPIC_CORRECTION_FLAT_FIELD_COLUMNS_
namespace lx::correction {

// What the lanes of a row are corrected with, in lanes W of twice the width of a pixel. A table
// holds what belongs to the first, third, ... element of a row, and then, `half` further, what
// belongs to the others: halves of vectors find theirs side by side.
template <typename W>
struct LaneTables {
  const W* low;    // 16 bits of the gains' magnitudes
  const W* high;   // what is above them, times 16
  const W* more;   // positive parts of the offsets
  const W* less;   // negative parts
  const W* falls;  // all ones where the gain is negative; the offset is not, then
  std::size_t half;
  bool isSteep;  // some gain has more than 16 bits or is negative
};

}  // namespace lx::correction
#endif

HWY_BEFORE_NAMESPACE();
namespace lx::correction::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

#if LX_HAS_LANES

// (v * gain) >> 12 for gains of 16 bits: of a byte as the high half of a product, of a word within
// 32 bits.
template <class D, class V>
HWY_INLINE V Scaled(D /*wide*/, V v, V gain) {
  if constexpr (sizeof(hn::TFromD<D>) == 2) {
    return hn::MulHigh(hn::ShiftLeft<4>(v), gain);
  } else {
    return hn::ShiftRight<12>(hn::Mul(v, gain));
  }
}

// Sums stay in range: no gain is above the largest pixel, and where one rises its offset is a pixel
// at most. Only subtractions may leave it, and saturate.
template <class D, class V>
HWY_INLINE V LessOrNone(D /*wide*/, V v, V less) {
  if constexpr (sizeof(hn::TFromD<D>) == 2) {
    return hn::SaturatedSub(v, less);
  } else {
    return hn::Sub(hn::Max(v, less), less);
  }
}

// A line with any gain: what rises is rounded down, and so is what falls.
template <class D, class V>
HWY_INLINE V Steep(D wide, V v, const LaneTables<hn::TFromD<D>>& tables, std::size_t at) {
  const auto low = hn::LoadU(wide, tables.low + at);
  const auto more = hn::LoadU(wide, tables.more + at);
  const auto whole = hn::Add(Scaled(wide, v, low), hn::Mul(v, hn::LoadU(wide, tables.high + at)));
  const auto rest = hn::And(hn::Mul(v, low), hn::Set(wide, 0xFFF));
  const auto rise = LessOrNone(wide, hn::Add(whole, more), hn::LoadU(wide, tables.less + at));
  const auto part = hn::Min(rest, hn::Set(wide, 1));
  const auto fall = LessOrNone(wide, more, hn::Add(whole, part));
  return hn::IfVecThenElse(hn::LoadU(wide, tables.falls + at), fall, rise);
}

template <typename T, bool kSteep>
void Correct(const PixelMap& map, const LaneTables<hwy::MakeWide<T>>& tables) {
  const hn::ScalableTag<T> d;
  const WideTag<decltype(d)> wide;
  const auto largest = hn::Set(wide, hwy::LimitsMax<T>());
  const auto line = [&](auto v, std::size_t at) HWY_ATTR {
    if constexpr (kSteep) {
      return hn::Min(Steep(wide, v, tables, at), largest);
    } else {
      const auto sum = hn::Add(Scaled(wide, v, hn::LoadU(wide, tables.low + at)),
                               hn::LoadU(wide, tables.more + at));
      return hn::Min(LessOrNone(wide, sum, hn::LoadU(wide, tables.less + at)), largest);
    }
  };
  for (std::size_t y = 0; y < map.height; ++y) {
    const T* const from = map.sources[0].Row<const T>(y);
    T* const to = map.destination.Row<T>(y);
    ForEachVector(d, map.width, [&](std::size_t x, auto access) HWY_ATTR {
      const auto v = access.Load(d, from + x);
      access.Store(
          d, Join(d, {{line(EvenHalf(d, v), x / 2), line(OddHalf(d, v), tables.half + x / 2)}}),
          to + x);
    });
  }
}

#else

template <typename T, bool kSteep>
void Correct(const PixelMap& map, const LaneTables<hwy::MakeWide<T>>& tables) {
  MapEach<T, T>(map, [&](T pixel, std::size_t x) {
    const std::int64_t v = pixel;
    const std::size_t at = x / 2 + (x % 2) * tables.half;
    const std::int64_t magnitude = tables.low[at] + (std::int64_t{tables.high[at]} << 12);
    const std::int64_t gain = tables.falls[at] != 0 ? -magnitude : magnitude;
    const std::int64_t line = (gain * v >> 12) + tables.more[at] - tables.less[at];
    return static_cast<T>(std::clamp<std::int64_t>(line, 0, hwy::LimitsMax<T>()));
  });
}

#endif

template <typename T>
void CorrectAny(const PixelMap& map, const LaneTables<hwy::MakeWide<T>>& tables) {
  if (tables.isSteep) {
    Correct<T, true>(map, tables);
  } else {
    Correct<T, false>(map, tables);
  }
}

void Bytes(const PixelMap& map, const LaneTables<std::uint16_t>& tables) {
  CorrectAny<std::uint8_t>(map, tables);
}

void Words(const PixelMap& map, const LaneTables<std::uint32_t>& tables) {
  CorrectAny<std::uint16_t>(map, tables);
}

}  // namespace
}  // namespace lx::correction::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::correction {

HWY_EXPORT(Bytes);
HWY_EXPORT(Words);

namespace {

// The tables of lines. Gains are no further from 0 than the largest pixel, in units, and offsets no
// further than its square: but for their signs, lanes hold them.
template <typename W>
class Lines {
 public:
  Lines(const ColumnLine* lines, std::size_t width)
      : stride_(2 * Half(width)), tables_(5 * stride_ + kLargestVector) {
    if (!tables_) return;
    W* const low = tables_.get();
    std::fill_n(low, 5 * stride_, W{0});
    lanes_ = {low,         low + stride_, low + 2 * stride_, low + 3 * stride_, low + 4 * stride_,
              Half(width), false};
    for (std::size_t x = 0; x < width; ++x) {
      const auto& [gain, offset] = lines[x];
      const std::int64_t magnitude = gain < 0 ? -gain : gain;
      W* const at = low + x / 2 + (x % 2) * Half(width);
      at[0] = static_cast<W>(magnitude & 0xFFFF);
      at[stride_] = static_cast<W>(magnitude >> 16 << 4);
      at[2 * stride_] = static_cast<W>(std::max<std::int64_t>(offset, 0));
      at[3 * stride_] = static_cast<W>(std::max<std::int64_t>(-offset, 0));
      at[4 * stride_] = gain < 0 ? static_cast<W>(~W{0}) : W{0};
      lanes_.isSteep = lanes_.isSteep || gain < 0 || gain > 0xFFFF;
    }
  }

  explicit operator bool() const { return static_cast<bool>(tables_); }
  const LaneTables<W>& Lanes() const { return lanes_; }

 private:
  // The last vector of a row reads whole ones of its tables.
  static std::size_t Half(std::size_t width) { return WholeVectors(width / 2 + 1); }

  std::size_t stride_;
  Scratch<W> tables_;
  LaneTables<W> lanes_{};
};

template <typename W, class Worker>
void CorrectLines(const PixelMap& map, const ColumnLine* lines, const Worker& worker) {
  const Lines<W> tables(lines, map.width);
  if (tables) worker(tables.Lanes());
}

}  // namespace

void CorrectBytes(const PixelMap& map, const ColumnLine* lines) {
  CorrectLines<std::uint16_t>(map, lines,
                              [&](const auto& lanes) { LX_CALL(map.path, Bytes, map, lanes); });
}

void CorrectWords(const PixelMap& map, const ColumnLine* lines) {
  CorrectLines<std::uint32_t>(map, lines,
                              [&](const auto& lanes) { LX_CALL(map.path, Words, map, lanes); });
}

}  // namespace lx::correction
#endif
