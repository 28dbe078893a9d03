// SPDX-License-Identifier: Apache-2.0
// Numbers from counts.
#pragma once

#include <cstddef>
#include <cstdint>

namespace lx::histogram {

std::uint64_t TotalCount(const std::uint32_t* counts, std::size_t bins);

// 0 without bins.
std::uint32_t LargestCount(const std::uint32_t* counts, std::size_t bins);

// The smallest count but 0; 0 when there is none.
std::uint32_t SmallestCount(const std::uint32_t* counts, std::size_t bins);

}  // namespace lx::histogram
