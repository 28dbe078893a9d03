// SPDX-License-Identifier: Apache-2.0
// Pixel statistics and moments.
#ifdef LXPIC_HAS_OPENCV
#include <opencv2/imgproc.hpp>

#include "bench/opencv.h"
#endif

#include <string>
#include <string_view>
#include <vector>

#include "bench/family.h"

namespace lx::bench {

namespace {

using catalogue::Pixel;

constexpr std::string_view kOrder = "order ";

// The order of moments, by how many of them there are.
std::string LabelOf(const Operation& operation) {
  for (const int order : {4, 3, 2}) {
    const std::string last = "m0" + std::to_string(order);
    if (operation.IndexOf(last) < operation.parameters.size()) {
      return std::string(kOrder) + std::to_string(order);
    }
  }
  return {};
}

std::vector<Form> FormsOf(const Operation& operation) {
  return {Form{.label = LabelOf(operation)}};
}

constexpr TargetRow kTargets[] = {
    {"PicPixelAverage", "", Pixel::kBW8, {{0.32, 0.5}, {0.32, 0.47}}},
    {"PicAverage", "", Pixel::kBW8, {{0.32, 0.5}, {0.32, 0.47}}},
    {"PicPixelVariance", "", Pixel::kBW8, {{0.56, 0.56}, {0.52, 0.49}}},
    {"PicPixelStdDev", "", Pixel::kBW8, {{0.56, 0.56}, {0.52, 0.49}}},
    {"PicPixelVariance", "", Pixel::kC24, {{0.5, 0.5}, {0.5, 0.5}}},
    {"PicPixelMin", "", Pixel::kBW8, {{0.12, 0.12}, {0.13, 0.17}}},
    {"PicPixelMax", "", Pixel::kBW8, {{0.12, 0.12}, {0.13, 0.17}}},
    {"PicArea", "", Pixel::kBW8, {{0.25, 0.25}, {0.14, 0.16}}},
    {"PicPixelCompare", "", Pixel::kBW8, {{0.6, 0.6}, {1, 1}}},
    {"PicWeightedMoments", "order 2", Pixel::kBW8, {{0.25, 0.19}, {0.3, 0.29}}},
    {"PicWeightedMoments", "order 3", Pixel::kBW8, {{0.6, 0.5}, {1, 1}}},
    {"PicWeightedMoments", "order 4", Pixel::kBW8, {{1.6, 1}, {1.6, 1}}}};

Target TargetOf(const Subject& subject) { return FindTarget(subject, kTargets); }

#ifdef LXPIC_HAS_OPENCV

// What a job computes must not be left out.
template <class Value>
void Keep(const Value& value) {
  asm volatile("" : : "r"(&value) : "memory");
}

Job AveragePeer(const Subject& subject) {
  return [source = ViewOf(subject, 0)] { Keep(cv::mean(source)); };
}

Job DeviationPeer(const Subject& subject) {
  return [source = ViewOf(subject, 0)] {
    cv::Scalar mean;
    cv::Scalar deviation;
    cv::meanStdDev(source, mean, deviation);
    Keep(deviation);
  };
}

// Components apart, their averages and deviations, and the averages of their products.
Job CovariancePeer(const Subject& subject) {
  return [source = ViewOf(subject, 0), planes = std::vector<cv::Mat>()]() mutable {
    cv::Scalar mean;
    cv::Scalar deviation;
    cv::meanStdDev(source, mean, deviation);
    cv::split(source, planes);
    double products = 0;
    for (std::size_t i = 0; i < 3; ++i) products += planes[i].dot(planes[(i + 1) % 3]);
    Keep(deviation);
    Keep(products);
  };
}

Job ExtremesPeer(const Subject& subject) {
  return [source = ViewOf(subject, 0)] {
    double minimum = 0;
    double maximum = 0;
    cv::minMaxLoc(source, &minimum, &maximum);
    Keep(minimum);
  };
}

Job CountPeer(const Subject& subject) {
  return [source = ViewOf(subject, 0), mask = cv::Mat(),
          threshold = subject.call.Number("threshold")]() mutable {
    cv::compare(source, threshold, mask, cv::CMP_GE);
    Keep(cv::countNonZero(mask));
  };
}

Job DifferencesPeer(const Subject& subject) {
  return [a = ViewOf(subject, 0), b = ViewOf(subject, 1), mask = cv::Mat()]() mutable {
    cv::compare(a, b, mask, cv::CMP_NE);
    Keep(cv::countNonZero(mask));
  };
}

// Up to order 3; there are no others.
Job MomentsPeer(const Subject& subject) {
  return [source = ViewOf(subject, 0), binary = subject.operation->function == "PicBinaryMoments"] {
    Keep(cv::moments(source, binary));
  };
}

struct PeerRow {
  std::string_view function;
  bool ofColours;
  Job (*make)(const Subject&);
};

constexpr PeerRow kPeers[] = {
    {"PicPixelAverage", false, AveragePeer},     {"PicPixelAverage", true, AveragePeer},
    {"PicAverage", false, AveragePeer},          {"PicPixelVariance", false, DeviationPeer},
    {"PicPixelStdDev", false, DeviationPeer},    {"PicPixelVariance", true, CovariancePeer},
    {"PicPixelStdDev", true, CovariancePeer},    {"PicPixelMin", false, ExtremesPeer},
    {"PicPixelMax", false, ExtremesPeer},        {"PicMinimum", false, ExtremesPeer},
    {"PicMaximum", false, ExtremesPeer},         {"PicPixelStat", false, ExtremesPeer},
    {"PicPixelCompare", false, DifferencesPeer}, {"PicWeightedMoments", false, MomentsPeer}};

Job MakePeer(const Subject& subject) {
  const Operation& operation = *subject.operation;
  const bool ofColours = operation.parameters.front().pixel == Pixel::kC24;
  const bool counts = operation.function == "PicArea" &&
                      operation.IndexOf("threshold") < operation.parameters.size();
  if (counts) return CountPeer(subject);
  for (const PeerRow& row : kPeers) {
    if (row.function == operation.function && row.ofColours == ofColours) return row.make(subject);
  }
  return {};
}

#else

Job MakePeer(const Subject& /*subject*/) { return {}; }

#endif

}  // namespace

const Family kStatisticsFamily = {FormsOf, MakePeer, TargetOf};

}  // namespace lx::bench
