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

// Truncated, rectified, moved by the offset modulo 2^32, and clipped.
template <typename T, class D>
HWY_INLINE hn::Vec<hn::Rebind<T, D>> Finish(D d, hn::Vec<D> sum, const RealKernel& kernel) {
  const hn::Rebind<std::int32_t, D> whole;
  // What is no number counts as 0, and what is far outside stays there whatever the offset.
  const auto number = hn::IfThenElseZero(hn::Eq(sum, sum), sum);
  const auto far = hn::Set(d, 1073741824.0F);
  auto v = hn::ConvertTo(whole, hn::Max(hn::Min(number, far), hn::Neg(far)));
  switch (kernel.rectifier) {
    case 1:
      v = hn::Max(hn::Neg(v), hn::Zero(whole));
      break;
    case 2:
      v = hn::Max(v, hn::Zero(whole));
      break;
    case 3:
      v = hn::Abs(v);
      break;
    default:
      break;
  }
  v = hn::Add(v, hn::Set(whole, static_cast<std::int32_t>(kernel.offset)));
  // The conversion saturates only what fits 16 bits.
  v = hn::Min(hn::Max(v, hn::Zero(whole)), hn::Set(whole, hwy::LimitsMax<T>()));
  return hn::DemoteTo(hn::Rebind<T, D>(), v);
}

template <typename T>
void Row(const RealKernel& kernel, const float* const* taps, std::size_t width, T* to) {
  const hn::ScalableTag<float> d;
  const hn::Rebind<T, decltype(d)> narrow;
  ForEachVector(d, width, [&](std::size_t x, auto access) HWY_ATTR {
    auto sum = hn::Zero(d);
    const float* coefficient = kernel.coefficients;
    for (std::size_t j = 0; j < kernel.sizeY; ++j) {
      for (std::size_t i = 0; i < kernel.sizeX; ++i) {
        sum = hn::Add(sum, hn::Mul(hn::LoadU(d, taps[j] + x + i), hn::Set(d, *coefficient++)));
      }
    }
    access.Store(narrow, Finish<T>(d, sum, kernel), to + x);
  });
}

// Source row `y` in single precision, with outside at both ends, into its place in the ring.
template <typename T>
void LoadRow(const ComponentImage& image, const RealKernel& kernel, const RealMemory& memory,
             std::size_t y) {
  const hn::ScalableTag<float> d;
  const hn::Rebind<std::int32_t, decltype(d)> whole;
  const hn::Rebind<T, decltype(d)> narrow;
  const std::size_t left = kernel.sizeX / 2;
  T* const input = static_cast<T*>(memory.input);
  LoadComponents(image, y, input, memory.stride, 0, 0);
  for (std::size_t c = 0; c < image.components; ++c) {
    float* const row = memory.rows + (y % memory.slots * image.components + c) * memory.stride;
    float* const pixels = row + left;
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
  const std::size_t above = kernel.sizeY / 2;
  const std::size_t below = kernel.sizeY - 1 - above;
  T* const output = static_cast<T*>(memory.output);
  std::fill(memory.outside, memory.outside + memory.stride, kernel.outside);
  std::size_t loaded = 0;
  for (std::size_t y = 0; y < image.height; ++y) {
    for (; loaded < image.height && loaded <= y + below; ++loaded) {
      LoadRow<T>(image, kernel, memory, loaded);
    }
    for (std::size_t c = 0; c < image.components; ++c) {
      for (std::size_t j = 0; j < kernel.sizeY; ++j) {
        const std::size_t row = y + j - above;  // wraps above the image, and so is beyond it
        const std::size_t at = (row % memory.slots * image.components + c) * memory.stride;
        memory.taps[j] = row < image.height ? memory.rows + at : memory.outside;
      }
      Row(kernel, memory.taps, image.width, ComponentOutput(image, y, output, memory.stride, c));
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
  memory.stride = ComponentStride(image, kernel.sizeX, kernel.sizeX);
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
