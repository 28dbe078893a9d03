// SPDX-License-Identifier: Apache-2.0
// What the benchmarks know about a family of operations: one file for each family.
#pragma once

#include "bench/stopwatch.h"
#include "bench/subject.h"

namespace lx::bench {

/// The share of OpenCV's time that an operation may take; 0 where nothing is asked.
struct Target {
  double computing = 0;  ///< at 640 × 480, where all is in cache
  double memory = 0;     ///< at 1920 × 1080
};

struct Family {
  /// The forms that are timed; none stands for one for each choice.
  std::vector<Form> (*forms)(const Operation&);
  /// The same job done by OpenCV; empty when it has no such job or was not there at build time.
  Job (*peer)(const Subject&);
  Target (*target)(const Subject&);
};

/// The family of an operation, by the name that the catalogue gives.
const Family& FamilyOf(const Operation& operation);

extern const Family kPointFamily;
extern const Family kConvolutionFamily;
extern const Family kHistogramFamily;
extern const Family kMorphologyFamily;
extern const Family kNonlinearFamily;

}  // namespace lx::bench
