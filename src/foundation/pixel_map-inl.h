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

// Rules that compute for longer than memory takes say so with `kComputes` and get the widest vectors.
// For all others wide ones gain nothing, and wherever a row starts beside a cache line, each of them
// straddles two.
template <class Rule>
inline constexpr bool kComputes = requires {
  Rule::kComputes;
};
template <typename T, class Rule>
using MapTag =
    std::conditional_t<kComputes<Rule>, hn::ScalableTag<T>, hn::CappedTag<T, 32 / sizeof(T)>>;

// How a map reads ahead once its images leave the caches: a little more than the nearest of them
// answers in. Further ahead it only disturbs what processors do by themselves.
struct ReadAhead {
  static constexpr std::size_t kFrom = std::size_t{4} << 20;  // bytes of all images
  static constexpr std::size_t kStretch = 128;
  static constexpr std::size_t kDistance = 320;
  static constexpr std::size_t kLine = 64;
};

// Says that the line at an address is going to be written.
HWY_INLINE void PrefetchForWriting(const void* at) {
#if HWY_ARCH_X86
  // Known to all processors of 64 bits, which the builtin function does not rely on.
  asm volatile("prefetchw %0" : : "m"(*static_cast<const char*>(at)));
#else
  __builtin_prefetch(at, 1);
#endif
}

// Calls step(x, access) for each vector of a row, two whole ones at a time. For rows that are `far`
// away it calls ahead(x) with an element of each line to come.
template <class D, class Step, class Ahead>
HWY_INLINE void ForEachPair(D d, std::size_t width, bool far, const Step& step,
                            const Ahead& ahead) {
  constexpr std::size_t kSize = sizeof(hn::TFromD<D>);
  const std::size_t n = hn::Lanes(d);
  const std::size_t pairs = width - width % (2 * n);
  std::size_t x = 0;
  while (x < pairs) {
    std::size_t end = pairs;
    if (far) {
      end = HWY_MIN(pairs, x + ReadAhead::kStretch / kSize);
      for (std::size_t i = 0; i < ReadAhead::kStretch; i += ReadAhead::kLine) {
        ahead(HWY_MIN(x + (ReadAhead::kDistance + i) / kSize, width - 1));
      }
    }
    for (; x < end; x += 2 * n) {
      step(x, WholeVector{});
      step(x + n, WholeVector{});
    }
  }
  ForEachVector(d, width - x, [&](std::size_t i, auto access) HWY_ATTR { step(x + i, access); });
}

// The same for rows that are near.
template <class D, class Step>
HWY_INLINE void ForEachPair(D d, std::size_t width, const Step& step) {
  ForEachPair(d, width, false, step, [](std::size_t) HWY_ATTR {});
}

// destination = rule(source)
template <typename T, class Rule>
void MapOne(const PixelMap& map, const Rule& rule) {
  const MapTag<T, Rule> d;
  for (std::size_t y = 0; y < map.height; ++y) {
    const T* const a = map.sources[0].Row<const T>(y);
    T* const to = map.destination.Row<T>(y);
    const auto step = [&](std::size_t x, auto access)
                          HWY_ATTR { access.Store(d, rule(d, access.Load(d, a + x)), to + x); };
    if constexpr (LX_HAS_LANES && !kComputes<Rule>) {
      ForEachPair(d, map.width, step);
    } else {
      ForEachVector(d, map.width, step);
    }
  }
}

// destination = rule(source 1, source 2)
template <typename T, class Rule>
void MapTwo(const PixelMap& map, const Rule& rule) {
  const MapTag<T, Rule> d;
  [[maybe_unused]] const bool far = 3 * sizeof(T) * map.width * map.height > ReadAhead::kFrom;
  for (std::size_t y = 0; y < map.height; ++y) {
    const T* const a = map.sources[0].Row<const T>(y);
    const T* const b = map.sources[1].Row<const T>(y);
    T* const to = map.destination.Row<T>(y);
    const auto step = [&](std::size_t x, auto access) HWY_ATTR {
      access.Store(d,
                   ApplyTwo(d, rule, access.Load(d, a + x), access.Load(d, b + x), access, to + x),
                   to + x);
    };
    if constexpr (LX_HAS_LANES && !kComputes<Rule>) {
      ForEachPair(d, map.width, far, step, [&](std::size_t x) HWY_ATTR {
        __builtin_prefetch(a + x);
        __builtin_prefetch(b + x);
        PrefetchForWriting(to + x);
      });
    } else {
      ForEachVector(d, map.width, step);
    }
  }
}

// Three vectors that repeat a pattern of three elements.
template <class D>
struct Pattern {
  HWY_ALIGN hn::TFromD<D> lanes[3 * hn::MaxLanes(D())];

  HWY_INLINE Pattern(D d, const std::array<std::uint16_t, 3>& elements) {
    for (std::size_t i = 0; i < 3 * hn::Lanes(d); ++i) {
      lanes[i] = static_cast<hn::TFromD<D>>(elements[i % 3]);
    }
  }
};

// Calls step(x, phase, access) for each vector of a row, where `phase` says at which of its
// elements a pattern goes on.
template <class D, class Step>
HWY_INLINE void ForEachPhase(D d, std::size_t width, const Step& step) {
  const std::size_t n = hn::Lanes(d);
  std::size_t phase = 0;
  ForEachVector(d, width, [&](std::size_t x, auto access) HWY_ATTR {
    step(x, phase, access);
    phase = phase == 2 * n ? 0 : phase + n;
  });
}

// destination = rule(source, constant). Grey images have the constant in a register.
template <typename T, class Rule>
void MapConstant(const PixelMap& map, const Rule& rule) {
  const MapTag<T, Rule> d;
  const Pattern pattern(d, map.constants);
  const auto same = hn::Load(d, pattern.lanes);
  const bool grey = map.constants[0] == map.constants[1] && map.constants[1] == map.constants[2];
  for (std::size_t y = 0; y < map.height; ++y) {
    const T* const a = map.sources[0].Row<const T>(y);
    T* const to = map.destination.Row<T>(y);
    const auto apply = [&](std::size_t x, hn::Vec<decltype(d)> constant, auto access) HWY_ATTR {
      access.Store(d, ApplyTwo(d, rule, access.Load(d, a + x), constant, access, to + x), to + x);
    };
    if (sizeof(T) > 1 || grey) {
      ForEachVector(d, map.width,
                    [&](std::size_t x, auto access) HWY_ATTR { apply(x, same, access); });
    } else {
      ForEachPhase(d, map.width, [&](std::size_t x, std::size_t phase, auto access) HWY_ATTR {
        apply(x, hn::Load(d, pattern.lanes + phase), access);
      });
    }
  }
}

// destination = constant. The pattern stays in registers: nothing but the stores takes time.
template <typename T>
void MapFill(const PixelMap& map) {
  const hn::ScalableTag<T> d;
  const std::size_t n = hn::Lanes(d);
  const Pattern pattern(d, map.constants);
  const auto first = hn::Load(d, pattern.lanes);
  const auto second = hn::Load(d, pattern.lanes + n);
  const auto third = hn::Load(d, pattern.lanes + 2 * n);
  for (std::size_t y = 0; y < map.height; ++y) {
    T* const to = map.destination.Row<T>(y);
    std::size_t x = 0;
    for (; x + 3 * n <= map.width; x += 3 * n) {
      hn::StoreU(first, d, to + x);
      hn::StoreU(second, d, to + x + n);
      hn::StoreU(third, d, to + x + 2 * n);
    }
    ForEachPhase(d, map.width - x, [&](std::size_t i, std::size_t phase, auto access) HWY_ATTR {
      access.Store(d, hn::Load(d, pattern.lanes + phase), to + x + i);
    });
  }
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_PIXEL_MAP_INL_H_
