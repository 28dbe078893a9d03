// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/command/sequence_commands.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <filesystem>

#include "tools/lxpic/command/clashes.h"
#include "tools/lxpic/command/outputs.h"
#include "tools/lxpic/command/parsing.h"
#include "tools/lxpic/common/operation.h"
#include "tools/lxpic/file/files.h"
#include "tools/lxpic/file/numbered.h"

namespace lx::tool {

namespace {

namespace fs = std::filesystem;

// One file for each of `count` results; no input is written over.
std::vector<std::string> ChooseNumbered(const std::string& output, int count,
                                        const std::vector<std::string>& inputs) {
  CheckFormat(output);
  CommandFiles files;
  for (const std::string& input : inputs) files.runs.push_back({input, "", ""});
  std::vector<std::string> paths;
  for (int i = 0; i < count; ++i) {
    paths.push_back(NumberedPath(output, i, count));
    files.runs.push_back({"", paths.back(), ""});
  }
  CheckClashes(files);
  return paths;
}

// A copy of a region's pixels as an image of its own.
ImageValue CopyOf(LxROI<LxBW8>& region) {
  ImageValue image(Pixel::kBW8, static_cast<int>(region.GetWidth()),
                   static_cast<int>(region.GetHeight()));
  PicCopy(&region, &image.As<LxBW8>());
  CheckOperation("the result");
  return image;
}

// The frames of a sequence: files, and those of folders in the order of their names.
std::vector<std::string> FramesOf(const std::vector<std::string>& words) {
  std::vector<std::string> frames;
  for (const std::string& word : words) {
    if (!fs::is_directory(word)) {
      frames.push_back(word);
      continue;
    }
    std::vector<std::string> found;
    for (const auto& entry : fs::directory_iterator(word)) {
      if (HasKnownExtension(entry.path().string())) found.push_back(entry.path().string());
    }
    std::sort(found.begin(), found.end());
    frames.insert(frames.end(), found.begin(), found.end());
  }
  return frames;
}

// The sum of frames, against which the noise of each is measured.
struct Reference {
  ImageValue sum;
  unsigned count = 0;

  void Add(const std::string& path) {
    const ImageValue frame = ReadGrey(path);
    ImageValue words(Pixel::kBW16, frame.Width(), frame.Height());
    PicConvert(&frame.As<LxBW8>(), &words.As<LxBW16>(), 0);
    if (count++ == 0) {
      sum = words;
    } else {
      PicOper(ARITH_LOGIC_ADD, &sum.As<LxBW16>(), &words.As<LxBW16>(), &sum.As<LxBW16>());
    }
    CheckOperation(path);
  }
};

Numbers Single(double value) { return {false, Numbers::Drawing::kNone, {""}, {value}}; }

struct Noise {
  double deviation;
  double ratio;

  TableRow RowOf(const std::string& name) const {
    return {name, {{"noise", Single(deviation)}, {"decibels", Single(ratio)}}};
  }
};

Noise NoiseOf(const std::string& path, const Reference& reference, bool isPart) {
  const auto kind = isPart ? PIC_REFERENCE_NOISE_DEPENDENT : PIC_REFERENCE_NOISE_INDEPENDENT;
  const ImageValue frame = ReadGrey(path);
  LxImage<LxBW16>& sum = reference.sum.As<LxBW16>();
  const float deviation = PicRmsNoise(&frame.As<LxBW8>(), &sum, reference.count, kind);
  CheckOperation(path);
  const float ratio = PicSignalNoiseRatio(&frame.As<LxBW8>(), &sum, reference.count, kind);
  CheckOperation(path);
  return {deviation, ratio};
}

}  // namespace

ExitCode RunPyramid(const Arguments& arguments) {
  CLI::App app("Halves an image again and again, and writes one file for each level",
               "lxpic pyramid");
  std::string input;
  std::string output;
  int levels = 4;
  bool keepOdd = false;
  app.add_option("IMAGE", input, "A grey image")->required();
  app.add_option("-o,--output", output, "NAME.png for NAME-0.png, the image itself, NAME-1.png ...")
      ->required();
  app.add_option("--levels", levels, "How many")->check(CLI::Range(1, 32))->capture_default_str();
  app.add_flag("--keep-odd", keepOdd, "Average an odd last column or row instead of dropping it");
  AddMaxPixels(app);
  if (!Parse(app, arguments)) return kFine;
  const auto paths = ChooseNumbered(output, levels, {input});
  const ImageValue image = ReadGrey(input);
  LxPyramid pyramid;
  pyramid.SetNumLevels(static_cast<unsigned>(levels), LX_IMAGE_BW8);
  CheckOperation("the pyramid");
  pyramid.SetHalvingMode(keepOdd ? 0 : 1);
  pyramid.Build(&image.As<LxBW8>());
  CheckOperation("the pyramid");
  for (unsigned i = 0; i < pyramid.GetNumLevels(); ++i) {
    auto& level = static_cast<LxROI<LxBW8>&>(*pyramid.GetImage(i));
    if (level.GetWidth() == 0 || level.GetHeight() == 0) break;
    WriteImage(paths[i], CopyOf(level));
    std::printf("%s: %ux%u\n", paths[i].c_str(), level.GetWidth(), level.GetHeight());
  }
  return kFine;
}

ExitCode RunNoise(const Arguments& arguments) {
  CLI::App app("Measures the noise of a camera: how far frames of one scene are from their mean",
               "lxpic noise");
  std::vector<std::string> words;
  std::string format = "text";
  app.add_option("FRAME", words, "Grey images, or folders of them")->required();
  app.add_option("--format", format, "How to print: text, csv or json")->capture_default_str();
  AddMaxPixels(app);
  if (!Parse(app, arguments)) return kFine;
  const TableFormat tableFormat = ReadFormat(format);
  const auto frames = FramesOf(words);
  if (frames.size() < 2) throw Failure(kWrongUsage, "noise takes two frames or more");
  // A sum of 16 bits has room for 256 frames, and is divided by a power of two.
  const std::size_t averaged = std::min<std::size_t>(256, std::bit_floor(frames.size()));
  Reference reference;
  for (std::size_t i = 0; i < averaged; ++i) reference.Add(frames[i]);
  std::vector<TableRow> rows;
  double squares = 0;
  double ratios = 0;
  for (std::size_t i = 0; i < frames.size(); ++i) {
    const Noise noise = NoiseOf(frames[i], reference, i < averaged);
    rows.push_back(noise.RowOf(frames[i]));
    squares += noise.deviation * noise.deviation;
    ratios += noise.ratio;
  }
  const auto count = static_cast<double>(frames.size());
  rows.push_back(Noise{std::sqrt(squares / count), ratios / count}.RowOf("all"));
  std::fputs(TableText(rows, tableFormat).c_str(), stdout);
  return kFine;
}

ExitCode RunAverage(const Arguments& arguments) {
  CLI::App app("Averages each frame of a sequence with those before it", "lxpic average");
  std::vector<std::string> words;
  std::string output;
  unsigned period = 8;
  app.add_option("FRAME", words, "Grey images in their order, or folders of them")->required();
  app.add_option("-o,--output", output, "The folder for the averages")->required();
  app.add_option("--period", period, "How many frames are averaged")
      ->check(CLI::Range(1, 257))
      ->capture_default_str();
  AddMaxPixels(app);
  if (!Parse(app, arguments)) return kFine;
  const auto frames = FramesOf(words);
  if (frames.empty()) throw Failure(kWrongUsage, "there is no frame");
  const auto paths = ChooseOutputs({"-o", (fs::path(output) / "").string(), ""}, frames);
  CommandFiles files;
  for (std::size_t i = 0; i < frames.size(); ++i) files.runs.push_back({frames[i], paths[i], ""});
  CheckClashes(files);
  std::error_code error;
  fs::create_directories(output, error);
  if (error) throw Failure(kFileFailed, output + ": cannot be made: " + error.message());
  LxMovingAverage average;
  for (std::size_t i = 0; i < frames.size(); ++i) {
    const ImageValue frame = ReadGrey(frames[i]);
    if (i == 0) average.SetSize(period, frame.Width(), frame.Height(), 0);
    CheckOperation("the frames");
    ImageValue made(Pixel::kBW8, frame.Width(), frame.Height());
    average.Average(&frame.As<LxBW8>(), &made.As<LxBW8>());
    CheckOperation(frames[i]);
    WriteImage(paths[i], made);
  }
  return kFine;
}

}  // namespace lx::tool
