// SPDX-License-Identifier: Apache-2.0
// The pixel-map drivers: they walk rows and vectors, a rule computes one vector of pixels. Included
// once for each instruction set.

#if defined(LXPIC_FOUNDATION_PIXEL_MAP_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_PIXEL_MAP_INL_H_
#undef LXPIC_FOUNDATION_PIXEL_MAP_INL_H_
#else
#define LXPIC_FOUNDATION_PIXEL_MAP_INL_H_
#endif

#include <type_traits>

#include "foundation/pixel_map.h"
#include "foundation/simd-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

// A rule that keeps destination pixels takes them as its last argument.
template <class Rule, class D>
inline constexpr bool kKeeps =
    std::is_invocable_v<const Rule&, D, hn::Vec<D>, hn::Vec<D>, hn::Vec<D>>;

template <class D, class Rule, class Access>
HWY_INLINE hn::Vec<D> ApplyTwo(D d, const Rule& rule, hn::Vec<D> a, hn::Vec<D> b,
                               [[maybe_unused]] Access access,
                               [[maybe_unused]] const hn::TFromD<D>* old) {
  if constexpr (kKeeps<Rule, D>) {
    return rule(d, a, b, access.Load(d, old));
  } else {
    return rule(d, a, b);
  }
}

// destination = rule(source)
template <typename T, class Rule>
void MapOne(const PixelMap& map, const Rule& rule) {
  const hn::ScalableTag<T> d;
  for (std::size_t y = 0; y < map.height; ++y) {
    const T* const a = map.sources[0].Row<const T>(y);
    T* const to = map.destination.Row<T>(y);
    ForEachVector(d, map.width, [&](std::size_t x, auto access) HWY_ATTR {
      access.Store(d, rule(d, access.Load(d, a + x)), to + x);
    });
  }
}

// destination = rule(source 1, source 2)
template <typename T, class Rule>
void MapTwo(const PixelMap& map, const Rule& rule) {
  const hn::ScalableTag<T> d;
  for (std::size_t y = 0; y < map.height; ++y) {
    const T* const a = map.sources[0].Row<const T>(y);
    const T* const b = map.sources[1].Row<const T>(y);
    T* const to = map.destination.Row<T>(y);
    ForEachVector(d, map.width, [&](std::size_t x, auto access) HWY_ATTR {
      access.Store(d,
                   ApplyTwo(d, rule, access.Load(d, a + x), access.Load(d, b + x), access, to + x),
                   to + x);
    });
  }
}

// Calls step(x, phase, access) for each vector of a row, where `phase` counts 0, 1, 2, 0, ...:
// vector `phase` of three that repeat a pattern of three elements continues it at x.
template <class D, class Step>
HWY_INLINE void ForEachPhase(D d, std::size_t width, const Step& step) {
  const std::size_t n = hn::Lanes(d);
  std::size_t x = 0;
  for (; x + 3 * n <= width; x += 3 * n) {
    step(x, 0, WholeVector{});
    step(x + n, 1, WholeVector{});
    step(x + 2 * n, 2, WholeVector{});
  }
  for (int phase = 0; x < width; ++phase, x += n) {
    if (x + n <= width) {
      step(x, phase, WholeVector{});
    } else {
      step(x, phase, PartVector{width - x});
    }
  }
}

// Three vectors that repeat a pattern of three elements.
template <class D>
struct Pattern {
  hn::Vec<D> phases[3];

  HWY_INLINE Pattern(D d, const std::array<std::uint16_t, 3>& elements) {
    HWY_ALIGN hn::TFromD<D> lanes[3 * hn::MaxLanes(d)];
    for (std::size_t i = 0; i < 3 * hn::MaxLanes(d); ++i) {
      lanes[i] = static_cast<hn::TFromD<D>>(elements[i % 3]);
    }
    for (std::size_t p = 0; p < 3; ++p) phases[p] = hn::Load(d, lanes + p * hn::Lanes(d));
  }
};

// destination = rule(source, constant)
template <typename T, class Rule>
void MapConstant(const PixelMap& map, const Rule& rule) {
  const hn::ScalableTag<T> d;
  const Pattern pattern(d, map.constants);
  for (std::size_t y = 0; y < map.height; ++y) {
    const T* const a = map.sources[0].Row<const T>(y);
    T* const to = map.destination.Row<T>(y);
    ForEachPhase(d, map.width, [&](std::size_t x, int phase, auto access) HWY_ATTR {
      access.Store(d,
                   ApplyTwo(d, rule, access.Load(d, a + x), pattern.phases[phase], access, to + x),
                   to + x);
    });
  }
}

// destination = constant
template <typename T>
void MapFill(const PixelMap& map) {
  const hn::ScalableTag<T> d;
  const Pattern pattern(d, map.constants);
  for (std::size_t y = 0; y < map.height; ++y) {
    T* const to = map.destination.Row<T>(y);
    ForEachPhase(d, map.width, [&](std::size_t x, int phase, auto access) HWY_ATTR {
      access.Store(d, pattern.phases[phase], to + x);
    });
  }
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_PIXEL_MAP_INL_H_
