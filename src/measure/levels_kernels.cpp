// SPDX-License-Identifier: Apache-2.0
#include "measure/statistics_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "measure/levels_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/colour_pixels-inl.h"
#include "foundation/pixel_sums-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::measure::HWY_NAMESPACE {
namespace {

using namespace lx::HWY_NAMESPACE;

template <typename T>
Extremes FindExtremes(const Spans& spans) {
  const auto total = ReduceSpans(spans, Both(SmallestOf<T>(), LargestOf<T>()));
  return {total.first.Result(), total.second.Result()};
}

Extremes ByteExtremes(const Spans& spans) { return FindExtremes<std::uint8_t>(spans); }
Extremes WordExtremes(const Spans& spans) { return FindExtremes<std::uint16_t>(spans); }

// Every pixel reaches 0.
template <typename T>
Reaching Count(const Spans& spans, unsigned low, unsigned high) {
  const std::uint64_t all = spans.CountPixels();
  if (high == 0) return {all, all};
  const CountFrom<T> reachHigh(static_cast<T>(high));
  if (low == 0) return {all, ReduceSpans(spans, reachHigh).Result()};
  const auto total = ReduceSpans(spans, Both(CountFrom<T>(static_cast<T>(low)), reachHigh));
  return {total.first.Result(), total.second.Result()};
}

Reaching ByteCounts(const Spans& spans, unsigned low, unsigned high) {
  return Count<std::uint8_t>(spans, low, high);
}
Reaching WordCounts(const Spans& spans, unsigned low, unsigned high) {
  return Count<std::uint16_t>(spans, low, high);
}

// Elements that are 0 where two rows agree.
template <typename T>
struct DifferentRow {
  PlainRow<T> a;
  PlainRow<T> b;

  template <class D>
  HWY_INLINE hn::Vec<D> Load(D d, std::size_t x) const {
    return hn::Xor(a.Load(d, x), b.Load(d, x));
  }
  template <class D>
  HWY_INLINE hn::Vec<D> LoadPart(D d, std::size_t x, std::size_t count, T neutral) const {
    return hn::Xor(a.LoadPart(d, x, count, neutral), b.LoadPart(d, x, count, neutral));
  }
};

// The same of colour pixels: an element for each.
struct DifferentColourRow {
  const std::uint8_t* a;
  const std::uint8_t* b;

  template <class D>
  HWY_INLINE hn::Vec<D> Load(D d, std::size_t x) const {
    return LoadWith(d, x, WholeColour{});
  }
  template <class D>
  HWY_INLINE hn::Vec<D> LoadPart(D d, std::size_t x, std::size_t count,
                                 std::uint8_t /*neutral*/) const {
    return LoadWith(d, x, PartColour{count});
  }

 private:
  template <class D, class Access>
  HWY_INLINE hn::Vec<D> LoadWith(D d, std::size_t x, const Access& access) const {
    hn::Vec<D> a0;
    hn::Vec<D> a1;
    hn::Vec<D> a2;
    hn::Vec<D> b0;
    hn::Vec<D> b1;
    hn::Vec<D> b2;
    access.Load(d, a + 3 * x, a0, a1, a2);
    access.Load(d, b + 3 * x, b0, b1, b2);
    return hn::Or(hn::Or(hn::Xor(a0, b0), hn::Xor(a1, b1)), hn::Xor(a2, b2));
  }
};

template <typename T, class Row>
HWY_INLINE std::uint64_t CountDifferent(const PixelMap& map) {
  Reduction<CountFrom<T>> reduction(CountFrom<T>(1));
  for (std::size_t y = 0; y < map.height; ++y) {
    reduction.AddRow(Row{{map.sources[0].Row<const std::uint8_t>(y)},
                         {map.sources[1].Row<const std::uint8_t>(y)}},
                     map.width);
  }
  return reduction.Total().Result();
}

std::uint64_t OtherBytes(const PixelMap& map) {
  return CountDifferent<std::uint8_t, DifferentRow<std::uint8_t>>(map);
}
std::uint64_t OtherWords(const PixelMap& map) {
  return CountDifferent<std::uint16_t, DifferentRow<std::uint16_t>>(map);
}
std::uint64_t OtherColours(const PixelMap& map) {
  return CountDifferent<std::uint8_t, DifferentColourRow>(map);
}

}  // namespace
}  // namespace lx::measure::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::measure {

HWY_EXPORT(ByteExtremes);
HWY_EXPORT(WordExtremes);
HWY_EXPORT(ByteCounts);
HWY_EXPORT(WordCounts);
HWY_EXPORT(OtherBytes);
HWY_EXPORT(OtherWords);
HWY_EXPORT(OtherColours);

Extremes ExtremesOfBytes(const Spans& spans) {
  return LX_CALL(spans.GetPath(), ByteExtremes, spans);
}
Extremes ExtremesOfWords(const Spans& spans) {
  return LX_CALL(spans.GetPath(), WordExtremes, spans);
}

Reaching CountBytes(const Spans& spans, unsigned low, unsigned high) {
  return LX_CALL(spans.GetPath(), ByteCounts, spans, low, high);
}
Reaching CountWords(const Spans& spans, unsigned low, unsigned high) {
  return LX_CALL(spans.GetPath(), WordCounts, spans, low, high);
}

std::uint64_t DifferentBytes(const PixelMap& map) { return LX_CALL(map.path, OtherBytes, map); }
std::uint64_t DifferentWords(const PixelMap& map) { return LX_CALL(map.path, OtherWords, map); }
std::uint64_t DifferentColours(const PixelMap& map) { return LX_CALL(map.path, OtherColours, map); }

}  // namespace lx::measure
#endif
