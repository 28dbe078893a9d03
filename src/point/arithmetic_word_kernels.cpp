// SPDX-License-Identifier: Apache-2.0
#include "point/arithmetic_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "point/arithmetic_word_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "point/arithmetic_tables-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::point::HWY_NAMESPACE {
namespace {

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
void OnBytes(const PixelMap& map) {
  MapWidened<std::uint8_t>(map, Rule{});
}

template <class Rule>
void OnWordsAndBytes(const PixelMap& map) {
  MapWidened<std::uint16_t>(map, Rule{});
}

MapKernel FindBytes(ARITH_LOGIC_OPERATIONS operation) {
  static constexpr KernelRow kRows[] = {
      {ARITH_LOGIC_ADD, &OnBytes<Add>},
      {ARITH_LOGIC_SUBTRACT, &OnBytes<Subtract>},
      {ARITH_LOGIC_MULTIPLY, &OnBytes<Multiply>},
      {ARITH_LOGIC_DIVIDE, &OnBytes<Divide>},
  };
  return Find(kRows, operation);
}

MapKernel FindWordsWithBytes(ARITH_LOGIC_OPERATIONS operation) {
  static constexpr KernelRow kRows[] = {
      {ARITH_LOGIC_ADD, &OnWordsAndBytes<Add>},
      {ARITH_LOGIC_SUBTRACT, &OnWordsAndBytes<Subtract>},
      {ARITH_LOGIC_MULTIPLY, &OnWordsAndBytes<Multiply>},
      {ARITH_LOGIC_DIVIDE, &OnWordsAndBytes<Divide>},
      {ARITH_LOGIC_ADD_WRAP, &OnWordsAndBytes<AddWrap>},
      {ARITH_LOGIC_SUBTRACT_WRAP, &OnWordsAndBytes<SubtractWrap>},
  };
  return Find(kRows, operation);
}

MapKernel Words(Operands operands, ARITH_LOGIC_OPERATIONS operation) {
  switch (operands) {
    case Operands::kBytes:
      return FindBytes(operation);
    case Operands::kWordsWithBytes:
      return FindWordsWithBytes(operation);
    default:
      return FindCommon<std::uint16_t>(operands, operation);
  }
}

}  // namespace
}  // namespace lx::point::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::point {

HWY_EXPORT(Words);

MapKernel WordKernel(Operands operands, ARITH_LOGIC_OPERATIONS operation, Path path) {
  return LX_CALL(path, Words, operands, operation);
}

}  // namespace lx::point
#endif
