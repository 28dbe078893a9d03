// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/report/plot.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <limits>

#include "tools/lxpic/report/drawing.h"
namespace lx::tool {

namespace {

// The rectangle of the annotated axes; to its left is room for long numbers.
struct Rectangle {
  int x, y, width, height;
};
constexpr Rectangle kArea{36, 6, 710, 408};
// Parts that the grid cuts the area into.
constexpr int kMaxColumns = 10;
constexpr int kMaxRows = 6;
constexpr int kCharacterWidth = 7;
constexpr int kLineHeight = 14;

constexpr Colour kInk{0.16, 0.19, 0.24};
constexpr Colour kSoft{0.45, 0.49, 0.56};
constexpr Colour kGrid{0.90, 0.91, 0.93};
constexpr Colour kBlue{0.13, 0.38, 0.68};
// The lines of several fields, which are red, green and blue where there are three.
constexpr std::array kPens = {Colour{0.77, 0.20, 0.16}, Colour{0.18, 0.53, 0.28}, kBlue,
                              Colour{0.50, 0.30, 0.62}};

struct Range {
  double low;
  double high;

  void Include(double value) {
    if (!std::isfinite(value)) return;
    low = std::min(low, value);
    high = std::max(high, value);
  }
};

constexpr Range kNothing{std::numeric_limits<double>::infinity(),
                         -std::numeric_limits<double>::infinity()};

// The step among 1, 2 and 5 times a power of ten that cuts the range into at most `parts`.
double NiceStep(const Range& range, int parts) {
  const double least = (range.high - range.low) / parts;
  const double power = std::pow(10, std::floor(std::log10(least)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * power >= least) return factor * power;
  }
  return 10 * power;
}

// Multiples of a nice step inside the range, its ends apart.
std::vector<double> Ticks(const Range& range, int parts) {
  std::vector<double> ticks;
  if (!(range.high > range.low)) return ticks;
  const double step = NiceStep(range, parts);
  const double first = std::floor(range.low / step) + 1;
  for (int i = 0; i <= parts && (first + i) * step < range.high; ++i) {
    ticks.push_back((first + i) * step);
  }
  return ticks;
}

// One of the two axes: where its values lie, and what is annotated elsewhere.
struct Axis {
  Range range;
  int first;
  int last;
  std::function<int(double)> view;
};

std::string TickText(double value) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%g", value);
  return text.data();
}

int WidthOf(const std::string& text) { return kCharacterWidth * static_cast<int>(text.size()); }

// Whether `position` keeps clear of the numbers at the ends of the axis.
bool IsClear(int position, const Axis& axis, int margin) {
  return std::min(std::abs(position - axis.first), std::abs(position - axis.last)) > margin;
}

void DrawGrid(Drawing& drawing, const Axis& x, const Axis& y) {
  drawing.SetPen(kGrid, 1);
  const auto xTicks = Ticks(x.range, kMaxColumns);
  const auto yTicks = Ticks(y.range, kMaxRows);
  for (const double tick : xTicks) {
    drawing.MoveTo(x.view(tick), y.first);
    drawing.LineTo(x.view(tick), y.last);
  }
  for (const double tick : yTicks) {
    drawing.MoveTo(x.first, y.view(tick));
    drawing.LineTo(x.last, y.view(tick));
  }
  drawing.SetPen(kSoft, 1);
  const int bottom = std::max(y.first, y.last);
  for (const double tick : xTicks) {
    const std::string text = TickText(tick);
    if (!IsClear(x.view(tick), x, 2 * WidthOf(text))) continue;
    drawing.Text(x.view(tick) - WidthOf(text) / 2, bottom + kLineHeight, text.c_str());
  }
  for (const double tick : yTicks) {
    const std::string text = TickText(tick);
    if (!IsClear(y.view(tick), y, 2 * kLineHeight)) continue;
    drawing.Text(x.first - WidthOf(text) - 2, y.view(tick) + 4, text.c_str());
  }
}

// Axes around `x` and `y`, and what `drawContent` draws between them and the grid.
void DrawOnAxes(Drawing& drawing, const Range& x, const Range& y, const char* xLabel,
                const char* yLabel, const std::function<void(const LxPlot&)>& drawContent) {
  LxPlot plot;
  plot.SetRange(x.low, x.high, y.low, y.high);
  const auto annotate = [&](HDC target) {
    plot.DrawAnnotations(target, kArea.x, kArea.y, kArea.width, kArea.height, xLabel, yLabel);
  };
  annotate(nullptr);
  const auto axis = [](const Range& range, const auto& view) {
    return Axis{range, view(range.low), view(range.high), view};
  };
  DrawGrid(drawing, axis(x, [&](double value) { return plot.XView(value); }),
           axis(y, [&](double value) { return plot.YView(value); }));
  drawContent(plot);
  drawing.SetPen(kInk, 1);
  annotate(&drawing);
}

Range IndexRange(const Numbers& numbers) {
  return {0, numbers.Count() > 2 ? static_cast<double>(numbers.Count()) - 1 : 1};
}

// From 0 on, unless some values lie below.
Range ValueRange(const Numbers& numbers) {
  Range range{0, 0};
  for (const double value : numbers.values) range.Include(value);
  if (range.low == range.high) range.high = 1;
  return range;
}

// The range with ends that are multiples of a nice step.
Range Widened(const Range& range) {
  const double step = NiceStep(range, kMaxRows);
  return {std::floor(range.low / step) * step, std::ceil(range.high / step) * step};
}

const Colour& PenOf(const Numbers& numbers, std::size_t field) {
  return numbers.fields.size() == 1 ? kBlue : kPens[field % kPens.size()];
}

void DrawBars(Drawing& drawing, const NamedNumbers& histogram) {
  const Numbers& counts = histogram.numbers;
  LxBWHistogramVector bars(0);
  for (const double count : counts.values) bars.AddElement(static_cast<unsigned>(count));
  const auto drawBars = [&](const LxPlot& /*plot*/) {
    drawing.SetPen(kBlue, 1);
    drawing.SetTextShown(false);
    bars.Draw(&drawing, kArea.x, kArea.y, kArea.width, kArea.height);
    drawing.SetTextShown(true);
  };
  DrawOnAxes(drawing, IndexRange(counts), ValueRange(counts), "Value", "Count", drawBars);
}

void DrawField(Drawing& drawing, const LxPlot& plot, const Numbers& numbers, std::size_t field) {
  bool inLine = false;
  for (std::size_t i = 0; i < numbers.Count(); ++i) {
    const double value = numbers.At(i, field);
    const bool isPoint = std::isfinite(value);
    const int x = plot.XView(static_cast<double>(i));
    if (isPoint && inLine) drawing.LineTo(x, plot.YView(value));
    if (isPoint && !inLine) drawing.MoveTo(x, plot.YView(value));
    inLine = isPoint;
  }
}

// The names of the fields in the colours of their lines.
void DrawLegend(Drawing& drawing, const Numbers& numbers, int right, int baseline) {
  for (std::size_t field = numbers.fields.size(); field-- > 0;) {
    right -= WidthOf(numbers.fields[field]) + 2 * kCharacterWidth;
    drawing.SetPen(PenOf(numbers, field), 1);
    drawing.Text(right, baseline, numbers.fields[field].c_str());
  }
}

// The pixels that the path touches, whole.
Range PixelRange(const Numbers& path, std::size_t field) {
  Range range = kNothing;
  for (std::size_t i = 0; i < path.Count(); ++i) range.Include(path.At(i, field));
  return {range.low, range.high + 1};
}

// A path as it lies in the image, rows downwards, as large as the drawing allows.
void DrawPath(Drawing& drawing, const NamedNumbers& named) {
  const Numbers& path = named.numbers;
  if (path.Count() == 0) return;
  constexpr Rectangle kInside{84, 26, 650, 362};
  const Range columns = PixelRange(path, 0);
  const Range rows = PixelRange(path, 1);
  const double zoom = std::min(kInside.width / (columns.high - columns.low),
                               kInside.height / (rows.high - rows.low));
  const auto axis = [&](const Range& range, int start) {
    const auto view = [=](double value) {
      return start + static_cast<int>(std::lround((value - range.low) * zoom));
    };
    return Axis{range, view(range.low), view(range.high), view};
  };
  const Axis x = axis(columns, kInside.x);
  const Axis y = axis(rows, kInside.y);
  DrawGrid(drawing, x, y);
  drawing.SetPen(kSoft, 1);
  drawing.Text(x.first, kInside.y - kLineHeight / 2, named.name.c_str());
  drawing.SetPen(kBlue, 1.5);
  const auto pan = [&](const Range& range, int start) {
    return static_cast<float>(start / zoom - range.low);
  };
  LxPathVector line(0);
  for (std::size_t i = 0; i < path.Count(); ++i) {
    line.AddElement(
        {static_cast<std::int16_t>(path.At(i, 0)), static_cast<std::int16_t>(path.At(i, 1))});
  }
  line.m_bClosed = path.drawing == Numbers::Drawing::kClosedPath ? 1 : 0;
  line.Draw(&drawing, static_cast<float>(zoom), 0, pan(columns, kInside.x), pan(rows, kInside.y));
}

}  // namespace

void DrawProfile(Drawing& drawing, const NamedNumbers& profile, const std::vector<double>& marks) {
  const Numbers& numbers = profile.numbers;
  const Range levels = Widened(ValueRange(numbers));
  const auto drawLines = [&](const LxPlot& plot) {
    drawing.SetPen(kPens.front(), 1);
    for (const double mark : marks) {
      drawing.MoveTo(plot.XView(mark), plot.YView(levels.low));
      drawing.LineTo(plot.XView(mark), plot.YView(levels.high));
    }
    for (std::size_t field = 0; field < numbers.fields.size(); ++field) {
      drawing.SetPen(PenOf(numbers, field), 1.5);
      DrawField(drawing, plot, numbers, field);
    }
  };
  DrawOnAxes(drawing, IndexRange(numbers), levels, "Index", profile.name.c_str(), drawLines);
  if (numbers.fields.size() > 1) {
    DrawLegend(drawing, numbers, kArea.x + kArea.width, kArea.y + kLineHeight);
  }
}

void WritePlot(const std::string& path, const NamedNumbers& vector,
               std::optional<DrawingFormat> format) {
  if (!format) format = DrawingFormatOf(path).value_or(DrawingFormat::kPng);
  Drawing drawing(path, *format, kPlotSize);
  switch (vector.numbers.drawing) {
    case Numbers::Drawing::kBars:
      DrawBars(drawing, vector);
      break;
    case Numbers::Drawing::kLine:
      DrawProfile(drawing, vector, {});
      break;
    case Numbers::Drawing::kPath:
    case Numbers::Drawing::kClosedPath:
      DrawPath(drawing, vector);
      break;
    case Numbers::Drawing::kNone:
      break;
  }
  drawing.Finish();
}

}  // namespace lx::tool
