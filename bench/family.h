// SPDX-License-Identifier: Apache-2.0
// What the benchmarks know about a family of operations: one file for each family.
#pragma once

#include "bench/stopwatch.h"
#include "bench/subject.h"

namespace lx::bench {

/// The share of OpenCV's time that an operation may take; 0 where nothing is asked.
struct Target {
  double computing = 0;  ///< at 640 × 480 or 512 × 512, where all is in cache
  double memory = 0;     ///< at 1920 × 1080
};

/// What the best library takes, as measured on a processor with vectors of 32 bytes and on one with
/// 64: the second shifts the balance towards those who use them, and to memory.
struct Targets {
  Target narrow;
  Target wide = {1, 1};

  /// Those of this machine.
  const Target& Here() const;
};

/// The targets of one form of a function on one type of pixels.
struct TargetRow {
  std::string_view function;
  std::string_view label;  ///< of the form; "" for every form
  catalogue::Pixel pixel;  ///< of the first parameter
  Targets targets;
};

/// The first row that fits; no more than OpenCV takes where there is none.
template <class Rows>
Target FindTarget(const Subject& subject, const Rows& rows) {
  for (const TargetRow& row : rows) {
    if (row.function == subject.operation->function &&
        (row.label.empty() || row.label == subject.form.label) &&
        row.pixel == subject.operation->parameters.front().pixel) {
      return row.targets.Here();
    }
  }
  return {1, 1};
}

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
extern const Family kThresholdingFamily;
extern const Family kResamplingFamily;
extern const Family kGeometryFamily;
extern const Family kStatisticsFamily;
extern const Family kMeasureFamily;
extern const Family kCorrectionFamily;
extern const Family kSequenceFamily;
extern const Family kProfileFamily;
extern const Family kContourFamily;
extern const Family kSegmentVectorFamily;
extern const Family kFrequencyFamily;
extern const Family kGradientImageFamily;

}  // namespace lx::bench
