// SPDX-License-Identifier: Apache-2.0
// Thresholds: two and three levels, colour boxes, binary images, surfaces.
#ifdef LXPIC_HAS_OPENCV
#include <opencv2/imgproc.hpp>

#include "bench/opencv.h"
#endif

#include <string>
#include <string_view>
#include <vector>

#include "bench/family.h"

namespace lx::bench {

namespace {

using catalogue::Pixel;

constexpr std::string_view kSelected = "min-residue";
constexpr double kModeValue = PIC_THRESHOLD_MIN_RESIDUE;

// A threshold in the middle, and where modes are allowed, one of them.
std::vector<Form> FormsOf(const Operation& operation) {
  if (operation.function == "PicAutoThreshold") {
    std::vector<Form> forms;
    for (const catalogue::Named& mode : operation.parameters[1].choices) {
      forms.push_back({.label = mode.name, .numbers = {{"mode", static_cast<double>(mode.value)}}});
    }
    return forms;
  }
  const std::size_t threshold = operation.IndexOf("threshold");
  if (threshold == operation.parameters.size()) return {};
  const bool words = operation.parameters.front().pixel == Pixel::kBW16;
  std::vector<Form> forms = {{.numbers = {{"threshold", words ? 32768 : 128}}}};
  if (!operation.parameters[threshold].choices.empty()) {
    forms.push_back({.label = std::string(kSelected), .numbers = {{"threshold", kModeValue}}});
  }
  return forms;
}

constexpr TargetRow kTargets[] = {
    {"PicThreshold", kSelected, Pixel::kBW8, {{1, 1}, {1, 1}}},
    {"PicThreshold", "", Pixel::kBW8, {{0.31, 0.45}, {0.31, 0.45}}},
    {"PicThreshold", "", Pixel::kBW16, {{1, 1}, {1, 1}}},
    {"PicThreshold", "", Pixel::kC24, {{0.2, 0.35}, {0.2, 0.35}}},
    {"PicDoubleThreshold", "", Pixel::kBW8, {{0.15, 0.35}, {0.15, 0.35}}}};

Target TargetOf(const Subject& subject) { return FindTarget(subject, kTargets); }

#ifdef LXPIC_HAS_OPENCV

// OpenCV's bright pixels lie above its threshold.
Job TwoLevelsPeer(const Subject& subject, double threshold, int type) {
  return [source = ViewOf(subject, 0), destination = ViewOf(subject, 1), threshold, type,
          largest = subject.call.Number("high-value")] {
    cv::Mat result = destination;
    cv::threshold(source, result, threshold, largest, type);
    ExpectResultIn(destination, result);
  };
}

Job ThreeLevelsPeer(const Subject& subject) {
  cv::Mat table(1, 256, CV_8U);
  for (int v = 0; v < 256; ++v) {
    table.at<std::uint8_t>(v) = static_cast<std::uint8_t>(v > 170 ? 255 : v < 85 ? 0 : 128);
  }
  return [source = ViewOf(subject, 0), destination = ViewOf(subject, 1), table] {
    cv::Mat result = destination;
    cv::LUT(source, table, result);
    ExpectResultIn(destination, result);
  };
}

Job BoxPeer(const Subject& subject) {
  return [source = ViewOf(subject, 0), destination = ViewOf(subject, 1)] {
    cv::Mat result = destination;
    cv::inRange(source, cv::Scalar::all(60), cv::Scalar::all(200), result);
    ExpectResultIn(destination, result);
  };
}

Job MakePeer(const Subject& subject) {
  const auto& parameters = subject.operation->parameters;
  const Pixel from = parameters[0].pixel;
  const bool selected = subject.form.label == kSelected;
  if (subject.operation->function == "PicDoubleThreshold") {
    return from == Pixel::kBW8 ? ThreeLevelsPeer(subject) : Job();
  }
  if (subject.operation->function != "PicThreshold") return {};
  if (from == Pixel::kC24) return parameters.size() == 4 ? BoxPeer(subject) : Job();
  if (parameters[1].pixel != from) return {};
  if (selected) {
    return from == Pixel::kBW8 ? TwoLevelsPeer(subject, 0, cv::THRESH_BINARY | cv::THRESH_OTSU)
                               : Job();
  }
  return TwoLevelsPeer(subject, subject.call.Number("threshold") - 1, cv::THRESH_BINARY);
}

#else

Job MakePeer(const Subject& /*subject*/) { return {}; }

#endif

}  // namespace

const Family kThresholdingFamily = {FormsOf, MakePeer, TargetOf};

}  // namespace lx::bench
