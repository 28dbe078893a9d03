// SPDX-License-Identifier: Apache-2.0
// Medians, distances, counted morphology, thinning.
#ifdef LXPIC_HAS_OPENCV
#include <opencv2/imgproc.hpp>

#include "bench/opencv.h"
#endif

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "bench/family.h"

namespace lx::bench {

namespace {

Form Counted(const char* label, double count) {
  return {.label = label, .numbers = {{"count", count}}};
}

Form Thinning(const char* label, KERNEL_ROTATION rotation) {
  return {.label = label, .choice = rotation, .numbers = {{"count", 1}}};
}

std::vector<Form> FormsOf(const Operation& operation) {
  if (operation.IndexOf("pattern") < operation.parameters.size()) {
    return {Thinning("one pass", KERNEL_ROTATION_NONE),
            Thinning("one turn", KERNEL_ROTATION_CLOCKWISE)};
  }
  if (operation.IndexOf("count") < operation.parameters.size()) {
    return {Counted("once", 1), Counted("three times", 3)};
  }
  if (operation.function == "PicMedian")
    return {Form{}, Form{.label = "in place", .inPlace = true}};
  return {Form{}, Form{.label = "edges", .content = test::Content::kEdges}};
}

// Where another library is faster than OpenCV, its share; elsewhere no more than OpenCV takes.
struct TargetRow {
  std::string_view function;
  catalogue::Pixel pixel;
  Target target;
};

constexpr std::array kTargets = {TargetRow{"PicMedian", catalogue::Pixel::kBW8, {0.19, 0.40}},
                                 TargetRow{"PicMedian", catalogue::Pixel::kBW16, {0.38, 0.52}},
                                 TargetRow{"PicMedian", catalogue::Pixel::kC24, {0.30, 0.50}},
                                 TargetRow{"PicDistance", catalogue::Pixel::kBW8, {0.09, 0.09}}};

Target TargetOf(const Subject& subject) {
  const auto* const found = std::find_if(kTargets.begin(), kTargets.end(), [&](const auto& row) {
    return row.function == subject.operation->function &&
           row.pixel == subject.operation->parameters.front().pixel;
  });
  return found == kTargets.end() ? Target{1, 1} : found->target;
}

#ifdef LXPIC_HAS_OPENCV

// What a peer works on; the scratch image keeps its memory from call to call.
struct Scene {
  cv::Mat source;
  cv::Mat destination;
  cv::Mat scratch;
  int count = 1;
};

using Peer = void (*)(Scene&);

void Median(Scene& scene) { cv::medianBlur(scene.source, scene.destination, 3); }

void Distance(Scene& scene) {
  cv::distanceTransform(scene.source, scene.scratch, cv::DIST_C, 3);
  scene.scratch.convertTo(scene.destination, CV_16U);
}

template <int kOperation>
void Morphology(Scene& scene) {
  cv::morphologyEx(scene.source, scene.destination, kOperation, cv::Mat(), cv::Point(-1, -1),
                   scene.count, cv::BORDER_CONSTANT, cv::Scalar::all(0));
}

struct Row {
  std::string_view function;
  Peer peer;
};

constexpr std::array kPeers = {Row{"PicMedian", Median},
                               Row{"PicDistance", Distance},
                               Row{"PicErode", Morphology<cv::MORPH_ERODE>},
                               Row{"PicDilate", Morphology<cv::MORPH_DILATE>},
                               Row{"PicOpen", Morphology<cv::MORPH_OPEN>},
                               Row{"PicClose", Morphology<cv::MORPH_CLOSE>},
                               Row{"PicWhiteTopHat", Morphology<cv::MORPH_TOPHAT>},
                               Row{"PicBlackTopHat", Morphology<cv::MORPH_BLACKHAT>}};

Job MakePeer(const Subject& subject) {
  const auto* const row = std::find_if(kPeers.begin(), kPeers.end(), [&](const Row& each) {
    return each.function == subject.operation->function;
  });
  if (row == kPeers.end()) return {};
  Scene scene{ViewOf(subject, 0), ViewOf(subject, subject.form.inPlace ? 0 : 1), {}};
  if (!subject.form.numbers.empty()) scene.count = static_cast<int>(subject.call.Number("count"));
  return [scene, peer = row->peer]() mutable {
    const cv::Mat destination = scene.destination;
    peer(scene);
    ExpectResultIn(destination, scene.destination);
  };
}

#else

Job MakePeer(const Subject& /*subject*/) { return {}; }

#endif

}  // namespace

const Family kNonlinearFamily = {FormsOf, MakePeer, TargetOf};

}  // namespace lx::bench
