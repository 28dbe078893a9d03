// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <functional>
#include <tuple>

#include "lxpic/base/image.h"
#include "support/allocation_failure.h"
#include "support/outcome_text.h"

namespace {

using lx::test::TakeOutcome;

/// x, y and length of a run.
using Place = std::array<int, 3>;

auto FieldsOf(const LxRun& run) { return std::tuple(run.start, run.end, run.position); }

template <class T>
class Runs : public testing::Test {
 protected:
  Runs() { LxOk(); }

  // The run of `length` pixels at (x, y), from addresses.
  LxRun Run(int x, int y, int length, bool absolute) {
    const auto first = reinterpret_cast<std::uintptr_t>(region.GetPixelPtr(x, y));
    const auto origin = absolute ? 0 : reinterpret_cast<std::uintptr_t>(region.GetPixelPtr(0, 0));
    return {first - origin, first - origin + static_cast<unsigned>(length) * sizeof(T),
            static_cast<std::uint32_t>(y << 16 | x)};
  }

  LxImage<T> image{50, 40};
  LxROI<T> region{&image, 7, 9, 20, 10};
};
using RunTypes = testing::Types<LxBW8, LxBW16, LxC24, LxComplex64>;
TYPED_TEST_SUITE(Runs, RunTypes);

TYPED_TEST(Runs, AreTakenInBothForms) {
  for (const bool absolute : {false, true}) {
    LxVectorTemplate<LxRun> runs;
    for (const auto& [x, y, length] : {Place{0, 0, 20}, Place{19, 9, 1}, Place{20, 3, 0}}) {
      runs.AddElement(this->Run(x, y, length, absolute));
    }
    this->region.SetRuns(runs, absolute);
    this->region.AddRun(4, 5, 6);
    this->region.AddRun(4, 5, 0);
    ASSERT_EQ(TakeOutcome(), "0");
    EXPECT_EQ(this->region.RunsAreAbsolute(), absolute);
    ASSERT_EQ(this->region.GetRuns().GetNumElements(), 5U);
    EXPECT_EQ(FieldsOf(this->region.GetRuns()[3]), FieldsOf(this->Run(4, 5, 6, absolute)));
  }
  this->region.SetRuns({}, false);
  EXPECT_EQ(this->region.GetRuns().GetNumElements(), 0U);
}

TYPED_TEST(Runs, OutsideTheRegionAreRefused) {
  this->region.AddRun(1, 1, 1);
  const auto kept = this->region.GetRuns()[0].start;
  for (const auto& [x, y, length] :
       {Place{-1, 0, 1}, Place{0, -1, 1}, Place{0, 0, -1}, Place{0, 0, 21}, Place{20, 0, 1},
        Place{21, 0, 0}, Place{0, 10, 1}, Place{INT_MIN, INT_MAX, INT_MAX}}) {
    this->region.AddRun(x, y, length);
    EXPECT_EQ(TakeOutcome(), "1007 LxROI::AddRun") << x << ' ' << y << ' ' << length;
  }
  // Runs whose bytes and position disagree, or that are no whole pixels of one row.
  LxVectorTemplate<LxRun> runs;
  for (int i = 0; i < 2; ++i) runs.AddElement(this->Run(5, 5, 4, false));
  const std::array<std::function<void(LxRun&)>, 8> spoil = {
      // Half a pixel too many, or for pixels of one byte a whole row.
      [](LxRun& run) { run.end += sizeof(TypeParam) > 1 ? 1 : 20; },
      [](LxRun& run) { run.position += 1; },
      [](LxRun& run) { run.position += 1 << 16; },
      [](LxRun& run) { run.start += 1; },
      [](LxRun& run) { run.end = run.start - sizeof(TypeParam); },
      [](LxRun& run) { run.end += 12 * sizeof(TypeParam); },
      [](LxRun& run) { run.end = UINTPTR_MAX; },
      [](LxRun& run) { run.position = 0xFFFFFFFF; }};
  for (const auto& change : spoil) {
    LxVectorTemplate<LxRun> spoilt = runs;
    change(spoilt[1]);
    this->region.SetRuns(spoilt, false);
    EXPECT_EQ(TakeOutcome(), "1007 LxROI::SetRuns") << &change - spoil.data();
  }
  this->region.SetRuns(runs, true);
  EXPECT_EQ(TakeOutcome(), "1007 LxROI::SetRuns");
  EXPECT_FALSE(this->region.RunsAreAbsolute());
  ASSERT_EQ(this->region.GetRuns().GetNumElements(), 1U);
  EXPECT_EQ(this->region.GetRuns()[0].start, kept);
}

TEST(RunsOf, BottomUpImages) {
  LxOk();
  std::array<LxBW16, 12> pixels{};
  LxImage<LxBW16> image;
  image.Attach(&pixels[8], 4, 3, -8);
  image.AddRun(1, 2, 3);
  EXPECT_EQ(image.GetRuns()[0].start, 0 - 7 * sizeof(LxBW16));
  image.SetRuns(LxVectorTemplate<LxRun>(image.GetRuns()), false);
  EXPECT_EQ(TakeOutcome(), "0");
}

TEST(RunsOf, RegionsThatCannotHaveAny) {
  LxOk();
  LxImage<int> binary(8, 8);
  binary.AddRun(0, 0, 1);
  EXPECT_EQ(TakeOutcome(), "1007 LxROI::AddRun");
  LxROI<LxBW8> none;
  none.AddRun(0, 0, 0);
  EXPECT_EQ(TakeOutcome(), "1007 LxROI::AddRun");
  LxImage<LxBW8> wide(32770, 1);
  wide.AddRun(32767, 0, 3);
  EXPECT_EQ(TakeOutcome(), "0");
  wide.AddRun(32768, 0, 1);
  EXPECT_EQ(TakeOutcome(), "1007 LxROI::AddRun");
  LxVectorTemplate<LxRun> runs;
  runs.AddElement({32768, 32769, 32768});
  wide.SetRuns(runs, false);
  EXPECT_EQ(TakeOutcome(), "1007 LxROI::SetRuns");
  LxImage<LxBW8> tall(1, 32770);
  tall.AddRun(0, 32768, 1);
  EXPECT_EQ(TakeOutcome(), "1007 LxROI::AddRun");
}

TEST(RunsOf, RegionsSurviveEveryAllocationFailure) {
  LxOk();
  LxImage<LxBW8> image(8, 8);
  LxImage<LxBW8> model(8, 8);
  for (int y = 0; y < 3; ++y) model.AddRun(0, y, 4);
  image.AddRun(1, 1, 1);
  const auto live = lx::test::LiveAllocations();
  const int failures = lx::test::FailEachAllocation(
      [&] { image.SetRuns(model.GetRuns(), false); },
      [&] {
        EXPECT_EQ(TakeOutcome(), "1303 LxVector::SetMaxElements < LxROI::SetRuns");
        EXPECT_EQ(image.GetRuns().GetNumElements(), 1U);
      });
  EXPECT_EQ(failures, 1);
  EXPECT_EQ(image.GetRuns().GetNumElements(), 3U);
  model.SetRuns(model.GetRuns(), false);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(lx::test::FailEachAllocation(
                [&] { image.AddRun(2, 2, 2); },
                [&] {
                  EXPECT_EQ(TakeOutcome(),
                            "1303 LxVector::SetMaxElements < LxVector::AddElement < LxROI::AddRun");
                }),
            1);
  EXPECT_EQ(image.GetRuns().GetNumElements(), 4U);
  EXPECT_EQ(lx::test::LiveAllocations(), live);
}

}  // namespace
