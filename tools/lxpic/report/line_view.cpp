// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/report/line_view.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "tools/lxpic/report/drawing.h"
#include "tools/lxpic/report/plot.h"

namespace lx::tool {

namespace {

constexpr Colour kLineColour{0.10, 0.55, 0.95};
constexpr Colour kMarkColour{0.90, 0.15, 0.10};
constexpr int kMargin = 12;
constexpr int kCross = 5;

// The largest size of the image's shape that stands beside a plot.
Size ShownSize(const ImageValue& image) {
  const double scale = std::min(1.0 * kPlotSize.width / image.Width(),
                                1.0 * (kPlotSize.height - kMargin) / image.Height());
  const auto side = [=](int pixels) {
    return std::max(1, static_cast<int>(std::lround(scale * pixels)));
  };
  return {side(image.Width()), side(image.Height())};
}

}  // namespace

int Segment::Length() const { return std::max(std::abs(x1 - x0), std::abs(y1 - y0)); }

void WriteLineView(const std::string& path, const ImageValue& image, const Segment& line,
                   const NamedNumbers& profile, const std::vector<double>& marks) {
  const Size shown = ShownSize(image);
  Drawing drawing(path, DrawingFormatOf(path).value_or(DrawingFormat::kPng),
                  {shown.width + 2 * kMargin + kPlotSize.width, kPlotSize.height});
  drawing.SetOrigin(kMargin, kMargin / 2);
  drawing.Picture(image, shown);
  const auto column = [&](double x) {
    return static_cast<int>((x + 0.5) * shown.width / image.Width());
  };
  const auto row = [&](double y) {
    return static_cast<int>((y + 0.5) * shown.height / image.Height());
  };
  drawing.SetPen(kLineColour, 1.5);
  drawing.MoveTo(column(line.x0), row(line.y0));
  drawing.LineTo(column(line.x1), row(line.y1));
  drawing.SetPen(kMarkColour, 1.5);
  for (const double mark : marks) {
    const double part = line.Length() == 0 ? 0 : mark / line.Length();
    const int x = column(line.x0 + part * (line.x1 - line.x0));
    const int y = row(line.y0 + part * (line.y1 - line.y0));
    for (const int side : {-kCross, kCross}) {
      drawing.MoveTo(x - kCross, y - side);
      drawing.LineTo(x + kCross, y + side);
    }
  }
  drawing.SetOrigin(shown.width + 2 * kMargin, 0);
  DrawProfile(drawing, profile, marks);
  drawing.Finish();
}

}  // namespace lx::tool
