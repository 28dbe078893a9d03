// SPDX-License-Identifier: Apache-2.0
// Boxes and disks.
#ifdef LXPIC_HAS_OPENCV
#include <opencv2/imgproc.hpp>

#include "bench/opencv.h"
#endif

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "bench/family.h"

namespace lx::bench {

namespace {

Form Box(const char* label, double half, bool inPlace = false) {
  return {.label = label, .numbers = {{"half-x", half}, {"half-y", half}}, .inPlace = inPlace};
}

Form Disk(const char* label, double radius) {
  return {.label = label, .numbers = {{"radius", radius}}};
}

bool IsDisk(const Operation& operation) { return operation.function.ends_with("Disk"); }

std::vector<Form> FormsOf(const Operation& operation) {
  if (IsDisk(operation)) return {Disk("radius 2", 2), Disk("radius 7", 7), Disk("radius 20", 20)};
  return {Box("3x3", 1),    Box("5x5", 2),      Box("15x15", 7),
          Box("31x31", 15), Box("101x101", 50), Box("15x15 in place", 7, true)};
}

struct TargetRow {
  std::string_view label;  ///< of the form
  Target grey;
  Target words;
  Target colour;
};

constexpr Target kNoSlower = {1, 1};

// Of erosions and dilations.
constexpr std::array kExtremes = {TargetRow{"3x3", {0.48, 0.60}, {0.55, 0.55}, {0.55, 0.55}},
                                  TargetRow{"5x5", {0.70, 0.95}, kNoSlower, kNoSlower},
                                  TargetRow{"15x15", {0.48, 0.55}, {0.45, 0.55}, {0.42, 0.48}},
                                  TargetRow{"31x31", {0.30, 0.38}, kNoSlower, kNoSlower},
                                  TargetRow{"101x101", {0.13, 0.13}, kNoSlower, kNoSlower},
                                  TargetRow{"radius 7", {0.48, 0.70}, kNoSlower, kNoSlower}};
// Of what is made from two of them.
constexpr std::array kComposed = {TargetRow{"15x15", {0.50, 0.60}, kNoSlower, kNoSlower}};

template <class Rows>
Target TargetIn(const Rows& rows, const Subject& subject) {
  const catalogue::Pixel pixel = subject.operation->parameters.front().pixel;
  for (const TargetRow& row : rows) {
    if (row.label != subject.form.label) continue;
    if (pixel == catalogue::Pixel::kBW8) return row.grey;
    return pixel == catalogue::Pixel::kBW16 ? row.words : row.colour;
  }
  return kNoSlower;
}

Target TargetOf(const Subject& subject) {
  const std::string_view function = subject.operation->function;
  const bool isExtreme = function.starts_with("PicErode") || function.starts_with("PicDilate");
  return isExtreme ? TargetIn(kExtremes, subject) : TargetIn(kComposed, subject);
}

#ifdef LXPIC_HAS_OPENCV

struct Row {
  std::string_view name;  ///< of the operation, without its element
  int operation;
};

constexpr std::array kPeers = {Row{"PicErode", cv::MORPH_ERODE},
                               Row{"PicDilate", cv::MORPH_DILATE},
                               Row{"PicOpen", cv::MORPH_OPEN},
                               Row{"PicClose", cv::MORPH_CLOSE},
                               Row{"PicWhiteTopHat", cv::MORPH_TOPHAT},
                               Row{"PicBlackTopHat", cv::MORPH_BLACKHAT},
                               Row{"PicMorphoGradient", cv::MORPH_GRADIENT}};

cv::Mat DiskOf(int radius) {
  const int side = 2 * radius + 1;
  cv::Mat disk = cv::Mat::zeros(side, side, CV_8U);
  for (int y = -radius; y <= radius; ++y) {
    const int half = std::min(radius, 2 * (radius / 2) + (radius + 1) / 2 - std::abs(y));
    disk(cv::Rect(radius - half, radius + y, 2 * half + 1, 1)) = 1;
  }
  return disk;
}

cv::Mat ElementOf(const Subject& subject) {
  const auto number = [&](const char* name) { return static_cast<int>(subject.call.Number(name)); };
  if (IsDisk(*subject.operation)) return DiskOf(number("radius"));
  return cv::getStructuringElement(cv::MORPH_RECT,
                                   {2 * number("half-x") + 1, 2 * number("half-y") + 1});
}

Job MakePeer(const Subject& subject) {
  const std::string_view function = subject.operation->function;
  for (const Row& row : kPeers) {
    if (function != std::string(row.name) + (IsDisk(*subject.operation) ? "Disk" : "Box")) continue;
    return [from = ViewOf(subject, subject.form.inPlace ? 1 : 0), to = ViewOf(subject, 1),
            element = ElementOf(subject), operation = row.operation]() mutable {
      const cv::Mat destination = to;
      cv::morphologyEx(from, to, operation, element, cv::Point(-1, -1), 1, cv::BORDER_REPLICATE);
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
