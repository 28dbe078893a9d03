// SPDX-License-Identifier: Apache-2.0
#include "convolution/kernel_plan.h"

#include <algorithm>

namespace lx::convolution {

namespace {

constexpr std::size_t kDigits = 2;

// The digits of a coefficient, the lower one signed.
std::uint32_t Digit(std::int32_t coefficient, std::size_t digit) {
  const auto low = static_cast<std::int16_t>(coefficient);
  const std::int64_t high = (std::int64_t{coefficient} - low) >> 16;
  return static_cast<std::uint16_t>(digit == 0 ? low : high);
}

// Whether the rows above the middle equal those below it.
bool IsMirrored(const FixedKernel& kernel) {
  const std::size_t size = kernel.size;
  for (std::size_t j = 0; j < size / 2; ++j) {
    const std::int32_t* const row = kernel.coefficients + j * size;
    if (!std::equal(row, row + size, kernel.coefficients + (size - 1 - j) * size)) return false;
  }
  return true;
}

KernelPlan Plan(const FixedKernel& kernel, bool mayFold) {
  const std::size_t size = kernel.size;
  KernelPlan plan;
  plan.size = size;
  plan.offset = static_cast<std::uint32_t>(kernel.offset);
  plan.fraction = kernel.fraction;
  plan.absolute = kernel.absolute;
  plan.isFolded = mayFold && IsMirrored(kernel);
  for (std::size_t j = 0; j < (plan.isFolded ? size / 2 + 1 : size); ++j) {
    for (std::size_t i = 0; i <= size; i += 2) {
      // Column -1, which wraps, and column `size` have no coefficient.
      const auto digit = [&](std::size_t column, std::size_t d) {
        return column < size ? Digit(kernel.coefficients[j * size + column], d) : 0;
      };
      TapPair tap{j, i, {}, {}};
      std::uint32_t any = 0;
      for (std::size_t d = 0; d < kDigits; ++d) {
        tap.even[d] = digit(i, d) | digit(i + 1, d) << 16;
        tap.odd[d] = digit(i - 1, d) | digit(i, d) << 16;
        any |= tap.even[d] | tap.odd[d];
      }
      if (any == 0) continue;
      plan.isLong = plan.isLong || (tap.even[1] | tap.odd[1]) != 0;
      plan.taps[plan.count++] = tap;
    }
  }
  return plan;
}

}  // namespace

KernelPlan PlanForBytes(const FixedKernel& kernel) { return Plan(kernel, true); }

KernelPlan PlanForWords(const FixedKernel& kernel) {
  KernelPlan plan = Plan(kernel, false);
  for (std::size_t i = 0; i < kernel.size * kernel.size; ++i) {
    plan.offset += static_cast<std::uint32_t>(kernel.coefficients[i]) << 15;
  }
  return plan;
}

}  // namespace lx::convolution
