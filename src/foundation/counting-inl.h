// SPDX-License-Identifier: Apache-2.0
// The counting driver: how often each bin of pixel values occurs. Included once for each
// instruction set.

#if defined(LXPIC_FOUNDATION_COUNTING_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_COUNTING_INL_H_
#undef LXPIC_FOUNDATION_COUNTING_INL_H_
#else
#define LXPIC_FOUNDATION_COUNTING_INL_H_
#endif

#include "foundation/simd-inl.h"
#include "foundation/spans.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

// The tables of one count, which take turns so that equal neighbours need not wait for each other.
template <std::size_t tables, std::size_t places>
struct CountTables {
  static constexpr std::size_t kTables = tables;
  // A cache line more than the places, so that a place of all tables does not fall in one set of
  // the cache.
  static constexpr std::size_t kStride = places + (tables > 1 ? 16 : 0);
};

// How many of the pixels are equal to the first, by whole vectors.
template <typename T>
HWY_INLINE std::size_t EqualPixels(const std::uint8_t* pixels, std::size_t count, T first) {
  const hn::ScalableTag<std::uint64_t> d;
  const std::size_t n = 8 / sizeof(T) * hn::Lanes(d);
  const auto repeated = hn::Set(d, UINT64_MAX / static_cast<T>(-1) * first);
  std::size_t equal = 0;
  for (; equal + n <= count; equal += n) {
    const auto* const at = reinterpret_cast<const std::uint64_t*>(pixels + equal * sizeof(T));
    if (!hn::AllTrue(d, hn::Eq(hn::LoadU(d, at), repeated))) break;
  }
  return equal;
}

// Counts the pixels of one row. They are read eight bytes at a time, and equal ones counted at
// once. bin(pixel) is the place in a table.
//
// The tables count modulo 2^32, and so does their sum: no more pixels may fall in one place than a
// count can hold, wherever they are counted.
template <typename T, class Tables, class Bin>
HWY_INLINE void CountRow(const std::uint8_t* pixels, std::size_t count, std::uint32_t* tables,
                         const Bin& bin) {
  constexpr std::size_t kBlock = 32 / sizeof(T);
  constexpr std::size_t kPerWord = 8 / sizeof(T);
  const auto place = [bin](std::size_t turn, T pixel)
                         HWY_ATTR { return turn % Tables::kTables * Tables::kStride + bin(pixel); };
  std::size_t i = 0;
  while (i + kBlock <= count) {
    const std::uint8_t* const at = pixels + i * sizeof(T);
    T first;
    std::memcpy(&first, at, sizeof(T));
    if (const std::size_t equal = EqualPixels(at, count - i, first); equal != 0) {
      tables[place(0, first)] += static_cast<std::uint32_t>(equal);
      i += equal;
      continue;
    }
    for (std::size_t j = 0; j < kBlock; j += kPerWord) {
      std::uint64_t word;
      std::memcpy(&word, at + j * sizeof(T), sizeof(word));
      for (std::size_t k = 0; k < kPerWord; ++k, word >>= 8 * sizeof(T)) {
        ++tables[place(j + k, static_cast<T>(word))];
      }
    }
    i += kBlock;
  }
  for (; i < count; ++i) {
    T pixel;
    std::memcpy(&pixel, pixels + i * sizeof(T), sizeof(T));
    ++tables[place(i, pixel)];
  }
}

// Counts the pixels in tables that are zero at first.
template <typename T, class Tables, class Bin>
void CountSpans(const Spans& spans, std::uint32_t* tables, const Bin& bin) {
  spans.ForEach([&](const std::uint8_t* pixels, std::size_t count)
                    HWY_ATTR { CountRow<T, Tables>(pixels, count, tables, bin); });
}

// counts[i] = sum of the places i of the tables.
template <class Tables>
void JoinTables(const std::uint32_t* tables, std::uint32_t* counts, std::size_t places) {
  for (std::size_t i = 0; i < places; ++i) {
    std::uint32_t sum = 0;
    for (std::size_t k = 0; k < Tables::kTables; ++k) sum += tables[k * Tables::kStride + i];
    counts[i] = sum;
  }
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_COUNTING_INL_H_
