// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "convolution/kernel_memory.h"
#include "convolution/kernel_worker.h"
#include "foundation/scratch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "convolution/kernel_real_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/component_rows-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::convolution::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

template <class D>
HWY_INLINE hn::Vec<D> Rectify(D d, hn::Vec<D> v, int rectifier) {
  switch (rectifier) {
    case 1:
      return hn::Max(hn::Neg(v), hn::Zero(d));
    case 2:
      return hn::Max(v, hn::Zero(d));
    case 3:
      return hn::Abs(v);
    default:
      return v;
  }
}

// Truncated, rectified, moved by the offset modulo 2^32, and clipped. What is no number counts as 0,
// and what leaves 32 bits ends at 0 or at the largest pixel whatever the offset.
template <typename T, class D>
HWY_INLINE hn::Vec<hn::Rebind<T, D>> Finish(D d, hn::Vec<D> sum, const RealKernel& kernel) {
  const hn::Rebind<std::int32_t, D> whole;
  const auto number = hn::IfThenElseZero(hn::Eq(sum, sum), sum);
  const auto rectified = Rectify(d, hn::Trunc(number), kernel.rectifier);
  const auto most = hn::Set(d, 2147483648.0F);
  const auto least = hn::Neg(most);
  // The largest number below 2^31 is 128 less.
  const auto near = hn::Max(hn::Min(rectified, hn::Set(d, 2147483520.0F)), least);
  const auto offset = hn::Set(whole, static_cast<std::int32_t>(kernel.offset));
  const auto largest = hn::Set(whole, hwy::LimitsMax<T>());
  auto v = hn::Add(hn::ConvertTo(whole, near), offset);
  v = hn::IfThenElse(hn::RebindMask(whole, hn::Ge(rectified, most)), largest, v);
  v = hn::IfThenZeroElse(hn::RebindMask(whole, hn::Lt(rectified, least)), v);
  // The conversion saturates only what fits 16 bits.
  v = hn::Min(hn::Max(v, hn::Zero(whole)), largest);
  return hn::DemoteTo(hn::Rebind<T, D>(), v);
}

// Vectors of results that are made at a time.
constexpr std::size_t kTogether = LX_HAS_LANES ? 8 : 1;

// kColumns: those of the kernel, or 0 where they are counted.
template <typename T, std::size_t kColumns>
void Row(const RealKernel& kernel, const float* const* taps, std::size_t width, T* to) {
  const hn::ScalableTag<float> d;
  const hn::Rebind<T, decltype(d)> narrow;
  const std::size_t n = hn::Lanes(d);
  const std::size_t columns = kColumns == 0 ? kernel.sizeX : kColumns;
  for (std::size_t first = 0; first < width; first += kTogether * n) {
    hn::Vec<decltype(d)> sums[kTogether];
    for (auto& sum : sums) sum = hn::Set(d, kernel.start);
    const float* coefficient = kernel.coefficients;
    for (std::size_t j = 0; j < kernel.sizeY; ++j) {
      const float* const row = taps[j] + first;
      for (std::size_t i = 0; i < columns; ++i) {
        const auto factor = hn::Set(d, *coefficient++);
        LX_UNROLL
        for (std::size_t v = 0; v < kTogether; ++v) {
          sums[v] = hn::Add(sums[v], hn::Mul(hn::LoadU(d, row + i + v * n), factor));
        }
      }
    }
    for (std::size_t v = 0; v < kTogether; ++v) {
      const std::size_t x = first + v * n;
      if (x >= width) break;
      const auto pixels = Finish<T>(d, sums[v], kernel);
      if (x + n <= width) {
        hn::StoreU(pixels, narrow, to + x);
      } else {
        PartVector{width - x}.Store(narrow, pixels, to + x);
      }
    }
  }
}

template <typename T>
void AnyRow(const RealKernel& kernel, const float* const* taps, std::size_t width, T* to) {
  switch (kernel.sizeX) {
    case 3:
      return Row<T, 3>(kernel, taps, width, to);
    case 5:
      return Row<T, 5>(kernel, taps, width, to);
    default:
      return Row<T, 0>(kernel, taps, width, to);
  }
}

// Source row `y` in single precision, with outside at both ends, into its place in the ring.
template <typename T>
void LoadRow(const ComponentImage& image, const RealKernel& kernel, const RealMemory& memory,
             std::size_t y) {
  const hn::ScalableTag<float> d;
  const hn::Rebind<std::int32_t, decltype(d)> whole;
  const hn::Rebind<T, decltype(d)> narrow;
  T* const input = static_cast<T*>(memory.input);
  LoadComponents(image, y, input, memory.stride, 0, 0);
  for (std::size_t c = 0; c < image.components; ++c) {
    float* const row = memory.rows + (y % memory.slots * image.components + c) * memory.stride;
    float* const pixels = row + kernel.left;
    for (std::size_t x = 0; x < image.width; x += hn::Lanes(d)) {
      const auto loaded = hn::LoadU(narrow, input + c * memory.stride + x);
      hn::StoreU(hn::ConvertTo(d, hn::PromoteTo(whole, loaded)), d, pixels + x);
    }
    std::fill(row, pixels, kernel.outside);
    std::fill(pixels + image.width, row + memory.stride, kernel.outside);
  }
}

template <typename T>
void Run(const ComponentImage& image, const RealKernel& kernel, const RealMemory& memory) {
  const std::size_t below = kernel.sizeY - 1 - kernel.above;
  T* const output = static_cast<T*>(memory.output);
  std::fill(memory.outside, memory.outside + memory.stride, kernel.outside);
  std::size_t loaded = 0;
  for (std::size_t y = 0; y < image.height; ++y) {
    for (; loaded < image.height && loaded <= y + below; ++loaded) {
      LoadRow<T>(image, kernel, memory, loaded);
    }
    for (std::size_t c = 0; c < image.components; ++c) {
      for (std::size_t j = 0; j < kernel.sizeY; ++j) {
        const std::size_t row = y + j - kernel.above;  // wraps above the image, and so is beyond it
        const std::size_t at = (row % memory.slots * image.components + c) * memory.stride;
        memory.taps[j] = row < image.height ? memory.rows + at : memory.outside;
      }
      AnyRow(kernel, memory.taps, image.width, ComponentOutput(image, y, output, memory.stride, c));
    }
    StoreComponents(image, y, output, memory.stride);
  }
}

void RunBytes(const ComponentImage& image, const RealKernel& kernel, const RealMemory& memory) {
  Run<std::uint8_t>(image, kernel, memory);
}

void RunWords(const ComponentImage& image, const RealKernel& kernel, const RealMemory& memory) {
  Run<std::uint16_t>(image, kernel, memory);
}

}  // namespace
}  // namespace lx::convolution::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::convolution {

HWY_EXPORT(RunBytes);
HWY_EXPORT(RunWords);

namespace {

template <typename T, class Kernel>
bool WithMemory(const ComponentImage& image, const RealKernel& kernel, Kernel run) {
  RealMemory memory{};
  memory.slots = std::min(kernel.sizeY, image.height);
  // Several vectors of results are made at a time, whose windows reach beyond the row.
  memory.stride = ComponentStride(image, kernel.sizeX, kernel.sizeX) + 8 * kLargestVector;
  const std::size_t row = image.components * memory.stride;
  const Scratch<float> rows(memory.slots * row + memory.stride);
  const Scratch<T> ends(2 * row);
  const Scratch<const float*> taps(kernel.sizeY);
  if (!rows || !ends || !taps) return false;
  memory.outside = rows.get();
  memory.rows = rows.get() + memory.stride;
  memory.input = ends.get();
  memory.output = ends.get() + row;
  memory.taps = taps.get();
  run(image, kernel, memory);
  return true;
}

}  // namespace

bool RealBytes(const ComponentImage& image, const RealKernel& kernel) {
  return WithMemory<std::uint8_t>(image, kernel, LX_KERNEL(image.path, RunBytes));
}

bool RealWords(const ComponentImage& image, const RealKernel& kernel) {
  return WithMemory<std::uint16_t>(image, kernel, LX_KERNEL(image.path, RunWords));
}

}  // namespace lx::convolution
#endif
