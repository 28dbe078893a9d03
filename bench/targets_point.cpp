// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "bench/targets.h"

namespace lx::bench {

namespace {

constexpr Target kOneImage = {1.15, 1.05};
constexpr Target kTwoImages = {1.35, 1.55};
constexpr Target kMultiply = {2.0, 1.55};
constexpr Target kScaled = {1.6, 1.55};
constexpr Target kDivision = {6, 2};
constexpr Target kTable = {3.0, 1.2};
constexpr Target kGain = {1.6, 1.05};
constexpr Target kDepth = {1.5, 0.85};
constexpr Target kToGrey = {1.2, 0.6};

struct ChoiceRow {
  std::vector<int> choices;
  Target target;
};

const std::vector<ChoiceRow> kCostly = {
    {{ARITH_LOGIC_MULTIPLY}, kMultiply},
    {{ARITH_LOGIC_SCALED_MULTIPLY, ARITH_LOGIC_AVERAGE, ARITH_LOGIC_HALF_DIFFERENCE}, kScaled},
    {{ARITH_LOGIC_DIVIDE, ARITH_LOGIC_MODULO, ARITH_LOGIC_SCALED_DIVIDE}, kDivision}};

struct SignatureRow {
  std::string_view signature;
  Target target;
};

const std::vector<SignatureRow> kSignatures = {
    {"PicLut(LxROI<LxBW8>*, LxROI<LxBW8>*, LxBW8Vector*)", kTable},
    {"PicLut(LxROI<LxBW8>*, LxROI<LxBW8>*, unsigned char*)", kTable},
    {"PicTransform(LxROI<LxBW8>*, LxROI<LxBW8>*, unsigned char (*)(unsigned char), int)", kTable},
    {"PicGainOffset(LxROI<LxBW8>*, LxROI<LxBW8>*, float, float)", kGain},
    {"PicConvert(LxROI<LxBW16>*, LxROI<LxBW8>*, unsigned int)", kDepth},
    {"PicConvert(LxROI<LxBW8>*, LxROI<LxBW16>*, unsigned int)", kDepth},
    {"PicConvertTo422(LxROI<LxBW8>*, LxROI<LxBW16>*)", kDepth},
    {"PicConvert(LxROI<LxC24>*, LxROI<LxBW8>*)", kToGrey}};

// All images have one pixel type; a colour image, with three times the bytes, may take three times
// as long as a grey one.
bool IsUniform(const Subject& subject) {
  const unsigned size = subject.images.front()->GetPixelSize();
  return std::all_of(subject.images.begin(), subject.images.end(),
                     [size](const auto& image) { return image->GetPixelSize() == size; });
}

}  // namespace

Target PointTarget(const Subject& subject) {
  for (const SignatureRow& row : kSignatures) {
    if (subject.operation->signature == row.signature) return row.target;
  }
  const bool arithmetic =
      subject.operation->function == "PicOper" || subject.operation->function == "PicCopy";
  if (!arithmetic || !IsUniform(subject)) return {0, 0};
  for (const ChoiceRow& row : kCostly) {
    const auto& choices = row.choices;
    if (std::find(choices.begin(), choices.end(), subject.form.choice) != choices.end()) {
      return row.target;
    }
  }
  return subject.Images(false).size() < 2 ? kOneImage : kTwoImages;
}

}  // namespace lx::bench
