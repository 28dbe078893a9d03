// SPDX-License-Identifier: Apache-2.0
// Inspection of a part against a golden sample, step by step.
#pragma once

#include <string>
#include <vector>

#include "tools/lxpic/report/inspection.h"

namespace lx::tool {

struct DemoOptions {
  /// Image files of the same size; both "" to have them drawn.
  std::string golden;
  std::string part;
  /// Two or three, by which the part is registered; none where both lie alike.
  std::vector<MarkPair> marks;
  /// An image file of an even surface in the light of the part; "" where that is even.
  std::string flat;
  /// Where the images and index.html go.
  std::string folder;
};

struct DemoResult {
  std::string page;
  long defectPixels;
};

/// Throws Failure.
DemoResult RunDemo(const DemoOptions& options);

}  // namespace lx::tool
