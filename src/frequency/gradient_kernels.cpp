// SPDX-License-Identifier: Apache-2.0
#include "frequency/gradient_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frequency/gradient_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/gather-inl.h"
#include "foundation/simd-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::frequency::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

using Lanes = hn::ScalableTag<std::int32_t>;
using Bytes = hn::Rebind<std::uint8_t, Lanes>;
using V = hn::Vec<Lanes>;

// Three rows with a pixel more at either end and whole vectors behind.
struct Cross {
  const std::uint8_t* above;
  const std::uint8_t* centre;
  const std::uint8_t* below;

  HWY_INLINE V Across(std::size_t x) const { return Difference(centre + x - 1, centre + x + 1); }
  HWY_INLINE V Down(std::size_t x) const { return Difference(above + x, below + x); }

 private:
  static HWY_INLINE V Difference(const std::uint8_t* a, const std::uint8_t* b) {
    const Lanes d;
    return hn::Sub(hn::PromoteTo(d, hn::LoadU(Bytes(), a)),
                   hn::PromoteTo(d, hn::LoadU(Bytes(), b)));
  }
};

// Calls write(y, cross) for each row. All that a row is made of was copied before it is written.
template <class Write>
HWY_INLINE void ForEachRow(const GradientImage& image, std::uint8_t* scratch, const Write& write) {
  const std::size_t width = image.width;
  const std::size_t last = image.height - 1;
  std::memset(scratch, 0, GradientBytes(width));
  const auto copyOf = [&](std::size_t y) HWY_ATTR {
    return scratch + y % 3 * GradientRowBytes(width) + kLargestVector;
  };
  const auto copy = [&](std::size_t y) HWY_ATTR {
    std::uint8_t* const to = copyOf(y);
    std::memcpy(to, image.source.Row<const std::uint8_t>(y), width);
    to[-1] = to[0];
    to[width] = to[width - 1];
  };
  copy(0);
  for (std::size_t y = 0; y <= last; ++y) {
    if (y < last) copy(y + 1);
    write(y, Cross{copyOf(y == 0 ? 0 : y - 1), copyOf(y), copyOf(HWY_MIN(y + 1, last))});
  }
}

void Differences(const GradientImage& image, std::uint8_t* scratch) {
  const Lanes d;
  const auto low = hn::Set(d, 0xFFFF);
  ForEachRow(image, scratch, [&](std::size_t y, const Cross& cross) HWY_ATTR {
    auto* const to = image.destination.Row<std::int32_t>(y);
    ForEachVector(d, image.width, [&](std::size_t x, auto access) HWY_ATTR {
      const auto both = hn::Or(hn::And(cross.Across(x), low), hn::ShiftLeft<16>(cross.Down(x)));
      access.Store(d, both, to + x);
    });
  });
}

// Places of the differences in a table, in bytes from its centre.
class Places {
 public:
  HWY_INLINE explicit Places(const Rows& table)
      : centre_(table.Row<const std::uint8_t>(kTableCentre) + kTableCentre),
        pitch_(hn::Set(Lanes(), static_cast<std::int32_t>(table.pitch))) {}

  HWY_INLINE V Of(V across, V down) const { return hn::Add(hn::Mul(down, pitch_), across); }

  // Writes the table's bytes at the places that step(x, access) gives for each vector.
  template <class Step>
  HWY_INLINE void LookUp(std::size_t width, std::uint8_t* to, const Step& step) const {
    const Lanes d;
    HWY_ALIGN std::int32_t places[kStretch];
    for (std::size_t first = 0; first < width; first += kStretch) {
      const std::size_t count = HWY_MIN(kStretch, width - first);
      ForEachVector(d, count, [&](std::size_t x, auto access) HWY_ATTR {
        hn::Store(step(first + x, access), d, places + x);
      });
      PixelsAt<1>(centre_, places, count, to + first);
    }
  }

 private:
  // Whole vectors of every instruction set.
  static constexpr std::size_t kStretch = 256;

  const std::uint8_t* centre_;
  V pitch_;
};

void Gradients(const GradientImage& image, const Rows& table, std::uint8_t* scratch) {
  const Places places(table);
  ForEachRow(image, scratch, [&](std::size_t y, const Cross& cross) HWY_ATTR {
    places.LookUp(image.width, image.destination.Row<std::uint8_t>(y),
                  [&](std::size_t x, auto /*access*/)
                      HWY_ATTR { return places.Of(cross.Across(x), cross.Down(x)); });
  });
}

void Scalars(const PixelMap& map, const Rows& table) {
  const Lanes d;
  const Places places(table);
  const auto least = hn::Set(d, -kTableCentre);
  const auto most = hn::Set(d, kTableCentre - 1);
  const auto clamp = [&](V v) HWY_ATTR { return hn::Min(hn::Max(v, least), most); };
  for (std::size_t y = 0; y < map.height; ++y) {
    const auto* const from = map.sources[0].Row<const std::int32_t>(y);
    places.LookUp(map.width, map.destination.Row<std::uint8_t>(y),
                  [&](std::size_t x, auto access) HWY_ATTR {
                    const auto both = access.Load(d, from + x);
                    const auto across = hn::ShiftRight<16>(hn::ShiftLeft<16>(both));
                    return places.Of(clamp(across), clamp(hn::ShiftRight<16>(both)));
                  });
  }
}

}  // namespace
}  // namespace lx::frequency::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::frequency {

HWY_EXPORT(Differences);
HWY_EXPORT(Gradients);
HWY_EXPORT(Scalars);

void FindDifferences(const GradientImage& image, std::uint8_t* scratch) {
  LX_CALL(image.path, Differences, image, scratch);
}

void LookUpGradients(const GradientImage& image, const Rows& table, std::uint8_t* scratch) {
  LX_CALL(image.path, Gradients, image, table, scratch);
}

void LookUpDifferences(const PixelMap& map, const Rows& table) {
  LX_CALL(map.path, Scalars, map, table);
}

}  // namespace lx::frequency
#endif
