// SPDX-License-Identifier: Apache-2.0
#include "frequency/complex_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frequency/complex_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include <cmath>

#include "foundation/simd-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::frequency::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

using Lanes = hn::ScalableTag<double>;
using Singles = hn::Rebind<float, Lanes>;
using Bytes = hn::Rebind<std::uint8_t, Lanes>;
using V = hn::Vec<Lanes>;

// Whole vectors of every instruction set.
constexpr std::size_t kStretch = 256;

HWY_INLINE V SquaredModuli(const float* from) {
  const Lanes d;
  hn::Vec<Singles> re;
  hn::Vec<Singles> im;
  hn::LoadInterleaved2(Singles(), from, re, im);
  const V x = hn::PromoteTo(d, re);
  const V y = hn::PromoteTo(d, im);
  return hn::Add(hn::Mul(x, x), hn::Mul(y, y));
}

// Stores the moduli of `count` pixels; room is for whole vectors.
template <class Rule>
HWY_INLINE void StoreModuli(const float* from, std::size_t count, double* to, const Rule& rule) {
  const Lanes d;
  const std::size_t n = hn::Lanes(d);
  std::size_t x = 0;
  for (; x + n <= count; x += n) hn::Store(rule(SquaredModuli(from + 2 * x), x), d, to + x);
  if (x == count) return;
  HWY_ALIGN float rest[2 * hn::MaxLanes(Lanes())] = {};
  std::memcpy(rest, from + 2 * x, 2 * (count - x) * sizeof(float));
  hn::Store(rule(SquaredModuli(rest), x), d, to + x);
}

// Values above -1 truncate to 0 at least.
HWY_INLINE void StoreCodes(const double* values, std::size_t count, std::uint8_t* to) {
  const Lanes d;
  const hn::Rebind<std::int32_t, Lanes> whole;
  const auto least = hn::Set(d, -1.0);
  const auto beyond = hn::Set(d, 256.0);
  ForEachVector(d, count, [&](std::size_t x, auto access) HWY_ATTR {
    const V value = hn::Load(d, values + x);
    const auto fits = hn::And(hn::Gt(value, least), hn::Lt(value, beyond));
    const V code = hn::IfThenElse(fits, value, hn::Set(d, 255.0));
    access.Store(Bytes(), hn::DemoteTo(Bytes(), hn::DemoteTo(whole, code)), to + x);
  });
}

// destination = scaled rule(squared modulus, column)
template <class Rule>
HWY_INLINE void RenderRow(const float* from, std::size_t width, const Scale& scale,
                          std::uint8_t* to, const Rule& rule) {
  HWY_ALIGN double values[kStretch];
  for (std::size_t first = 0; first < width; first += kStretch) {
    const std::size_t count = HWY_MIN(kStretch, width - first);
    StoreModuli(from + 2 * first, count, values,
                [&](V squared, std::size_t x) HWY_ATTR { return rule(squared, first + x); });
    for (std::size_t i = 0; i < count && scale.logarithmic; ++i) {
      values[i] = std::log(1 + values[i]) * scale.logGain;
    }
    StoreCodes(values, count, to + first);
  }
}

void Moduli(const PixelMap& map, const Scale& scale) {
  const Lanes d;
  const V gain = hn::Set(d, scale.gain);
  const auto rule = [&](V squared, std::size_t /*x*/) HWY_ATTR {
    const V rounded = hn::PromoteTo(d, hn::DemoteTo(Singles(), squared));
    return hn::Mul(hn::Sqrt(rounded), gain);
  };
  for (std::size_t y = 0; y < map.height; ++y) {
    RenderRow(map.sources[0].Row<const float>(y), map.width, scale,
              map.destination.Row<std::uint8_t>(y), rule);
  }
}

void WeightedModuli(const PixelMap& map, const Scale& scale) {
  const Lanes d;
  const double centreX = 0.5 * static_cast<double>(map.width);
  const double centreY = 0.5 * static_cast<double>(map.height);
  const V factor = hn::Set(d, scale.gain / (centreX * centreX + centreY * centreY));
  for (std::size_t y = 0; y < map.height; ++y) {
    const double down = static_cast<double>(y) - centreY;
    const V downSquared = hn::Set(d, down * down);
    const auto rule = [&](V squared, std::size_t x) HWY_ATTR {
      const V across = hn::Iota(d, static_cast<double>(x) - centreX);
      const V distance = hn::Add(hn::Mul(across, across), downSquared);
      return hn::Mul(hn::Sqrt(squared), hn::Mul(distance, factor));
    };
    RenderRow(map.sources[0].Row<const float>(y), map.width, scale,
              map.destination.Row<std::uint8_t>(y), rule);
  }
}

}  // namespace
}  // namespace lx::frequency::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::frequency {

HWY_EXPORT(Moduli);
HWY_EXPORT(WeightedModuli);

void RenderModuli(const PixelMap& map, const Scale& scale) {
  LX_CALL(map.path, Moduli, map, scale);
}

void RenderWeightedModuli(const PixelMap& map, const Scale& scale) {
  LX_CALL(map.path, WeightedModuli, map, scale);
}

}  // namespace lx::frequency
#endif
