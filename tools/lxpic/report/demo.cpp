// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/report/demo.h"

#include <algorithm>
#include <filesystem>

#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/file/files.h"
#include "tools/lxpic/file/identity.h"
#include "tools/lxpic/report/page.h"
#include "tools/lxpic/scene/synth.h"

namespace lx::tool {

namespace {

namespace fs = std::filesystem;

constexpr const char* kPage = "index.html";

Samples DrawSamples() {
  SynthOptions options;
  options.scene = "board";
  options.colour = true;
  options.light = 0;
  Samples samples;
  const SynthPicture golden = Synthesise(options);
  samples.golden = golden.image;
  // Another place: other noise, a lamp that leaves the corners dark, and nobody laid the part down
  // exactly.
  options.seed = 7;
  options.light = 35;
  options.defects = 8;
  options.pose = {{11.5, -7.25}, 1.3, 1.012};
  const SynthPicture part = Synthesise(options);
  samples.part = part.image;
  for (const Defect& each : part.defects) samples.defects.push_back(LaidStraight(each, options));
  for (std::size_t i = 0; i < golden.marks.size(); ++i) {
    samples.marks.push_back({golden.marks[i], part.marks[i]});
  }
  options.scene = "sheet";
  options.defects = 0;
  samples.flat = Synthesise(options).image;
  return samples;
}

Samples ReadSamples(const DemoOptions& options) {
  if (options.golden.empty()) return DrawSamples();
  Samples samples{ReadImage(options.golden), ReadImage(options.part), {}, options.marks};
  if (!options.flat.empty()) samples.flat = ReadImage(options.flat);
  if (samples.flat && (!samples.flat.SameSize(samples.part) ||
                       samples.flat.PixelType() != samples.part.PixelType())) {
    throw Failure(kOperationFailed, options.flat + " is " + samples.flat.TypeName() + " of " +
                                        samples.flat.SizeText() + ", " + options.part + " is " +
                                        samples.part.TypeName() + " of " + samples.part.SizeText() +
                                        ": both must be the same");
  }
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
  std::vector<std::string> names = InspectionFiles();
  names.insert(names.end(), {kGolden, kPart, kFlat, kPage});
  for (const std::string& name : names) {
    if (name == copy || !IsSameFile(input, (fs::path(folder) / name).string())) continue;
    throw Failure(kWrongUsage, input + " would be overwritten: choose another folder");
  }
}

long CountMarked(const ImageValue& mask, const Defect& box) {
  long count = 0;
  for (int y = box.y; y < box.y + box.height; ++y) {
    const unsigned char* const row = mask.Row(y) + box.x;
    count += std::count_if(row, row + box.width, [](unsigned char level) { return level != 0; });
  }
  return count;
}

// An image that lies in its place already is left alone.
void WriteCopy(const std::string& path, const ImageValue& image, const std::string& original) {
  if (!IsSameFile(path, original)) WriteImage(path, image);
}

}  // namespace

DemoResult RunDemo(const DemoOptions& options) {
  CheckInput(options.golden, kGolden, options.folder);
  CheckInput(options.part, kPart, options.folder);
  CheckInput(options.flat, kFlat, options.folder);
  const Samples samples = ReadSamples(options);
  std::error_code error;
  fs::create_directories(options.folder, error);
  if (error) throw Failure(kFileFailed, options.folder + ": cannot be made: " + error.message());

  const auto pathOf = [&](const char* name) { return (fs::path(options.folder) / name).string(); };
  WriteCopy(pathOf(kGolden), samples.golden, options.golden);
  WriteCopy(pathOf(kPart), samples.part, options.part);
  if (samples.flat) WriteCopy(pathOf(kFlat), samples.flat, options.flat);
  Page page = Inspect(samples, options.folder);
  page.golden = kGolden;
  page.part = kPart;
  page.result = kResult;
  page.width = samples.part.Width();
  page.height = samples.part.Height();

  const ImageValue mask = ReadImage(pathOf(kDefects));
  page.defectPixels = CountMarked(mask, {"", 0, 0, mask.Width(), mask.Height()});
  for (const Defect& defect : samples.defects) {
    page.defects.push_back({defect, CountMarked(mask, defect)});
  }
  const std::string file = pathOf(kPage);
  WritePage(file, page);
  return {file, page.defectPixels};
}

}  // namespace lx::tool
