// SPDX-License-Identifier: Apache-2.0
// Line segments, peaks, filters of profiles.
#ifdef LXPIC_HAS_OPENCV
#include <opencv2/imgproc.hpp>

#include "bench/opencv.h"
#endif

#include <string>
#include <vector>

#include "bench/family.h"

namespace lx::bench {

namespace {

constexpr std::size_t kSamples = 4096;

Form Line(const char* label, double x1, double y1) {
  return {.label = label, .numbers = {{"x0", 0}, {"y0", 0}, {"x1", x1}, {"y1", y1}}};
}

Form Times(const char* label, const char* parameter, double number) {
  return {.label = label, .numbers = {{parameter, number}}, .length = kSamples};
}

std::vector<Form> FormsOf(const Operation& operation) {
  const auto has = [&](const char* name) {
    return operation.IndexOf(name) < operation.parameters.size();
  };
  if (has("x0")) return {Line("640 pixels", 639, 200), Line("480 pixels, steep", 200, 479)};
  if (has("passes")) return {Times("once", "passes", 1), Times("ten times", "passes", 10)};
  if (has("half-size")) return {Times("3", "half-size", 1), Times("41", "half-size", 20)};
  if (has("peaks")) {
    return {{.label = "waves", .content = test::Content::kRamp, .length = kSamples},
            {.label = "noise", .length = kSamples}};
  }
  return {{.length = kSamples}};
}

Target TargetOf(const Subject& /*subject*/) { return {1, 1}; }

#ifdef LXPIC_HAS_OPENCV

template <class Vector>
cv::Mat RowOf(const Subject& subject, std::size_t index, int type) {
  auto& vector = *std::get<Vector*>(subject.call.values[index]);
  return {1, static_cast<int>(vector.GetNumElements()), type, vector.GetDataPtr()};
}

// The profile argument `index` as an image of one row.
cv::Mat ProfileOf(const Subject& subject, std::size_t index) {
  return subject.operation->parameters[index].kind == catalogue::Kind::kByteVector
             ? RowOf<LxBW8Vector>(subject, index, CV_8U)
             : RowOf<LxBW16Vector>(subject, index, CV_16U);
}

Job FilterPeer(const Subject& subject) {
  const std::string& function = subject.operation->function;
  const cv::Mat source = ProfileOf(subject, 0);
  cv::Mat to(source.size(), source.type());
  if (function == "PicProfileDerivative") {
    const cv::Mat kernel = (cv::Mat_<float>(1, 3) << -0.5F, 0, 0.5F);
    const double offset = source.depth() == CV_8U ? 128 : 32768;
    return [=]() mutable {
      cv::filter2D(source, to, -1, kernel, {-1, -1}, offset, cv::BORDER_REPLICATE);
    };
  }
  const auto number = static_cast<int>(subject.call.Number(2));
  if (function == "PicConvolUniform") {
    return [=]() mutable {
      cv::blur(source, to, {2 * number + 1, 1}, {-1, -1}, cv::BORDER_REPLICATE);
    };
  }
  if (function == "PicConvolGaussian") {
    return [=]() mutable {
      for (int i = 0; i < number; ++i) {
        cv::GaussianBlur(i == 0 ? source : to, to, {3, 1}, 0, 0, cv::BORDER_REPLICATE);
      }
    };
  }
  const cv::Mat element = cv::Mat::ones(1, 3, CV_8U);
  const auto filter = function == "PicDilate" ? cv::dilate : cv::erode;
  return [=]() mutable {
    filter(source, to, element, {-1, -1}, number, cv::BORDER_REPLICATE, cv::Scalar());
  };
}

// Steps along the line; the profile may be either of the sides.
template <class Pixel>
Job CopyPeer(const Subject& subject, bool draws) {
  const cv::Mat image = ViewOf(subject, 0);
  const auto point = [&](std::size_t k) {
    return cv::Point(static_cast<int>(subject.call.Number(k)),
                     static_cast<int>(subject.call.Number(k + 1)));
  };
  return [=, from = point(2), to = point(4), profile = std::vector<Pixel>()]() mutable {
    cv::LineIterator line(image, from, to, 8);
    profile.resize(static_cast<std::size_t>(line.count));
    for (Pixel& each : profile) {
      if (draws) std::memcpy(*line, &each, sizeof(Pixel));
      if (!draws) std::memcpy(&each, *line, sizeof(Pixel));
      ++line;
    }
  };
}

Job LinePeer(const Subject& subject) {
  const bool draws = subject.operation->function == "PicLineSegmentToImage";
  if (draws && subject.operation->parameters[1].kind == catalogue::Kind::kConstant) {
    const cv::Mat image = ViewOf(subject, 0);
    const cv::Point to(static_cast<int>(subject.call.Number(4)),
                       static_cast<int>(subject.call.Number(5)));
    return [image, to]() mutable {
      cv::line(image, {0, 0}, to, cv::Scalar(200, 200, 200), 1, cv::LINE_8);
    };
  }
  switch (subject.operation->parameters[0].pixel) {
    case catalogue::Pixel::kBW8:
      return CopyPeer<LxBW8>(subject, draws);
    case catalogue::Pixel::kBW16:
      return CopyPeer<LxBW16>(subject, draws);
    default:
      return CopyPeer<LxC24>(subject, draws);
  }
}

Job MakePeer(const Subject& subject) {
  if (subject.operation->parameters[0].IsRegion()) return LinePeer(subject);
  return subject.operation->function == "PicGetProfilePeaks" ? Job() : FilterPeer(subject);
}

#else

Job MakePeer(const Subject& /*subject*/) { return {}; }

#endif

}  // namespace

const Family kProfileFamily = {FormsOf, MakePeer, TargetOf};

}  // namespace lx::bench
