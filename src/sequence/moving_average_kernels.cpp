// SPDX-License-Identifier: Apache-2.0
#include "sequence/moving_average_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "sequence/moving_average_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/wide-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::sequence::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

using Words = hn::ScalableTag<std::uint16_t>;
using Bytes = hn::Rebind<std::uint8_t, Words>;

// Walks rows: row(y) makes the step of one, and step(pixels, x, access) what the destination becomes,
// of a vector of the source in lanes of words. The source then goes to the image that keeps it.
template <bool kKeeps, class Row>
HWY_INLINE void ForEachRow(const Averaging& images, const Row& row) {
  const Words d;
  for (std::size_t y = 0; y < images.height; ++y) {
    const auto* const from = images.source.Row<const std::uint8_t>(y);
    auto* const kept = kKeeps ? images.kept.Row<std::uint8_t>(y) : nullptr;
    auto* const to = images.destination.Row<std::uint8_t>(y);
    const auto step = row(y);
    std::size_t x = 0;
#if LX_HAS_PAIR_PRODUCTS
    const hn::ScalableTag<std::uint8_t> whole;
    const std::size_t n = hn::Lanes(d);
    for (; x + 2 * n <= images.width; x += 2 * n) {
      const auto low = hn::LoadU(Bytes(), from + x);
      const auto high = hn::LoadU(Bytes(), from + x + n);
      const auto first = step(hn::PromoteTo(d, low), x, WholeVector{});
      const auto second = step(hn::PromoteTo(d, high), x + n, WholeVector{});
      hn::StoreU(PackInOrder(first, second), whole, to + x);
      if constexpr (kKeeps) hn::StoreU(hn::Combine(whole, high, low), whole, kept + x);
    }
#endif
    ForEachVector(d, images.width - x, [&](std::size_t i, auto access) HWY_ATTR {
      const auto pixels = access.Load(Bytes(), from + x + i);
      const auto result = step(hn::PromoteTo(d, pixels), x + i, access);
      access.Store(Bytes(), Narrow(Bytes(), result), to + x + i);
      if constexpr (kKeeps) access.Store(Bytes(), pixels, kept + x + i);
    });
  }
}

template <class Row>
HWY_INLINE void ForEachRow(const Averaging& images, const Row& row) {
  if (images.kept.data != nullptr) {
    ForEachRow<true>(images, row);
  } else {
    ForEachRow<false>(images, row);
  }
}

void Start(const Averaging& images, std::uint16_t others) {
  const Words d;
  const auto factor = hn::Set(d, others);
  ForEachRow(images, [&](std::size_t y) HWY_ATTR {
    auto* const sums = images.sum.Row<std::uint16_t>(y);
    return [=](auto pixels, std::size_t x, auto access) HWY_ATTR {
      access.Store(d, hn::Mul(pixels, factor), sums + x);
      return pixels;
    };
  });
}

void Continue(const Averaging& images, const ByteAverage& average) {
  const Words d;
  const auto multiplier = hn::Set(d, average.multiplier);
  const auto more = hn::Set(d, average.more);
  const int shift = average.shift;
  ForEachRow(images, [&](std::size_t y) HWY_ATTR {
    auto* const sums = images.sum.Row<std::uint16_t>(y);
    const auto* const outgoing = images.outgoing.Row<const std::uint8_t>(y);
    return [=](auto pixels, std::size_t x, auto access) HWY_ATTR {
      const auto sum = hn::Add(access.Load(d, sums + x), pixels);
      const auto leaves = hn::PromoteTo(d, access.Load(Bytes(), outgoing + x));
      access.Store(d, hn::Sub(sum, leaves), sums + x);
      return hn::ShiftRightSame(hn::MulHigh(hn::Add(sum, more), multiplier), shift);
    };
  });
}

}  // namespace
}  // namespace lx::sequence::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::sequence {

HWY_EXPORT(Start);
HWY_EXPORT(Continue);

void StartAverage(const Averaging& images, std::uint16_t others) {
  LX_CALL(images.path, Start, images, others);
}

void ContinueAverage(const Averaging& images, const ByteAverage& average) {
  LX_CALL(images.path, Continue, images, average);
}

}  // namespace lx::sequence
#endif
