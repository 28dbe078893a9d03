// SPDX-License-Identifier: Apache-2.0
#include "point/convert_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "point/convert_colour_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/colour_pixels-inl.h"
#include "foundation/pixel_map-inl.h"
#include "foundation/wide-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::point::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

using BytesTag = hn::ScalableTag<std::uint8_t>;

void GreyTriple(const PixelMap& map, bool invert) {
  const BytesTag d;
  const std::size_t n = hn::Lanes(d);
  const auto flip = hn::Set(d, static_cast<std::uint8_t>(invert ? 0xFF : 0));
  for (std::size_t y = 0; y < map.height; ++y) {
    const auto* const from = map.sources[0].Row<const std::uint8_t>(y);
    auto* const to = map.destination.Row<std::uint8_t>(y);
    hn::Vec<BytesTag> levels[3];
    std::size_t x = 0;
    for (; x + n <= map.width; x += n) {
      Triple(d, hn::Xor(hn::LoadU(d, from + x), flip), levels);
      for (std::size_t v = 0; v < 3; ++v) hn::StoreU(levels[v], d, to + 3 * x + v * n);
    }
    const PartVector rest{map.width - x};
    Triple(d, hn::Xor(rest.Load(d, from + x), flip), levels);
    for (std::size_t v = 0; v * n < 3 * rest.count; ++v) {
      const PartVector third{HWY_MIN(n, 3 * rest.count - v * n)};
      third.Store(d, levels[v], to + 3 * x + v * n);
    }
  }
}

#if LX_HAS_LANES

// Vectors of one or two blocks of sixteen bytes: four pixels with alpha, or four without and four
// bytes more.
using BlocksTag = hn::CappedTag<std::uint8_t, 32>;
constexpr std::size_t kBlockPixels = hn::MaxLanes(BlocksTag()) / 4;
// Pixels that must be left for vectors to stay in a row of pixels without alpha.
constexpr std::size_t kLeft = kBlockPixels + 2;

template <class D>
HWY_INLINE hn::Vec<D> LoadBlocks(D d, const std::uint8_t* first, const std::uint8_t* second) {
  if constexpr (hn::MaxLanes(d) == 32) {
    const hn::Half<D> block;
    return hn::Combine(d, hn::LoadU(block, second), hn::LoadU(block, first));
  } else {
    return hn::LoadU(d, first);
  }
}

alignas(16) constexpr std::uint8_t kSpread[16] = {0, 1, 2, 0x80, 3, 4,  5,  0x80,
                                                  6, 7, 8, 0x80, 9, 10, 11, 0x80};
#endif

#if LX_HAS_PAIR_PRODUCTS && !LX_HAS_BYTE_PERMUTE

// Whole vectors of a row; returns how many pixels they hold. Each block has its own sixteen pixels,
// so that sums pack in order.
std::size_t MeanBlocks(const std::uint8_t* from, std::size_t width, std::uint8_t* to) {
  const BlocksTag d;
  const hn::Repartition<std::uint16_t, BlocksTag> words;
  const hn::Repartition<std::int16_t, BlocksTag> factors;
  const auto spread = hn::LoadDup128(d, kSpread);
  const auto mean = [&](const std::uint8_t* at) HWY_ATTR {
    const auto blocks = LoadBlocks(d, at, at + 48);
    const auto pixels = hn::BitCast(words, hn::TableLookupBytesOr0(blocks, spread));
    // c0 + c1 and c2
    const auto pairs = hn::Add(hn::And(pixels, hn::Set(words, 0xFF)), hn::ShiftRight<8>(pixels));
    return hn::ShiftRight<8>(PairProducts(hn::BitCast(factors, pairs), hn::Set(factors, 85)));
  };
  constexpr std::size_t kStep = hn::MaxLanes(d);
  std::size_t x = 0;
  for (; x + kStep + 2 <= width; x += kStep) {
    const std::uint8_t* const at = from + 3 * x;
    const auto low = hn::ReorderDemote2To(factors, mean(at), mean(at + 12));
    const auto high = hn::ReorderDemote2To(factors, mean(at + 24), mean(at + 36));
    hn::StoreU(Pack(hn::BitCast(words, low), hn::BitCast(words, high)), d, to + x);
  }
  return x;
}

#else

std::size_t MeanBlocks(const std::uint8_t* /*from*/, std::size_t /*width*/, std::uint8_t* /*to*/) {
  return 0;
}

#endif

void Grey(const PixelMap& map) {
  const BytesTag d;
  for (std::size_t y = 0; y < map.height; ++y) {
    const auto* const from = map.sources[0].Row<const std::uint8_t>(y);
    auto* const to = map.destination.Row<std::uint8_t>(y);
    const std::size_t start = MeanBlocks(from, map.width, to);
    ForEachColour(d, map.width - start, [&](std::size_t i, auto access, auto colour) HWY_ATTR {
      const std::size_t x = start + i;
      hn::Vec<BytesTag> c0, c1, c2;
      colour.Load(d, from + 3 * x, c0, c1, c2);
      const auto mean = [](auto wide, auto p, auto q, auto r) HWY_ATTR {
        return hn::ShiftRight<8>(hn::Mul(hn::Add(hn::Add(p, q), r), hn::Set(wide, 85)));
      };
      access.Store(d, MapWide(d, mean, c0, c1, c2), to + x);
    });
  }
}

// Whole pixels with alpha, and the first `count` of them.
struct WholeAlpha {
  template <class D, class V>
  HWY_INLINE void Load(D d, const std::uint8_t* from, V& c0, V& c1, V& c2, V& alpha) const {
    hn::LoadInterleaved4(d, from, c0, c1, c2, alpha);
  }
  template <class D, class V>
  HWY_INLINE void Store(D d, V c0, V c1, V c2, V alpha, std::uint8_t* to) const {
    hn::StoreInterleaved4(c0, c1, c2, alpha, d, to);
  }
};

struct PartAlpha {
  std::size_t count;

  template <class D, class V>
  HWY_INLINE void Load(D d, const std::uint8_t* from, V& c0, V& c1, V& c2, V& alpha) const {
    HWY_ALIGN std::uint8_t bytes[4 * hn::MaxLanes(d)] = {};
    std::memcpy(bytes, from, 4 * count);
    hn::LoadInterleaved4(d, bytes, c0, c1, c2, alpha);
  }
  template <class D, class V>
  HWY_INLINE void Store(D d, V c0, V c1, V c2, V alpha, std::uint8_t* to) const {
    HWY_ALIGN std::uint8_t bytes[4 * hn::MaxLanes(d)];
    hn::StoreInterleaved4(c0, c1, c2, alpha, d, bytes);
    std::memcpy(to, bytes, 4 * count);
  }
};

HWY_INLINE WholeAlpha AlphaAccess(WholeColour /*colour*/) { return {}; }
HWY_INLINE PartAlpha AlphaAccess(PartColour colour) { return {colour.count}; }

// Colour and a plane to colour with alpha.
void WithAlpha(const PixelMap& map) {
  const BytesTag d;
  for (std::size_t y = 0; y < map.height; ++y) {
    const auto* const from = map.sources[0].Row<const std::uint8_t>(y);
    const auto* const plane = map.sources[1].Row<const std::uint8_t>(y);
    auto* const to = map.destination.Row<std::uint8_t>(y);
    ForEachColour(d, map.width, [&](std::size_t x, auto access, auto colour) HWY_ATTR {
      hn::Vec<BytesTag> c0, c1, c2;
      colour.Load(d, from + 3 * x, c0, c1, c2);
      AlphaAccess(colour).Store(d, c0, c1, c2, access.Load(d, plane + x), to + 4 * x);
    });
  }
}

// Colour with alpha to colour and a plane.
void FromAlpha(const PixelMap& map, const Rows& alphas) {
  const BytesTag d;
  for (std::size_t y = 0; y < map.height; ++y) {
    const auto* const from = map.sources[0].Row<const std::uint8_t>(y);
    auto* const to = map.destination.Row<std::uint8_t>(y);
    auto* const plane = alphas.Row<std::uint8_t>(y);
    ForEachColour(d, map.width, [&](std::size_t x, auto access, auto colour) HWY_ATTR {
      hn::Vec<BytesTag> c0, c1, c2, alpha;
      AlphaAccess(colour).Load(d, from + 4 * x, c0, c1, c2, alpha);
      access.Store(d, alpha, plane + x);
      colour.Store(d, c0, c1, c2, to + 3 * x);
    });
  }
}

#if LX_HAS_LANES

// The four bytes more are written over by what comes next.
template <class D>
HWY_INLINE void StoreBlocks(D d, hn::Vec<D> blocks, std::uint8_t* to) {
  if constexpr (hn::MaxLanes(d) == 32) {
    const hn::Half<D> block;
    hn::StoreU(hn::LowerHalf(block, blocks), block, to);
    hn::StoreU(hn::UpperHalf(block, blocks), block, to + 12);
  } else {
    hn::StoreU(blocks, d, to);
  }
}

alignas(16) constexpr std::uint8_t kClosed[16] = {0,  1,  2,  4,  5,  6,  8,  9,
                                                  10, 12, 13, 14, 15, 15, 15, 15};

// Whole vectors of a row; returns how many pixels they hold.
std::size_t KeepAlphas(const std::uint8_t* from, std::size_t width, std::uint8_t* to) {
  const BlocksTag d;
  const auto spread = hn::LoadDup128(d, kSpread);
  const auto alpha =
      hn::BitCast(d, hn::Set(hn::Repartition<std::uint32_t, BlocksTag>(), 0xFF000000U));
  std::size_t x = 0;
  for (; x + kLeft <= width; x += kBlockPixels) {
    const auto colours =
        hn::TableLookupBytesOr0(LoadBlocks(d, from + 3 * x, from + 3 * x + 12), spread);
    const auto alphas = hn::And(hn::LoadU(d, to + 4 * x), alpha);
    hn::StoreU(hn::Or(colours, alphas), d, to + 4 * x);
  }
  return x;
}

std::size_t DropAlphas(const std::uint8_t* from, std::size_t width, std::uint8_t* to) {
  const BlocksTag d;
  const auto closed = hn::LoadDup128(d, kClosed);
  std::size_t x = 0;
  for (; x + kLeft <= width; x += kBlockPixels) {
    StoreBlocks(d, hn::TableLookupBytes(hn::LoadU(d, from + 4 * x), closed), to + 3 * x);
  }
  return x;
}

#else

std::size_t KeepAlphas(const std::uint8_t* /*from*/, std::size_t /*width*/, std::uint8_t* /*to*/) {
  return 0;
}
std::size_t DropAlphas(const std::uint8_t* /*from*/, std::size_t /*width*/, std::uint8_t* /*to*/) {
  return 0;
}

#endif

// Copies the colours of pixels of kFrom to those of kTo bytes; `whole` does most of a row.
template <std::size_t kFrom, std::size_t kTo, class Whole>
HWY_INLINE void MapColours(const PixelMap& map, Whole whole) {
  for (std::size_t y = 0; y < map.height; ++y) {
    const auto* const from = map.sources[0].Row<const std::uint8_t>(y);
    auto* const to = map.destination.Row<std::uint8_t>(y);
    for (std::size_t x = whole(from, map.width, to); x < map.width; ++x) {
      std::memcpy(to + kTo * x, from + kFrom * x, 3);
    }
  }
}

void KeepAlpha(const PixelMap& map) { MapColours<3, 4>(map, KeepAlphas); }
void WithoutAlpha(const PixelMap& map) { MapColours<4, 3>(map, DropAlphas); }

}  // namespace
}  // namespace lx::point::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::point {

HWY_EXPORT(GreyTriple);
HWY_EXPORT(Grey);
HWY_EXPORT(KeepAlpha);
HWY_EXPORT(WithAlpha);
HWY_EXPORT(FromAlpha);
HWY_EXPORT(WithoutAlpha);

void GreyToColour(const PixelMap& map, bool invert) { LX_CALL(map.path, GreyTriple, map, invert); }
void ColourToGrey(const PixelMap& map) { LX_CALL(map.path, Grey, map); }
void AddAlpha(const PixelMap& map) { LX_CALL(map.path, KeepAlpha, map); }
void MergeAlpha(const PixelMap& map) { LX_CALL(map.path, WithAlpha, map); }
void DropAlpha(const PixelMap& map) { LX_CALL(map.path, WithoutAlpha, map); }
void SplitAlpha(const PixelMap& map, const Rows& alpha) {
  LX_CALL(map.path, FromAlpha, map, alpha);
}

}  // namespace lx::point
#endif
