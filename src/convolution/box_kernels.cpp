// SPDX-License-Identifier: Apache-2.0
#include "convolution/box_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "convolution/box_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "convolution/prefix_sum-inl.h"
#include "foundation/component_rows-inl.h"
#include "foundation/wide-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::convolution::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

// Source row `y` with as many elements beyond its ends as the window reaches.
template <typename T>
void LoadWithMargins(const Window& window, const BoxMemory& memory, std::size_t y) {
  T* const row = reinterpret_cast<T*>(memory.elements) + window.halfX;
  LoadComponents(window, y, row, memory.padded, window.halfX, window.halfX);
}

struct Identity {
  template <class D>
  HWY_INLINE hn::Vec<D> operator()(D /*d*/, hn::Vec<D> v) const {
    return v;
  }
};

struct Square {
  template <class D>
  HWY_INLINE hn::Vec<D> operator()(D /*d*/, hn::Vec<D> v) const {
    return hn::Mul(v, v);
  }
};

// sums[x] = sum of value(element) over the columns of the window at x: a difference of prefix sums,
// which is exact although they wrap.
template <typename T, typename Lane, class Value>
void SumColumns(const Window& window, const T* padded, Lane* prefix, Lane* sums,
                const Value& value) {
  PrefixSums(padded, window.width + 2 * window.halfX, prefix, value);
  const hn::ScalableTag<Lane> d;
  const Lane* const end = prefix + 2 * window.halfX + 1;
  const std::size_t width = window.width;
  for (std::size_t x = 0; x < width; x += hn::Lanes(d)) {
    hn::Store(hn::Sub(hn::LoadU(d, end + x), hn::LoadU(d, prefix + x)), d, sums + x);
  }
}

template <typename Lane>
Lane* RingRow(const Window& window, const BoxMemory& memory, std::uint8_t* ring, std::size_t y) {
  return reinterpret_cast<Lane*>(ring) + y % memory.slots * window.components * memory.rowStride;
}

// The column sums of source row `y` into their place in the ring.
template <typename T, typename Lane, class Value>
void AddRow(const Window& window, const BoxMemory& memory, std::uint8_t* ring, std::size_t y,
            const Value& value) {
  Lane* const sums = RingRow<Lane>(window, memory, ring, y);
  for (std::size_t c = 0; c < window.components; ++c) {
    SumColumns(window, reinterpret_cast<const T*>(memory.elements) + c * memory.padded,
               reinterpret_cast<Lane*>(memory.prefix), sums + c * memory.rowStride, value);
  }
}

template <class D, typename Lane>
HWY_INLINE hn::Vec<D> LoadSums(D d, const Lane* sums) {
  if constexpr (sizeof(Lane) == sizeof(hn::TFromD<D>)) {
    return hn::Load(d, sums);
  } else {
    return hn::PromoteTo(d, hn::Load(hn::Rebind<Lane, D>(), sums));
  }
}

// Which rows come into the window of row `y` and which go: clamped to the image.
struct RowChange {
  std::size_t coming;
  std::size_t going;

  RowChange(const Window& window, std::size_t y)
      : coming(std::min(y + window.halfY, window.height - 1)),
        going(y > window.halfY + 1 ? y - window.halfY - 1 : 0) {}
};

// The sums of the window of row 0, but for what the first change to row 0 adds and takes away.
template <typename Lane>
void StartSums(const Window& window, const BoxMemory& memory, std::uint8_t* ring,
               std::uint32_t* sums) {
  const std::size_t count = window.components * memory.rowStride;
  const Lane* const first = RingRow<Lane>(window, memory, ring, 0);
  for (std::size_t i = 0; i < count; ++i) {
    sums[i] = static_cast<std::uint32_t>((window.halfY + 2) * first[i]);
  }
  for (std::size_t y = 1; y < window.halfY; ++y) {
    const Lane* const row = RingRow<Lane>(window, memory, ring, y);
    for (std::size_t i = 0; i < count; ++i) sums[i] += row[i];
  }
  if (window.halfY == 0) {
    for (std::size_t i = 0; i < count; ++i) sums[i] -= first[i];
  }
}

// (sum * reciprocal) >> 24 in 32-bit lanes; the product of a byte's window fits them.
template <typename T>
struct Mean {
  std::uint32_t reciprocal;

  template <class D>
  HWY_INLINE hn::Vec<D> operator()(D d, hn::Vec<D> sum) const {
    const auto factor = hn::Set(d, reciprocal);
    if constexpr (sizeof(T) == 1) {
      return hn::ShiftRight<24>(hn::Mul(sum, factor));
    } else {
#if !LX_HAS_LANES
      const std::uint64_t product = std::uint64_t{hn::GetLane(sum)} * reciprocal;
      return hn::Set(d, static_cast<std::uint32_t>(product >> 24));
#else
      const hn::RepartitionToWide<D> wide;
      const auto odd = hn::BitCast(d, hn::ShiftRight<32>(hn::BitCast(wide, sum)));
      const auto even = hn::ShiftRight<24>(hn::MulEven(sum, factor));
      const auto high = hn::ShiftLeft<32>(hn::ShiftRight<24>(hn::MulEven(odd, factor)));
      return hn::BitCast(d, hn::Or(even, high));
#endif
    }
  }
};

// One row of means, its window's sums brought up to date on the way.
template <typename T, typename Lane>
void MeanRow(const Window& window, const BoxMemory& memory, std::size_t y, const Mean<T>& mean) {
  const hn::ScalableTag<std::uint32_t> d;
  const hn::Rebind<T, decltype(d)> narrow;
  const RowChange change(window, y);
  const Lane* const coming = RingRow<Lane>(window, memory, memory.ring, change.coming);
  const Lane* const going = RingRow<Lane>(window, memory, memory.ring, change.going);
  T* const output = reinterpret_cast<T*>(memory.output);
  for (std::size_t c = 0; c < window.components; ++c) {
    const std::size_t at = c * memory.rowStride;
    T* const to = ComponentOutput(window, y, output, memory.rowStride, c);
    // Copies, because the compiler must take every stored vector for a change of the originals.
    const Lane* const plus = coming + at;
    const Lane* const minus = going + at;
    std::uint32_t* const sums = memory.sums + at;
    ForEachVector(d, window.width, [=](std::size_t x, auto access) HWY_ATTR {
      const auto fresh = hn::Sub(LoadSums(d, plus + x), LoadSums(d, minus + x));
      const auto sum = hn::Add(hn::Load(d, sums + x), fresh);
      hn::Store(sum, d, sums + x);
      access.Store(narrow, Narrow(narrow, mean(d, sum)), to + x);
    });
  }
  StoreComponents(window, y, output, memory.rowStride);
}

template <typename T, typename Lane>
void RunMean(const Window& window, const BoxMemory& memory) {
  const Mean<T> mean{static_cast<std::uint32_t>((1U << 24) / window.Count())};
  std::size_t loaded = 0;
  const auto load = [&](std::size_t last) {
    for (; loaded <= last; ++loaded) {
      LoadWithMargins<T>(window, memory, loaded);
      AddRow<T, Lane>(window, memory, memory.ring, loaded, Identity{});
    }
  };
  load(window.halfY);
  StartSums<Lane>(window, memory, memory.ring, memory.sums);
  for (std::size_t y = 0; y < window.height; ++y) {
    load(RowChange(window, y).coming);
    MeanRow<T, Lane>(window, memory, y, mean);
  }
}

void Mean8x16(const Window& window, const BoxMemory& memory) {
  RunMean<std::uint8_t, std::uint16_t>(window, memory);
}

void Mean8x32(const Window& window, const BoxMemory& memory) {
  RunMean<std::uint8_t, std::uint32_t>(window, memory);
}

void Mean16(const Window& window, const BoxMemory& memory) {
  RunMean<std::uint16_t, std::uint32_t>(window, memory);
}

// Unsigned lanes as doubles: the conversion knows signed ones.
template <class D>
HWY_INLINE hn::Vec<D> ToReal(D d, hn::Vec<hn::Rebind<std::uint32_t, D>> v) {
  const hn::Rebind<std::uint32_t, D> whole;
  const hn::Rebind<std::int32_t, D> biased;
  const auto shifted = hn::Xor(v, hn::Set(whole, 0x80000000U));
  return hn::Add(hn::PromoteTo(d, hn::BitCast(biased, shifted)), hn::Set(d, 2147483648.0));
}

// count * squares - sum * sum, rounded once to single precision.

// In 32-bit lanes, modulo 2^32, for windows whose radicand stays below 2^31.
struct SmallRadicand {
  std::uint32_t count;

  using Tag = hn::ScalableTag<std::uint32_t>;

  template <class F>
  HWY_INLINE hn::Vec<F> operator()(F single, hn::Vec<Tag> sum, hn::Vec<Tag> squares) const {
    const Tag d;
    const auto radicand = hn::Sub(hn::Mul(squares, hn::Set(d, count)), hn::Mul(sum, sum));
    return hn::ConvertTo(single, hn::BitCast(hn::RebindToSigned<Tag>(), radicand));
  }
};

// In doubles, which hold every product exactly.
struct LargeRadicand {
  std::uint32_t count;

  using Tag = hn::Rebind<std::uint32_t, hn::ScalableTag<double>>;

  template <class F>
  HWY_INLINE hn::Vec<F> operator()(F single, hn::Vec<Tag> sum, hn::Vec<Tag> squares) const {
    const hn::ScalableTag<double> real;
    const auto total = ToReal(real, sum);
    const auto scaled = hn::Mul(hn::Set(real, static_cast<double>(count)), ToReal(real, squares));
    return hn::DemoteTo(single, hn::Sub(scaled, hn::Mul(total, total)));
  }
};

// trunc(root / count) without the division: as long as the multiples of `count` are exact, the
// rounded quotient reaches an integer exactly when the root reaches its multiple.
template <class F>
HWY_INLINE hn::Vec<hn::Rebind<std::int32_t, F>> Quotient(F d, hn::Vec<F> root, float count) {
  const auto divisor = hn::Set(d, count);
  const auto one = hn::Set(d, 1.0F);
  const auto guess = hn::Trunc(hn::Mul(root, hn::Set(d, 1.0F / count)));
  const auto multiple = hn::Mul(guess, divisor);
  const auto tooMuch = hn::IfThenElseZero(hn::Lt(root, multiple), one);
  const auto tooLittle = hn::IfThenElseZero(hn::Ge(root, hn::Add(multiple, divisor)), one);
  return hn::ConvertTo(hn::Rebind<std::int32_t, F>(), hn::Add(hn::Sub(guess, tooMuch), tooLittle));
}

template <class Radicand>
void DeviationRow(const Window& window, const BoxMemory& memory, std::size_t y) {
  using Tag = typename Radicand::Tag;
  const Tag d;
  const hn::Rebind<float, Tag> single;
  const hn::Rebind<std::uint8_t, Tag> bytes;
  const RowChange change(window, y);
  const auto* const coming = RingRow<std::uint32_t>(window, memory, memory.ring, change.coming);
  const auto* const going = RingRow<std::uint32_t>(window, memory, memory.ring, change.going);
  const auto* const comingSquares =
      RingRow<std::uint32_t>(window, memory, memory.squares, change.coming);
  const auto* const goingSquares =
      RingRow<std::uint32_t>(window, memory, memory.squares, change.going);
  std::uint8_t* const to = window.destination.Row<std::uint8_t>(y);
  std::uint32_t* const sums = memory.sums;
  std::uint32_t* const squareSums = memory.squareSums;
  const Radicand radicand{static_cast<std::uint32_t>(window.Count())};
  const auto count = static_cast<float>(window.Count());
  ForEachVector(d, window.width, [=](std::size_t x, auto access) HWY_ATTR {
    const auto sum =
        hn::Add(hn::Load(d, sums + x), hn::Sub(hn::Load(d, coming + x), hn::Load(d, going + x)));
    const auto squares =
        hn::Add(hn::Load(d, squareSums + x),
                hn::Sub(hn::Load(d, comingSquares + x), hn::Load(d, goingSquares + x)));
    hn::Store(sum, d, sums + x);
    hn::Store(squares, d, squareSums + x);
    const auto root = hn::Sqrt(radicand(single, sum, squares));
    access.Store(bytes, hn::DemoteTo(bytes, Quotient(single, root, count)), to + x);
  });
}

void Deviation8(const Window& window, const BoxMemory& memory) {
  using Lane = std::uint32_t;
  std::size_t loaded = 0;
  const auto load = [&](std::size_t last) {
    for (; loaded <= last; ++loaded) {
      LoadWithMargins<std::uint8_t>(window, memory, loaded);
      AddRow<std::uint8_t, Lane>(window, memory, memory.ring, loaded, Identity{});
      AddRow<std::uint8_t, Lane>(window, memory, memory.squares, loaded, Square{});
    }
  };
  load(window.halfY);
  StartSums<Lane>(window, memory, memory.ring, memory.sums);
  StartSums<Lane>(window, memory, memory.squares, memory.squareSums);
  // The variance of bytes is at most 127.5 squared.
  const bool small = window.Count() * window.Count() * 16257 < (std::uint64_t{1} << 31);
  for (std::size_t y = 0; y < window.height; ++y) {
    load(RowChange(window, y).coming);
    (small ? &DeviationRow<SmallRadicand> : &DeviationRow<LargeRadicand>)(window, memory, y);
  }
}

}  // namespace
}  // namespace lx::convolution::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::convolution {

HWY_EXPORT(Mean8x16);
HWY_EXPORT(Mean8x32);
HWY_EXPORT(Mean16);
HWY_EXPORT(Deviation8);

void BoxMeanKernel8x16(const Window& window, const BoxMemory& memory) {
  LX_CALL(window.path, Mean8x16, window, memory);
}

void BoxMeanKernel8x32(const Window& window, const BoxMemory& memory) {
  LX_CALL(window.path, Mean8x32, window, memory);
}

void BoxMeanKernel16(const Window& window, const BoxMemory& memory) {
  LX_CALL(window.path, Mean16, window, memory);
}

void BoxDeviationKernel8(const Window& window, const BoxMemory& memory) {
  LX_CALL(window.path, Deviation8, window, memory);
}

}  // namespace lx::convolution
#endif
