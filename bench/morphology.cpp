// SPDX-License-Identifier: Apache-2.0
// Boxes.
#ifdef LXPIC_HAS_OPENCV
#include <opencv2/imgproc.hpp>

#include "bench/opencv.h"
#endif

#include <array>
#include <string_view>
#include <vector>

#include "bench/family.h"

namespace lx::bench {

namespace {

Form Sized(const char* label, double half, bool inPlace = false) {
  return {.label = label, .numbers = {{"half-x", half}, {"half-y", half}}, .inPlace = inPlace};
}

std::vector<Form> FormsOf(const Operation& /*operation*/) {
  return {Sized("3x3", 1),    Sized("5x5", 2),      Sized("15x15", 7),
          Sized("31x31", 15), Sized("101x101", 50), Sized("15x15 in place", 7, true)};
}

Target TargetOf(const Subject& /*subject*/) { return {1, 1}; }

#ifdef LXPIC_HAS_OPENCV

using Peer = void (*)(const cv::Mat& from, cv::Mat& to, const cv::Mat& element);

constexpr int kBorder = cv::BORDER_REPLICATE;

void Erode(const cv::Mat& from, cv::Mat& to, const cv::Mat& element) {
  cv::erode(from, to, element, cv::Point(-1, -1), 1, kBorder);
}

void Dilate(const cv::Mat& from, cv::Mat& to, const cv::Mat& element) {
  cv::dilate(from, to, element, cv::Point(-1, -1), 1, kBorder);
}

struct Row {
  std::string_view function;
  Peer peer;
};

constexpr std::array kPeers = {Row{"PicErodeBox", Erode}, Row{"PicDilateBox", Dilate}};

cv::Mat ElementOf(const Subject& subject) {
  const auto side = [&](const char* half) {
    return 2 * static_cast<int>(subject.call.Number(half)) + 1;
  };
  return cv::getStructuringElement(cv::MORPH_RECT, {side("half-x"), side("half-y")});
}

Job MakePeer(const Subject& subject) {
  for (const Row& row : kPeers) {
    if (row.function != subject.operation->function) continue;
    return [from = ViewOf(subject, 0), to = ViewOf(subject, subject.form.inPlace ? 0 : 1),
            element = ElementOf(subject), peer = row.peer]() mutable {
      const cv::Mat destination = to;
      peer(from, to, element);
      ExpectResultIn(destination, to);
    };
  }
  return {};
}

#else

Job MakePeer(const Subject& /*subject*/) { return {}; }

#endif

}  // namespace

const Family kMorphologyFamily = {FormsOf, MakePeer, TargetOf};

}  // namespace lx::bench
