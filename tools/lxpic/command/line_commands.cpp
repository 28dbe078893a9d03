// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/command/line_commands.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <utility>

#include "tools/lxpic/command/clashes.h"
#include "tools/lxpic/common/operation.h"
#include "tools/lxpic/file/files.h"
#include "tools/lxpic/report/drawing_format.h"
#include "tools/lxpic/report/line_view.h"
#include "tools/lxpic/value/vectors.h"

namespace lx::tool {

namespace {

using catalogue::Kind;

// A line of a picture, and where what lies along it goes.
struct LineOptions {
  std::string input;
  std::string from;
  std::string to;
  std::string format = "text";
  std::string plot;
  unsigned smooth = 0;

  void Add(CLI::App& app, bool filters) {
    app.add_option("IMAGE", input, "A picture")->required();
    app.add_option("FROM", from, "The first pixel of the line: X,Y")->required();
    app.add_option("TO", to, "The last one")->required();
    if (filters) {
      app.add_option("--smooth", smooth, "Passes of a binomial filter along the line")
          ->check(CLI::Range(0, 1000));
    }
    app.add_option("--plot", plot, "Draw the picture and the profile, PNG or SVG")
        ->option_text("FILE");
    app.add_option("--format", format, "How to print: text, csv or json")->capture_default_str();
    AddMaxPixels(app);
  }
};

int ReadCoordinate(const std::string& word, double number) {
  const bool fits =
      number == std::floor(number) && number >= 0 && number <= std::numeric_limits<int>::max();
  if (fits) return static_cast<int>(number);
  throw Failure(kWrongUsage, "'" + word + "' is not a pixel like 10,20");
}

Segment ReadSegment(const LineOptions& options) {
  const Point from = ReadPoint("FROM", options.from);
  const Point to = ReadPoint("TO", options.to);
  return {ReadCoordinate(options.from, from.x), ReadCoordinate(options.from, from.y),
          ReadCoordinate(options.to, to.x), ReadCoordinate(options.to, to.y)};
}

// What lies along a line, and what was found there.
class LineReport {
 public:
  explicit LineReport(LineOptions given) : options(std::move(given)) {
    format = ReadFormat(options.format);
    line = ReadSegment(options);
    if (!options.plot.empty() && !DrawingFormatOf(options.plot)) {
      throw Failure(kWrongUsage, "--plot: '" + options.plot + "' ends in neither .png nor .svg");
    }
    CheckClashes({{{options.input, "", options.plot}}, {}, ""});
    image = ReadImage(options.input);
    switch (image.PixelType()) {
      case Pixel::kBW8:
        Sample<LxBW8, LxBW8Vector>(Kind::kByteVector);
        break;
      case Pixel::kBW16:
        Sample<LxBW16, LxBW16Vector>(Kind::kWordVector);
        break;
      default:
        Sample<LxC24, LxC24Vector>(Kind::kColourVector);
    }
  }

  template <class Vector>
  Vector& Profile() const {
    return *std::get<Vector*>(profile.argument);
  }
  const ImageValue& Picture() const { return image; }
  void RequireGrey() const {
    if (image.PixelType() != Pixel::kC24) return;
    throw Failure(kWrongUsage, options.input + " is in colour: convert it to bw8 first");
  }

  // Prints rows, and draws the line with marks on it.
  void Finish(const std::vector<TableRow>& rows, const std::vector<double>& marks) const {
    std::fputs(TableText(rows, format).c_str(), stdout);
    if (options.plot.empty()) return;
    WriteLineView(options.plot, image, line, {"Level", profile.read()}, marks);
  }
  void FinishProfile() const { Finish({{options.input, {{"profile", profile.read()}}}}, {}); }
  void FinishFound(const Numbers& found, const std::vector<double>& marks) const {
    Finish(RowsOf(options.input, found), marks);
  }

  Segment line{};

 private:
  template <class T, class Vector>
  void Sample(Kind kind) {
    profile = MakeEmptyVector(kind);
    PicImageToLineSegment(&image.As<T>(), &Profile<Vector>(), line.x0, line.y0, line.x1, line.y1);
    CheckOperation(options.input);
    if (options.smooth == 0) return;
    if constexpr (std::is_same_v<T, LxC24>) {
      RequireGrey();
    } else {
      PicConvolGaussian(&Profile<Vector>(), &Profile<Vector>(), options.smooth);
      CheckOperation("--smooth");
    }
  }

  LineOptions options;
  TableFormat format;
  ImageValue image;
  Value profile;
};

struct PeakLimits {
  unsigned low = 0;
  unsigned high = 0;
  unsigned amplitude = 0;
  unsigned area = 0;
};

template <class Vector>
Value PeaksOf(const LineReport& report, const PeakLimits& limits) {
  Value peaks = MakeEmptyVector(Kind::kPeaksVector);
  PicGetProfilePeaks(&report.Profile<Vector>(), std::get<LxPeaksVector*>(peaks.argument),
                     limits.low, limits.high, limits.amplitude, limits.area);
  CheckOperation("the peaks");
  return peaks;
}

// A number of one field for each element.
std::vector<double> FieldOf(const Numbers& numbers, std::size_t field) {
  std::vector<double> values;
  for (std::size_t i = 0; i < numbers.Count(); ++i) values.push_back(numbers.At(i, field));
  return values;
}

}  // namespace

ExitCode RunProfile(const Arguments& arguments) {
  CLI::App app("The pixels along a line of a picture", "lxpic profile");
  LineOptions options;
  options.Add(app, true);
  if (!Parse(app, arguments)) return kFine;
  LineReport(options).FinishProfile();
  return kFine;
}

ExitCode RunPeaks(const Arguments& arguments) {
  CLI::App app("Where the levels along a line rise above a limit, or fall below another",
               "lxpic peaks");
  LineOptions options;
  PeakLimits limits;
  options.Add(app, true);
  app.add_option("--low", limits.low, "Peaks downwards lie below this level")->required();
  app.add_option("--high", limits.high, "Peaks upwards lie above this level")->required();
  app.add_option("--min-amplitude", limits.amplitude, "How far a peak must go beyond");
  app.add_option("--min-area", limits.area, "The least sum of what lies beyond");
  if (!Parse(app, arguments)) return kFine;
  const LineReport report(options);
  report.RequireGrey();
  const Value peaks = report.Picture().PixelType() == Pixel::kBW8
                          ? PeaksOf<LxBW8Vector>(report, limits)
                          : PeaksOf<LxBW16Vector>(report, limits);
  const Numbers found = peaks.read();
  const auto centre = std::find(found.fields.begin(), found.fields.end(), "centre");
  const auto field = static_cast<std::size_t>(centre - found.fields.begin());
  report.FinishFound(found, FieldOf(found, field));
  return kFine;
}

ExitCode RunTransitions(const Arguments& arguments) {
  CLI::App app(
      "The pixels where the levels along a line cross a threshold, edge 1 upwards and 2 "
      "downwards",
      "lxpic transitions");
  LineOptions options;
  int threshold = 128;
  int maximum = 0;
  auto edge = TRANS_SCAN_EDGE_ANY;
  options.Add(app, false);
  app.add_option("--threshold", threshold, "The level")->required();
  app.add_option("--maximum", maximum, "Only the first so many");
  app.add_option("--edge", edge, "Which: rising, falling or any")
      ->transform(CLI::CheckedTransformer(
          std::map<std::string, TRANS_SCAN_EDGE>{{"rising", TRANS_SCAN_EDGE_RISING},
                                                 {"falling", TRANS_SCAN_EDGE_FALLING},
                                                 {"any", TRANS_SCAN_EDGE_ANY}}));
  if (!Parse(app, arguments)) return kFine;
  const LineReport report(options);
  const ImageValue& image = report.Picture();
  if (image.PixelType() != Pixel::kBW8) {
    throw Failure(kWrongUsage, options.input + " is " + image.TypeName() + ", not bw8");
  }
  const Segment line = report.line;
  const Value crossings = MakeEmptyVector(Kind::kVector);
  PicTransitionScan(edge, &image.As<LxBW8>(), line.x0, line.y0, line.x1, line.y1, threshold,
                    maximum, std::get<LxVector*>(crossings.argument));
  CheckOperation(options.input);
  Numbers found{true, Numbers::Drawing::kNone, {"x", "y", "edge"}, crossings.read().values};
  std::vector<double> positions;
  for (std::size_t i = 0; i < found.Count(); ++i) {
    const int x = static_cast<int>(found.At(i, 0));
    const int y = static_cast<int>(found.At(i, 1));
    positions.push_back(Segment{line.x0, line.y0, x, y}.Length());
  }
  report.FinishFound(found, positions);
  return kFine;
}

}  // namespace lx::tool
