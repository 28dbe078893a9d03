// SPDX-License-Identifier: Apache-2.0
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>

#include "tools/lxpic/command/clashes.h"
#include "tools/lxpic/command/line_commands.h"
#include "tools/lxpic/common/words.h"
#include "tools/lxpic/file/files.h"
#include "tools/lxpic/file/output_file.h"
#include "tools/lxpic/report/objects.h"

namespace lx::tool {

namespace {

using Outlines = std::vector<Outlined>;

std::string CsvOf(const Outlines& objects) {
  std::string text = "object,x,y\n";
  for (std::size_t i = 0; i < objects.size(); ++i) {
    for (const LxPath& point : objects[i].outline) {
      text += std::to_string(i) + "," + std::to_string(point.m_n16X) + "," +
              std::to_string(point.m_n16Y) + "\n";
    }
  }
  return text;
}

// One closed path for each object, through the middles of its pixels.
std::string SvgOf(const Outlines& objects, const ImageValue& image) {
  const std::string size = std::to_string(image.Width()) + " " + std::to_string(image.Height());
  std::string text = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + size +
                     "\">\n<g fill=\"none\" stroke=\"red\" transform=\"translate(0.5 0.5)\">\n";
  for (const Outlined& each : objects) {
    text += "<path d=\"";
    const char* command = "M";
    for (const LxPath& point : each.outline) {
      text += command + std::to_string(point.m_n16X) + " " + std::to_string(point.m_n16Y);
      command = "L";
    }
    text += "Z\"/>\n";
  }
  return text + "</g>\n</svg>\n";
}

Numbers MeasuresOf(const Outlines& objects) {
  Numbers numbers{true,
                  Numbers::Drawing::kNone,
                  {"x", "y", "width", "height", "area", "centre-x", "centre-y", "outline"},
                  {}};
  for (const Outlined& each : objects) {
    for (const double value : {1.0 * each.x, 1.0 * each.y, 1.0 * each.width, 1.0 * each.height,
                               1.0 * each.area, double{each.centreX}, double{each.centreY},
                               1.0 * static_cast<double>(each.outline.size())}) {
      numbers.values.push_back(value);
    }
  }
  return numbers;
}

// The picture that outlines are drawn on.
ImageValue ReadGround(const std::string& path, const ImageValue& image) {
  if (path.empty()) return image;
  ImageValue ground = ReadImage(path);
  if (!ground.SameSize(image)) {
    throw Failure(kOperationFailed, path + " is " + ground.SizeText() + ", not " +
                                        image.SizeText() + " like the image");
  }
  if (ground.PixelType() != Pixel::kBW16) return ground;
  throw Failure(kWrongUsage, path + " is bw16, which holds no colours: convert it first");
}

}  // namespace

ExitCode RunContour(const Arguments& arguments) {
  CLI::App app("Outlines the objects of a picture, and prints where they are and how large",
               "lxpic contour");
  std::string input;
  std::string output;
  std::string ground;
  std::string format = "text";
  ObjectTest test;
  unsigned least = 1;
  bool below = false;
  app.add_option("IMAGE", input, "A grey picture")->required();
  app.add_option("--threshold", test.threshold, "Objects have this level or a higher one")
      ->capture_default_str();
  app.add_flag("--below", below, "Or this level or a lower one");
  app.add_option("--min-area", least, "Leave smaller objects out, in pixels")
      ->capture_default_str();
  app.add_option("-o,--output", output,
                 "The outlines: points as .csv, paths as .svg, or drawn on the picture")
      ->option_text("FILE");
  app.add_option("--on", ground, "Draw them on this picture instead")->option_text("FILE");
  app.add_option("--format", format, "How to print: text, csv or json")->capture_default_str();
  AddMaxPixels(app);
  if (!Parse(app, arguments)) return kFine;
  if (below) test.side = CONTOUR_BELOW_THRESHOLD;
  const TableFormat tableFormat = ReadFormat(format);
  const bool isCsv = output.ends_with(".csv");
  const bool isSvg = output.ends_with(".svg");
  if (!output.empty() && !isCsv && !isSvg) CheckFormat(output);
  CheckClashes({{{input, output, ""}, {ground, "", ""}}, {}, ""});
  const ImageValue image = ReadGrey(input);
  Outlines objects = FindObjects(image, test);
  std::erase_if(objects, [&](const Outlined& each) { return each.area < least; });
  if (isCsv) {
    WriteText(output, CsvOf(objects));
  } else if (isSvg) {
    WriteText(output, SvgOf(objects, image));
  } else if (!output.empty()) {
    WriteImage(output, PaintOutlines(ReadGround(ground, image), objects));
  }
  std::fputs(TableText(RowsOf(input, MeasuresOf(objects)), tableFormat).c_str(), stdout);
  return kFine;
}

}  // namespace lx::tool
