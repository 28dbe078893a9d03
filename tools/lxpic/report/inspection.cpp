// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/report/inspection.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <span>

#include "tools/lxpic/chain/chain.h"
#include "tools/lxpic/common/words.h"
#include "tools/lxpic/file/files.h"

namespace lx::tool {

namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

constexpr int kRuns = 25;
constexpr const char* kSmoothFlat = "flat-smooth.png";
constexpr const char* kEven = "even.png";
constexpr const char* kAligned = "aligned.png";
constexpr const char* kBefore = "before.png";
constexpr const char* kAfter = "after.png";
constexpr const char* kSeen = "seen.png";
constexpr const char* kDifference = "difference.png";
constexpr const char* kAmplified = "amplified.png";
constexpr const char* kMask = "mask.png";
constexpr const char* kOutlined = "outlined.png";

// Amplified differences above kLevel, that is differences above 24 grey levels of smoothed images,
// are defects.
constexpr const char* kGain = "6";
constexpr const char* kOffset = "-72";
constexpr const char* kLevel = "72";

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

  // What steps make of a file, for its own sake.
  ImageValue Look(const std::string& input, const Words& steps) const {
    return Chain(steps, 1, std::make_shared<OperandFiles>(folder))
        .Run(ReadImage(PathOf(input)))
        .image;
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

// No mark is known to more than a hundredth of a pixel.
std::string PointText(const Point& point) {
  const auto rounded = [](double v) { return NumberText(std::round(100 * v) / 100); };
  return rounded(point.x) + "," + rounded(point.y);
}

// What brings the part to where the golden sample lies; nothing without marks.
Words RegisterSteps(const std::vector<MarkPair>& marks) {
  if (marks.empty()) return {};
  Words words = {"register"};
  for (const MarkPair& each : marks) words.push_back(PointText(each.part));
  for (const MarkPair& each : marks) words.push_back(PointText(each.golden));
  words.emplace_back("8");
  // Two marks tell the size as well, if they are asked to.
  if (marks.size() == 2) words.emplace_back("1");
  return words;
}

// Makes both images grey where they are not; returns the names of the grey files.
std::pair<std::string, std::string> AddGreyStep(Inspection& inspection, const Samples& samples,
                                                const std::string& part, Page& page) {
  const Words goldenSteps = GreySteps(samples.golden);
  const Words partSteps = GreySteps(samples.part);
  std::pair<std::string, std::string> names{kGolden, part};
  if (goldenSteps.empty() && partSteps.empty()) return names;
  PageStep step{"Grey", "Brightness is what is compared, at 8 bits a pixel."};
  if (!goldenSteps.empty()) {
    names.first = "golden-grey.png";
    inspection.Run(step, kGolden, goldenSteps, names.first);
  }
  if (!partSteps.empty()) {
    names.second = "part-grey.png";
    inspection.Run(step, part, partSteps, names.second);
  }
  page.steps.push_back(step);
  return names;
}

const Words kWhite = {"oper", "copy", "255"};
const Words kSmoothFlatSteps = {"convol-uniform", "7"};
const Words kSmooth = {"convol-gaussian", "1"};

// Smooths both images; the names of the smooth files.
std::pair<std::string, std::string> AddSmoothStep(Inspection& inspection, const std::string& golden,
                                                  const std::string& part, Page& page) {
  PageStep step{"Smooth", "Noise changes from picture to picture: a small Gaussian takes it away."};
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

// How the part differs from the golden sample, in grey: a picture for the eye only.
void DrawDifference(Inspection& inspection, const Samples& samples, const std::string& part,
                    const std::string& output) {
  PageStep untold;
  std::string golden = kGolden;
  if (const Words grey = GreySteps(samples.golden); !grey.empty()) {
    golden = "golden-grey.png";
    inspection.Run(untold, kGolden, grey, golden);
  }
  inspection.Run(untold, part,
                 Concatenated(std::array{GreySteps(samples.part),
                                         Words{"oper", "absolute-difference", golden}}),
                 output);
}

long CountWhite(const ImageValue& mask) {
  long count = 0;
  for (int y = 0; y < mask.Height(); ++y) {
    count += std::count(mask.Row(y), mask.Row(y) + mask.Width(), 255);
  }
  return count;
}

// The largest value of an image of 8 or 16 bits.
int Brightest(const ImageValue& image) {
  int most = 0;
  const bool isDeep = image.PixelType() == Pixel::kBW16;
  for (int y = 0; y < image.Height(); ++y) {
    const auto row = std::span(image.Row(y), image.RowBytes());
    for (std::size_t i = 0; i < row.size(); ++i) {
      const int value = isDeep ? row[i] | row[i + 1] << 8 : row[i];
      most = std::max(most, value);
      if (isDeep) ++i;
    }
  }
  return most;
}

// What takes the light of the part to that at its brightest; nothing where it is even.
Words EvenSteps(const ImageValue& flat) {
  if (!flat) return {};
  return {"uniformize", std::to_string(Brightest(flat)), kSmoothFlat, "1"};
}

// Evens out the light on the part; the name of the file.
std::string AddEvenStep(Inspection& inspection, const Samples& samples, Page& page, Words& steps) {
  if (!samples.flat) return kPart;
  PageStep step{
      "Even out the light",
      "The lamp leaves the corners dark. An even sheet in the same light, smoothed so that "
      "its own noise does not count, tells how much each pixel must be raised."};
  steps = EvenSteps(inspection.Run(step, kFlat, kSmoothFlatSteps, kSmoothFlat));
  inspection.Run(step, kPart, steps, kEven);
  step.before = kPart;
  page.steps.push_back(step);
  return kEven;
}

// Registers the part, and finds what of the golden sample it shows; the name of the file.
std::string AddAlignStep(Inspection& inspection, const Samples& samples, const std::string& part,
                         Page& page) {
  const Words steps = RegisterSteps(samples.marks);
  if (steps.empty()) return part;
  PageStep step{
      "Align",
      "The part lies a little aside, turned, and nearer to the camera: marks that are "
      "known in both pictures bring it back. Left and right: the difference to the golden "
      "sample before and after."};
  inspection.Run(step, part, steps, kAligned);
  DrawDifference(inspection, samples, part, kBefore);
  DrawDifference(inspection, samples, kAligned, kAfter);
  step.before = kBefore;
  step.image = kAfter;
  page.steps.push_back(step);
  AddStep(inspection, page,
          {"Look where both are",
           "A white picture goes the same way. Where it stays white, the camera saw the part."},
          kAligned, Concatenated(std::array{GreySteps(samples.part), kWhite, steps}), kSeen);
  return kAligned;
}

// Follows the contour of each piece of the mask, and draws it on the picture `shown`.
void AddOutlineStep(const Inspection& inspection, const std::string& shown, Page& page) {
  const ImageValue ground = ReadImage(inspection.PathOf(shown));
  WriteImage(inspection.PathOf(kOutlined), PaintOutlines(ground, page.objects));
  page.steps.push_back(
      {"Outline",
       "A contour goes around each piece; its box, its area and its centre of "
       "gravity stand in the table below.",
       kOutlined,
       {std::string("lxpic contour ") + kDefects + " --on " + shown + " -o " + kOutlined}});
}

}  // namespace

Page Inspect(const Samples& samples, const std::string& folder) {
  Inspection inspection(folder);
  Page page;
  Words even;
  const std::string evenPart = AddEvenStep(inspection, samples, page, even);
  const std::string shownPart = AddAlignStep(inspection, samples, evenPart, page);
  const bool isAligned = shownPart == kAligned;
  const auto [greyGolden, greyPart] = AddGreyStep(inspection, samples, shownPart, page);
  const auto [golden, part] = AddSmoothStep(inspection, greyGolden, greyPart, page);
  Words difference = {"oper", "absolute-difference", golden};
  if (isAligned) difference.insert(difference.end(), {"oper", "bitwise-and", kSeen});
  const Words amplify = {"gain-offset", kGain, kOffset};
  const Words decide = {"oper", "greater", kLevel};
  const Words clean = {"open-box", "1"};
  const Words paint = {"set-overlay-color", "255,0,0"};
  // A deep image cannot carry colours.
  const bool isDeep = samples.part.PixelType() == Pixel::kBW16;
  const std::string shown = isDeep ? greyPart : shownPart;

  AddStep(inspection, page, {"Difference", "How far each pixel is from the golden sample."}, part,
          difference, kDifference);
  AddStep(inspection, page,
          {"Amplify", "The gain brings the differences out, the offset removes the small ones."},
          kDifference, amplify, kAmplified);
  AddStep(inspection, page,
          {"Decide", "A comparison with a constant gives white where the part is wrong."},
          kAmplified, decide, kMask);
  AddStep(inspection, page,
          {"Clean",
           "What holds no square of three by three pixels is a speck that noise left: an opening "
           "takes it away."},
          kMask, clean, kDefects);
  AddStep(inspection, page, {"Show", "The overlay colour is painted where the mask is not black."},
          shown, Concatenated(std::array{paint, Words{"oper", "overlay", kDefects}}), kResult);

  page.objects = FindObjects(ReadImage(inspection.PathOf(kDefects)), {});
  AddOutlineStep(inspection, shown, page);

  const Words keep = {"store", "shown"};
  const Words grey = GreySteps(samples.part);
  const Words find =
      Concatenated(std::array{RegisterSteps(samples.marks), isDeep ? grey : keep,
                              isDeep ? keep : grey, kSmooth, difference, amplify, decide, clean});
  const Words whole =
      Concatenated(std::array{even, find, paint, Words{"oper", "overlay", "@shown", "_"}});
  page.wholeCommand = std::string("lxpic ") + kPart + " " + Join(whole, " ") + " -o " + kResult;
  if (samples.flat) page.inUnevenLight = CountWhite(inspection.Look(kPart, find));
  return page;
}

std::vector<std::string> InspectionFiles() {
  return {kSmoothFlat,
          kEven,
          kAligned,
          kBefore,
          kAfter,
          kSeen,
          "golden-grey.png",
          "part-grey.png",
          "golden-smooth.png",
          "part-smooth.png",
          kDifference,
          kAmplified,
          kMask,
          kOutlined,
          kDefects,
          kResult};
}

}  // namespace lx::tool
