// SPDX-License-Identifier: Apache-2.0
// The steps of an inspection against a golden sample, run in a folder of image files.
#pragma once

#include <string>
#include <vector>

#include "tools/lxpic/report/page.h"
#include "tools/lxpic/scene/pose.h"
#include "tools/lxpic/value/image_value.h"

namespace lx::tool {

inline constexpr const char* kGolden = "golden.png";
inline constexpr const char* kPart = "part.png";
inline constexpr const char* kFlat = "flat.png";
inline constexpr const char* kDefects = "defects.png";
inline constexpr const char* kResult = "result.png";

/// One place of the product, in both pictures.
struct MarkPair {
  Point golden;
  Point part;
};

struct Samples {
  ImageValue golden;
  ImageValue part;
  std::vector<Defect> defects;  ///< that were drawn, boxes in the golden sample
  /// Two or three, by which the part is registered; none where both lie alike.
  std::vector<MarkPair> marks;
  ImageValue flat = {};  ///< an even surface in the light of the part; none where that is even
};

/// Inspects the part whose files kGolden, kPart and, if there is one, kFlat lie in the folder, and
/// writes kDefects, which is the mask, and kResult. The steps of a page about it. Throws Failure.
Page Inspect(const Samples& samples, const std::string& folder);

/// The names of all files that it may write.
std::vector<std::string> InspectionFiles();

}  // namespace lx::tool
