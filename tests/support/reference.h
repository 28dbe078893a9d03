// SPDX-License-Identifier: Apache-2.0
// References: what an operation must compute, written from its definition in plain loops that share
// nothing with the library. An operation joins the sweep with one row of its family's table.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "support/trial/arguments.h"
#include "support/trial/outcome.h"

namespace lx::test {

/// What a rule of single pixels sees: the components of the pixels at one position.
struct Pixels {
  const Value* a;  ///< of the first source; null when there is none
  const Value* b;  ///< of the second source
  Value* d;        ///< of the destination: the old pixel, to become the new one
  Value* d2;       ///< of the second destination
  int components;  ///< of the destination
  const Arguments& call;
};

using PixelRule = std::function<void(const Pixels&)>;
/// Destinations hold the old pixels on entry. Both lists follow the order of the parameters.
using PictureRule = std::function<void(const Arguments& call, const std::vector<Picture>& sources,
                                       std::vector<Picture>& destinations)>;
/// Everything holds what it held before the call on entry. A rule that refuses changes nothing else
/// unless the definition says so.
using OutcomeRule = std::function<void(const Arguments& call, Outcome& outcome)>;

struct Reference {
  std::string signature;
  OutcomeRule rule;
  /// By how much numbers and elements may differ from the reference's, as a part of them; and why.
  double tolerance = 0;
  std::string reason;
  /// How often the sweep goes through all widths.
  int rounds = 8;

  Reference InRounds(int fewer) && {
    rounds = fewer;
    return std::move(*this);
  }
  Reference Within(double part, std::string because) && {
    tolerance = part;
    reason = std::move(because);
    return std::move(*this);
  }
};

/// Each destination pixel from the pixels at the same position.
Reference Pointwise(std::string_view signature, PixelRule rule);
/// Whole pictures, for neighbourhoods and geometry.
Reference Whole(std::string_view signature, PictureRule rule);
/// Everything: numbers, vectors and refusals too.
Reference Measured(std::string_view signature, OutcomeRule rule);

/// The picture rule as one of outcomes.
OutcomeRule OnPictures(std::string_view signature, PictureRule rule);

/// The reference of an operation; null when there is none.
const Reference* FindReference(std::string_view signature);
/// Why an operation has no reference; "" when it ought to have one.
std::string WhyNoReference(std::string_view signature);

/// The families' references.
std::vector<Reference> ColourReferences();
std::vector<Reference> ArithmeticReferences();
std::vector<Reference> ConvertReferences();
std::vector<Reference> LookupReferences();
std::vector<Reference> VectorArithmeticReferences();
std::vector<Reference> FilterReferences();
std::vector<Reference> SmoothingReferences();
std::vector<Reference> KernelReferences();
std::vector<Reference> HistogramReferences();
std::vector<Reference> ThresholdReferences();
std::vector<Reference> BoxAndDiskReferences();
std::vector<Reference> NonlinearReferences();
std::vector<Reference> ThinningReferences();
std::vector<Reference> ThresholdingReferences();
std::vector<Reference> ResamplingReferences();
std::vector<Reference> GeometryReferences();
std::vector<Reference> StatisticsReferences();
std::vector<Reference> MomentReferences();
std::vector<Reference> MeasureReferences();
std::vector<Reference> CorrectionReferences();
std::vector<Reference> SequenceReferences();
std::vector<Reference> ProfileReferences();
std::vector<Reference> ContourReferences();
std::vector<Reference> SegmentVectorReferences();
std::vector<Reference> FrequencyReferences();
std::vector<Reference> GradientImageReferences();

}  // namespace lx::test
