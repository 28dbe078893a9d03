// SPDX-License-Identifier: Apache-2.0
// Segment vectors, and filters of untyped vectors.
#ifdef LXPIC_HAS_OPENCV
#include <opencv2/imgproc.hpp>

#include "bench/opencv.h"
#endif

#include <string>
#include <vector>

#include "bench/family.h"

namespace lx::bench {

namespace {

constexpr std::size_t kElements = 4096;
constexpr std::size_t kPixels = 640;

using Numbers = std::vector<std::pair<std::string, double>>;

std::vector<Form> FormsOf(const Operation& operation) {
  const std::string& function = operation.function;
  const bool isSigned = operation.parameters.front().meaning == catalogue::Meaning::kSigned;
  // The smallest image has as many columns.
  if (operation.IndexOf("x0") < operation.parameters.size())
    return {{.label = "640 pixels",
             .numbers = {{"x0", 0}, {"y0", 0}, {"x1", kPixels - 1}, {"y1", 319}}}};
  if (function == "PicVectToLineSeg") return {{.label = "640 pixels", .length = kPixels}};
  Form form{.label = "4096 elements", .length = kElements};
  if (function == "PicGetVectExtremes") {
    form.numbers =
        isSigned ? Numbers{{"low", -40}, {"high", 40}} : Numbers{{"low", 88}, {"high", 168}};
  }
  if (function == "PicGetVectTransition") form.numbers = {{"threshold", isSigned ? 0.0 : 128.0}};
  return {form};
}

Target TargetOf(const Subject& /*subject*/) { return {1, 1}; }

#ifdef LXPIC_HAS_OPENCV

Job LinePeer(const Subject& subject) {
  struct Pixel {
    int level;
    cv::Point place;
  };
  return [source = ViewOf(subject, 0), pixels = std::vector<Pixel>(kPixels)]() mutable {
    cv::LineIterator at(source, {0, 0}, {kPixels - 1, 319});
    for (Pixel& pixel : pixels) {
      pixel = {**at, at.pos()};
      ++at;
    }
  };
}

Job ConvolutionPeer() {
  cv::Mat source(1, static_cast<int>(kElements), CV_8U);
  cv::randu(source, 0, 256);
  const cv::Mat taps = (cv::Mat_<float>(1, 3) << 0.25F, 0.5F, 0.25F);
  return [source, taps, result = cv::Mat()]() mutable {
    cv::filter2D(source, result, CV_8U, taps, {-1, -1}, 0, cv::BORDER_CONSTANT);
  };
}

Job MakePeer(const Subject& subject) {
  const std::string& function = subject.operation->function;
  if (function == "PicLineSegToVect") return LinePeer(subject);
  if (function == "PicConvolVect") return ConvolutionPeer();
  return {};
}

#else

Job MakePeer(const Subject& /*subject*/) { return {}; }

#endif

}  // namespace

const Family kSegmentVectorFamily = {FormsOf, MakePeer, TargetOf};

}  // namespace lx::bench
