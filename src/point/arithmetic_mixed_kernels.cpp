// SPDX-License-Identifier: Apache-2.0
#include "point/arithmetic_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "point/arithmetic_mixed_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/colour_pixels-inl.h"
#include "point/arithmetic_tables-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::point::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

// destination = rule(a, b) per component, where the grey source counts for all three: it is the
// first operand when kGreyFirst.
template <bool kGreyFirst, class Rule>
void MapMixed(const PixelMap& map, const Rule& rule) {
  const hn::ScalableTag<std::uint8_t> d;
  const std::size_t n = hn::Lanes(d);
  for (std::size_t y = 0; y < map.height; ++y) {
    const std::uint8_t* const grey = map.sources[kGreyFirst ? 0 : 1].Row<const std::uint8_t>(y);
    const std::uint8_t* const colour = map.sources[kGreyFirst ? 1 : 0].Row<const std::uint8_t>(y);
    std::uint8_t* const to = map.destination.Row<std::uint8_t>(y);
    ForEachVector(d, map.width, [&](std::size_t x, auto pixels) HWY_ATTR {
      hn::Vec<decltype(d)> levels[3];
      Triple(d, pixels.Load(d, grey + x), levels);
      ForEachThird(d, HWY_MIN(n, map.width - x), [&](std::size_t v, auto access) HWY_ATTR {
        const std::size_t at = 3 * x + v * n;
        const auto bytes = access.Load(d, colour + at);
        const auto a = kGreyFirst ? levels[v] : bytes;
        const auto b = kGreyFirst ? bytes : levels[v];
        access.Store(d, ApplyTwo(d, rule, a, b, access, to + at), to + at);
      });
    });
  }
}

template <typename /*T*/, class Rule>
struct OnGreyAndColour {
  static void Run(const PixelMap& map) { MapMixed<true>(map, Rule{}); }
};

template <typename /*T*/, class Rule>
struct OnColourAndGrey {
  static void Run(const PixelMap& map) { MapMixed<false>(map, Rule{}); }
};

bool GreyWithColour(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map) {
  return RunImages<OnGreyAndColour, std::uint8_t>(operation, map);
}

bool ColourWithGrey(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map) {
  return RunImages<OnColourAndGrey, std::uint8_t>(operation, map);
}

// destination = rule(a, b) in 16 bits; the second source, and the first one if it is of type A, is
// widened.
template <typename A, class Rule>
void MapWidened(const PixelMap& map, const Rule& rule) {
  const hn::ScalableTag<std::uint16_t> words;
  const hn::Rebind<std::uint8_t, decltype(words)> bytes;
  for (std::size_t y = 0; y < map.height; ++y) {
    const A* const a = map.sources[0].Row<const A>(y);
    const std::uint8_t* const b = map.sources[1].Row<const std::uint8_t>(y);
    std::uint16_t* const to = map.destination.Row<std::uint16_t>(y);
    ForEachVector(words, map.width, [&](std::size_t x, auto access) HWY_ATTR {
      const auto second = hn::PromoteTo(words, access.Load(bytes, b + x));
      if constexpr (sizeof(A) == 1) {
        const auto first = hn::PromoteTo(words, access.Load(bytes, a + x));
        access.Store(words, rule(words, first, second), to + x);
      } else {
        access.Store(words, rule(words, access.Load(words, a + x), second), to + x);
      }
    });
  }
}

template <class Rule>
struct OnBytes {
  static void Run(const PixelMap& map) { MapWidened<std::uint8_t>(map, Rule{}); }
};

template <class Rule>
struct OnWordsAndBytes {
  static void Run(const PixelMap& map) { MapWidened<std::uint16_t>(map, Rule{}); }
};

bool Bytes(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map) {
  static constexpr KernelRow kRows[] = {
      {ARITH_LOGIC_ADD, &OnBytes<Add>::Run},
      {ARITH_LOGIC_SUBTRACT, &OnBytes<Subtract>::Run},
      {ARITH_LOGIC_MULTIPLY, &OnBytes<Multiply>::Run},
      {ARITH_LOGIC_DIVIDE, &OnBytes<Divide>::Run},
  };
  return RunRow(kRows, operation, map);
}

bool WordsWithBytes(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map) {
  static constexpr KernelRow kRows[] = {
      {ARITH_LOGIC_ADD, &OnWordsAndBytes<Add>::Run},
      {ARITH_LOGIC_SUBTRACT, &OnWordsAndBytes<Subtract>::Run},
      {ARITH_LOGIC_MULTIPLY, &OnWordsAndBytes<Multiply>::Run},
      {ARITH_LOGIC_DIVIDE, &OnWordsAndBytes<Divide>::Run},
      {ARITH_LOGIC_ADD_WRAP, &OnWordsAndBytes<AddWrap>::Run},
      {ARITH_LOGIC_SUBTRACT_WRAP, &OnWordsAndBytes<SubtractWrap>::Run},
  };
  return RunRow(kRows, operation, map);
}

}  // namespace
}  // namespace lx::point::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::point {

HWY_EXPORT(GreyWithColour);
HWY_EXPORT(ColourWithGrey);
HWY_EXPORT(Bytes);
HWY_EXPORT(WordsWithBytes);

bool CombineGreyWithColour(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map) {
  return LX_CALL(map.path, GreyWithColour, operation, map);
}

bool CombineColourWithGrey(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map) {
  return LX_CALL(map.path, ColourWithGrey, operation, map);
}

bool WidenBytes(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map) {
  return LX_CALL(map.path, Bytes, operation, map);
}

bool CombineWordsWithBytes(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map) {
  return LX_CALL(map.path, WordsWithBytes, operation, map);
}

}  // namespace lx::point
#endif
