// SPDX-License-Identifier: Apache-2.0
// The page that shows an inspection.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/lxpic/report/objects.h"
#include "tools/lxpic/scene/defect.h"

namespace lx::tool {

/// Median times of a step.
struct StepTimes {
  double fast;
  double plain;
};

struct PageStep {
  std::string title = {};
  std::string text = {};
  std::string image = {};
  std::vector<std::string> commands = {};
  std::optional<StepTimes> times = {};
  std::string before = {};  ///< an image to show beside the other; "" for none
};

/// A defect that was drawn, and how many of its pixels the inspection marked.
struct FoundDefect {
  Defect defect;
  long markedPixels;
};

struct Page {
  std::string golden;
  std::string part;
  std::string result;
  int width;
  int height;
  long defectPixels;
  std::optional<long> inUnevenLight = {};  ///< how many there would be without a flat field
  std::vector<PageStep> steps;
  std::string wholeCommand;
  std::vector<Outlined> objects;     ///< what is marked, piece by piece
  std::vector<FoundDefect> defects;  ///< known only when the part was drawn
};

/// Writes one file that needs nothing but the images it names. Throws Failure.
void WritePage(const std::string& path, const Page& page);

}  // namespace lx::tool
