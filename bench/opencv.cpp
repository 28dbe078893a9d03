// SPDX-License-Identifier: Apache-2.0
#include "bench/opencv.h"

#include <array>

namespace lx::bench {

using catalogue::Pixel;

namespace {

int TypeOf(Pixel pixel) {
  static constexpr std::array kTypes = {0,       CV_8UC1, CV_16UC1, CV_32SC1, CV_8UC3,
                                        CV_8UC2, CV_8UC2, CV_8UC4,  CV_32FC2, 0};
  return kTypes[static_cast<std::size_t>(pixel)];
}

}  // namespace

cv::Mat ViewOf(const Subject& subject, std::size_t index) {
  cv::setNumThreads(1);
  LxGenericROI* const image = std::get<LxGenericROI*>(subject.call.values[index]);
  const Pixel pixel = subject.operation->parameters[index].pixel;
  return {static_cast<int>(image->GetHeight()), static_cast<int>(image->GetWidth()), TypeOf(pixel),
          image->GetPixelPtr(0, 0), static_cast<std::size_t>(image->GetPitch())};
}

}  // namespace lx::bench
