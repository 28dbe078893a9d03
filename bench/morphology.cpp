// SPDX-License-Identifier: Apache-2.0
// Boxes and disks.
#ifdef LXPIC_HAS_OPENCV
#include <opencv2/imgproc.hpp>

#include "bench/opencv.h"
#endif

#include <array>
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

// A structuring element as OpenCV is quickest with it: a rectangle, and crosses after it.
struct Element {
  cv::Mat rectangle;
  int crosses;
};

Element ElementOf(const Subject& subject) {
  const auto number = [&](const char* name) { return static_cast<int>(subject.call.Number(name)); };
  const bool isDisk = IsDisk(*subject.operation);
  const int halfX = isDisk ? number("radius") / 2 : number("half-x");
  const int halfY = isDisk ? halfX : number("half-y");
  return {cv::getStructuringElement(cv::MORPH_RECT, {2 * halfX + 1, 2 * halfY + 1}),
          isDisk ? number("radius") - halfX : 0};
}

template <int kOperation>
void Extreme(const cv::Mat& from, cv::Mat& to, const Element& element) {
  static const cv::Mat cross = cv::getStructuringElement(cv::MORPH_CROSS, {3, 3});
  constexpr auto kRun = kOperation == cv::MORPH_ERODE ? &cv::erode : &cv::dilate;
  const cv::Scalar none = cv::morphologyDefaultBorderValue();
  kRun(from, to, element.rectangle, cv::Point(-1, -1), 1, cv::BORDER_REPLICATE, none);
  if (element.crosses == 0) return;
  kRun(to, to, cross, cv::Point(-1, -1), element.crosses, cv::BORDER_REPLICATE, none);
}

constexpr auto kErode = &Extreme<cv::MORPH_ERODE>;
constexpr auto kDilate = &Extreme<cv::MORPH_DILATE>;

// What a peer works on. The scratch image keeps its memory from call to call.
struct Scene {
  cv::Mat from;
  cv::Mat to;
  cv::Mat scratch;
  Element element;
};

using Step = void (*)(const cv::Mat& from, cv::Mat& to, const Element& element);

template <Step kFirst>
void One(Scene& s) {
  kFirst(s.from, s.to, s.element);
}

template <Step kFirst, Step kSecond>
void Two(Scene& s) {
  kFirst(s.from, s.to, s.element);
  kSecond(s.to, s.to, s.element);
}

template <Step kFirst, Step kSecond>
void TopHat(Scene& s) {
  kFirst(s.from, s.scratch, s.element);
  kSecond(s.scratch, s.scratch, s.element);
  cv::absdiff(s.from, s.scratch, s.to);
}

void Gradient(Scene& s) {
  kErode(s.from, s.scratch, s.element);
  kDilate(s.from, s.to, s.element);
  cv::subtract(s.to, s.scratch, s.to);
}

struct Row {
  std::string_view name;  ///< of the operation, without its element
  void (*peer)(Scene&);
};

constexpr std::array kPeers = {Row{"PicErode", One<kErode>},
                               Row{"PicDilate", One<kDilate>},
                               Row{"PicOpen", Two<kErode, kDilate>},
                               Row{"PicClose", Two<kDilate, kErode>},
                               Row{"PicWhiteTopHat", TopHat<kErode, kDilate>},
                               Row{"PicBlackTopHat", TopHat<kDilate, kErode>},
                               Row{"PicMorphoGradient", Gradient}};

Job MakePeer(const Subject& subject) {
  const std::string_view function = subject.operation->function;
  for (const Row& row : kPeers) {
    if (function != std::string(row.name) + (IsDisk(*subject.operation) ? "Disk" : "Box")) continue;
    Scene scene = {
        ViewOf(subject, subject.form.inPlace ? 1 : 0), ViewOf(subject, 1), {}, ElementOf(subject)};
    return [scene, peer = row.peer]() mutable {
      const cv::Mat destination = scene.to;
      peer(scene);
      ExpectResultIn(destination, scene.to);
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
