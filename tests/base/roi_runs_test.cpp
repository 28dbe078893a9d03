// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <functional>

#include "lxpic/base/image.h"
#include "support/allocation_failure.h"
#include "support/outcome_text.h"

namespace {

using lx::test::TakeOutcome;

std::uint32_t Position(int x, int y) {
  return (static_cast<std::uint32_t>(y) << 16) | (static_cast<std::uint32_t>(x) & 0xFFFF);
}

template <class T>
class Runs : public testing::Test {
 protected:
  Runs() { LxOk(); }

  // The run of `length` pixels at (x, y), from addresses.
  LxRun Run(int x, int y, int length, bool absolute) {
    const auto first = reinterpret_cast<std::uintptr_t>(region.GetPixelPtr(x, y));
    const auto origin = absolute ? 0 : reinterpret_cast<std::uintptr_t>(region.GetPixelPtr(0, 0));
    return {first - origin, first - origin + static_cast<unsigned>(length) * sizeof(T),
            Position(x, y)};
  }

  LxImage<T> image{50, 40};
  LxROI<T> region{&image, 7, 9, 20, 10};
};
using RunTypes = testing::Types<LxBW8, LxBW16, LxC24, LxComplex64>;
TYPED_TEST_SUITE(Runs, RunTypes);

TYPED_TEST(Runs, AreTakenInBothForms) {
  for (const bool absolute : {false, true}) {
    LxVectorTemplate<LxRun> runs;
    runs.AddElement(this->Run(0, 0, 20, absolute));
    runs.AddElement(this->Run(19, 9, 1, absolute));
    runs.AddElement(this->Run(20, 3, 0, absolute));
    this->region.SetRuns(runs, absolute);
    this->region.AddRun(4, 5, 6);
    this->region.AddRun(4, 5, 0);
    ASSERT_EQ(TakeOutcome(), "0");
    EXPECT_EQ(this->region.RunsAreAbsolute(), absolute);
    ASSERT_EQ(this->region.GetRuns().GetNumElements(), 5U);
    const LxRun added = this->region.GetRuns()[3];
    const LxRun expected = this->Run(4, 5, 6, absolute);
    EXPECT_EQ(added.start, expected.start);
    EXPECT_EQ(added.end, expected.end);
    EXPECT_EQ(added.position, expected.position);
  }
  this->region.SetRuns({}, false);
  EXPECT_EQ(this->region.GetRuns().GetNumElements(), 0U);
}

TYPED_TEST(Runs, OutsideTheRegionAreRefused) {
  this->region.AddRun(1, 1, 1);
  const auto kept = this->region.GetRuns()[0].start;
  constexpr std::array<std::array<int, 3>, 8> kBad = {{{-1, 0, 1},
                                                       {0, -1, 1},
                                                       {0, 0, -1},
                                                       {0, 0, 21},
                                                       {20, 0, 1},
                                                       {21, 0, 0},
                                                       {0, 10, 1},
                                                       {INT_MIN, INT_MAX, INT_MAX}}};
  for (const auto& [x, y, length] : kBad) {
    this->region.AddRun(x, y, length);
    EXPECT_EQ(TakeOutcome(), "1007 LxROI::AddRun") << x << ' ' << y << ' ' << length;
  }
  // Runs whose bytes and position disagree, or that are no whole pixels of one row.
  const LxRun good = this->Run(5, 5, 4, false);
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
    LxVectorTemplate<LxRun> runs;
    runs.AddElement(good);
    runs.AddElement(good);
    change(runs[1]);
    this->region.SetRuns(runs, false);
    EXPECT_EQ(TakeOutcome(), "1007 LxROI::SetRuns") << &change - spoil.data();
  }
  LxVectorTemplate<LxRun> offsets;
  offsets.AddElement(good);
  this->region.SetRuns(offsets, true);
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
  ASSERT_EQ(TakeOutcome(), "0");
  const LxRun run = image.GetRuns()[0];
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(&pixels[8]) + run.start,
            reinterpret_cast<std::uintptr_t>(&pixels[1]));
  LxVectorTemplate<LxRun> copy(image.GetRuns());
  image.SetRuns(copy, false);
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
