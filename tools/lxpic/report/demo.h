// SPDX-License-Identifier: Apache-2.0
// Inspection of a part against a golden sample, step by step.
#pragma once

#include <string>

namespace lx::tool {

struct DemoOptions {
  /// Image files of the same size; both "" to have them drawn.
  std::string golden;
  std::string part;
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
