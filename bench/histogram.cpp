// SPDX-License-Identifier: Apache-2.0
// Histograms, equalization, analysis and threshold selection.
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

constexpr std::string_view kConstant = "constant";
constexpr std::string_view kAllBits = "16 bits";

Form Constant() { return {.label = std::string(kConstant), .content = test::Content::kConstant}; }

Form Bits(std::string_view label, double bits, test::Content content = test::Content::kNoise) {
  return {.label = std::string(label), .numbers = {{"bits", bits}}, .content = content};
}

// Each way to choose a threshold.
std::vector<Form> ThresholdForms(const Operation& operation) {
  std::vector<Form> forms;
  for (const catalogue::Named& mode : operation.parameters[1].choices) {
    forms.push_back(
        {.label = mode.name, .numbers = {{"threshold", static_cast<double>(mode.value)}}});
  }
  return forms;
}

std::vector<Form> FormsOf(const Operation& operation) {
  if (operation.function.starts_with("PicHistogramThreshold")) return ThresholdForms(operation);
  if (operation.function == "PicEqualize") return {Form{}, Constant()};
  if (operation.function != "PicHistogram") return {};
  if (operation.parameters.front().pixel == catalogue::Pixel::kBW8) return {Form{}, Constant()};
  return {Bits(kAllBits, 16), Bits("8 bits", 8), Bits(kConstant, 16, test::Content::kConstant)};
}

bool Is(const Subject& subject, std::string_view function, catalogue::Pixel pixel) {
  return subject.operation->function == function &&
         subject.operation->parameters.front().pixel == pixel;
}

Target TargetOf(const Subject& subject) {
  const bool constant = subject.form.label == kConstant;
  if (Is(subject, "PicHistogram", catalogue::Pixel::kBW8)) {
    return constant ? Target{0.12, 0.12} : Target{0.92, 0.92};
  }
  if (Is(subject, "PicHistogram", catalogue::Pixel::kBW16)) return {0.25, 0.25};
  if (Is(subject, "PicEqualize", catalogue::Pixel::kBW8)) return {0.62, 0.62};
  return {1, 1};
}

#ifdef LXPIC_HAS_OPENCV

// As many bins over all values of a pixel as the subject's histogram has.
Job CountingPeer(const Subject& subject) {
  const bool words = subject.operation->parameters.front().pixel == catalogue::Pixel::kBW16;
  const int bins = !words ? 256 : subject.form.label == "8 bits" ? 256 : 65536;
  return [source = ViewOf(subject, 0), bins, end = words ? 65536.0F : 256.0F,
          counts = cv::Mat()]() mutable {
    const int channel = 0;
    const float range[] = {0.0F, end};
    const float* ranges = range;
    cv::calcHist(&source, 1, &channel, cv::noArray(), counts, 1, &bins, &ranges);
  };
}

Job MakePeer(const Subject& subject) {
  if (Is(subject, "PicHistogram", catalogue::Pixel::kBW8) ||
      Is(subject, "PicHistogram", catalogue::Pixel::kBW16)) {
    return CountingPeer(subject);
  }
  if (Is(subject, "PicEqualize", catalogue::Pixel::kBW8)) {
    return [source = ViewOf(subject, 0), destination = ViewOf(subject, 1)] {
      cv::Mat result = destination;
      cv::equalizeHist(source, result);
      ExpectResultIn(destination, result);
    };
  }
  return {};
}

#else

Job MakePeer(const Subject& /*subject*/) { return {}; }

#endif

}  // namespace

const Family kHistogramFamily = {FormsOf, MakePeer, TargetOf};

}  // namespace lx::bench
