// SPDX-License-Identifier: Apache-2.0
// Extremes over structuring elements of any size, and their differences. Planes are not empty, and
// plans are theirs.
#pragma once

#include "morphology/element.h"

namespace lx::morphology {

enum class Difference {
  kWhiteTopHat,  // source - opening
  kBlackTopHat,  // closing - source
  kGradient,     // dilation - erosion
};

// `scratch` has ElementPlan::Bytes() bytes.
void RunElement(Extreme extreme, const Plane& plane, const ElementPlan& plan,
                std::uint8_t* scratch);

// Memory of a difference: the rows between two sweeps lie in a ring.
struct DifferenceLayout {
  std::size_t sweep;  // bytes of one of them
  std::size_t slots;
  std::size_t row;

  DifferenceLayout(Difference difference, const Plane& plane, const ElementPlan& plan);

  std::size_t Bytes() const { return 2 * sweep + (slots + BoxLayout::kRows) * row; }
};

// `scratch` has DifferenceLayout::Bytes() bytes.
void RunDifference(Difference difference, const Plane& plane, const ElementPlan& plan,
                   std::uint8_t* scratch);

}  // namespace lx::morphology
