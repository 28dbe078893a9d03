// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <iomanip>
#include <random>
#include <sstream>

#include "lxpic/vectors/histogram_vector.h"
#include "lxpic/vectors/path_vectors.h"
#include "support/allocation_failure.h"
#include "support/outcome_text.h"
#include "vectors/histograms.h"

namespace {

using lx::test::HistogramOf;
using lx::test::TakeOutcome;

template <class Vector>
class Vectors : public testing::Test {};
using VectorTypes = testing::Types<LxPathVector, LxBW8PathVector, LxBW16PathVector, LxC24PathVector,
                                   LxPeaksVector, LxBWHistogramVector>;
TYPED_TEST_SUITE(Vectors, VectorTypes);

TYPED_TEST(Vectors, AreMadeEmptyWithRoom) {
  const TypeParam vector(5);
  EXPECT_EQ(vector.GetNumElements(), 0U);
  EXPECT_EQ(vector.GetMaxElements(), 5U);
  const lx::test::FailAllocation failing(0);
  const TypeParam none(5);
  EXPECT_EQ(TakeOutcome(), "1303 LxVector::SetMaxElements");
  EXPECT_EQ(none.GetMaxElements(), 0U);
}

TEST(Text, OfElementsFollowsTheFormatOfTheStream) {
  std::ostringstream stream;
  stream << LxPath{3, -4} << LxBW8Path{-32768, 32767, 'A'} << LxPeak{4000000000U, 7, -1.25F, -3, 90}
         << std::hex << std::setprecision(12) << LxPeak{255, 16, 0.1F, 10, 11} << LxPath{255, 1};
  EXPECT_EQ(stream.str(),
            "( LxPath : m_n16X = 3 m_n16Y = -4)"
            "( LxBW8Path : m_n16X = -32768 m_n16Y = 32767 m_bw8Pixel = A)"
            "( LxPeak : m_un32Start = 4000000000 m_un32Length = 7 m_f32Center = -1.25 "
            "m_n32Amplitude = -3 m_n32Area = 90)"
            "( LxPeak : m_un32Start = ff m_un32Length = 10 m_f32Center = 0.10000000149 "
            "m_n32Amplitude = a m_n32Area = b)( LxPath : m_n16X = ff m_n16Y = 1)");
}

TEST(Histogram, ClearKeepsTheBins) {
  auto histogram = HistogramOf({1, 2, 3});
  const unsigned room = histogram.GetMaxElements();
  histogram.Clear();
  EXPECT_EQ(histogram.GetNumElements(), 3U);
  EXPECT_EQ(histogram.GetMaxElements(), room);
  for (const unsigned count : histogram) EXPECT_EQ(count, 0U);
}

// The sum of h ln h is rounded to single precision, which the entropy of even one bin shows.
TEST(Histogram, EntropyOfKnownDistributions) {
  constexpr unsigned kLast = 0xFFFFFFFF;
  constexpr float kRounding = 5e-7F;
  EXPECT_EQ(HistogramOf({0, 0}).Entropy(0, 1), 0.0F);
  EXPECT_EQ(HistogramOf({1, 1, 1, 1}).Entropy(0, kLast), 2.0F);
  EXPECT_NEAR(HistogramOf({0, 9, 0}).Entropy(0, kLast), 0.0F, kRounding);
  EXPECT_NEAR(HistogramOf({1, 3}).Entropy(0, 1), 2 - 0.75 * std::log2(3.0), kRounding);
  // Bins outside of the range do not count.
  EXPECT_EQ(HistogramOf({7, 1, 1, 100}).Entropy(1, 2), 1.0F);
  // More pixels than 32 bits can count.
  EXPECT_NEAR(HistogramOf({4000000000U, 4000000000U}).Entropy(0, 1), 1.0F, 3e-6F);
}

// The sum as it is defined, in the widest arithmetic between its roundings.
TEST(Histogram, EntropyOfAnyCounts) {
  std::mt19937 random(9);
  auto histogram = HistogramOf(std::vector<unsigned>(256));
  for (int round = 0; round < 400; ++round) {
    std::uint64_t total = 0;
    float weighted = 0.0F;
    for (unsigned& count : histogram) {
      count = std::max(1U, static_cast<std::uint32_t>(random()) >> (random() % 32) >> (round % 32));
      total += count;
      const auto rounded = static_cast<long double>(static_cast<float>(count));
      weighted = static_cast<float>(weighted + count * std::log(rounded));
    }
    const auto pixels = static_cast<long double>(static_cast<float>(total));
    const long double nats = std::log(pixels) - weighted / static_cast<long double>(total);
    EXPECT_EQ(histogram.Entropy(0, 255), static_cast<float>(nats / std::log(2.0L))) << round;
  }
}

TEST(Histogram, EntropyChecksItsRange) {
  auto histogram = HistogramOf({5, 5});
  const auto expect = [&histogram](unsigned first, unsigned last, const char* outcome) {
    EXPECT_EQ(histogram.Entropy(first, last), 0.0F);
    EXPECT_EQ(TakeOutcome(), outcome);
  };
  expect(2, 9, "1011 LxBWHistogramVector::Entropy");
  expect(0xFFFFFFFF, 0xFFFFFFFF, "1011 LxBWHistogramVector::Entropy");
  expect(0, 2, "1012 LxBWHistogramVector::Entropy");
  expect(1, 0, "0");
}

}  // namespace
