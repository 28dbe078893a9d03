// SPDX-License-Identifier: Apache-2.0
// Counts of pixel values.
#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/spans.h"

namespace lx::histogram {

// counts[v] = the bytes that are v, of 256.
void CountBytes(const Spans& spans, std::uint32_t* counts);

// The bin of a pixel, `pixel >> shift`; one beyond `last` falls in bin `beyond`, which is `last`,
// or `last` + 1 for pixels that do not count.
struct Binning {
  unsigned shift;
  unsigned last;
  unsigned beyond;
};

// counts[i] = the pixels of bin i, those that do not count included.
void CountWords(const Spans& spans, const Binning& binning, std::uint32_t* counts);
void CountLongs(const Spans& spans, const Binning& binning, std::uint32_t* counts);

}  // namespace lx::histogram
