// SPDX-License-Identifier: Apache-2.0
#include "morphology/distance_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "morphology/distance_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/simd-inl.h"
#include "morphology/running_distance-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::morphology::HWY_NAMESPACE {
namespace {

using namespace lx::HWY_NAMESPACE;

using Bytes = hn::ScalableTag<std::uint8_t>;
using V = hn::Vec<Bytes>;

// One step from the nearest of the three pixels in the row before.
HWY_INLINE V OneFrom(const std::uint8_t* row) {
  const Bytes d;
  const V beside = hn::Min(hn::LoadU(d, row - 1), hn::LoadU(d, row + 1));
  return OneMore(hn::Min(beside, hn::LoadU(d, row)));
}

// Both passes, from row to row. Distances are bytes: those of the forward pass wait in the first half
// of each destination row, where the backward pass finds them before it writes the row.
class Distances {
 public:
  HWY_INLINE Distances(const DistanceMap& map, std::uint8_t* scratch)
      : map_(map),
        before_(scratch + kLargestVector),
        here_(before_ + DistancePitch(map)),
        outside_(hn::Set(Bytes(), map.outside)) {}

  HWY_INLINE void Run() {
    StartPass();
    for (std::size_t y = 0; y < map_.height; ++y) Forward(y);
    StartPass();
    for (std::size_t y = map_.height; y-- > 0;) Backward(y);
  }

 private:
  // The row before the first one lies outside, and so do the ends of every row.
  void StartPass() const {
    const std::size_t pitch = DistancePitch(map_);
    std::memset(before_ - kLargestVector, map_.outside, pitch);
    std::memset(here_ - kLargestVector, map_.outside, pitch);
  }

  HWY_INLINE void NextRow() {
    std::memset(here_ + map_.width, map_.outside, kLargestVector);
    std::swap(before_, here_);
  }

  HWY_INLINE void Forward(std::size_t y) {
    const Bytes d;
    const auto* const from = map_.source.Row<const std::uint8_t>(y);
    auto* const to = map_.destination.Row<std::uint8_t>(y);
    RunningDistance<false> run(map_.outside);
    ForEachVector(d, map_.width, [&](std::size_t x, auto access) HWY_ATTR {
      const V v = run.Next(hn::Min(access.Load(d, from + x), OneFrom(before_ + x)));
      hn::StoreU(v, d, here_ + x);
      access.Store(d, v, to + x);
    });
    NextRow();
  }

  HWY_INLINE void Backward(std::size_t y) {
    const Bytes d;
    const std::size_t n = hn::Lanes(d);
    const auto* const from = map_.destination.Row<const std::uint8_t>(y);
    RunningDistance<true> run(map_.outside);
    const std::size_t part = map_.width % n;
    std::size_t x = map_.width - part;
    if (part > 0) {
      const V v = hn::Min(PartVector{part}.Load(d, from + x), OneFrom(before_ + x));
      hn::StoreU(run.Next(hn::IfThenElse(hn::FirstN(d, part), v, outside_)), d, here_ + x);
    }
    while (x > 0) {
      x -= n;
      hn::StoreU(run.Next(hn::Min(hn::LoadU(d, from + x), OneFrom(before_ + x))), d, here_ + x);
    }
    Widen(y);
    NextRow();
  }

  HWY_INLINE void Widen(std::size_t y) const {
    const hn::ScalableTag<std::uint16_t> words;
    const hn::Rebind<std::uint8_t, decltype(words)> half;
    auto* const to = map_.destination.Row<std::uint16_t>(y);
    ForEachVector(words, map_.width, [&](std::size_t x, auto access) HWY_ATTR {
      access.Store(words, hn::PromoteTo(words, hn::LoadU(half, here_ + x)), to + x);
    });
  }

  const DistanceMap& map_;
  std::uint8_t* before_;
  std::uint8_t* here_;
  V outside_;
};

void Run(const DistanceMap& map, std::uint8_t* scratch) { Distances(map, scratch).Run(); }

}  // namespace
}  // namespace lx::morphology::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::morphology {

HWY_EXPORT(Run);

void MapDistances(const DistanceMap& map, std::uint8_t* scratch) {
  LX_CALL(map.path, Run, map, scratch);
}

}  // namespace lx::morphology
#endif
