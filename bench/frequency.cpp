// SPDX-License-Identifier: Apache-2.0
// Fourier transforms.
#ifdef LXPIC_HAS_OPENCV
#include <opencv2/core.hpp>

#include "bench/opencv.h"
#endif

#include <cmath>

#include "bench/family.h"

namespace lx::bench {

namespace {

std::vector<Form> FormsOf(const Operation& operation) {
  if (operation.function == "PicFastDFT") return {{.label = "512", .size = "512x512"}};
  // Nobody else sums directly.
  if (operation.function == "PicSlowDFT") return {{.label = "128", .size = "128x128"}};
  return {};
}

constexpr Targets kTransform = {{0.32, 0}, {0.32, 0}};

Target TargetOf(const Subject& subject) {
  return subject.operation->function == "PicFastDFT" ? kTransform.Here() : Target{1, 1};
}

#ifdef LXPIC_HAS_OPENCV

// Scale and centring are one multiplication by an image made beforehand, which also converts.
Job ScaledTransform(const Subject& subject) {
  const cv::Mat source = ViewOf(subject, 0);
  const cv::Mat destination = ViewOf(subject, 1);
  const auto scale = static_cast<float>(1 / std::sqrt(static_cast<double>(source.total())));
  cv::Mat signs(source.size(), CV_32FC1);
  for (int y = 0; y < signs.rows; ++y) {
    for (int x = 0; x < signs.cols; ++x) {
      signs.at<float>(y, x) = (x + y) % 2 == 0 ? scale : -scale;
    }
  }
  return [=, samples = cv::Mat(source.size(), CV_32FC1), result = destination]() mutable {
    cv::multiply(source, signs, samples, 1, CV_32F);
    cv::dft(samples, result, cv::DFT_COMPLEX_OUTPUT);
    ExpectResultIn(destination, result);
  };
}

Job MakePeer(const Subject& subject) {
  return subject.operation->function == "PicFastDFT" ? ScaledTransform(subject) : Job{};
}

#else

Job MakePeer(const Subject& /*subject*/) { return {}; }

#endif

}  // namespace

const Family kFrequencyFamily = {FormsOf, MakePeer, TargetOf};

}  // namespace lx::bench
