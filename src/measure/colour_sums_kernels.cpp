// SPDX-License-Identifier: Apache-2.0
#include "measure/statistics_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "measure/colour_sums_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/colour_pixels-inl.h"
#include "foundation/pixel_sums-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::measure::HWY_NAMESPACE {
namespace {

using namespace lx::HWY_NAMESPACE;

using Bytes = hn::ScalableTag<std::uint8_t>;
using ByteVec = hn::Vec<Bytes>;

// The sums of the components.
struct ComponentSums {
  static constexpr std::size_t kVectors = SIZE_MAX;

  HWY_INLINE ComponentSums() {}

  HWY_INLINE void Add(Bytes d, ByteVec v0, ByteVec v1, ByteVec v2) {
    c0.Add(d, v0);
    c1.Add(d, v1);
    c2.Add(d, v2);
  }
  HWY_INLINE void Spill() {}
  HWY_INLINE void Join(const ComponentSums& other) {
    c0.Join(other.c0);
    c1.Join(other.c1);
    c2.Join(other.c2);
  }

  Sum<std::uint8_t> c0;
  Sum<std::uint8_t> c1;
  Sum<std::uint8_t> c2;
};

// And those of their squares and products.
struct ProductSums {
  static constexpr std::size_t kVectors = ByteProducts::kVectors;

  HWY_INLINE ProductSums() {}

  HWY_INLINE void Add(Bytes d, ByteVec v0, ByteVec v1, ByteVec v2) {
    sums.Add(d, v0, v1, v2);
    const auto h0 = Widen(d, v0);
    const auto h1 = Widen(d, v1);
    const auto h2 = Widen(d, v2);
    s0.AddHalves<Bytes>(h0, h0);
    s1.AddHalves<Bytes>(h1, h1);
    s2.AddHalves<Bytes>(h2, h2);
    p01.AddHalves<Bytes>(h0, h1);
    p12.AddHalves<Bytes>(h1, h2);
    p20.AddHalves<Bytes>(h2, h0);
  }
  HWY_INLINE void Spill() {
    for (ByteProducts* const each : {&s0, &s1, &s2, &p01, &p12, &p20}) each->Spill();
  }

  HWY_INLINE void Join(const ProductSums& other) {
    sums.Join(other.sums);
    s0.Join(other.s0);
    s1.Join(other.s1);
    s2.Join(other.s2);
    p01.Join(other.p01);
    p12.Join(other.p12);
    p20.Join(other.p20);
  }

  ComponentSums sums;
  ByteProducts s0;
  ByteProducts s1;
  ByteProducts s2;
  ByteProducts p01;
  ByteProducts p12;
  ByteProducts p20;
};

// Adds the pixels of one row, no more at a time than the lanes hold.
template <class Rule>
HWY_INLINE void AddColours(Rule& rule, const std::uint8_t* pixels, std::size_t count) {
  const Bytes d;
  const std::size_t n = hn::Lanes(d);
  const std::size_t most = HWY_MIN(Rule::kVectors, SIZE_MAX / n) * n;
  for (std::size_t first = 0; first < count; first += HWY_MIN(most, count - first)) {
    Rule part;
    const std::uint8_t* const from = pixels + 3 * first;
    const auto add = [&](std::size_t x, auto /*bytes*/, auto colours) HWY_ATTR {
      ByteVec c0;
      ByteVec c1;
      ByteVec c2;
      colours.Load(d, from + 3 * x, c0, c1, c2);
      part.Add(d, c0, c1, c2);
    };
    ForEachColour(d, HWY_MIN(most, count - first), add);
    part.Spill();
    rule.Join(part);
  }
}

std::array<std::uint64_t, 3> Results(const ComponentSums& sums) {
  return {sums.c0.Result(), sums.c1.Result(), sums.c2.Result()};
}

std::array<std::uint64_t, 3> Components(const Spans& spans) {
  ComponentSums sums;
  spans.ForEach([&](const std::uint8_t* pixels, std::size_t count)
                    HWY_ATTR { AddColours(sums, pixels, count); });
  return Results(sums);
}

ColourSums Colours(const Spans& spans) {
  ProductSums sums;
  spans.ForEach([&](const std::uint8_t* pixels, std::size_t count)
                    HWY_ATTR { AddColours(sums, pixels, count); });
  return {Results(sums.sums),
          {sums.s0.Result(), sums.s1.Result(), sums.s2.Result()},
          {sums.p01.Result(), sums.p12.Result(), sums.p20.Result()}};
}

}  // namespace
}  // namespace lx::measure::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::measure {

HWY_EXPORT(Components);
HWY_EXPORT(Colours);

std::array<std::uint64_t, 3> SumsOfComponents(const Spans& spans) {
  return LX_CALL(spans.GetPath(), Components, spans);
}

ColourSums SumsOfColours(const Spans& spans) { return LX_CALL(spans.GetPath(), Colours, spans); }

}  // namespace lx::measure
#endif
