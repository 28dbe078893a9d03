// SPDX-License-Identifier: Apache-2.0
// A picture with a line on it, and beside it what lies along the line.
#pragma once

#include <string>
#include <vector>

#include "tools/lxpic/value/image_value.h"
#include "tools/lxpic/value/numbers.h"

namespace lx::tool {

/// Where a line begins and ends, in pixels.
struct Segment {
  int x0;
  int y0;
  int x1;
  int y1;

  /// The last position along the line; the first is 0.
  int Length() const;
};

/// Draws the image, with the line and a cross at each of `marks`, positions along it, and beside it
/// the profile, into a PNG or SVG file. Throws Failure.
void WriteLineView(const std::string& path, const ImageValue& image, const Segment& line,
                   const NamedNumbers& profile, const std::vector<double>& marks);

}  // namespace lx::tool
