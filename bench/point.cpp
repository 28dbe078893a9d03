// SPDX-License-Identifier: Apache-2.0
// Arithmetic, tables, gains and conversions.
#ifdef LXPIC_HAS_OPENCV
#include <opencv2/imgproc.hpp>

#include "bench/opencv.h"
#endif

#include <array>
#include <map>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

#include "bench/family.h"

namespace lx::bench {

namespace {

std::vector<Form> FormsOf(const Operation& /*operation*/) { return {}; }

// Two images of one type.
bool MapsPairs(const std::string& signature) {
  static const std::regex kPairs(R"(PicOper\(\w+, (LxROI<\w+>\*), \1, \1\))");
  return std::regex_match(signature, kPairs);
}

// Where another library is faster than OpenCV, its share; elsewhere no more than OpenCV takes, and
// less where that was reached.
Target TargetOf(const Subject& subject) {
  static const std::map<std::string_view, Targets> kShares = {
      {"PicLut(LxROI<LxBW8>*, LxROI<LxBW8>*, LxBW8Vector*)", {{0.45, 0.45}, {0.30, 0.31}}},
      {"PicLut(LxROI<LxBW8>*, LxROI<LxBW8>*, unsigned char*)", {{0.45, 0.45}, {0.30, 0.31}}},
      {"PicGainOffset(LxROI<LxBW8>*, LxROI<LxBW8>*, float, float)", {{0.28, 0.28}}},
      {"PicConvert(LxROI<LxC24>*, LxROI<LxBW8>*)", {{0.60, 0.62}, {0.29, 0.40}}},
      {"PicConvert(LxROI<LxBW8>*, LxROI<LxC24>*)", {{0.80, 0.95}, {0.73, 0.90}}},
      {"PicCopy(LxBW8, LxROI<LxBW8>*)", {{0.55, 0.70}}}};
  const std::string& signature = subject.operation->signature;
  if (const auto found = kShares.find(signature); found != kShares.end()) {
    return found->second.Here();
  }
  if (!MapsPairs(signature)) return {1, 1};
  const bool bytes = signature.find("LxBW16") == std::string::npos;
  if (bytes && subject.form.choice == ARITH_LOGIC_DIVIDE) return Targets{{0.60, 0.60}}.Here();
  return Targets{{0.97, 0.97}}.Here();
}

#ifdef LXPIC_HAS_OPENCV

using catalogue::Kind;

// What a peer works on: views of the subject's images, and its other arguments.
struct Operands {
  std::vector<cv::Mat> sources;
  std::vector<cv::Mat> destinations;
  cv::Scalar constant;
  bool constantFirst = false;
  bool hasConstant = false;
  cv::Mat table;
  double gain = 1;
  double offset = 0;
};

using Peer = void (*)(const Operands&, cv::Mat&);

void AddOperand(const Subject& subject, std::size_t index, Operands& operands) {
  const catalogue::Parameter& parameter = subject.operation->parameters[index];
  const catalogue::Argument& value = subject.call.values[index];
  if (parameter.IsRegion()) {
    auto& views = parameter.IsWritten() ? operands.destinations : operands.sources;
    views.push_back(ViewOf(subject, index));
  } else if (parameter.kind == Kind::kConstant) {
    operands.constant = cv::Scalar::all(static_cast<double>(subject.call.Component(index, 0)));
    operands.hasConstant = true;
    operands.constantFirst = operands.sources.empty();
  } else if (parameter.kind == Kind::kByteTable) {
    operands.table = cv::Mat(1, 256, CV_8U, std::get<unsigned char*>(value));
  } else if (parameter.kind == Kind::kByteVector) {
    operands.table = cv::Mat(1, 256, CV_8U, std::get<LxBW8Vector*>(value)->GetDataPtr());
  } else if (parameter.kind == Kind::kReal || parameter.kind == Kind::kColour) {
    (parameter.name == "gain" ? operands.gain : operands.offset) = parameter.trials.front();
  }
}

// Calls job(a, b) with the two operands in their order; a constant stands for an image.
template <class Operation>
void OnBoth(const Operands& o, Operation job) {
  if (!o.hasConstant) return job(o.sources[0], o.sources[1]);
  if (o.constantFirst) return job(o.constant, o.sources[0]);
  job(o.sources[0], o.constant);
}

// Comparisons know single channels only.
template <int Comparison>
void Compare(const Operands& o, cv::Mat& d) {
  cv::Mat result = d.reshape(1);
  const cv::Mat a = o.sources[0].reshape(1);
  if (!o.hasConstant) return cv::compare(a, o.sources[1].reshape(1), result, Comparison);
  if (o.constantFirst) return cv::compare(o.constant[0], a, result, Comparison);
  cv::compare(a, o.constant[0], result, Comparison);
}

struct ChoicePeer {
  int choice;
  bool mixedDepths;  ///< also for sources and destinations of different depths
  Peer peer;
};

#define LX_ON_BOTH(...)                                            \
  [](const Operands& o, cv::Mat& d) {                              \
    OnBoth(o, [&](const auto& a, const auto& b) { __VA_ARGS__; }); \
  }

const std::array kChoicePeers = {
    ChoicePeer{ARITH_LOGIC_ADD, true, LX_ON_BOTH(cv::add(a, b, d, cv::noArray(), d.depth()))},
    ChoicePeer{ARITH_LOGIC_SUBTRACT, true,
               LX_ON_BOTH(cv::subtract(a, b, d, cv::noArray(), d.depth()))},
    ChoicePeer{ARITH_LOGIC_MULTIPLY, true, LX_ON_BOTH(cv::multiply(a, b, d, 1, d.depth()))},
    ChoicePeer{ARITH_LOGIC_DIVIDE, true, LX_ON_BOTH(cv::divide(a, b, d, 1, d.depth()))},
    ChoicePeer{ARITH_LOGIC_BITWISE_AND, false, LX_ON_BOTH(cv::bitwise_and(a, b, d))},
    ChoicePeer{ARITH_LOGIC_BITWISE_OR, false, LX_ON_BOTH(cv::bitwise_or(a, b, d))},
    ChoicePeer{ARITH_LOGIC_BITWISE_XOR, false, LX_ON_BOTH(cv::bitwise_xor(a, b, d))},
    ChoicePeer{ARITH_LOGIC_MINIMUM, false, LX_ON_BOTH(cv::min(cv::_InputArray(a), b, d))},
    ChoicePeer{ARITH_LOGIC_MAXIMUM, false, LX_ON_BOTH(cv::max(cv::_InputArray(a), b, d))},
    ChoicePeer{ARITH_LOGIC_ABSOLUTE_DIFFERENCE, false, LX_ON_BOTH(cv::absdiff(a, b, d))},
    ChoicePeer{ARITH_LOGIC_EQUAL, false, Compare<cv::CMP_EQ>},
    ChoicePeer{ARITH_LOGIC_NOT_EQUAL, false, Compare<cv::CMP_NE>},
    ChoicePeer{ARITH_LOGIC_GREATER_OR_EQUAL, false, Compare<cv::CMP_GE>},
    ChoicePeer{ARITH_LOGIC_LESS_OR_EQUAL, false, Compare<cv::CMP_LE>},
    ChoicePeer{ARITH_LOGIC_GREATER, false, Compare<cv::CMP_GT>},
    ChoicePeer{ARITH_LOGIC_LESS, false, Compare<cv::CMP_LT>}};
#undef LX_ON_BOTH

void Copy(const Operands& o, cv::Mat& d) { o.sources[0].copyTo(d); }
void Invert(const Operands& o, cv::Mat& d) { cv::bitwise_not(o.sources[0], d); }
void Set(const Operands& o, cv::Mat& d) { d.setTo(o.constant); }
void LookUp(const Operands& o, cv::Mat& d) { cv::LUT(o.sources[0], o.table, d); }
void Scale(const Operands& o, cv::Mat& d) {
  o.sources[0].convertTo(d, d.depth(), o.gain, o.offset);
}
void ChangeDepth(const Operands& o, cv::Mat& d) {
  o.sources[0].convertTo(d, d.depth(), d.depth() == CV_8U ? 1.0 / 256 : 1.0);
}
template <int Code>
void ChangeColour(const Operands& o, cv::Mat& d) {
  cv::cvtColor(o.sources[0], d, Code);
}
void MergeAlpha(const Operands& o, cv::Mat& d) {
  cv::mixChannels(o.sources.data(), 2, &d, 1, std::array{0, 0, 1, 1, 2, 2, 3, 3}.data(), 4);
}
void SplitAlpha(const Operands& o, cv::Mat& /*first*/) {
  std::vector<cv::Mat> to = o.destinations;
  cv::mixChannels(o.sources.data(), 1, to.data(), 2, std::array{0, 0, 1, 1, 2, 2, 3, 3}.data(), 4);
}

struct SignaturePeer {
  const char* signature;
  int choice;
  Peer peer;
};

const std::array kSignaturePeers = {
    SignaturePeer{"PicLut(LxROI<LxBW8>*, LxROI<LxBW8>*, LxBW8Vector*)", -1, LookUp},
    SignaturePeer{"PicLut(LxROI<LxBW8>*, LxROI<LxBW8>*, unsigned char*)", -1, LookUp},
    SignaturePeer{"PicGainOffset(LxROI<LxBW8>*, LxROI<LxBW8>*, float, float)", -1, Scale},
    SignaturePeer{"PicGainOffset(LxROI<LxC24>*, LxROI<LxC24>*, LxColor, LxColor)", -1, Scale},
    SignaturePeer{"PicGainOffset(LxROI<LxBW16>*, LxROI<LxBW16>*, float, float)", -1, Scale},
    SignaturePeer{"PicOper(ARITH_LOGIC_OPERATIONS, LxROI<LxBW8>*, LxROI<LxC24>*)", ARITH_LOGIC_COPY,
                  ChangeColour<cv::COLOR_GRAY2BGR>},
    SignaturePeer{"PicConvert(LxROI<LxBW8>*, LxROI<LxC24>*)", -1, ChangeColour<cv::COLOR_GRAY2BGR>},
    SignaturePeer{"PicConvert(LxROI<LxC24>*, LxROI<LxBW8>*)", -1, ChangeColour<cv::COLOR_BGR2GRAY>},
    SignaturePeer{"PicConvert(LxROI<LxC24>*, LxROI<LxC15>*)", -1,
                  ChangeColour<cv::COLOR_BGR2BGR555>},
    SignaturePeer{"PicConvert(LxROI<LxC24>*, LxROI<LxC16>*)", -1,
                  ChangeColour<cv::COLOR_BGR2BGR565>},
    SignaturePeer{"PicConvert(LxROI<LxC15>*, LxROI<LxC24>*)", -1,
                  ChangeColour<cv::COLOR_BGR5552BGR>},
    SignaturePeer{"PicConvert(LxROI<LxC16>*, LxROI<LxC24>*)", -1,
                  ChangeColour<cv::COLOR_BGR5652BGR>},
    SignaturePeer{"PicConvert(LxROI<LxBW8>*, LxROI<LxC15>*)", -1,
                  ChangeColour<cv::COLOR_GRAY2BGR555>},
    SignaturePeer{"PicConvert(LxROI<LxBW8>*, LxROI<LxC16>*)", -1,
                  ChangeColour<cv::COLOR_GRAY2BGR565>},
    SignaturePeer{"PicConvert(LxROI<LxC15>*, LxROI<LxBW8>*)", -1,
                  ChangeColour<cv::COLOR_BGR5552GRAY>},
    SignaturePeer{"PicConvert(LxROI<LxC16>*, LxROI<LxBW8>*)", -1,
                  ChangeColour<cv::COLOR_BGR5652GRAY>},
    SignaturePeer{"PicConvert(LxROI<LxC24>*, LxROI<LxC24A>*)", -1,
                  ChangeColour<cv::COLOR_BGR2BGRA>},
    SignaturePeer{"PicConvert(LxROI<LxC24A>*, LxROI<LxC24>*)", -1,
                  ChangeColour<cv::COLOR_BGRA2BGR>},
    SignaturePeer{"PicConvert(LxROI<LxC24>*, LxROI<LxBW8>*, LxROI<LxC24A>*)", -1, MergeAlpha},
    SignaturePeer{"PicConvert(LxROI<LxC24A>*, LxROI<LxC24>*, LxROI<LxBW8>*)", -1, SplitAlpha},
    SignaturePeer{"PicConvert(LxROI<LxBW16>*, LxROI<LxBW8>*, unsigned int)", -1, ChangeDepth},
    SignaturePeer{"PicConvert(LxROI<LxBW8>*, LxROI<LxBW16>*, unsigned int)", -1, ChangeDepth}};

bool SameTypes(const Operands& o) {
  const int type = o.destinations[0].type();
  for (const cv::Mat& source : o.sources) {
    if (source.type() != type) return false;
  }
  return true;
}

bool SingleChannels(const Operands& o) {
  if (o.destinations[0].channels() != 1) return false;
  for (const cv::Mat& source : o.sources) {
    if (source.channels() != 1) return false;
  }
  return true;
}

// One operand: fills, copies and inversions.
Peer FindSimplePeer(const std::string& function, int choice, const Operands& o) {
  if (o.sources.empty()) return Set;
  if (o.hasConstant || o.sources.size() != 1 || !SameTypes(o)) return nullptr;
  if (function == "PicCopy" || choice == ARITH_LOGIC_COPY) return Copy;
  return choice == ARITH_LOGIC_INVERT ? Invert : nullptr;
}

Peer FindPeer(const Subject& subject, const Operands& o) {
  for (const SignaturePeer& each : kSignaturePeers) {
    if (subject.operation->signature == each.signature && subject.form.choice == each.choice) {
      return each.peer;
    }
  }
  const std::string& function = subject.operation->function;
  if (function != "PicOper" && function != "PicCopy") return nullptr;
  if (const Peer simple = FindSimplePeer(function, subject.form.choice, o)) return simple;
  if (o.sources.size() + (o.hasConstant ? 1 : 0) != 2) return nullptr;
  for (const ChoicePeer& each : kChoicePeers) {
    if (each.choice != subject.form.choice) continue;
    return SameTypes(o) || (each.mixedDepths && SingleChannels(o)) ? each.peer : nullptr;
  }
  return nullptr;
}

Job MakePeer(const Subject& subject) {
  Operands operands;
  for (std::size_t i = 0; i < subject.call.values.size(); ++i) AddOperand(subject, i, operands);
  if (operands.destinations.empty()) return {};
  const Peer peer = FindPeer(subject, operands);
  if (peer == nullptr) return {};
  return [peer, operands]() {
    cv::Mat destination = operands.destinations[0];
    peer(operands, destination);
    ExpectResultIn(operands.destinations[0], destination);
  };
}

#else

Job MakePeer(const Subject& /*subject*/) { return {}; }

#endif

}  // namespace

const Family kPointFamily = {FormsOf, MakePeer, TargetOf};

}  // namespace lx::bench
