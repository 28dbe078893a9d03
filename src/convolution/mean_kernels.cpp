// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "convolution/box_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "convolution/mean_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "convolution/windows-inl.h"
#include "foundation/column_sums-inl.h"
#include "foundation/component_rows-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::convolution::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

#if LX_HAS_LANES

// The source rows of a window, component by component: where they lie, or, for colours, copies,
// which outlive what is written in place.
template <typename T>
class SourceRows {
 public:
  HWY_INLINE SourceRows(const Window& window, const WindowMemory& memory)
      : window_(window), memory_(memory) {}

  // Makes sure that row `y`, cut to the image, is there. The rows in between have been asked for.
  HWY_INLINE void Take(std::ptrdiff_t y) {
    if (window_.components == 1) return;
    for (; loaded_ <= Clamped(y); ++loaded_) {
      LoadComponents(window_, loaded_, Copy(loaded_), memory_.stride, 0, 0);
    }
  }

  HWY_INLINE const T* Row(std::ptrdiff_t y, std::size_t component) const {
    if (window_.components == 1) return window_.source.template Row<const T>(Clamped(y));
    return Copy(Clamped(y)) + component * memory_.stride;
  }

 private:
  std::size_t Clamped(std::ptrdiff_t y) const {
    const auto last = static_cast<std::ptrdiff_t>(window_.height) - 1;
    return static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(y, 0, last));
  }
  T* Copy(std::size_t y) const {
    return reinterpret_cast<T*>(memory_.ring) +
           y % memory_.slots * window_.components * memory_.stride;
  }

  const Window& window_;
  const WindowMemory& memory_;
  std::size_t loaded_ = 0;
};

template <typename Lane>
HWY_INLINE ColumnSums<Lane> ColumnsOf(const WindowMemory& memory, std::size_t component) {
  ColumnSums<Lane> sums;
  for (std::size_t h = 0; h < kHalves; ++h) {
    std::uint8_t* const plane = memory.columns + (component * kHalves + h) * memory.plane;
    sums.half[h] = reinterpret_cast<Lane*>(plane + memory.margin);
  }
  return sums;
}

// As AddRow(), for sums four times as wide as the elements: of rows that are widened first.
template <typename T, typename Lane>
HWY_INLINE void AddAnyRow(const T* coming, const T* going, std::size_t width,
                          const WindowMemory& memory, const ColumnSums<Lane>& sums) {
  if constexpr (sizeof(Lane) == 2 * sizeof(T)) {
    AddRow(coming, going, width, sums);
  } else {
    auto* const wide = reinterpret_cast<hwy::MakeWide<T>*>(memory.wide);
    std::copy(coming, coming + width, wide);
    std::copy(going, going + width, wide + width);
    AddRow(wide, wide + width, width, sums);
  }
}

// Sums of even and odd pixels to their means in one vector of pixels.

// 16-bit sums by a 16-bit factor.
struct ByFactor {
  using Pixel = std::uint8_t;
  using Sum = std::uint16_t;
  using V = hn::Vec<hn::ScalableTag<Sum>>;

  Reciprocal reciprocal;

  HWY_INLINE hn::Vec<hn::ScalableTag<Pixel>> operator()(V even, V odd) const {
    const hn::ScalableTag<Sum> d;
    const auto factor = hn::Set(d, reciprocal.factor);
    const auto mean = [&](V sum) HWY_ATTR {
      return hn::ShiftRightSame(hn::MulHigh(sum, factor), reciprocal.shift);
    };
    return Join(hn::ScalableTag<Pixel>(), {{mean(even), mean(odd)}});
  }
};

// 16-bit sums by both halves of the reciprocal: (sum * high + (sum * low >> 16)) >> 8.
struct ByHalves {
  using Pixel = std::uint8_t;
  using Sum = std::uint16_t;
  using V = hn::Vec<hn::ScalableTag<Sum>>;

  Reciprocal reciprocal;

  HWY_INLINE hn::Vec<hn::ScalableTag<Pixel>> operator()(V even, V odd) const {
    const hn::ScalableTag<Sum> d;
    const auto low = hn::Set(d, static_cast<Sum>(reciprocal.value & 0xFFFF));
    const auto high = hn::Set(d, static_cast<Sum>(reciprocal.value >> 16));
    const auto scaled = [&](V sum)
                            HWY_ATTR { return hn::Add(hn::MulHigh(sum, low), hn::Mul(sum, high)); };
    const auto upper = hn::And(scaled(odd), hn::Set(d, 0xFF00));
    return hn::BitCast(hn::ScalableTag<Pixel>(), hn::Or(hn::ShiftRight<8>(scaled(even)), upper));
  }
};

// 32-bit sums of bytes, whose products fit 32 bits; half a vector of pixels.
struct ByReciprocal {
  using Pixel = std::uint8_t;
  using Sum = std::uint32_t;
  using V = hn::Vec<hn::ScalableTag<Sum>>;
  using Pairs = hn::Rebind<std::uint16_t, hn::ScalableTag<Sum>>;

  Reciprocal reciprocal;

  HWY_INLINE hn::Vec<hn::Repartition<Pixel, Pairs>> operator()(V even, V odd) const {
    const hn::ScalableTag<Sum> d;
    const auto factor = hn::Set(d, reciprocal.value);
    const auto upper = hn::And(hn::Mul(odd, factor), hn::Set(d, 0xFF000000));
    const auto both = hn::Or(hn::ShiftRight<24>(hn::Mul(even, factor)), hn::ShiftRight<16>(upper));
    return hn::BitCast(hn::Repartition<Pixel, Pairs>(), Narrow(Pairs(), both));
  }
};

// 32-bit sums of words, whose products need 40 bits; each mean is moved to its place.
struct ByLongProducts {
  using Pixel = std::uint16_t;
  using Sum = std::uint32_t;
  using V = hn::Vec<hn::ScalableTag<Sum>>;

  Reciprocal reciprocal;

  HWY_INLINE hn::Vec<hn::ScalableTag<Pixel>> operator()(V even, V odd) const {
    const hn::ScalableTag<Sum> d;
    const hn::ScalableTag<std::uint64_t> wide;
    const hn::ScalableTag<Pixel> pixels;
    const auto factor = hn::Set(d, reciprocal.value);
    const auto upper = [&](V v) HWY_ATTR {
      return hn::BitCast(d, hn::ShiftRight<32>(hn::BitCast(wide, v)));
    };
    const auto first = hn::BitCast(pixels, hn::ShiftRight<24>(hn::MulEven(even, factor)));
    const auto second = hn::BitCast(pixels, hn::ShiftRight<8>(hn::MulEven(odd, factor)));
    const auto third = hn::BitCast(pixels, hn::ShiftLeft<8>(hn::MulEven(upper(even), factor)));
    const auto fourth = hn::BitCast(pixels, hn::ShiftLeft<24>(hn::MulEven(upper(odd), factor)));
    const auto low = hn::BitCast(d, hn::OddEven(second, first));
    const auto high = hn::BitCast(d, hn::OddEven(fourth, third));
    return hn::BitCast(pixels, hn::OddEven(high, low));
  }
};

template <int kHalf, class Mean, typename Lane>
void MeanRow(const ColumnSums<Lane>& sums, const Window& window, const WindowMemory& memory,
             const Mean& mean, typename Mean::Pixel* to) {
  const hn::ScalableTag<typename Mean::Sum> d;
  const hn::Repartition<typename Mean::Pixel, hn::DFromV<decltype(mean(hn::Zero(d), hn::Zero(d)))>>
      pixels;
  const std::size_t half = window.halfX;
  const Windows<Lane> windows(sums, half);
  auto* const pairs = reinterpret_cast<typename Mean::Sum*>(memory.pairs);
  PreparePairs<kHalf>(windows, (window.width + 1) / 2, half, pairs);
  ForEachVector(pixels, window.width, [=](std::size_t x, auto access) HWY_ATTR {
    const std::size_t k = x / 2;
    auto even = windows.First(d, k);
    auto odd = windows.Last(d, k);
    if constexpr (kHalf != 0) {
      const auto shared = SumOfPairs<kHalf>(d, windows, pairs, half, k);
      even = hn::Add(even, shared);
      odd = hn::Add(odd, shared);
    }
    access.Store(pixels, mean(even, odd), to + x);
  });
}

// The kernels of a row by half-width, and that of all others behind them.
template <class Mean, typename Lane>
using RowKernel = void (*)(const ColumnSums<Lane>&, const Window&, const WindowMemory&, const Mean&,
                           typename Mean::Pixel*);

template <class Mean, typename Lane>
HWY_INLINE RowKernel<Mean, Lane> ChooseRow(std::size_t half) {
  static constexpr RowKernel<Mean, Lane> kKernels[] = {
      &MeanRow<0, Mean, Lane>, &MeanRow<1, Mean, Lane>, &MeanRow<2, Mean, Lane>,
      &MeanRow<3, Mean, Lane>, &MeanRow<4, Mean, Lane>, &MeanRow<5, Mean, Lane>,
      &MeanRow<6, Mean, Lane>, &MeanRow<7, Mean, Lane>, &MeanRow<8, Mean, Lane>};
  return half <= kMostStored ? kKernels[half] : &MeanRow<kOfPrefixes, Mean, Lane>;
}

// Sums over few and large columns are seldom wanted: one kernel does for all.
template <>
HWY_INLINE RowKernel<ByReciprocal, std::uint16_t> ChooseRow<ByReciprocal, std::uint16_t>(
    std::size_t half) {
  return half == 0 ? &MeanRow<0, ByReciprocal, std::uint16_t>
                   : &MeanRow<kOfPrefixes, ByReciprocal, std::uint16_t>;
}
template <>
HWY_INLINE RowKernel<ByReciprocal, std::uint32_t> ChooseRow<ByReciprocal, std::uint32_t>(
    std::size_t half) {
  return half == 0 ? &MeanRow<0, ByReciprocal, std::uint32_t>
                   : &MeanRow<kOfPrefixes, ByReciprocal, std::uint32_t>;
}

template <typename Lane, class Mean>
void Run(const Window& window, const WindowMemory& memory, const Mean& mean) {
  using T = typename Mean::Pixel;
  SourceRows<T> rows(window, memory);
  const auto kernel = ChooseRow<Mean, Lane>(window.halfX);
  const auto half = static_cast<std::ptrdiff_t>(window.halfY);
  const auto* const zeros = reinterpret_cast<const T*>(memory.neutral);
  T* const output = reinterpret_cast<T*>(memory.output);
  // The window of the row before the first, which the first changes like every other.
  for (std::ptrdiff_t y = -half - 1; y < half; ++y) {
    rows.Take(y);
    for (std::size_t c = 0; c < window.components; ++c) {
      AddAnyRow(rows.Row(y, c), zeros, window.width, memory, ColumnsOf<Lane>(memory, c));
    }
  }
  for (std::size_t row = 0; row < window.height; ++row) {
    const auto y = static_cast<std::ptrdiff_t>(row);
    rows.Take(y + half);
    for (std::size_t c = 0; c < window.components; ++c) {
      const auto sums = ColumnsOf<Lane>(memory, c);
      AddAnyRow(rows.Row(y + half, c), rows.Row(y - half - 1, c), window.width, memory, sums);
      ReplicateEnds(window.width, window.halfX / kHalves + 2, sums);
      kernel(sums, window, memory, mean, ComponentOutput(window, row, output, memory.stride, c));
    }
    StoreComponents(window, row, output, memory.stride);
  }
}

void Bytes16(const Window& window, const WindowMemory& memory, const Reciprocal& reciprocal) {
  if (reciprocal.factor != 0) return Run<std::uint16_t>(window, memory, ByFactor{reciprocal});
  return Run<std::uint16_t>(window, memory, ByHalves{reciprocal});
}

void Bytes32(const Window& window, const WindowMemory& memory, const Reciprocal& reciprocal) {
  Run<std::uint16_t>(window, memory, ByReciprocal{reciprocal});
}

void BytesTall(const Window& window, const WindowMemory& memory, const Reciprocal& reciprocal) {
  Run<std::uint32_t>(window, memory, ByReciprocal{reciprocal});
}

void Words(const Window& window, const WindowMemory& memory, const Reciprocal& reciprocal) {
  Run<std::uint32_t>(window, memory, ByLongProducts{reciprocal});
}

MeanKernels Kernels() { return {&Bytes16, &Bytes32, &BytesTall, &Words}; }

#else

MeanKernels Kernels() { return {}; }

#endif

}  // namespace
}  // namespace lx::convolution::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::convolution {

HWY_EXPORT(Kernels);

MeanKernels MeanKernelsOf(Path path) { return LX_CALL(path, Kernels); }

}  // namespace lx::convolution
#endif
