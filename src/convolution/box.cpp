// SPDX-License-Identifier: Apache-2.0
#include "convolution/box.h"

#include <algorithm>
#include <cmath>

#include "convolution/box_kernels.h"
#include "foundation/scratch.h"
#include "foundation/wide_box_sums.h"

namespace lx::convolution {

namespace {

using BoxKernel = void (*)(const Window&, const BoxMemory&);

// Cuts the memory of a window into its parts and runs the kernel.
bool RunKernel(const Window& window, std::size_t elementBytes, std::size_t laneBytes, bool squares,
               BoxKernel kernel) {
  BoxMemory memory{};
  memory.slots = std::min(2 * window.halfY + 2, window.height);
  memory.rowStride = ComponentStride(window, 0, 0);
  memory.padded = ComponentStride(window, window.halfX, window.halfX);
  const std::size_t elements = window.components * memory.padded * elementBytes;
  const std::size_t prefix =
      WholeVectors((memory.padded + kLargestVector) * laneBytes) + kLargestVector;
  const std::size_t sums = window.components * memory.rowStride * sizeof(std::uint32_t);
  const std::size_t ring = memory.slots * window.components * memory.rowStride * laneBytes;
  const std::size_t output = window.components * memory.rowStride * elementBytes;
  const std::size_t twice = squares ? 2 : 1;
  const Scratch<std::uint8_t> scratch(elements + prefix + output + twice * (ring + sums));
  if (!scratch) return false;
  std::uint8_t* next = scratch.get();
  const auto take = [&next](std::size_t bytes) {
    std::uint8_t* const part = next;
    next += bytes;
    return part;
  };
  memory.elements = take(elements);
  // The sums up to each element, which follow the first entry, start at a vector.
  memory.prefix = take(prefix) + kLargestVector - laneBytes;
  memory.output = take(output);
  memory.ring = take(ring);
  memory.sums = reinterpret_cast<std::uint32_t*>(take(sums));
  if (squares) {
    memory.squares = take(ring);
    memory.squareSums = reinterpret_cast<std::uint32_t*>(take(sums));
  }
  kernel(window, memory);
  return true;
}

// destination = result(sum, sum of squares), for windows whose sums leave 32 bits.
template <typename T, class Result>
bool RunWide(const Window& window, const Result& result) {
  WideBoxSums<T> sums(window, window.halfX, window.halfY);
  if (!sums) return false;
  sums.Map(result);
  return true;
}

constexpr std::uint64_t kLargestReciprocal = std::uint64_t{1} << 24;

template <typename T>
bool WideMean(const Window& window) {
  const std::uint64_t count = window.Count();
  const std::uint64_t reciprocal = kLargestReciprocal / count;
  return RunWide<T>(window, [=](std::uint64_t sum, std::uint64_t /*squares*/) {
    return static_cast<T>(count > kLargestReciprocal ? sum / count : sum * reciprocal >> 24);
  });
}

__extension__ using Uint128 = unsigned __int128;

template <typename T>
bool WideDeviation(const Window& window) {
  const std::uint64_t count = window.Count();
  // The square of the count times the largest variance fits 64 bits.
  const bool fits = count < (std::uint64_t{1} << 17);
  return RunWide<T>(window, [=](std::uint64_t sum, std::uint64_t squares) {
    const auto radicand = fits ? static_cast<float>(count * squares - sum * sum)
                               : static_cast<float>(Uint128{count} * squares - Uint128{sum} * sum);
    return static_cast<T>(std::sqrt(radicand) / static_cast<float>(count));
  });
}

}  // namespace

bool BoxMeanBytes(const Window& window) {
  if (window.Count() > kLargestReciprocal) return WideMean<std::uint8_t>(window);
  // 257 columns of the largest byte fit 16 bits.
  if (window.halfX <= 128) return RunKernel(window, 1, 2, false, &BoxMeanKernel8x16);
  return RunKernel(window, 1, 4, false, &BoxMeanKernel8x32);
}

bool BoxMeanWords(const Window& window) {
  // The sum of 65537 of the largest words is the largest 32-bit number.
  if (window.Count() > 65537) return WideMean<std::uint16_t>(window);
  return RunKernel(window, 2, 4, false, &BoxMeanKernel16);
}

bool BoxDeviationBytes(const Window& window) {
  // So many squares of the largest byte fit 32 bits.
  if (window.Count() > 0xFFFFFFFFU / (255 * 255)) return WideDeviation<std::uint8_t>(window);
  return RunKernel(window, 1, 4, true, &BoxDeviationKernel8);
}

bool BoxDeviationWords(const Window& window) { return WideDeviation<std::uint16_t>(window); }

}  // namespace lx::convolution
