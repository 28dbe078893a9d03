// SPDX-License-Identifier: Apache-2.0
// What each operation must reach, as multiples of memcpy of the same image.
#pragma once

#include "bench/subject.h"

namespace lx::bench {

struct Target {
  double computing;  ///< at 640 × 480, where all is in cache
  double memory;     ///< at 1920 × 1080
};

/// The subject's target at its size; 0 when it has none.
double TargetOf(const Subject& subject);

/// The families' targets; {0, 0} when there is none.
Target PointTarget(const Subject& subject);
Target ConvolutionTarget(const Subject& subject);

}  // namespace lx::bench
