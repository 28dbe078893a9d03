// SPDX-License-Identifier: Apache-2.0
#include "histogram/levels_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "histogram/level_bits_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/bit_map-inl.h"
#include "histogram/levels-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::histogram::HWY_NAMESPACE {
namespace {

struct IsPassed {
  Cut cut;

  template <class D, class V>
  HWY_INLINE V operator()(D d, V v) const {
    return hn::BitCast(d, Passed(d, cut, v));
  }
};

struct LevelOfBit {
  std::uint8_t low;
  std::uint8_t high;

  template <class D, class V>
  HWY_INLINE V operator()(D d, V bits) const {
    return hn::IfVecThenElse(bits, hn::Set(d, high), hn::Set(d, low));
  }
};

void BytesToBits(const BitMap& map, Cut cut) { MapToBits<std::uint8_t>(map, IsPassed{cut}); }
void WordsToBits(const BitMap& map, Cut cut) { MapToBits<std::uint16_t>(map, IsPassed{cut}); }
void BitsToBytes(const BitMap& map, std::uint8_t low, std::uint8_t high) {
  MapFromBits<std::uint8_t>(map, LevelOfBit{low, high});
}

}  // namespace
}  // namespace lx::histogram::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::histogram {

HWY_EXPORT(BytesToBits);
HWY_EXPORT(WordsToBits);
HWY_EXPORT(BitsToBytes);

void MapBytesToBits(const BitMap& map, Cut cut) { LX_CALL(map.path, BytesToBits, map, cut); }

void MapWordsToBits(const BitMap& map, Cut cut) { LX_CALL(map.path, WordsToBits, map, cut); }

void MapBitsToBytes(const BitMap& map, std::uint8_t low, std::uint8_t high) {
  LX_CALL(map.path, BitsToBytes, map, low, high);
}

}  // namespace lx::histogram
#endif
