// SPDX-License-Identifier: Apache-2.0
#include "correction/flat_field_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "correction/flat_field_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "correction/doubles-inl.h"
#include "foundation/pixel_map-inl.h"
#include "foundation/wide-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::correction::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

// Signed lanes cut to the range of pixels of type T.
template <typename T, class V>
HWY_INLINE V Within(V v) {
  const hn::DFromV<V> d;
  return hn::Min(hn::Max(v, hn::Zero(d)), hn::Set(d, hwy::LimitsMax<T>()));
}

// Applies rule(whole, lanes...) to elements as signed lanes of 32 bits, and clamps what it makes.
template <class D, class Rule, class... V>
HWY_INLINE hn::Vec<D> MapWhole(D d, const Rule& rule, V... v) {
  if constexpr (sizeof(hn::TFromD<D>) == 2) {
    return MapWide(
        d,
        [&](auto wide, auto... lanes) HWY_ATTR {
          const hn::RebindToSigned<decltype(wide)> whole;
          const auto made = rule(whole, hn::BitCast(whole, lanes)...);
          return hn::BitCast(wide, Within<hn::TFromD<D>>(made));
        },
        v...);
  } else {
#if LX_HAS_LANES
    const hn::Repartition<std::int32_t, D> whole;
    const hn::Repartition<std::uint32_t, D> quads;
    const auto low = hn::Set(quads, 0xFF);
    const auto quarter = [&](auto shift) HWY_ATTR {
      return rule(
          whole,
          hn::BitCast(whole, hn::And(hn::ShiftRight<decltype(shift)::value>(hn::BitCast(quads, v)),
                                     low))...);
    };
    return JoinQuartersClamped(
        d, quarter(std::integral_constant<int, 0>()), quarter(std::integral_constant<int, 8>()),
        quarter(std::integral_constant<int, 16>()), quarter(std::integral_constant<int, 24>()));
#else
    const hn::Rebind<std::int32_t, D> whole;
    return hn::DemoteTo(d, rule(whole, hn::PromoteTo(whole, v)...));
#endif
  }
}

// trunc(a * b / c) of whole lanes, |a| and |b| below 2^16 and c not 0. In single precision where
// products have 16 bits and in double where they have 32: a rounded quotient of that many bits never
// reaches a whole number that the true one does not. Quotients far beyond all pixels are cut.
struct SingleQuotient {
  template <class D, class V>
  HWY_INLINE V operator()(D /*d*/, V a, V b, V c) const {
    const hn::RebindToFloat<D> real;
    const auto product = hn::Mul(hn::ConvertTo(real, a), hn::ConvertTo(real, b));
    return TruncateFitting(hn::Div(product, hn::ConvertTo(real, c)));
  }
};

struct DoubleQuotient {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V a, V b, V c) const {
    constexpr double kMost = 1 << 20;
    return MapDoubles(
        d,
        [](auto real, auto p, auto q, auto r) HWY_ATTR {
          const auto quotient = hn::Div(hn::Mul(p, q), r);
          return hn::Min(hn::Max(quotient, hn::Set(real, -kMost)), hn::Set(real, kMost));
        },
        a, b, c);
  }
};

template <typename T>
using Quotient = std::conditional_t<sizeof(T) == 1, SingleQuotient, DoubleQuotient>;

// The rules take the source, the references and the levels.
struct Offset {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V source, V reference, V /*none*/, V level, V /*none*/) const {
    return MapWide(
        d,
        [](auto wide, auto s, auto r, auto l) HWY_ATTR {
          const hn::RebindToSigned<decltype(wide)> whole;
          const auto sum = hn::BitCast(whole, hn::Sub(hn::Add(s, l), r));
          return hn::BitCast(wide, Within<hn::TFromD<D>>(sum));
        },
        source, reference, level);
  }
};

struct Scale {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V source, V reference, V /*none*/, V level, V /*none*/) const {
    using T = hn::TFromD<D>;
    const V divisor = hn::Max(reference, hn::Set(d, 1));
    const V scaled = MapWhole(
        d,
        [](auto whole, auto s, auto r, auto l) HWY_ATTR { return Quotient<T>()(whole, s, l, r); },
        source, divisor, level);
    return hn::Or(scaled, hn::VecFromMask(d, hn::Eq(reference, hn::Zero(d))));
  }
};

struct Stretch {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V source, V light, V dark, V lightLevel, V darkLevel) const {
    using T = hn::TFromD<D>;
    const auto none = hn::VecFromMask(d, hn::Eq(light, dark));
    // The span is 1 where there is none.
    const V span = hn::And(none, hn::Set(d, 1));
    const V stretched = MapWhole(
        d,
        [](auto whole, auto s, auto l, auto k, auto one, auto to, auto from) HWY_ATTR {
          const auto span32 = hn::Add(hn::Sub(l, k), one);
          const auto quotient = Quotient<T>()(whole, hn::Sub(s, k), hn::Sub(to, from), span32);
          return hn::Add(quotient, from);
        },
        source, light, dark, span, lightLevel, darkLevel);
    return hn::Or(stretched, none);
  }
};

// destination = rule(source, reference, reference, level, level)
template <typename T, class Rule>
void MapReferences(const PixelMap& map, const Levels& levels, const Rule& rule) {
  const hn::ScalableTag<T> d;
  const Pattern light(d, levels.light);
  const Pattern dark(d, levels.dark);
  for (std::size_t y = 0; y < map.height; ++y) {
    const T* const a = map.sources[0].Row<const T>(y);
    const T* const b = map.sources[1].Row<const T>(y);
    const T* const c = map.sources[2].Row<const T>(y);
    T* const to = map.destination.Row<T>(y);
    ForEachPhase(d, map.width, [&](std::size_t x, std::size_t phase, auto access) HWY_ATTR {
      access.Store(d,
                   rule(d, access.Load(d, a + x), access.Load(d, b + x), access.Load(d, c + x),
                        hn::Load(d, light.lanes + phase), hn::Load(d, dark.lanes + phase)),
                   to + x);
    });
  }
}

void OffsetOfBytes(const PixelMap& map, const Levels& levels) {
  MapReferences<std::uint8_t>(map, levels, Offset());
}
void OffsetOfWords(const PixelMap& map, const Levels& levels) {
  MapReferences<std::uint16_t>(map, levels, Offset());
}
void ScaleOfBytes(const PixelMap& map, const Levels& levels) {
  MapReferences<std::uint8_t>(map, levels, Scale());
}
void ScaleOfWords(const PixelMap& map, const Levels& levels) {
  MapReferences<std::uint16_t>(map, levels, Scale());
}
void StretchOfBytes(const PixelMap& map, const Levels& levels) {
  MapReferences<std::uint8_t>(map, levels, Stretch());
}
void StretchOfWords(const PixelMap& map, const Levels& levels) {
  MapReferences<std::uint16_t>(map, levels, Stretch());
}

}  // namespace
}  // namespace lx::correction::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::correction {

HWY_EXPORT(OffsetOfBytes);
HWY_EXPORT(OffsetOfWords);
HWY_EXPORT(ScaleOfBytes);
HWY_EXPORT(ScaleOfWords);
HWY_EXPORT(StretchOfBytes);
HWY_EXPORT(StretchOfWords);

void OffsetBytes(const PixelMap& map, const Levels& levels) {
  LX_CALL(map.path, OffsetOfBytes, map, levels);
}
void OffsetWords(const PixelMap& map, const Levels& levels) {
  LX_CALL(map.path, OffsetOfWords, map, levels);
}
void ScaleBytes(const PixelMap& map, const Levels& levels) {
  LX_CALL(map.path, ScaleOfBytes, map, levels);
}
void ScaleWords(const PixelMap& map, const Levels& levels) {
  LX_CALL(map.path, ScaleOfWords, map, levels);
}
void StretchBytes(const PixelMap& map, const Levels& levels) {
  LX_CALL(map.path, StretchOfBytes, map, levels);
}
void StretchWords(const PixelMap& map, const Levels& levels) {
  LX_CALL(map.path, StretchOfWords, map, levels);
}

}  // namespace lx::correction
#endif
