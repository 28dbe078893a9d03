// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/report/demo.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <span>

#include "tools/lxpic/chain/chain.h"
#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/file/files.h"
#include "tools/lxpic/file/identity.h"
#include "tools/lxpic/report/page.h"
#include "tools/lxpic/scene/synth.h"

namespace lx::tool {

namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

constexpr int kRuns = 25;
constexpr const char* kGolden = "golden.png";
constexpr const char* kPart = "part.png";
constexpr const char* kMask = "mask.png";
constexpr const char* kDefects = "defects.png";
constexpr const char* kResult = "result.png";
constexpr const char* kPage = "index.html";
// All that may be written besides the copies of the two images.
constexpr std::array kMade = {"golden-grey.png",
                              "part-grey.png",
                              "golden-smooth.png",
                              "part-smooth.png",
                              "difference.png",
                              "amplified.png",
                              kMask,
                              kDefects,
                              kResult,
                              kPage};

// Amplified differences above kLevel, that is differences above 24 grey levels of smoothed images,
// are defects.
constexpr const char* kGain = "6";
constexpr const char* kOffset = "-72";
constexpr const char* kLevel = "72";

struct Samples {
  ImageValue golden;
  ImageValue part;
  std::vector<Defect> defects;
};

Samples DrawSamples() {
  SynthOptions options;
  options.scene = "board";
  options.colour = true;
  Samples samples;
  samples.golden = Synthesise(options).image;
  // Another exposure: other noise, and a little less light.
  options.seed = 7;
  options.light = 15;
  options.defects = 8;
  SynthPicture part = Synthesise(options);
  samples.part = part.image;
  samples.defects = part.defects;
  return samples;
}

Samples ReadSamples(const DemoOptions& options) {
  if (options.golden.empty()) return DrawSamples();
  Samples samples{ReadImage(options.golden), ReadImage(options.part), {}};
  if (samples.golden.SameSize(samples.part)) return samples;
  throw Failure(kOperationFailed, options.golden + " is " + samples.golden.SizeText() + " and " +
                                      options.part + " is " + samples.part.SizeText() +
                                      ": both must have the same size");
}

bool IsSameFile(const std::string& a, const std::string& b) {
  const std::string identity = IdentityOf(a);
  return !identity.empty() && identity == IdentityOf(b);
}

// Throws when a file of the folder, other than its own copy, would be written over an image.
void CheckInput(const std::string& input, const char* copy, const std::string& folder) {
  std::vector<std::string> names(kMade.begin(), kMade.end());
  names.insert(names.end(), {kGolden, kPart});
  for (const std::string& name : names) {
    if (name == copy || !IsSameFile(input, (fs::path(folder) / name).string())) continue;
    throw Failure(kWrongUsage, input + " would be overwritten: choose another folder");
  }
}

// The steps that make an image grey; none when it is.
Words GreySteps(const ImageValue& image) {
  if (image.PixelType() == Pixel::kBW16) return {"convert", "bw8", "8"};
  if (image.PixelType() == Pixel::kC24) return {"convert", "bw8"};
  return {};
}

Words Concatenated(std::span<const Words> lists) {
  Words all;
  for (const Words& list : lists) all.insert(all.end(), list.begin(), list.end());
  return all;
}

// Runs steps of the inspection in its folder, and describes them.
class Inspection {
 public:
  explicit Inspection(std::string outputFolder) : folder(std::move(outputFolder)) {}

  // Runs `steps` on the file `input` on both paths and writes the file `output`.
  ImageValue Run(PageStep& step, const std::string& input, const Words& steps,
                 const std::string& output) {
    const ImageValue start = ReadImage(PathOf(input));
    const int path = LxGetMMX();
    LxSetMMX(0);
    const double plain = TimeOf(start, steps);
    LxSetMMX(1);
    const double fast = TimeOf(start, steps);
    LxSetMMX(path);
    WriteImage(PathOf(output), result);
    step.commands.push_back("lxpic " + input + " " + Join(steps, " ") + " -o " + output);
    const StepTimes before = step.times.value_or(StepTimes{0, 0});
    step.times = StepTimes{before.fast + fast, before.plain + plain};
    step.image = output;
    return result;
  }

  std::string PathOf(const std::string& name) const { return (fs::path(folder) / name).string(); }

 private:
  double TimeOf(const ImageValue& start, const Words& steps) {
    double time = 0;
    Chain chain(steps, kRuns, std::make_shared<OperandFiles>(folder));
    result = chain.Run(start, [&](const StepReport& report) { time += report.milliseconds; }).image;
    return time;
  }

  std::string folder;
  ImageValue result;
};

long CountMarked(const ImageValue& mask, const Defect& box) {
  long count = 0;
  for (int y = box.y; y < box.y + box.height; ++y) {
    const unsigned char* const row = mask.Row(y) + box.x;
    count += std::count_if(row, row + box.width, [](unsigned char level) { return level != 0; });
  }
  return count;
}

// Makes both images grey where they are not; returns the names of the grey files.
std::pair<std::string, std::string> AddGreyStep(Inspection& inspection, const Samples& samples,
                                                Page& page) {
  const Words goldenSteps = GreySteps(samples.golden);
  const Words partSteps = GreySteps(samples.part);
  std::pair<std::string, std::string> names{kGolden, kPart};
  if (goldenSteps.empty() && partSteps.empty()) return names;
  PageStep step{"Grey", "Brightness is what is compared, at 8 bits a pixel.", "", {}, {}};
  if (!goldenSteps.empty()) {
    names.first = "golden-grey.png";
    inspection.Run(step, kGolden, goldenSteps, names.first);
  }
  if (!partSteps.empty()) {
    names.second = "part-grey.png";
    inspection.Run(step, kPart, partSteps, names.second);
  }
  page.steps.push_back(step);
  return names;
}

const Words kSmooth = {"convol-gaussian", "1"};

// Smooths both images; the names of the smooth files.
std::pair<std::string, std::string> AddSmoothStep(Inspection& inspection, const std::string& golden,
                                                  const std::string& part, Page& page) {
  PageStep step{"Smooth",
                "Noise changes from picture to picture: a small Gaussian takes it away.",
                "",
                {},
                {}};
  inspection.Run(step, golden, kSmooth, "golden-smooth.png");
  inspection.Run(step, part, kSmooth, "part-smooth.png");
  page.steps.push_back(step);
  return {"golden-smooth.png", "part-smooth.png"};
}

void AddStep(Inspection& inspection, Page& page, PageStep step, const std::string& input,
             const Words& steps, const std::string& output) {
  inspection.Run(step, input, steps, output);
  page.steps.push_back(step);
}

void Inspect(Inspection& inspection, const Samples& samples, Page& page) {
  const auto [greyGolden, greyPart] = AddGreyStep(inspection, samples, page);
  const auto [golden, part] = AddSmoothStep(inspection, greyGolden, greyPart, page);
  const Words difference = {"oper", "absolute-difference", golden};
  const Words amplify = {"gain-offset", kGain, kOffset};
  const Words decide = {"oper", "greater", kLevel};
  const Words clean = {"open-box", "1"};
  const Words paint = {"set-overlay-color", "255,0,0"};
  // A deep image cannot carry colours.
  const std::string shown = samples.part.PixelType() == Pixel::kBW16 ? greyPart : kPart;

  AddStep(inspection, page,
          {"Difference", "How far each pixel is from the golden sample.", "", {}, {}}, part,
          difference, "difference.png");
  AddStep(inspection, page,
          {"Amplify",
           "The gain brings the differences out, the offset removes the small ones.",
           "",
           {},
           {}},
          "difference.png", amplify, "amplified.png");
  AddStep(
      inspection, page,
      {"Decide", "A comparison with a constant gives white where the part is wrong.", "", {}, {}},
      "amplified.png", decide, kMask);
  AddStep(inspection, page,
          {"Clean",
           "What holds no square of three by three pixels is a speck that noise left: an opening "
           "takes it away.",
           "",
           {},
           {}},
          kMask, clean, kDefects);
  AddStep(inspection, page,
          {"Show", "The overlay colour is painted where the mask is not black.", "", {}, {}}, shown,
          Concatenated(std::array{paint, Words{"oper", "overlay", kDefects}}), kResult);

  const Words whole =
      Concatenated(std::array{GreySteps(samples.part), kSmooth, difference, amplify, decide, clean,
                              paint, Words{"oper", "overlay", "@", "_"}});
  page.wholeCommand = "lxpic " + shown + " " + Join(whole, " ") + " -o " + kResult;
}

// An image that lies in its place already is left alone.
void WriteCopy(const std::string& path, const ImageValue& image, const std::string& original) {
  if (!IsSameFile(path, original)) WriteImage(path, image);
}

}  // namespace

DemoResult RunDemo(const DemoOptions& options) {
  CheckInput(options.golden, kGolden, options.folder);
  CheckInput(options.part, kPart, options.folder);
  const Samples samples = ReadSamples(options);
  std::error_code error;
  fs::create_directories(options.folder, error);
  if (error) throw Failure(kFileFailed, options.folder + ": cannot be made: " + error.message());

  Inspection inspection(options.folder);
  WriteCopy(inspection.PathOf(kGolden), samples.golden, options.golden);
  WriteCopy(inspection.PathOf(kPart), samples.part, options.part);
  Page page;
  page.golden = kGolden;
  page.part = kPart;
  page.result = kResult;
  page.width = samples.part.Width();
  page.height = samples.part.Height();
  Inspect(inspection, samples, page);

  const ImageValue mask = ReadImage(inspection.PathOf(kDefects));
  page.defectPixels = CountMarked(mask, {"", 0, 0, mask.Width(), mask.Height()});
  for (const Defect& defect : samples.defects) {
    page.defects.push_back({defect, CountMarked(mask, defect)});
  }
  const std::string file = inspection.PathOf(kPage);
  WritePage(file, page);
  return {file, page.defectPixels};
}

}  // namespace lx::tool
