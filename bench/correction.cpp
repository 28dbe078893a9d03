// SPDX-License-Identifier: Apache-2.0
// Flat fields and normalization.
#ifdef LXPIC_HAS_OPENCV
#include <opencv2/imgproc.hpp>

#include "bench/opencv.h"
#endif

#include <cstring>
#include <vector>

#include "bench/family.h"

namespace lx::bench {

namespace {

bool HasMode(const Operation& operation) {
  return operation.IndexOf("multiplicative") < operation.parameters.size();
}

// Whether the references are vectors.
bool ByColumns(const Operation& operation) {
  return operation.function == "PicUniformize" && operation.SourceIndices().size() == 1;
}

std::vector<Form> FormsOf(const Operation& operation) {
  if (!HasMode(operation)) return {};
  return {{.label = "multiplicative", .numbers = {{"multiplicative", 1}}},
          {.label = "additive", .numbers = {{"multiplicative", 0}}}};
}

// Vectors are held to memcpy, which is their peer.
constexpr Targets kByImage = {{0.3, 0.3}, {0.3, 0.3}};
constexpr Targets kByColumn = {{1.6, 1.2}, {1.6, 1.2}};

Target TargetOf(const Subject& subject) {
  if (subject.operation->function != "PicUniformize") return {1, 1};
  return (ByColumns(*subject.operation) ? kByColumn : kByImage).Here();
}

#ifdef LXPIC_HAS_OPENCV

// What differences and their sums with levels fit.
int DepthFor(const cv::Mat& image) { return image.depth() == CV_8U ? CV_16S : CV_32S; }

Job ByImage(const Subject& subject, int multiplicative) {
  const cv::Mat source = ViewOf(subject, 0);
  const cv::Mat reference = ViewOf(subject, 2);
  const cv::Mat result = ViewOf(subject, 3);
  constexpr double kLevel = 128;
  if (multiplicative != 0) {
    return [=]() mutable { cv::divide(source, reference, result, kLevel); };
  }
  return [=, difference = cv::Mat()]() mutable {
    cv::subtract(source, reference, difference, cv::noArray(), DepthFor(source));
    cv::add(difference, cv::Scalar::all(kLevel), result, cv::noArray(), source.depth());
  };
}

Job ByImages(const Subject& subject) {
  const cv::Mat source = ViewOf(subject, 0);
  const cv::Mat light = ViewOf(subject, 2);
  const cv::Mat dark = ViewOf(subject, 4);
  const cv::Mat result = ViewOf(subject, 5);
  constexpr double kLight = 200;
  constexpr double kDark = 20;
  return [=, rise = cv::Mat(), span = cv::Mat()]() mutable {
    cv::subtract(source, dark, rise, cv::noArray(), DepthFor(source));
    cv::subtract(light, dark, span, cv::noArray(), DepthFor(source));
    cv::divide(rise, span, rise, kLight - kDark);
    cv::add(rise, cv::Scalar::all(kDark), result, cv::noArray(), source.depth());
  };
}

Job Copied(const Subject& subject) {
  return [from = subject.images.front()->GetPixelPtr(0, 0),
          to = subject.images.back()->GetPixelPtr(0, 0), bytes = subject.ImageBytes()] {
    std::memcpy(to, from, bytes);
    asm volatile("" : : "r"(to) : "memory");
  };
}

Job MakePeer(const Subject& subject) {
  const Operation& operation = *subject.operation;
  if (operation.function != "PicUniformize") return {};
  if (ByColumns(operation)) return Copied(subject);
  if (!HasMode(operation)) return ByImages(subject);
  return ByImage(subject, subject.form.label == "multiplicative" ? 1 : 0);
}

#else

Job MakePeer(const Subject& /*subject*/) { return {}; }

#endif

}  // namespace

const Family kCorrectionFamily = {FormsOf, MakePeer, TargetOf};

}  // namespace lx::bench
