// SPDX-License-Identifier: Apache-2.0
#include "morphology/median_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "morphology/median_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/neighbourhood-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::morphology::HWY_NAMESPACE {
namespace {

using namespace lx::HWY_NAMESPACE;

template <class V>
HWY_INLINE V MiddleOf(V a, V b, V c) {
  return hn::Max(hn::Min(b, c), hn::Min(hn::Max(b, c), a));
}

// Each row of three is sorted once. What is not below four others and not above four others lies
// between the largest of the least, the middle one of the middles, and the least of the largest.
struct Median : RuleTraits<RuleLanes::kNarrow, 3, true> {
  static constexpr bool kAnyOrder = true;

  template <class Taps, class V>
  static HWY_INLINE void Horizontal(const Taps& taps, V (&sorted)[3]) {
    const V low = hn::Min(taps.Left(), taps.Right());
    const V high = hn::Max(taps.Left(), taps.Right());
    sorted[0] = hn::Min(low, taps.Centre());
    sorted[1] = hn::Max(low, hn::Min(high, taps.Centre()));
    sorted[2] = hn::Max(high, taps.Centre());
  }
  template <class V>
  static HWY_INLINE V Vertical(const V (&above)[3], const V (&here)[3], const V (&below)[3]) {
    return MiddleOf(hn::Max(hn::Max(here[0], below[0]), above[0]),
                    MiddleOf(above[1], here[1], below[1]),
                    hn::Min(hn::Min(here[2], below[2]), above[2]));
  }
};

void Bytes(const Neighbourhood& map, std::uint8_t* scratch) {
  if (map.stride == 3) {
    Map3x3<std::uint8_t, 3, Median>(map, 1, scratch);
  } else {
    Map3x3<std::uint8_t, 1, Median>(map, 1, scratch);
  }
}

void Words(const Neighbourhood& map, std::uint8_t* scratch) {
  Map3x3<std::uint16_t, 1, Median>(map, 1, scratch);
}

}  // namespace
}  // namespace lx::morphology::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::morphology {

HWY_EXPORT(Bytes);
HWY_EXPORT(Words);

void MedianBytes(const Neighbourhood& map, std::uint8_t* scratch) {
  LX_CALL(map.path, Bytes, map, scratch);
}

void MedianWords(const Neighbourhood& map, std::uint8_t* scratch) {
  LX_CALL(map.path, Words, map, scratch);
}

}  // namespace lx::morphology
#endif
