// SPDX-License-Identifier: Apache-2.0
// Projections, focus, noise, correlation.
#ifdef LXPIC_HAS_OPENCV
#include <opencv2/imgproc.hpp>

#include "bench/opencv.h"
#endif

#include <string_view>
#include <vector>

#include "bench/family.h"

namespace lx::bench {

namespace {

using catalogue::Pixel;

constexpr std::string_view kConstant = "constant";

std::vector<Form> FormsOf(const Operation& operation) {
  if (operation.function == "PicCorrelogram") {
    return {Form{}, {.label = std::string(kConstant), .content = test::Content::kConstant}};
  }
  if (operation.function == "PicLinearRegression") {
    return {Form{}, {.label = "unsaturated", .numbers = {{"exclude-saturated", 1}}}};
  }
  return {};
}

constexpr Targets kComposed = {{0.4, 0.4}};

constexpr TargetRow kTargets[] = {
    {"PicProjectOnAColumn", "", Pixel::kBW8, {{0.07, 0.12}, {0.07, 0.1}}},
    {"PicProjectOnARow", "", Pixel::kBW8, {{0.08, 0.1}, {0.11, 0.11}}},
    {"PicFocusing", "", Pixel::kBW8, kComposed},
    {"PicFocusing", "", Pixel::kBW16, kComposed},
    {"PicFocusing", "", Pixel::kC24, kComposed},
    {"PicRmsNoise", "", Pixel::kBW8, kComposed},
    {"PicRmsNoise", "", Pixel::kBW16, kComposed},
    {"PicRmsNoise", "", Pixel::kC24, kComposed},
    {"PicSignalNoiseRatio", "", Pixel::kBW8, kComposed},
    {"PicSignalNoiseRatio", "", Pixel::kBW16, kComposed},
    {"PicSignalNoiseRatio", "", Pixel::kC24, kComposed},
    {"PicLinearRegression", "", Pixel::kBW8, kComposed},
    {"PicCorrelogram", "", Pixel::kBW8, {{0.5, 0.5}}}};

Target TargetOf(const Subject& subject) { return FindTarget(subject, kTargets); }

#ifdef LXPIC_HAS_OPENCV

// Whoever only computes a number must hand it out, lest it not be computed.
class Kept {
 public:
  void operator=(double number) { number_ = number; }

 private:
  volatile double number_ = 0;
};

Job ReducePeer(const Subject& subject, int dimension) {
  const cv::Mat source = ViewOf(subject, 0);
  const bool bytes = source.depth() == CV_8U;
  return [source, dimension, type = bytes ? CV_32S : CV_32F, sums = cv::Mat()]() mutable {
    cv::reduce(source, sums, dimension, cv::REDUCE_SUM, type);
  };
}

Job FocusPeer(const Subject& subject) {
  const cv::Mat source = ViewOf(subject, 0);
  const cv::Rect inside(0, 0, source.cols - 1, source.rows - 1);
  return [here = source(inside), right = source(inside + cv::Point(1, 0)),
          below = source(inside + cv::Point(0, 1)), kept = Kept()]() mutable {
    kept = cv::norm(here, right, cv::NORM_L2SQR) + cv::norm(here, below, cv::NORM_L2SQR);
  };
}

Job NoisePeer(const Subject& subject, bool signal) {
  return [source = ViewOf(subject, 0), reference = ViewOf(subject, 1), frame = cv::Mat(),
          kept = Kept(), signal]() mutable {
    const bool sums = source.depth() != reference.depth();
    if (sums) reference.convertTo(frame, CV_8U, 0.25);
    kept = cv::norm(source, sums ? frame : reference, cv::NORM_L2SQR);
    if (signal) kept = cv::norm(source, cv::NORM_L2SQR);
  };
}

Job RegressionPeer(const Subject& subject) {
  return [a = ViewOf(subject, 0), b = ViewOf(subject, 1), kept = Kept()]() mutable {
    kept = cv::sum(a)[0] + cv::sum(b)[0] + a.dot(a) + a.dot(b) + b.dot(b);
  };
}

Job CorrelogramPeer(const Subject& subject) {
  return [sources = std::vector{ViewOf(subject, 0), ViewOf(subject, 1)},
          counts = cv::Mat()]() mutable {
    const int channels[] = {0, 1};
    const int bins[] = {256, 256};
    const float range[] = {0.0F, 256.0F};
    const float* ranges[] = {range, range};
    cv::calcHist(sources.data(), 2, channels, cv::noArray(), counts, 2, bins, ranges);
  };
}

Job MakePeer(const Subject& subject) {
  const std::string_view function = subject.operation->function;
  if (function == "PicProjectOnARow") return ReducePeer(subject, 0);
  if (function == "PicProjectOnAColumn") return ReducePeer(subject, 1);
  if (function == "PicFocusing") return FocusPeer(subject);
  if (function == "PicRmsNoise") return NoisePeer(subject, false);
  if (function == "PicSignalNoiseRatio") return NoisePeer(subject, true);
  // No composed call leaves pixels out.
  if (function == "PicLinearRegression" && subject.form.label.empty()) {
    return RegressionPeer(subject);
  }
  if (function == "PicCorrelogram") return CorrelogramPeer(subject);
  return {};
}

#else

Job MakePeer(const Subject& /*subject*/) { return {}; }

#endif

}  // namespace

const Family kMeasureFamily = {FormsOf, MakePeer, TargetOf};

}  // namespace lx::bench
