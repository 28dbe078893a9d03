// SPDX-License-Identifier: Apache-2.0
// Packed colour pixels taken apart and put together. Included once for each instruction set.

#if defined(LXPIC_POINT_PACKED_PIXELS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_POINT_PACKED_PIXELS_INL_H_
#undef LXPIC_POINT_PACKED_PIXELS_INL_H_
#else
#define LXPIC_POINT_PACKED_PIXELS_INL_H_
#endif

#include "foundation/colour_pixels-inl.h"
#include "foundation/pixel_map.h"
#include "foundation/wide-inl.h"
#include "point/packing.h"

HWY_BEFORE_NAMESPACE();
namespace lx::point::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace packed {

using WordsTag = hn::ScalableTag<std::uint16_t>;
using BytesTag = hn::Rebind<std::uint8_t, WordsTag>;
using Words = hn::Vec<WordsTag>;
using Bytes = hn::Vec<BytesTag>;

// Packed pixels have five bits of components 0 and 2, and five (C15) or six (C16) of component 1.
template <Packing kPacking>
struct Fields;

template <>
struct Fields<Packing::kC15> {
  static constexpr std::uint16_t kKept = 0x8000;
  static constexpr std::uint16_t kMiddle = 0xF8;
  static constexpr int kMiddleShift = 2;
  static constexpr int kHighShift = 7;
};

template <>
struct Fields<Packing::kC16> {
  static constexpr std::uint16_t kKept = 0;
  static constexpr std::uint16_t kMiddle = 0xFC;
  static constexpr int kMiddleShift = 3;
  static constexpr int kHighShift = 8;
};

template <Packing kPacking>
HWY_INLINE Words Pack(Bytes c0, Bytes c1, Bytes c2) {
  using F = Fields<kPacking>;
  const WordsTag d;
  const auto low = hn::ShiftRight<3>(hn::PromoteTo(d, c0));
  const auto middle = hn::And(hn::PromoteTo(d, c1), hn::Set(d, F::kMiddle));
  const auto high = hn::And(hn::PromoteTo(d, c2), hn::Set(d, 0xF8));
  return hn::Or(low,
                hn::Or(hn::ShiftLeft<F::kMiddleShift>(middle), hn::ShiftLeft<F::kHighShift>(high)));
}

// The components, widened, with zeros below their fields.
template <Packing kPacking>
HWY_INLINE void Unpack(Words packed, Words& c0, Words& c1, Words& c2) {
  using F = Fields<kPacking>;
  const WordsTag d;
  c0 = hn::And(hn::ShiftLeft<3>(packed), hn::Set(d, 0xF8));
  c1 = hn::And(hn::ShiftRight<F::kMiddleShift>(packed), hn::Set(d, F::kMiddle));
  c2 = hn::And(hn::ShiftRight<F::kHighShift>(packed), hn::Set(d, 0xF8));
}

// Stores packed pixels; a bit that is no colour bit stays.
template <Packing kPacking, class Access>
HWY_INLINE void StorePacked(Access access, Words packed, std::uint16_t* to) {
  const WordsTag d;
  if constexpr (Fields<kPacking>::kKept != 0) {
    const auto kept = hn::And(access.Load(d, to), hn::Set(d, Fields<kPacking>::kKept));
    packed = hn::Or(packed, kept);
  }
  access.Store(d, packed, to);
}

// The kernel of a packing, chosen once per call.
template <class Kernel>
HWY_INLINE void Choose(Packing packing, Kernel c15, Kernel c16, const PixelMap& map) {
  (packing == Packing::kC15 ? c15 : c16)(map);
}

}  // namespace packed
}  // namespace lx::point::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_POINT_PACKED_PIXELS_INL_H_
