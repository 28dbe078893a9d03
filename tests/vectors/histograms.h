// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <utility>
#include <vector>

#include "lxpic/vectors/histogram_vector.h"

namespace lx::test {

/// A histogram of these counts.
inline LxBWHistogramVector HistogramOf(const std::vector<unsigned>& counts) {
  LxBWHistogramVector histogram(0);
  for (const unsigned count : counts) histogram.AddElement(count);
  return histogram;
}

/// Bins and their counts; the others are empty.
using Filling = std::vector<std::pair<unsigned, unsigned>>;

inline LxBWHistogramVector HistogramWith(const Filling& filling, unsigned bins = 256) {
  std::vector<unsigned> counts(bins);
  for (const auto& [bin, count] : filling) counts[bin] = count;
  return HistogramOf(counts);
}

}  // namespace lx::test
