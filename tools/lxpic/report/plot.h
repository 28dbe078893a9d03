// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/lxpic/common/words.h"
#include "tools/lxpic/report/drawing_format.h"
#include "tools/lxpic/value/numbers.h"

namespace lx::tool {

class Drawing;

/// The size of a plot.
inline constexpr Size kPlotSize{760, 420};

/// Draws a profile as lines over axes, with a red line across at each of `marks`, which are
/// positions along it.
void DrawProfile(Drawing& drawing, const NamedNumbers& profile, const std::vector<double>& marks);

/// Draws a vector of a kind that can be drawn into a PNG or SVG file, as the name says where
/// `format` does not: counts as bars, profiles as
/// lines, both over axes, and paths as they lie in the image. Throws Failure.
void WritePlot(const std::string& path, const NamedNumbers& vector,
               std::optional<DrawingFormat> format = {});

}  // namespace lx::tool
