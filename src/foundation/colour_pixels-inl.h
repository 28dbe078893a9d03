// SPDX-License-Identifier: Apache-2.0
// Colour pixels taken apart into components and put together, and the walk over a row of them.
// Included once for each instruction set.

#if defined(LXPIC_FOUNDATION_COLOUR_PIXELS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_COLOUR_PIXELS_INL_H_
#undef LXPIC_FOUNDATION_COLOUR_PIXELS_INL_H_
#else
#define LXPIC_FOUNDATION_COLOUR_PIXELS_INL_H_
#endif

#include "foundation/simd-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

#if LX_HAS_BYTE_PERMUTE

// Byte positions for taking colour pixels apart and putting them together, in 64-byte vectors.
struct ColourIndices {
  // split[c][i]: where component c of pixel i lies in the first 128 of 192 bytes, and the third
  // vector's part of it (bit i of splitThird[c] set).
  alignas(64) std::uint8_t split[3][64];
  std::uint64_t splitThird[3];
  // merge[v][i]: the pixel whose component byte i of vector v is; mergeComponent[v][c] has bit i
  // set when it is component c.
  alignas(64) std::uint8_t merge[3][64];
  std::uint64_t mergeComponent[3][3];
};

constexpr ColourIndices MakeColourIndices() {
  ColourIndices made{};
  for (unsigned c = 0; c < 3; ++c) {
    for (unsigned i = 0; i < 64; ++i) {
      const unsigned at = 3 * i + c;
      made.split[c][i] = static_cast<std::uint8_t>(at % 128);
      if (at >= 128) made.splitThird[c] |= std::uint64_t{1} << i;
      const unsigned byte = 64 * c + i;
      made.merge[c][i] = static_cast<std::uint8_t>(byte / 3);
      made.mergeComponent[c][byte % 3] |= std::uint64_t{1} << i;
    }
  }
  return made;
}

inline constexpr ColourIndices kColourIndices = MakeColourIndices();

#endif

// Takes `Lanes(d)` colour pixels apart into components.
template <class D>
HWY_INLINE void LoadColour(D d, const std::uint8_t* from, hn::Vec<D>& c0, hn::Vec<D>& c1,
                           hn::Vec<D>& c2) {
#if LX_HAS_BYTE_PERMUTE
  if constexpr (hn::MaxLanes(d) == 64) {
    const __m512i first = _mm512_loadu_si512(from);
    const __m512i second = _mm512_loadu_si512(from + 64);
    const __m512i third = _mm512_loadu_si512(from + 128);
    hn::Vec<D>* const out[3] = {&c0, &c1, &c2};
    for (int c = 0; c < 3; ++c) {
      const __m512i at = _mm512_load_si512(kColourIndices.split[c]);
      const __m512i two = _mm512_permutex2var_epi8(first, at, second);
      out[c]->raw = _mm512_mask_permutexvar_epi8(two, kColourIndices.splitThird[c], at, third);
    }
    return;
  }
#endif
  hn::LoadInterleaved3(d, from, c0, c1, c2);
}

// Puts `Lanes(d)` colour pixels together.
template <class D>
HWY_INLINE void StoreColour(D d, hn::Vec<D> c0, hn::Vec<D> c1, hn::Vec<D> c2, std::uint8_t* to) {
#if LX_HAS_BYTE_PERMUTE
  if constexpr (hn::MaxLanes(d) == 64) {
    for (int v = 0; v < 3; ++v) {
      const __m512i at = _mm512_load_si512(kColourIndices.merge[v]);
      const auto& is = kColourIndices.mergeComponent[v];
      __m512i bytes = _mm512_permutexvar_epi8(at, c0.raw);
      bytes = _mm512_mask_permutexvar_epi8(bytes, is[1], at, c1.raw);
      bytes = _mm512_mask_permutexvar_epi8(bytes, is[2], at, c2.raw);
      _mm512_storeu_si512(to + 64 * v, bytes);
    }
    return;
  }
#endif
  hn::StoreInterleaved3(c0, c1, c2, d, to);
}

#if LX_HAS_LANES && !LX_HAS_BYTE_PERMUTE

// tripled[v][i]: which pixel of its sixteen goes to byte i of vector v.
template <std::size_t kLanes>
struct TripleIndices {
  alignas(kLanes) std::uint8_t tripled[3][kLanes];
};

template <std::size_t kLanes>
constexpr TripleIndices<kLanes> MakeTripleIndices() {
  TripleIndices<kLanes> made{};
  for (std::size_t v = 0; v < 3; ++v) {
    for (std::size_t i = 0; i < kLanes; ++i) {
      made.tripled[v][i] = static_cast<std::uint8_t>((kLanes * v + i) / 3 % 16);
    }
  }
  return made;
}

template <std::size_t kLanes>
inline constexpr TripleIndices<kLanes> kTripleIndices = MakeTripleIndices<kLanes>();

#endif

// Each lane three times in a row, as the bytes of grey colour pixels: three vectors in `to`.
template <class D>
HWY_INLINE void Triple(D d, hn::Vec<D> grey, hn::Vec<D> (&to)[3]) {
#if LX_HAS_BYTE_PERMUTE
  (void)d;
  for (int v = 0; v < 3; ++v) {
    to[v].raw = _mm512_permutexvar_epi8(_mm512_load_si512(kColourIndices.merge[v]), grey.raw);
  }
#elif LX_HAS_LANES
  // Shuffles stay within sixteen bytes: the first third needs the lower ones everywhere, the last
  // third the upper ones, and the middle has both where they are needed.
  constexpr std::size_t kLanes = hn::MaxLanes(d);
  static_assert(kLanes == 16 || kLanes == 32);
  const auto& index = kTripleIndices<kLanes>.tripled;
  hn::Vec<D> from[3] = {grey, grey, grey};
  if constexpr (kLanes == 32) {
    from[0] = hn::ConcatLowerLower(d, grey, grey);
    from[2] = hn::ConcatUpperUpper(d, grey, grey);
  }
  for (std::size_t v = 0; v < 3; ++v) {
    to[v] = hn::TableLookupBytes(from[v], hn::Load(d, index[v]));
  }
#else
  (void)d;
  for (auto& each : to) each = grey;
#endif
}

// Calls step(v, access) for the vectors of bytes that hold the `count` colour pixels of one vector
// of pixels: three, or what is left of them at the end of a row.
template <class D, class Step>
HWY_INLINE void ForEachThird(D d, std::size_t count, const Step& step) {
  const std::size_t n = hn::Lanes(d);
  if (count == n) {
    for (std::size_t v = 0; v < 3; ++v) step(v, WholeVector{});
    return;
  }
  for (std::size_t v = 0; v * n < 3 * count; ++v) {
    step(v, PartVector{HWY_MIN(n, 3 * count - v * n)});
  }
}

// Colour pixels of a whole vector of pixels.
struct WholeColour {
  template <class D>
  HWY_INLINE void Load(D d, const std::uint8_t* from, hn::Vec<D>& c0, hn::Vec<D>& c1,
                       hn::Vec<D>& c2) const {
    LoadColour(d, from, c0, c1, c2);
  }
  template <class D>
  HWY_INLINE void Store(D d, hn::Vec<D> c0, hn::Vec<D> c1, hn::Vec<D> c2, std::uint8_t* to) const {
    StoreColour(d, c0, c1, c2, to);
  }
};

// Colour pixels of the first `count` lanes; nothing beyond them is read or written.
struct PartColour {
  std::size_t count;

  template <class D>
  HWY_INLINE void Load(D d, const std::uint8_t* from, hn::Vec<D>& c0, hn::Vec<D>& c1,
                       hn::Vec<D>& c2) const {
    HWY_ALIGN std::uint8_t bytes[3 * hn::MaxLanes(d)] = {};
    std::memcpy(bytes, from, 3 * count);
    LoadColour(d, bytes, c0, c1, c2);
  }
  template <class D>
  HWY_INLINE void Store(D d, hn::Vec<D> c0, hn::Vec<D> c1, hn::Vec<D> c2, std::uint8_t* to) const {
    HWY_ALIGN std::uint8_t bytes[3 * hn::MaxLanes(d)];
    StoreColour(d, c0, c1, c2, bytes);
    std::memcpy(to, bytes, 3 * count);
  }
};

// Calls step(x, vector access, colour access) for each vector of a row of `width` pixels.
template <class D, class Step>
HWY_INLINE void ForEachColour(D d, std::size_t width, const Step& step) {
  const std::size_t n = hn::Lanes(d);
  std::size_t x = 0;
  for (; x + n <= width; x += n) step(x, WholeVector{}, WholeColour{});
  if (x < width) step(x, PartVector{width - x}, PartColour{width - x});
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_COLOUR_PIXELS_INL_H_
