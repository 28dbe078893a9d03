// SPDX-License-Identifier: Apache-2.0
#include "measure/correlogram_kernels.h"

#include <limits>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "measure/correlogram_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/counting-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::measure::HWY_NAMESPACE {
namespace {

using namespace lx::HWY_NAMESPACE;

template <typename Count>
HWY_INLINE void AddTo(Count& count, std::size_t more) {
  const std::size_t room = std::numeric_limits<Count>::max() - count;
  count = static_cast<Count>(count + HWY_MIN(room, more));
}

template <typename Count>
HWY_INLINE void Increment(Count& count) {
  count = static_cast<Count>(count + (count != std::numeric_limits<Count>::max()));
}

// Two tables: neighbours are alike in most images, and four tables would leave the cache where they
// are not.
using PairTables = CountTables<2, kPairs>;
static_assert(PairTables::kTables * PairTables::kStride == kPairPlaces);

// Eight pairs at a time, and those of two equal stretches at once.
template <typename Count>
HWY_INLINE void CountPairsOfRow(const std::uint8_t* a, const std::uint8_t* b, std::size_t width,
                                Count* tables) {
  const auto place = [](std::size_t turn, std::size_t first, std::size_t second) HWY_ATTR {
    return turn % PairTables::kTables * PairTables::kStride + kLevels * second + first;
  };
  constexpr std::size_t kBlock = 32;
  constexpr std::size_t kPerWord = 8;
  std::size_t x = 0;
  while (x + kBlock <= width) {
    std::size_t equal = EqualPixels(a + x, width - x, a[x]);
    if (equal != 0) equal = EqualPixels(b + x, equal, b[x]);
    if (equal != 0) {
      AddTo(tables[place(0, a[x], b[x])], equal);
      x += equal;
      continue;
    }
    for (const std::size_t end = x + kBlock; x < end; x += kPerWord) {
      std::uint64_t first;
      std::uint64_t second;
      std::memcpy(&first, a + x, kPerWord);
      std::memcpy(&second, b + x, kPerWord);
      for (std::size_t k = 0; k < kPerWord; ++k, first >>= 8, second >>= 8) {
        Increment(tables[place(k, first & 0xFF, second & 0xFF)]);
      }
    }
  }
  for (; x < width; ++x) Increment(tables[place(x, a[x], b[x])]);
}

template <typename Count>
void Pairs(const PixelMap& map, Count* tables) {
  for (std::size_t y = 0; y < map.height; ++y) {
    CountPairsOfRow(map.sources[0].Row<const std::uint8_t>(y),
                    map.sources[1].Row<const std::uint8_t>(y), map.width, tables);
  }
  for (std::size_t i = 0; i < kPairs; ++i) AddTo(tables[i], tables[PairTables::kStride + i]);
}

void PairsInBytes(const PixelMap& map, std::uint8_t* tables) { Pairs(map, tables); }
void PairsInWords(const PixelMap& map, std::uint16_t* tables) { Pairs(map, tables); }

}  // namespace
}  // namespace lx::measure::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::measure {

HWY_EXPORT(PairsInBytes);
HWY_EXPORT(PairsInWords);

void CountPairs(const PixelMap& map, std::uint8_t* counts) {
  LX_CALL(map.path, PairsInBytes, map, counts);
}

void CountPairs(const PixelMap& map, std::uint16_t* counts) {
  LX_CALL(map.path, PairsInWords, map, counts);
}

}  // namespace lx::measure
#endif
