// SPDX-License-Identifier: Apache-2.0
// Tables of bytes. Included once for each instruction set.

#if defined(LXPIC_FOUNDATION_BYTE_TABLE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_BYTE_TABLE_INL_H_
#undef LXPIC_FOUNDATION_BYTE_TABLE_INL_H_
#else
#define LXPIC_FOUNDATION_BYTE_TABLE_INL_H_
#endif

#include "foundation/simd-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

// A table of 256 bytes, held in registers where the instruction set can index them.
class ByteTable {
 public:
  static constexpr bool kComputes = true;

  explicit HWY_INLINE ByteTable(const std::uint8_t* table) : table_(table) {
#if LX_HAS_BYTE_PERMUTE
    for (int i = 0; i < 4; ++i) quarters_[i] = _mm512_loadu_si512(table + 64 * i);
#endif
  }

  template <class D>
  HWY_INLINE hn::Vec<D> operator()(D d, hn::Vec<D> index) const {
#if !LX_HAS_LANES
    return hn::Set(d, table_[hn::GetLane(index)]);
#elif LX_HAS_BYTE_PERMUTE
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
#if LX_HAS_LANES && !LX_HAS_BYTE_PERMUTE
  // Sixteen shuffles of sixteen bytes: bit 7 makes a shuffle give 0 or its entry, which joins the
  // halves of the table, and the bits below choose among the eight results, nearest first.
  template <class D>
  HWY_INLINE hn::Vec<D> ShuffledEntries(D d, hn::Vec<D> index) const {
    const auto lower = hn::And(index, hn::Set(d, 0x8F));
    const auto upper = hn::Xor(lower, hn::Set(d, 0x80));
    const auto block = [&](std::size_t i) HWY_ATTR {
      return hn::Or(hn::TableLookupBytesOr0(hn::LoadDup128(d, table_ + 16 * i), lower),
                    hn::TableLookupBytesOr0(hn::LoadDup128(d, table_ + 16 * i + 128), upper));
    };
    const auto bit6 = hn::Add(index, index);
    const auto bit5 = hn::Add(bit6, bit6);
    const auto bit4 = hn::Add(bit5, bit5);
    const auto pair = [&](std::size_t i)
                          HWY_ATTR { return Choose(d, bit4, block(i + 1), block(i)); };
    const auto four = [&](std::size_t i) HWY_ATTR { return Choose(d, bit5, pair(i + 2), pair(i)); };
    return Choose(d, bit6, four(4), four(0));
  }

  // Where the highest bit of a lane is set, `yes`.
  template <class D>
  static HWY_INLINE hn::Vec<D> Choose(D d, hn::Vec<D> bit, hn::Vec<D> yes, hn::Vec<D> no) {
    const hn::RebindToSigned<D> whole;
    return hn::BitCast(d, hn::IfNegativeThenElse(hn::BitCast(whole, bit), hn::BitCast(whole, yes),
                                                 hn::BitCast(whole, no)));
  }
#endif

#if LX_HAS_BYTE_PERMUTE
  HWY_INLINE __m512i Entries(__m512i index) const {
    const __m512i low = _mm512_permutex2var_epi8(quarters_[0], index, quarters_[1]);
    const __m512i high = _mm512_permutex2var_epi8(quarters_[2], index, quarters_[3]);
    return _mm512_mask_blend_epi8(_mm512_movepi8_mask(index), low, high);
  }

  __m512i quarters_[4];
#endif
};

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_BYTE_TABLE_INL_H_
