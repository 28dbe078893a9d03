// SPDX-License-Identifier: Apache-2.0
// LxKernel as a plain record, over sequences of its members.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <vector>

#include "support/scenario.h"

namespace lx::test {
namespace {

constexpr float kUnknown = std::numeric_limits<float>::quiet_NaN();

struct KernelModel {
  int columns = 0;
  int rows = 0;
  double gain = 1;
  double offset = 0;
  double rectifier = 2;
  double outside = 0;
  bool hasStorage = false;     // even for no coefficient
  std::vector<float> storage;  // what was never written is unknown
};

using Rule = MemberRule<KernelModel>;

// Room for `count` coefficients; growing loses what was there.
bool Grow(KernelModel& k, std::size_t count, bool memory) {
  if (k.hasStorage && count <= k.storage.size()) return true;
  k.hasStorage = memory;
  k.storage.assign(memory ? count : 0, kUnknown);
  return memory;
}

template <int kSize>
void SetSquare(KernelModel& k, const Arguments& call, bool memory, Outcome& outcome) {
  k.columns = k.rows = kSize;
  if (!Grow(k, kSize * kSize, memory)) return outcome.Refuse(LX_ERROR_ALLOCATION_FAILED);
  for (std::size_t i = 0; i < kSize * kSize; ++i) {
    k.storage[i] = static_cast<float>(call.Number(i + 1));
  }
}

void SetPreset(KernelModel& k, const Arguments& call, bool memory, Outcome& outcome) {
  k.columns = k.rows = 3;
  if (!Grow(k, 9, memory)) return outcome.Refuse(LX_ERROR_ALLOCATION_FAILED);
  k.gain = k.offset = k.rectifier = k.outside = 0;
  const double type = call.Number(1);
  if (type < 1 || type > 14) return outcome.Refuse(LX_ERROR_ARGUMENT_1_OUT_OF_RANGE);
  std::fill_n(k.storage.begin(), 9, kUnknown);  // the table of presets has a test of its own
  if (type > 3) {
    k.gain = 1;
    k.rectifier = 2;
  }
}

template <int KernelModel::*kSide, int KernelModel::*kOther>
void SetSide(KernelModel& k, const Arguments& call, bool memory, Outcome& outcome) {
  const int side = static_cast<int>(call.Number(1));
  const int count = side * (k.*kOther);
  const bool grows = count > static_cast<int>(k.storage.size());
  if (grows && !Grow(k, static_cast<std::size_t>(count), memory)) {
    return outcome.Refuse(LX_ERROR_ALLOCATION_FAILED, {"LxKernel::SetAllocatedSize"});
  }
  k.*kSide = side;
}

float* Element(KernelModel& k, const Arguments& call, Outcome& outcome) {
  const int x = static_cast<int>(call.Number(1));
  const int y = static_cast<int>(call.Number(2));
  const auto index = static_cast<std::size_t>(y * k.columns + x);
  if (k.hasStorage && (x < 0 || x >= k.columns)) {
    outcome.Refuse(LX_ERROR_ARGUMENT_1_OUT_OF_RANGE);
  } else if (k.hasStorage && (y < 0 || y >= k.rows)) {
    outcome.Refuse(LX_ERROR_ARGUMENT_2_OUT_OF_RANGE);
  } else if (!k.hasStorage || index >= k.storage.size()) {
    outcome.Refuse(LX_ERROR_KERNEL_NOT_ALLOCATED);
  } else {
    return &k.storage[index];
  }
  return nullptr;
}

template <class Member, Member KernelModel::*kMember>
constexpr Rule kGets = [](KernelModel& k, const Arguments&, bool, Outcome& outcome) {
  outcome.values[1] = static_cast<double>(k.*kMember);
};
template <double KernelModel::*kMember>
constexpr Rule kSets =
    [](KernelModel& k, const Arguments& call, bool, Outcome&) { k.*kMember = call.Number(1); };

std::string SetterOf(int count) {
  std::string signature = "LxKernel::SetKernelData(float";
  for (int i = 1; i < count; ++i) signature += ", float";
  return signature + ")";
}

const MemberRules<KernelModel>& Rules() {
  static const MemberRules<KernelModel> rules = {
      {"LxKernel::GetDataPtr()",
       [](KernelModel&, const Arguments&, bool, Outcome&) {}},  // looked at after each step
      {"LxKernel::GetSizeX()", kGets<int, &KernelModel::columns>},
      {"LxKernel::GetSizeY()", kGets<int, &KernelModel::rows>},
      {"LxKernel::GetAllocatedSize()",
       [](KernelModel& k, const Arguments&, bool, Outcome& outcome) {
         outcome.values[1] = static_cast<double>(k.storage.size());
       }},
      {"LxKernel::GetGain()", kGets<double, &KernelModel::gain>},
      {"LxKernel::GetOffset()", kGets<double, &KernelModel::offset>},
      {"LxKernel::GetRectifier()", kGets<double, &KernelModel::rectifier>},
      {"LxKernel::GetOutsideValue()", kGets<double, &KernelModel::outside>},
      {"LxKernel::SetGain(float)", kSets<&KernelModel::gain>},
      {"LxKernel::SetOffset(unsigned int)", kSets<&KernelModel::offset>},
      {"LxKernel::SetRectifier(short)", kSets<&KernelModel::rectifier>},
      {"LxKernel::SetOutsideValue(unsigned int)", kSets<&KernelModel::outside>},
      {"LxKernel::SetKernel(KERNEL_TYPE)", SetPreset},
      {SetterOf(9), SetSquare<3>},
      {SetterOf(25), SetSquare<5>},
      {SetterOf(49), SetSquare<7>},
      {"LxKernel::GetKernelData(int, int, float&)",
       [](KernelModel& k, const Arguments& call, bool, Outcome& outcome) {
         const float* const element = Element(k, call, outcome);
         if (element != nullptr && !std::isnan(*element)) outcome.values[3] = double{*element};
       }},
      {"LxKernel::SetKernelData(int, int, float)",
       [](KernelModel& k, const Arguments& call, bool, Outcome& outcome) {
         float* const element = Element(k, call, outcome);
         if (element != nullptr) *element = static_cast<float>(call.Number(3));
       }},
      {"LxKernel::SetSizeX(short)", SetSide<&KernelModel::columns, &KernelModel::rows>},
      {"LxKernel::SetSizeY(short)", SetSide<&KernelModel::rows, &KernelModel::columns>},
      {"LxKernel::SetAllocatedSize(unsigned int)",
       [](KernelModel& k, const Arguments& call, bool memory, Outcome& outcome) {
         const auto count = static_cast<std::size_t>(call.Number(1));
         if (!Grow(k, count, memory)) outcome.Refuse(LX_ERROR_ALLOCATION_FAILED);
       }}};
  return rules;
}

void Compare(LxKernel& kernel, const KernelModel& model) {
  ASSERT_EQ(kernel.GetAllocatedSize(), model.storage.size());
  const float* const data = kernel.GetDataPtr();
  for (std::size_t i = 0; i < model.storage.size(); ++i) {
    if (std::isnan(model.storage[i])) continue;
    ASSERT_EQ(data[i], model.storage[i]) << i;
  }
}

TEST(Kernel, MembersKeepWhatTheyWereGiven) {
  ExpectScenarios(
      catalogue::Objects().front(), Rules(),
      [](Random&) { return std::pair(std::make_unique<LxKernel>(), KernelModel()); }, Compare);
}

}  // namespace
}  // namespace lx::test
