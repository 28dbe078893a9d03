// SPDX-License-Identifier: Apache-2.0
// Contours, and images along paths.
#ifdef LXPIC_HAS_OPENCV
#include <opencv2/imgproc.hpp>

#include "bench/opencv.h"
#endif

#include <cmath>
#include <cstring>
#include <vector>

#include "bench/family.h"

namespace lx::bench {

namespace {

// The corner of the blob, at which contours start.
constexpr int kCorner = 8;

// A quarter of an ellipse over most of the image. Waves of its rim, in percent of its radius, make the
// outline longer.
template <int kWaves>
void PaintBlob(LxGenericROI& image) {
  const double width = image.GetWidth() - 2 * kCorner;
  const double height = image.GetHeight() - 2 * kCorner;
  const std::size_t bytes = image.GetPixelSize();
  for (int y = 0; y < static_cast<int>(image.GetHeight()); ++y) {
    auto* const row = static_cast<std::uint8_t*>(image.GetPixelPtr(0, y));
    for (int x = 0; x < static_cast<int>(image.GetWidth()); ++x) {
      const double across = (x - kCorner) / width;
      const double down = (y - kCorner) / height;
      const double rim = 0.9 + 0.01 * kWaves * std::sin(60 * std::atan2(down, across));
      const bool inside = across >= 0 && down >= 0 && std::hypot(across, down) <= rim;
      std::memset(row + static_cast<std::size_t>(x) * bytes, inside ? 0xFF : 0, bytes);
    }
  }
}

std::vector<Form> FormsOf(const Operation& operation) {
  if (operation.function != "PicContour") return {};
  Form blob{.label = "blob",
            .numbers = {{"start-x", kCorner}, {"start-y", kCorner}, {"connectivity", CONNEXITY_8}},
            .paint = PaintBlob<0>};
  Form wavy = blob;
  wavy.label = "wavy blob";
  wavy.paint = PaintBlob<10>;
  return {blob, wavy};
}

Target TargetOf(const Subject& /*subject*/) { return {0.2, 0.2}; }

#ifdef LXPIC_HAS_OPENCV

Job MakePeer(const Subject& subject) {
  const cv::Mat source = ViewOf(subject, 0);
  if (subject.operation->function != "PicContour" || source.depth() != CV_8U) return {};
  return [source, contours = std::vector<std::vector<cv::Point>>()]() mutable {
    cv::findContours(source, contours, cv::RETR_EXTERNAL, cv::CHAIN_APPROX_NONE);
  };
}

#else

Job MakePeer(const Subject& /*subject*/) { return {}; }

#endif

}  // namespace

const Family kContourFamily = {FormsOf, MakePeer, TargetOf};

}  // namespace lx::bench
