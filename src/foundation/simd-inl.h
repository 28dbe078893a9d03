// SPDX-License-Identifier: Apache-2.0
// The SIMD vocabulary of the kernels: vector access at row ends, lanes of twice the width, byte
// tables, colour pixels. Included once for each instruction set.

#if defined(LXPIC_FOUNDATION_SIMD_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_SIMD_INL_H_
#undef LXPIC_FOUNDATION_SIMD_INL_H_
#else
#define LXPIC_FOUNDATION_SIMD_INL_H_
#endif

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "hwy/highway.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

// AVX-512 loads and stores parts of vectors without touching the bytes beyond.
#define LX_HAS_MASKED_ACCESS (HWY_TARGET == HWY_AVX3 || HWY_TARGET == HWY_AVX3_DL)

// Access to a whole vector at any address.
struct WholeVector {
  template <class D>
  HWY_INLINE hn::Vec<D> Load(D d, const hn::TFromD<D>* from) const {
    return hn::LoadU(d, from);
  }
  template <class D>
  HWY_INLINE void Store(D d, hn::Vec<D> v, hn::TFromD<D>* to) const {
    hn::StoreU(v, d, to);
  }
};

// Access to the first `count` lanes of a vector; nothing beyond them is read or written. The other
// lanes are unspecified but initialised.
struct PartVector {
  std::size_t count;

  template <class D>
  HWY_INLINE hn::Vec<D> Load(D d, const hn::TFromD<D>* from) const {
#if LX_HAS_MASKED_ACCESS
    return hn::MaskedLoad(hn::FirstN(d, count), d, from);
#else
    HWY_ALIGN hn::TFromD<D> lanes[hn::MaxLanes(d)] = {};
    std::memcpy(lanes, from, count * sizeof(lanes[0]));
    return hn::Load(d, lanes);
#endif
  }
  template <class D>
  HWY_INLINE void Store(D d, hn::Vec<D> v, hn::TFromD<D>* to) const {
#if LX_HAS_MASKED_ACCESS
    hn::BlendedStore(v, hn::FirstN(d, count), d, to);
#else
    HWY_ALIGN hn::TFromD<D> lanes[hn::MaxLanes(d)];
    hn::Store(v, d, lanes);
    std::memcpy(to, lanes, count * sizeof(lanes[0]));
#endif
  }
};

// Calls step(x, access) for each vector of a row of `width` elements, the last one possibly a part.
template <class D, class Step>
HWY_INLINE void ForEachVector(D d, std::size_t width, const Step& step) {
  const std::size_t n = hn::Lanes(d);
  std::size_t x = 0;
  for (; x + n <= width; x += n) step(x, WholeVector{});
  if (x < width) step(x, PartVector{width - x});
}

// Applies rule(d, lanes...) to unsigned lanes of twice the width, so that products and sums fit.
// Each result must fit the narrow lane. Even and odd lanes are taken apart where they lie: nothing
// crosses.
template <class D, class Rule, class... V>
HWY_INLINE hn::Vec<D> MapWide(D d, const Rule& rule, V... v) {
  using Narrow = hn::TFromD<D>;
#if HWY_TARGET == HWY_SCALAR
  const hn::Rebind<hwy::MakeWide<Narrow>, D> wide;
  return hn::Set(d, static_cast<Narrow>(hn::GetLane(rule(wide, hn::PromoteTo(wide, v)...))));
#else
  const hn::RepartitionToWide<D> wide;
  constexpr int kBits = 8 * sizeof(Narrow);
  const auto low = hn::Set(wide, hwy::LimitsMax<Narrow>());
  const auto even = rule(wide, hn::And(hn::BitCast(wide, v), low)...);
  const auto odd = rule(wide, hn::ShiftRight<kBits>(hn::BitCast(wide, v))...);
  return hn::BitCast(d, hn::Or(even, hn::ShiftLeft<kBits>(odd)));
#endif
}

// A table of 256 bytes, held in registers where the instruction set can index them.
class ByteTable {
 public:
  explicit HWY_INLINE ByteTable(const std::uint8_t* table) : table_(table) {
#if HWY_TARGET == HWY_AVX3_DL
    for (int i = 0; i < 4; ++i) quarters_[i] = _mm512_loadu_si512(table + 64 * i);
#endif
  }

  template <class D>
  HWY_INLINE hn::Vec<D> operator()(D d, hn::Vec<D> index) const {
#if HWY_TARGET == HWY_SCALAR
    return hn::Set(d, table_[hn::GetLane(index)]);
#elif HWY_TARGET == HWY_AVX3_DL
    if constexpr (hn::MaxLanes(d) == 64) {
      return hn::Vec<D>{Entries(index.raw)};
    } else {
      static_assert(hn::MaxLanes(d) == 32);
      return hn::Vec<D>{_mm512_castsi512_si256(Entries(_mm512_castsi256_si512(index.raw)))};
    }
#else
    if constexpr (hn::MaxLanes(d) < 16) {
      HWY_ALIGN std::uint8_t lanes[hn::MaxLanes(d)];
      hn::Store(index, d, lanes);
      for (std::uint8_t& lane : lanes) lane = table_[lane];
      return hn::Load(d, lanes);
    } else {
      return ShuffledEntries(d, index);
    }
#endif
  }

 private:
  [[maybe_unused]] const std::uint8_t* table_;
#if HWY_TARGET != HWY_SCALAR && HWY_TARGET != HWY_AVX3_DL
  // Sixteen shuffles of sixteen bytes. Saturation pushes every index outside the block above 0x7F,
  // where the shuffle gives 0.
  template <class D>
  HWY_INLINE hn::Vec<D> ShuffledEntries(D d, hn::Vec<D> index) const {
    const auto bias = hn::Set(d, 0x70);
    const auto step = hn::Set(d, 16);
    auto result = hn::Zero(d);
    auto offset = index;
    for (std::size_t block = 0; block < 16; ++block) {
      const auto bytes = hn::LoadDup128(d, table_ + 16 * block);
      result = hn::Or(result, hn::TableLookupBytesOr0(bytes, hn::SaturatedAdd(offset, bias)));
      offset = hn::Sub(offset, step);
    }
    return result;
  }
#endif

#if HWY_TARGET == HWY_AVX3_DL
  HWY_INLINE __m512i Entries(__m512i index) const {
    const __m512i low = _mm512_permutex2var_epi8(quarters_[0], index, quarters_[1]);
    const __m512i high = _mm512_permutex2var_epi8(quarters_[2], index, quarters_[3]);
    return _mm512_mask_blend_epi8(_mm512_movepi8_mask(index), low, high);
  }

  __m512i quarters_[4];
#endif
};

#if LX_HAS_MASKED_ACCESS

// AVX-512 narrows in one instruction what others pack and put in order.
HWY_INLINE hn::Vec256<std::uint8_t> Truncate(hn::Vec256<std::uint8_t> /*to*/,
                                             hn::Vec512<std::uint16_t> v) {
  return hn::Vec256<std::uint8_t>{_mm512_cvtepi16_epi8(v.raw)};
}

HWY_INLINE hn::Vec128<std::uint8_t> Truncate(hn::Vec128<std::uint8_t> /*to*/,
                                             hn::Vec512<std::uint32_t> v) {
  return hn::Vec128<std::uint8_t>{_mm512_cvtepi32_epi8(v.raw)};
}

HWY_INLINE hn::Vec256<std::uint16_t> Truncate(hn::Vec256<std::uint16_t> /*to*/,
                                              hn::Vec512<std::uint32_t> v) {
  return hn::Vec256<std::uint16_t>{_mm512_cvtepi32_epi16(v.raw)};
}

#endif

// Lanes cut to a narrower type; every value must fit it.
template <class D, class V>
HWY_INLINE hn::Vec<D> Narrow(D d, V v) {
#if LX_HAS_MASKED_ACCESS
  return Truncate(hn::Zero(d), v);
#else
  const hn::RebindToSigned<hn::DFromV<V> > whole;
  return hn::DemoteTo(d, hn::BitCast(whole, v));
#endif
}

#if HWY_TARGET == HWY_AVX3_DL

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
#if HWY_TARGET == HWY_AVX3_DL
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
#if HWY_TARGET == HWY_AVX3_DL
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

// Each lane three times in a row, as the bytes of grey colour pixels: three vectors in `to`.
template <class D>
HWY_INLINE void Triple(D d, hn::Vec<D> grey, hn::Vec<D> (&to)[3]) {
#if HWY_TARGET == HWY_AVX3_DL
  (void)d;
  for (int v = 0; v < 3; ++v) {
    to[v].raw = _mm512_permutexvar_epi8(_mm512_load_si512(kColourIndices.merge[v]), grey.raw);
  }
#else
  HWY_ALIGN std::uint8_t bytes[3 * hn::MaxLanes(d)];
  hn::StoreInterleaved3(grey, grey, grey, d, bytes);
  for (std::size_t v = 0; v < 3; ++v) to[v] = hn::Load(d, bytes + v * hn::Lanes(d));
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

#endif  // LXPIC_FOUNDATION_SIMD_INL_H_
