// SPDX-License-Identifier: Apache-2.0
// Affine resampling and registration.
#ifdef LXPIC_HAS_OPENCV
#include <opencv2/imgproc.hpp>

#include "bench/opencv.h"
#endif

#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "bench/family.h"

namespace lx::bench {

namespace {

Form Transformed(const char* label, const std::array<double, 6>& c, int bits) {
  return {.label = label,
          .numbers = {{"a0", c[0]},
                      {"a1", c[1]},
                      {"a2", c[2]},
                      {"b0", c[3]},
                      {"b1", c[4]},
                      {"b2", c[5]},
                      {"interpolation", bits}}};
}

std::vector<Form> TransformForms() {
  // By 10 degrees and 1.1, so that most of the destination comes from the source.
  constexpr std::array kRotated = {1.0833, 0.191, -85.0, -0.191, 1.0833, 15.0};
  constexpr std::array kMoved = {1.0, 0.0, 10.375, 0.0, 1.0, -5.25};
  constexpr std::array kScaled = {2.0, 0.0, -40.0, 0.0, 2.0, -30.0};
  Form inPlace = Transformed("rotated, 8 bits in place", kRotated, 8);
  inPlace.inPlace = true;
  return {Transformed("rotated, nearest", kRotated, 0), Transformed("rotated, 4 bits", kRotated, 4),
          Transformed("rotated, 8 bits", kRotated, 8),  Transformed("moved, nearest", kMoved, 0),
          Transformed("moved, 8 bits", kMoved, 8),      Transformed("scaled, nearest", kScaled, 0),
          Transformed("scaled, 8 bits", kScaled, 8),    inPlace};
}

bool IsTransform(const Operation& operation) { return operation.function == "PicLinearTransform"; }

std::vector<Form> FormsOf(const Operation& operation) {
  if (IsTransform(operation)) return TransformForms();
  return {};
}

using catalogue::Pixel;

constexpr std::array kTargets = {
    TargetRow{"PicLinearTransform", "rotated, nearest", Pixel::kBW8, {{0.33, 0.33}, {0.26, 0.30}}},
    TargetRow{"PicLinearTransform", "rotated, 8 bits", Pixel::kBW8, {{0.30, 0.30}, {0.32, 0.32}}},
    TargetRow{"PicLinearTransform", "rotated, 8 bits", Pixel::kBW16, {{0.28, 0.28}}},
    TargetRow{"PicLinearTransform", "rotated, 8 bits", Pixel::kC24, {{0.35, 0.35}, {0.35, 0.50}}}};

Target TargetOf(const Subject& subject) { return FindTarget(subject, kTargets); }

#ifdef LXPIC_HAS_OPENCV

Job MakePeer(const Subject& subject) {
  if (!IsTransform(*subject.operation)) return {};
  const auto number = [&](const char* name) { return subject.call.Number(name); };
  const cv::Matx23d forward(number("a0"), number("a1"), number("a2"), number("b0"), number("b1"),
                            number("b2"));
  const int flags = number("interpolation") == 0 ? cv::INTER_NEAREST : cv::INTER_LINEAR;
  const cv::Mat to = ViewOf(subject, 7);
  const cv::Mat from = subject.form.inPlace ? to : ViewOf(subject, 0);
  return [=]() {
    cv::Mat result = to;
    cv::warpAffine(from, result, forward, to.size(), flags);
    if (from.data != to.data) ExpectResultIn(to, result);
  };
}

#else

Job MakePeer(const Subject& /*subject*/) { return {}; }

#endif

}  // namespace

const Family kResamplingFamily = {FormsOf, MakePeer, TargetOf};

}  // namespace lx::bench
