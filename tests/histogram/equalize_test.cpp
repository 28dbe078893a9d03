// SPDX-License-Identifier: Apache-2.0
#include "lxpic/histogram/equalize.h"

#include <gtest/gtest.h>

#include "support/filled.h"
#include "support/outcome_text.h"
#include "vectors/histograms.h"

namespace lx::test {
namespace {

TEST(SetupEqualize, SharesOfDarkerPixels) {
  auto one = HistogramWith({{100, 7}});
  LxBW8Vector table(300, 1);
  PicSetupEqualize(&one, &table);
  EXPECT_EQ(TakeOutcome(), "0");
  ASSERT_EQ(table.GetNumElements(), 256U);
  EXPECT_EQ(table.GetMaxElements(), 256U);
  EXPECT_EQ(table[100], 0);
  EXPECT_EQ(table[101], 255);
  // Products beyond 32 bits.
  auto large = HistogramWith({{0, 4000000000U}, {1, 4000000000U}, {255, 1}});
  PicSetupEqualize(&large, &table);
  EXPECT_EQ(table[0], 0);
  EXPECT_EQ(table[1], 127);
  EXPECT_EQ(table[2], 254);
}

TEST(SetupEqualize, OfUntypedVectorsScalesTo256) {
  LxVector histogram;
  histogram.SetType(LX_VECTOR_HISTOGRAM, 0, 0);
  static_cast<unsigned*>(histogram.GetDataPtr())[10] = 1;
  static_cast<unsigned*>(histogram.GetDataPtr())[20] = 3;
  const auto expect = [](const LxVector& table) {
    EXPECT_EQ(TakeOutcome(), "0");
    EXPECT_EQ(table.GetVectType(), LX_VECTOR_TABLE);
    ASSERT_EQ(table.GetGroupLength(), 256);
    const auto* const entries = static_cast<const std::uint8_t*>(table.GetDataPtr());
    EXPECT_EQ(entries[10], 0);
    EXPECT_EQ(entries[11], 64);
    EXPECT_EQ(entries[20], 64);
    EXPECT_EQ(entries[21], 0);  // 256 in eight bits
  };
  // A table that is too short is laid out anew.
  LxVector table;
  table.SetType(LX_VECTOR_TABLE, 1, 255);
  PicSetupEqualize(&histogram, &table);
  expect(table);
  // The table may take the place of its histogram.
  PicSetupEqualize(&histogram, &histogram);
  expect(histogram);
}

TEST(Equalize, OneLevelOfWordsBecomesWhite) {
  Filled<LxBW16> words(33, 5, LxBW16(100));
  PicEqualize(&words, &words);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(words.GetPixel(32, 4), 65535);
}

}  // namespace
}  // namespace lx::test
