// SPDX-License-Identifier: Apache-2.0
#include "correction/normalize_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "correction/normalize_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "correction/doubles-inl.h"
#include "foundation/pixel_map-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::correction::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

struct OnLine {
  static constexpr bool kComputes = true;

  Line line;

  template <class D, class V>
  HWY_INLINE V operator()(D d, V v) const {
    return MapWide(
        d,
        [this](auto wide, auto lanes) HWY_ATTR {
          const hn::RebindToSigned<decltype(wide)> whole;
          const auto mapped = MapDoubles(
              whole,
              [this](auto real, auto x) HWY_ATTR {
                const auto scaled = hn::Mul(hn::Set(real, line.gain), x);
                const auto moved =
                    hn::Sub(hn::Add(scaled, hn::Set(real, line.rise)), hn::Set(real, line.fall));
                return hn::Min(hn::Max(moved, hn::Zero(real)), hn::Set(real, 65535.0));
              },
              hn::BitCast(whole, lanes));
          return hn::BitCast(wide, mapped);
        },
        v);
  }
};

void Words(const PixelMap& map, const Line& line) { MapOne<std::uint16_t>(map, OnLine{line}); }

}  // namespace
}  // namespace lx::correction::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::correction {

HWY_EXPORT(Words);

void MapWords(const PixelMap& map, const Line& line) { LX_CALL(map.path, Words, map, line); }

}  // namespace lx::correction
#endif
