// SPDX-License-Identifier: Apache-2.0
#include "convolution/box.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "convolution/box_kernels.h"
#include "foundation/scratch.h"
#include "foundation/wide_box_sums.h"

namespace lx::convolution {

namespace {

// What a kernel needs beside its window.
struct Needs {
  std::size_t elementBytes;
  std::size_t laneBytes;
  std::size_t planes;    // for each component
  std::size_t pairRows;  // of 32 bits
};

// Cuts a scratch memory into the parts of a kernel's memory. Without one it only measures.
class Cutter {
 public:
  explicit Cutter(std::uint8_t* memory) : memory_(memory) {}

  std::size_t Used() const { return used_; }

  std::uint8_t* Take(std::size_t bytes) {
    std::uint8_t* const part = memory_ == nullptr ? nullptr : memory_ + used_;
    used_ += WholeVectors(bytes);
    return part;
  }

 private:
  std::uint8_t* memory_;
  std::size_t used_ = 0;
};

// Lays the memory out. Returns the bytes of what must be zero, and of all of it in `bytes`.
std::size_t LayOut(const Window& window, const Needs& needs, std::uint8_t* scratch,
                   WindowMemory& memory, std::size_t& bytes) {
  Cutter cutter(scratch);
  // Beyond either end as far as the window reaches, and vectors that go beyond that.
  const std::size_t reach = window.halfX + 2 + 2 * kLargestVector;
  memory.margin = WholeVectors(reach * needs.laneBytes);
  memory.plane = WholeVectors(window.width * needs.laneBytes) + 2 * memory.margin;
  memory.pairRow = WholeVectors((window.width + 2 * reach) * sizeof(std::uint32_t));
  memory.stride = ComponentStride(window, 0, 0);
  memory.columns = cutter.Take(needs.planes * window.components * memory.plane);
  memory.pairs = cutter.Take(needs.pairRows * memory.pairRow);
  memory.neutral = cutter.Take(window.width * needs.elementBytes);
  memory.wide = cutter.Take(2 * window.width * 2 * needs.elementBytes);
  const std::size_t zeros = cutter.Used();
  const bool isColour = window.components > 1;
  const std::size_t row = isColour ? window.components * memory.stride * needs.elementBytes : 0;
  memory.slots = std::min(2 * window.halfY + 2, window.height);
  memory.output = cutter.Take(row);
  memory.ring = cutter.Take(memory.slots * row);
  bytes = cutter.Used();
  return zeros;
}

// run(memory) in memory that suits it; false when there is none.
template <class Run>
bool WithMemory(const Window& window, const Needs& needs, const Run& run) {
  WindowMemory memory{};
  std::size_t bytes = 0;
  LayOut(window, needs, nullptr, memory, bytes);
  const Scratch<std::uint8_t> scratch(bytes);
  if (!scratch) return false;
  std::memset(scratch.get(), 0, LayOut(window, needs, scratch.get(), memory, bytes));
  run(memory);
  return true;
}

constexpr std::uint64_t kLargestReciprocal = std::uint64_t{1} << 24;

// Looks for a 16-bit factor that gives the same means as the reciprocal of a window whose sums fit
// 16 bits. Both step up by one at certain sums, 255 times at most.
void ShortenReciprocal(std::uint64_t largestSum, Reciprocal& reciprocal) {
  const std::uint64_t full = reciprocal.value;
  int cut = 0;
  while (full >> cut > 0xFFFF) ++cut;
  if (cut > 8) return;
  for (const std::uint64_t factor : {full >> cut, (full >> cut) + 1}) {
    const auto mean = [&](std::uint64_t sum) { return sum * factor >> (24 - cut); };
    bool same = factor <= 0xFFFF;
    for (std::uint64_t level = 1; same && level <= 255; ++level) {
      const std::uint64_t step = ((level << 24) + full - 1) / full;
      if (step > largestSum) {
        same = mean(largestSum) < level;
        break;
      }
      same = mean(step - 1) < level && mean(step) >= level;
    }
    if (!same) continue;
    reciprocal.factor = static_cast<std::uint16_t>(factor);
    reciprocal.shift = 8 - cut;
    return;
  }
}

bool Mean(const Window& window, const Needs& needs, MeanKernel kernel,
          const Reciprocal& reciprocal) {
  return WithMemory(window, needs,
                    [&](const WindowMemory& memory) { kernel(window, memory, reciprocal); });
}

bool Deviation(const Window& window, const Needs& needs, DeviationKernel kernel) {
  return WithMemory(window, needs, [&](const WindowMemory& memory) { kernel(window, memory); });
}

// Windows whose sums leave 32 bits, and every window where a lane is a pixel.

template <typename T>
bool WideMean(const Window& window) {
  const std::uint64_t count = window.Count();
  const std::uint64_t reciprocal = kLargestReciprocal / count;
  WideBoxSums<T, false> sums(window, window.halfX, window.halfY);
  if (!sums) return false;
  sums.Map([=](std::uint64_t sum, std::uint64_t /*squares*/) {
    return static_cast<T>(count > kLargestReciprocal ? sum / count : sum * reciprocal >> 24);
  });
  return true;
}

__extension__ using Uint128 = unsigned __int128;

template <typename T>
bool WideDeviation(const Window& window) {
  const std::uint64_t count = window.Count();
  // The square of the count times the largest variance fits 64 bits.
  const bool fits = count < (std::uint64_t{1} << 17);
  WideBoxSums<T, true> sums(window, window.halfX, window.halfY);
  if (!sums) return false;
  sums.Map([=](std::uint64_t sum, std::uint64_t squares) {
    const auto radicand = fits ? static_cast<float>(count * squares - sum * sum)
                               : static_cast<float>(Uint128{count} * squares - Uint128{sum} * sum);
    return static_cast<T>(std::sqrt(radicand) / static_cast<float>(count));
  });
  return true;
}

}  // namespace

bool BoxMeanBytes(const Window& window) {
  const MeanKernels kernels = MeanKernelsOf(window.path);
  const std::uint64_t count = window.Count();
  if (kernels.bytes16 == nullptr || count > kLargestReciprocal) {
    return WideMean<std::uint8_t>(window);
  }
  Reciprocal reciprocal{static_cast<std::uint32_t>(kLargestReciprocal / count)};
  const std::uint64_t largest = count * 0xFF;
  if (largest <= 0xFFFF) {
    ShortenReciprocal(largest, reciprocal);
    return Mean(window, {1, 2, 2, 1}, kernels.bytes16, reciprocal);
  }
  // 257 rows of the largest byte fit 16 bits.
  if (window.halfY <= 128) return Mean(window, {1, 2, 2, 1}, kernels.bytes32, reciprocal);
  return Mean(window, {1, 4, 2, 1}, kernels.bytesTall, reciprocal);
}

bool BoxMeanWords(const Window& window) {
  const MeanKernels kernels = MeanKernelsOf(window.path);
  const std::uint64_t count = window.Count();
  // The sum of 65537 of the largest words is the largest 32-bit number.
  if (kernels.words == nullptr || count > 65537) return WideMean<std::uint16_t>(window);
  return Mean(window, {2, 4, 2, 1}, kernels.words,
              {static_cast<std::uint32_t>(kLargestReciprocal / count)});
}

bool BoxDeviationBytes(const Window& window) {
  const DeviationKernels kernels = DeviationKernelsOf(window.path);
  const std::uint64_t count = window.Count();
  // The squares of so many bytes less 128 fit 31 bits.
  if (kernels.bytes == nullptr || count > 0x1FFFF) return WideDeviation<std::uint8_t>(window);
  if (count <= 255 && window.halfX >= 1 && window.halfX <= 7) {
    return Deviation(window, {1, 4, 6, 0}, kernels.bytesSmall);
  }
  return Deviation(window, {1, 4, 4, 2}, kernels.bytes);
}

bool BoxDeviationWords(const Window& window) {
  const DeviationKernels kernels = DeviationKernelsOf(window.path);
  const std::uint64_t count = window.Count();
  if (kernels.words == nullptr || count > 0xFFFF) return WideDeviation<std::uint16_t>(window);
  // The square of this times the largest variance is the largest double that counts in ones.
  return Deviation(window, {2, 4, 6, 3}, count <= 2896 ? kernels.wordsSmall : kernels.words);
}

}  // namespace lx::convolution
