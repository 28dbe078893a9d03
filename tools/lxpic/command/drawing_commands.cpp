// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/command/drawing_commands.h"

#include <algorithm>
#include <cstdio>

#include "tools/lxpic/command/parsing.h"
#include "tools/lxpic/common/words.h"
#include "tools/lxpic/file/files.h"
#include "tools/lxpic/file/identity.h"
#include "tools/lxpic/file/numbered.h"
#include "tools/lxpic/report/demo.h"
#include "tools/lxpic/scene/synth.h"

namespace lx::tool {

namespace {

void AddPose(CLI::App& app, Pose& pose) {
  app.add_option_function<std::string>(
         "--shift", [&pose](const std::string& word) { pose.shift = ReadPoint("--shift", word); },
         "How many pixels the product lies to the right and further down")
      ->option_text("X,Y");
  app.add_option("--rotate", pose.angle, "By how many degrees it is turned, counter-clockwise")
      ->check(CheckNumber)
      ->check(CLI::Range(-360.0, 360.0));
  app.add_option("--scale", pose.scale, "How much larger it is")
      ->check(CheckNumber)
      ->check(CLI::Range(0.1, 10.0))
      ->capture_default_str();
}

void Tell(const SynthPicture& picture, std::FILE* to) {
  for (const Defect& each : picture.defects) {
    std::fprintf(to, "%s at %d,%d %dx%d\n", each.kind.c_str(), each.x, each.y, each.width,
                 each.height);
  }
  for (const Point& mark : picture.marks) {
    std::fprintf(to, "mark at %.2f,%.2f\n", mark.x, mark.y);
  }
}

// Where a mark is in the golden sample, and where in the part.
MarkPair ReadMark(const std::string& word) {
  const std::size_t colon = word.find(':');
  if (colon == std::string::npos) {
    throw Failure(kWrongUsage, "--mark: '" + word + "' is no pair of points like 10,20:11.5,19");
  }
  return {ReadPoint("--mark", word.substr(0, colon)), ReadPoint("--mark", word.substr(colon + 1))};
}

}  // namespace

ExitCode RunSynth(const Arguments& arguments) {
  CLI::App app("Draws a picture of a product, and prints where its defects and marks are",
               "lxpic synth");
  SynthOptions options;
  std::string size;
  std::string output;
  int frames = 0;
  app.add_option("SCENE", options.scene, Join(SceneNames(), " or "))->required();
  app.add_option("-o,--output", output, "The file to write")->required();
  app.add_option("--defects", options.defects, "How many defects")->check(CLI::Range(0, 100));
  app.add_option("--seed", options.seed, "Of the defects and the noise")->capture_default_str();
  app.add_option("--noise", options.noise, "Standard deviation in grey levels")
      ->check(CheckNumber)
      ->check(CLI::Range(0.0, 100.0))
      ->capture_default_str();
  app.add_option("--light", options.light, "How many percent darker the darkest corner is")
      ->check(CheckNumber)
      ->check(CLI::Range(0.0, 100.0))
      ->capture_default_str();
  app.add_option("--size", size, "WxH")->default_str("1200x900");
  app.add_flag("--color", options.colour, "In colour");
  AddPose(app, options.pose);
  app.add_option("--field-shift", options.fieldShift,
                 "How far the product has moved when the odd rows are exposed, in pixels")
      ->check(CheckNumber)
      ->check(CLI::Range(-1000.0, 1000.0));
  app.add_option("--frames", frames, "Draw so many, NAME-0.png and so on, each with other noise")
      ->check(CLI::Range(1, 10000));
  if (!Parse(app, arguments)) return kFine;
  if (!size.empty()) {
    const auto read = ReadSize(size);
    if (!read) throw Failure(kWrongUsage, "--size: '" + size + "' is not a size like 640x480");
    options.size = *read;
  }
  CheckFormat(output);
  // They would damage an image that goes the same way.
  std::FILE* const told = IsStandardOutput(output) ? stderr : stdout;
  int written = 0;
  SynthesiseFrames(options, std::max(frames, 1), [&](const SynthPicture& picture) {
    WriteImage(frames == 0 ? output : NumberedPath(output, written, frames), picture.image);
    if (written++ == 0) Tell(picture, told);
  });
  return kFine;
}

ExitCode RunDemoCommand(const Arguments& arguments) {
  CLI::App app("Inspects a part against a golden sample, both drawn if not given", "lxpic demo");
  DemoOptions options;
  std::vector<std::string> files;
  app.add_option("FILE", files, "GOLDEN and PART");
  app.add_option("-o,--output", options.folder, "The folder for images and page")->required();
  std::vector<std::string> marks;
  app.add_option("--mark", marks, "A place of the product in both, given two or three times")
      ->option_text("X,Y:X,Y");
  app.add_option("--flat", options.flat, "An even surface in the light of the part")
      ->option_text("FILE");
  AddMaxPixels(app);
  if (!Parse(app, arguments)) return kFine;
  for (const std::string& word : marks) options.marks.push_back(ReadMark(word));
  if (marks.size() == 1 || marks.size() > 3 || (files.empty() && !marks.empty())) {
    throw Failure(kWrongUsage, "--mark: two or three marks register two images");
  }
  if (files.empty() && !options.flat.empty()) {
    throw Failure(kWrongUsage, "--flat goes with two images");
  }
  if (!files.empty() && files.size() != 2) {
    throw Failure(kWrongUsage, "demo takes two images, GOLDEN and PART, or none");
  }
  if (!files.empty()) {
    options.golden = files[0];
    options.part = files[1];
  }
  const DemoResult result = RunDemo(options);
  std::printf("%ld defect pixels\n%s\n", result.defectPixels, result.page.c_str());
  return kFine;
}

}  // namespace lx::tool
