// SPDX-License-Identifier: Apache-2.0
// Profiles at their edges: long ones, in place, extremes.
#include <gtest/gtest.h>

#include <vector>

#include "lxpic/lxpic.h"
#include "support/allocation_failure.h"
#include "support/execution_path.h"
#include "support/reference.h"
#include "support/trial.h"

namespace lx::test {
namespace {

template <class Vector>
Vector Made(const std::vector<unsigned>& samples) {
  using Sample = decltype(Vector().begin()->value);
  Vector made;
  for (const unsigned each : samples) made.AddElement(static_cast<Sample>(each));
  return made;
}

template <class Vector>
std::vector<unsigned> SamplesOf(const Vector& vector) {
  std::vector<unsigned> samples;
  for (const auto& each : vector) samples.push_back(each.value);
  return samples;
}

bool IsFilter(const Operation& operation) {
  const auto& parameters = operation.parameters;
  return operation.family == "profile" && parameters.size() > 1 &&
         catalogue::IsVector(parameters[0].kind) && parameters[0].kind == parameters[1].kind &&
         parameters[0].kind != catalogue::Kind::kVector;
}

// A call on a profile of noise, with a third argument that it takes.
Trial NoiseTrial(const Operation& operation, std::size_t length, Random& random) {
  Trial trial(operation, Arguments(operation));
  Elements content;
  for (std::size_t i = 0; i < length; ++i) {
    content.values.push_back(static_cast<double>(random.Below(256)));
  }
  trial.SetVector(0, content);
  const bool isMean = operation.function == "PicConvolUniform";
  if (isMean) trial.SetVector(1, content);
  if (operation.parameters.size() > 2) {
    const std::size_t number = isMean ? random.Below((length + 1) / 2) : random.Below(length) + 1;
    trial.call.SetNumber(2, static_cast<double>(number));
  }
  return trial;
}

// Lengths of several vectors, and in place what a call makes apart.
TEST(Profile, FiltersOfEveryLengthInPlaceToo) {
  int filters = 0;
  for (const Operation& operation : catalogue::All()) {
    if (!IsFilter(operation)) continue;
    ++filters;
    SCOPED_TRACE(operation.signature);
    Random random(operation.signature);
    for (std::size_t length = 1; length < 300; ++length) {
      Trial trial = NoiseTrial(operation, length, random);
      ASSERT_EQ(trial.Expect(*FindReference(operation.signature)).error, LX_OK);
      const auto kind = operation.parameters[0].kind;
      for (const ExecutionPath& path : ExecutionPaths()) {
        const PathScope scope(path);
        trial.Run();
        ASSERT_EQ(trial.Difference(), "") << path.name << ' ' << length << trial.call.Text();
        const VectorObject same = MakeVector(kind, *trial.call.Content(0));
        auto values = trial.call.values;
        values[0] = values[1] = same.argument;
        operation.call(values);
        ASSERT_EQ(ReadVector(kind, same.argument), ReadVector(kind, trial.call.values[1]))
            << path.name << ' ' << length << trial.call.Text();
      }
    }
  }
  EXPECT_EQ(filters, 10);
}

TEST(Profile, NoPassesOnlyResize) {
  auto source = Made<LxBW8Vector>({5, 6});
  auto destination = Made<LxBW8Vector>({1, 2, 3});
  PicConvolGaussian(&source, &destination, 0);
  EXPECT_EQ(SamplesOf(destination), (std::vector<unsigned>{1, 2}));
  PicDilate(&source, &destination, 0);
  EXPECT_EQ(SamplesOf(destination), (std::vector<unsigned>{1, 2}));
}

TEST(Profile, MeansOfSumsBeyond32Bits) {
  auto samples = Made<LxBW16Vector>(std::vector<unsigned>(70001, 65535));
  PicConvolUniform(&samples, &samples, 35000);
  EXPECT_EQ(LxGetError(), LX_OK);
  EXPECT_EQ(SamplesOf(samples), std::vector<unsigned>(70001, 65535));
}

TEST(Peaks, OfASmallProfile) {
  auto profile = Made<LxBW8Vector>({10, 0, 0, 10, 12, 10, 0, 9});
  LxPeaksVector peaks(0);
  PicGetProfilePeaks(&profile, &peaks, 0, 5, 0, 0);
  ASSERT_EQ(peaks.GetNumElements(), 1U);
  EXPECT_EQ(peaks[0].m_un32Start, 3U);
  EXPECT_EQ(peaks[0].m_un32Length, 3U);
  EXPECT_EQ(peaks[0].m_f32Center, 4.0F);
  EXPECT_EQ(peaks[0].m_n32Amplitude, 7);
  EXPECT_EQ(peaks[0].m_n32Area, 17);
}

// Areas of more than 32 bits, moments of more than 53, thresholds far beyond the samples.
TEST(Peaks, HugeOnesSaturate) {
  constexpr unsigned kCount = 1U << 20;
  std::vector<unsigned> samples(kCount, 65535);
  samples.front() = samples.back() = 100;
  auto profile = Made<LxBW16Vector>(samples);
  LxPeaksVector peaks(0);
  PicGetProfilePeaks(&profile, &peaks, 100, 101, 0, INT32_MAX);
  ASSERT_EQ(peaks.GetNumElements(), 1U);
  EXPECT_EQ(peaks[0].m_n32Amplitude, 65434);
  EXPECT_EQ(peaks[0].m_n32Area, INT32_MAX);
  EXPECT_EQ(peaks[0].m_f32Center, (kCount - 1) / 2.0F);

  constexpr unsigned kFar = 3000000000;
  auto small = Made<LxBW8Vector>({255, 1, 1, 255});
  PicGetProfilePeaks(&small, &peaks, kFar, kFar, 0, 0);
  EXPECT_EQ(peaks.GetNumElements(), 0U);  // one run over all of it
}

TEST(Peaks, WithoutRoomThoseBeforeStay) {
  auto profile = Made<LxBW8Vector>({0, 9, 0, 8, 0, 7, 0, 6, 0, 5, 0});
  LxPeaksVector peaks(0);
  const auto search = [&] {
    peaks.SetMaxElements(0, 0);
    PicGetProfilePeaks(&profile, &peaks, 0, 4, 0, 0);
  };
  unsigned found = 0;
  FailEachAllocation(search, [&] {
    EXPECT_EQ(LxGetError(), LX_ERROR_ALLOCATION_FAILED);
    EXPECT_EQ(peaks.GetNumElements(), found);
    for (unsigned i = 0; i < found; ++i) EXPECT_EQ(peaks[i].m_un32Start, 2 * i + 1);
    found = found == 0 ? 1 : 2 * found;
  });
  EXPECT_EQ(peaks.GetNumElements(), 5U);
}

TEST(LineSegment, HasExactlyItsRoom) {
  LxImage<LxBW8> image(40, 30);
  LxBW8Vector profile(100, 0);
  PicImageToLineSegment(&image, &profile, 39, 2, 0, 27);
  EXPECT_EQ(profile.GetNumElements(), 40U);
  EXPECT_EQ(profile.GetMaxElements(), 40U);
}

}  // namespace
}  // namespace lx::test
