// SPDX-License-Identifier: Apache-2.0
// LxMovingAverage as a list of the images that came, over sequences of its members.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "support/scenario.h"

namespace lx::test {
namespace {

using Image = LxImage<LxBW8>;
using Levels = std::vector<int>;

Levels LevelsOf(const LxROI<LxBW8>& image) {
  Levels levels;
  for (int y = 0; y < static_cast<int>(image.GetHeight()); ++y) {
    for (int x = 0; x < static_cast<int>(image.GetWidth()); ++x) {
      levels.push_back(image.GetPixel(x, y));
    }
  }
  return levels;
}

void FillNoise(Image& image, Random& random) {
  for (int y = 0; y < static_cast<int>(image.GetHeight()); ++y) {
    for (int x = 0; x < static_cast<int>(image.GetWidth()); ++x) {
      image.SetPixel(static_cast<std::uint8_t>(random.Next()), x, y);
    }
  }
}

struct AverageModel {
  LxMovingAverage* real = nullptr;
  int period = 0;
  int width = 0;
  int height = 0;
  int buffered = 0;
  std::vector<Levels> past;  // the newest one last
  // Operands of a step, and what the source held before it.
  std::shared_ptr<Image> source;
  std::shared_ptr<Image> destination;
  Levels arrives;

  void Place(const Operation& member, Arguments& call, Random& random);
};

std::shared_ptr<Image> DrawImage(const AverageModel& p, Random& random) {
  const std::size_t style = random.Below(12);
  if (style == 0) return nullptr;
  if (style == 1) return std::make_shared<Image>();
  return std::make_shared<Image>(p.width, p.height + (style == 2 ? 1 : 0));
}

void AverageModel::Place(const Operation& member, Arguments& call, Random& random) {
  if (member.function != "LxMovingAverage::Average") return;
  source = DrawImage(*this, random);
  if (source != nullptr) FillNoise(*source, random);
  destination = random.Below(4) == 0 ? source : DrawImage(*this, random);
  if (member.parameters.size() == 3) {
    call.values[1] = source.get();
    call.values[2] = destination.get();
    if (source != nullptr) arrives = LevelsOf(*source);
    return;
  }
  call.values[1] = destination.get();
  if (buffered == 0 || period == 0) return;
  FillNoise(*real->GetSrcImage(), random);
  arrives = LevelsOf(*real->GetSrcImage());
}

// The images that have not come are like the first one.
void ExpectAverage(AverageModel& p) {
  if (p.past.empty()) p.past.assign(static_cast<std::size_t>(p.period), p.arrives);
  p.past.push_back(p.arrives);
  Levels expected(p.arrives.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    int sum = 0;
    for (int k = 1; k <= p.period; ++k)
      sum += p.past[p.past.size() - static_cast<std::size_t>(k)][i];
    expected[i] = sum / p.period;
  }
  EXPECT_EQ(LevelsOf(*p.destination), expected);
}

template <bool kBuffered>
void Average(AverageModel& p, const Arguments& /*call*/, bool /*memory*/, Outcome& outcome) {
  if (p.period == 0 || kBuffered != (p.buffered != 0)) {
    return outcome.Refuse(LX_ERROR_UNSUPPORTED_OPERATION);
  }
  std::vector<const Image*> images = {p.destination.get()};
  if (!kBuffered) images.push_back(p.source.get());
  for (const Image* const each : images) {
    if (each == nullptr || each->GetIdentity() == 0) {
      return outcome.Refuse(LX_ERROR_ROI_NOT_ATTACHED);
    }
  }
  for (const Image* const each : images) {
    if (static_cast<int>(each->GetHeight()) != p.height) {
      return outcome.Refuse(LX_ERROR_SIZE_MISMATCH);
    }
  }
  ExpectAverage(p);
}

void SetSize(AverageModel& p, const Arguments& call, bool memory, Outcome& outcome) {
  const auto number = [&call](std::size_t i) { return static_cast<int>(call.Number(i)); };
  p.past.clear();
  p.period = p.width = p.height = p.buffered = 0;
  if (number(1) < 1 || number(1) > 257) return outcome.Refuse(LX_ERROR_ARGUMENT_1_OUT_OF_RANGE);
  // The first allocation is the array of frames, or, without any, the sum.
  if (!memory) return outcome.Refuse(LX_ERROR_ALLOCATION_FAILED);
  if (number(2) < 0 || number(3) < 0) {
    return outcome.Refuse(LX_ERROR_ALLOCATION_FAILED, {"LxImage::LxImage"});
  }
  p.period = number(1);
  p.width = number(2);
  p.height = number(3);
  p.buffered = number(4);
}

const MemberRules<AverageModel>& Rules() {
  static const MemberRules<AverageModel> rules = {
      {"LxMovingAverage::GetSize(unsigned int&, int&, int&, int&)",
       [](AverageModel& p, const Arguments&, bool, Outcome& outcome) {
         const int values[] = {p.period, p.width, p.height, p.buffered};
         for (std::size_t i = 0; i < 4; ++i) outcome.values[i + 1] = static_cast<double>(values[i]);
       }},
      {"LxMovingAverage::Reset()",
       [](AverageModel& p, const Arguments&, bool, Outcome&) { p.past.clear(); }},
      {"LxMovingAverage::SetSize(unsigned int, int, int, int)", SetSize},
      {"LxMovingAverage::GetSrcImage()",
       [](AverageModel& p, const Arguments&, bool, Outcome& outcome) {
         if (p.period != 0 && p.buffered == 0) outcome.Refuse(LX_ERROR_UNSUPPORTED_OPERATION);
       }},
      {"LxMovingAverage::Average(LxROI<LxBW8>*, LxROI<LxBW8>*)", Average<false>},
      {"LxMovingAverage::Average(LxROI<LxBW8>*)", Average<true>}};
  return rules;
}

TEST(MovingAverage, IsThatOfTheLastImages) {
  const auto& objects = catalogue::Objects();
  auto object = *std::find_if(objects.begin(), objects.end(),
                              [](const auto& each) { return each.name == "LxMovingAverage"; });
  // Images come more often than sizes.
  const auto members = object.members;
  for (const Operation& each : members) {
    if (each.function != "LxMovingAverage::Average") continue;
    object.members.insert(object.members.end(), 6, each);
  }
  ExpectScenarios(
      object, Rules(),
      [](Random& random) {
        auto real = std::make_unique<LxMovingAverage>();
        AverageModel model;
        model.real = real.get();
        model.period = static_cast<int>(random.Between(1, 5));
        model.width = static_cast<int>(random.Between(0, 70));
        model.height = 2;
        model.buffered = static_cast<int>(random.Below(2));
        real->SetSize(static_cast<unsigned>(model.period), model.width, model.height,
                      model.buffered);
        LxSetMMX(static_cast<int>(random.Below(2)));
        return std::pair(std::move(real), model);
      },
      [](LxMovingAverage& average, const AverageModel& model) {
        const bool hasBuffer = model.period != 0 && model.buffered != 0;
        EXPECT_EQ(average.GetSrcImage() != nullptr, hasBuffer);
      });
  LxSetMMX(1);
}

TEST(MovingAverage, EveryFailingAllocationLeavesItEmpty) {
  for (const int buffered : {0, 1}) {
    LxMovingAverage average;
    const int failures =
        FailEachAllocation([&] { average.SetSize(3, 20, 10, buffered); },
                           [&] {
                             EXPECT_EQ(LxGetError(), LX_ERROR_ALLOCATION_FAILED);
                             unsigned period = 9;
                             int width = 9;
                             int height = 9;
                             int flag = 9;
                             average.GetSize(period, width, height, flag);
                             EXPECT_EQ(period + static_cast<unsigned>(width + height + flag), 0U);
                           });
    EXPECT_GT(failures, 6);
    EXPECT_EQ(LxGetError(), LX_OK);
  }
}

}  // namespace
}  // namespace lx::test
