// SPDX-License-Identifier: Apache-2.0
// The check of histogram arguments.
#pragma once

#include "foundation/frame.h"
#include "lxpic/vectors/histogram_vector.h"

namespace lx::histogram {

// There is a histogram, of `bins` bins.
inline bool HasBins(const LxBWHistogramVector* histogram, unsigned bins) {
  return Require(histogram != nullptr, LX_ERROR_VECTOR_NO_DATA) &&
         Require(histogram->GetNumElements() == bins, LX_ERROR_WRONG_VECTOR_SIZE);
}

}  // namespace lx::histogram
