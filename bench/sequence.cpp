// SPDX-License-Identifier: Apache-2.0
// Interlaced frames and averages over time.
#ifdef LXPIC_HAS_OPENCV
#include <opencv2/imgproc.hpp>

#include "bench/opencv.h"
#endif

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "bench/family.h"

namespace lx::bench {

namespace {

template <unsigned kPeriod>
MadeObject AverageOf(int width, int height) {
  auto made = std::make_shared<LxMovingAverage>(kPeriod, width, height, 0);
  return {made, made.get()};
}

std::vector<Form> FormsOf(const Operation& operation) {
  if (operation.function == "LxMovingAverage::Average" && operation.parameters.size() == 3) {
    return {{.label = "of 8", .object = AverageOf<8>}, {.label = "of 7", .object = AverageOf<7>}};
  }
  if (operation.function == "PicSwapFrames") {
    return {{.label = "apart"}, {.label = "in place", .inPlace = true}};
  }
  if (operation.function == "PicMatchFrames") {
    return {{.label = "+-20", .numbers = {{"lowest", -20}, {"highest", 20}}}};
  }
  return {};
}

// Copies of rows as memcpy makes them.
constexpr Target kCopies = {1.2, 1.2};

Target TargetOf(const Subject& subject) {
  return subject.object.owner != nullptr ? Target{0.08, 0.13} : kCopies;
}

#ifdef LXPIC_HAS_OPENCV

// Rows that go where the operation takes them, `step` rows of the destination apart.
Job CopiedRows(const Subject& subject, int first, int fromStep, int toStep) {
  return [from = ViewOf(subject, 0), to = ViewOf(subject, 1), first, fromStep, toStep]() mutable {
    const int rows = std::max(from.rows / fromStep, 1);
    for (int i = 0; i < rows; ++i) {
      std::memcpy(to.ptr(first + i * toStep), from.ptr(first + i * fromStep),
                  from.step[1] * from.cols);
    }
  };
}

// The sum of the images, of which OpenCV takes and gives one after the other.
Job RunningSum(const Subject& subject, int period) {
  const cv::Mat source = ViewOf(subject, 1);
  const cv::Mat result = ViewOf(subject, 2);
  std::vector<cv::Mat> ring;
  for (int i = 0; i + 1 < period; ++i) ring.push_back(source.clone());
  cv::Mat sum(source.size(), CV_16UC1, cv::Scalar(0));
  for (const cv::Mat& each : ring) cv::add(sum, each, sum, cv::noArray(), CV_16U);
  return [=, next = std::size_t{0}]() mutable {
    cv::add(sum, source, sum, cv::noArray(), CV_16U);
    sum.convertTo(result, CV_8U, 1.0 / period);
    cv::subtract(sum, ring[next], sum, cv::noArray(), CV_16U);
    source.copyTo(ring[next]);
    next = (next + 1) % ring.size();
  };
}

Job MakePeer(const Subject& subject) {
  const std::string& function = subject.operation->function;
  if (subject.object.owner != nullptr)
    return RunningSum(subject, subject.form.label == "of 8" ? 8 : 7);
  if (function == "PicGetFrame") return CopiedRows(subject, 0, 2, 1);
  if (function == "PicSetFrame") return CopiedRows(subject, 0, 1, 2);
  if (function == "PicRealignFrame") return CopiedRows(subject, 1, 2, 2);
  if (function == "PicSwapFrames" && !subject.form.inPlace) return CopiedRows(subject, 0, 1, 1);
  return {};
}

#else

Job MakePeer(const Subject& /*subject*/) { return {}; }

#endif

}  // namespace

const Family kSequenceFamily = {FormsOf, MakePeer, TargetOf};

}  // namespace lx::bench
