// SPDX-License-Identifier: Apache-2.0
// Shrinking, mirrors, warps, pyramids.
#ifdef LXPIC_HAS_OPENCV
#include <opencv2/imgproc.hpp>

#include "bench/opencv.h"
#endif

#include <array>
#include <map>
#include <string>
#include <vector>

#include "bench/family.h"

namespace lx::bench {

namespace {

constexpr unsigned kLevels = 4;

MadeObject PyramidOf(int /*width*/, int /*height*/) {
  auto made = std::make_shared<LxPyramid>();
  made->SetNumLevels(kLevels, LX_IMAGE_BW8);
  return {made, made.get()};
}

std::vector<Form> FormsOf(const Operation& operation) {
  if (operation.function == "PicShrink") {
    return {{.label = "to the same size"},
            {.label = "to a half", .divisor = 2},
            {.label = "to a third", .divisor = 3},
            {.label = "to a tenth", .divisor = 10}};
  }
  if (operation.function == "LxPyramid::Build" && operation.parameters.size() == 2) {
    return {{.label = "of 4", .object = PyramidOf}};
  }
  if (operation.function == "PicSetCircleWarp") {
    return {{.label = "640x480",
             .numbers = {{"width", 640}, {"height", 480}, {"radius-1", 50}, {"radius-2", 200}}}};
  }
  return {};
}

using catalogue::Pixel;

constexpr std::array kTargets = {
    TargetRow{"PicShrink", "to a third", Pixel::kBW8, {{0.08, 0.08}, {0.08, 0.08}}},
    TargetRow{"PicHalve", "", Pixel::kBW8, {{0.42, 0.60}, {0.29, 0.60}}},
    TargetRow{"PicVerticalMirror", "", Pixel::kBW8, {{0.40, 0.55}, {0.40, 0.55}}},
    TargetRow{"PicHorizontalMirror", "", Pixel::kBW8, {{0.05, 0.06}, {0.05, 0.06}}},
    TargetRow{"PicWarp", "", Pixel::kBW8, {{0.50, 0.50}, {0.50, 0.50}}},
};

Target TargetOf(const Subject& subject) {
  // The rows are found by a first parameter that is an image.
  if (subject.object.owner != nullptr) return Targets{{0.54, 0.66}, {0.60, 0.88}}.Here();
  return FindTarget(subject, kTargets);
}

#ifdef LXPIC_HAS_OPENCV

template <int kInterpolation>
Job Resized(const Subject& subject) {
  const cv::Mat from = ViewOf(subject, 0);
  const cv::Mat to = ViewOf(subject, 1);
  return [from, to]() mutable { cv::resize(from, to, to.size(), 0, 0, kInterpolation); };
}

Job Halved(const Subject& subject) {
  std::vector<cv::Mat> levels(kLevels);
  return [from = ViewOf(subject, 1), levels]() mutable {
    from.copyTo(levels[0]);
    for (std::size_t i = 1; i < levels.size(); ++i) {
      const cv::Size half(levels[i - 1].cols / 2, levels[i - 1].rows / 2);
      cv::resize(levels[i - 1], levels[i], half, 0, 0, cv::INTER_AREA);
    }
  };
}

template <int kCode>
Job Flipped(const Subject& subject) {
  return [image = ViewOf(subject, 0)]() mutable { cv::flip(image, image, kCode); };
}

// Maps as OpenCV is quickest with them: pairs of 16-bit numbers.
Job Remapped(const Subject& subject) {
  const cv::Mat from = ViewOf(subject, 0);
  const cv::Mat to = ViewOf(subject, 1);
  cv::Mat points(to.size(), CV_16SC2);
  for (int y = 0; y < to.rows; ++y) {
    for (int x = 0; x < to.cols; ++x) {
      const auto word = [&](std::size_t map, std::size_t half) {
        return static_cast<const short*>(subject.images[map]->GetPixelPtr(x, y))[half];
      };
      const bool packed = subject.images.size() == 3;
      points.at<cv::Vec2s>(y, x) = {word(2, 0), packed ? word(2, 1) : word(3, 0)};
    }
  }
  return [from, to, points]() mutable {
    cv::remap(from, to, points, cv::noArray(), cv::INTER_NEAREST, cv::BORDER_CONSTANT);
  };
}

Job MakePeer(const Subject& subject) {
  static const std::map<std::string, Job (*)(const Subject&)> peers = {
      {"PicShrink", Resized<cv::INTER_AREA>}, {"PicHalve", Resized<cv::INTER_AREA>},
      {"LxPyramid::Build", Halved},           {"PicVerticalMirror", Flipped<0>},
      {"PicHorizontalMirror", Flipped<1>},    {"PicWarp", Remapped}};
  const auto peer = peers.find(subject.operation->function);
  return peer == peers.end() ? Job() : peer->second(subject);
}

#else

Job MakePeer(const Subject& /*subject*/) { return {}; }

#endif

}  // namespace

const Family kGeometryFamily = {FormsOf, MakePeer, TargetOf};

}  // namespace lx::bench
