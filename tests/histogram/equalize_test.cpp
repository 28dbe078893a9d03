// SPDX-License-Identifier: Apache-2.0
#include "lxpic/histogram/equalize.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/allocation_failure.h"
#include "support/filled.h"
#include "support/outcome_text.h"

namespace lx::test {
namespace {

// 256 bins that are 0 but for some.
class Histogram : public LxBWHistogramVector {
 public:
  explicit Histogram(const std::vector<std::pair<unsigned, unsigned>>& counts)
      : LxBWHistogramVector(256) {
    SetNumElements(256);
    Clear();
    for (const auto& [bin, count] : counts) (*this)[bin] = count;
  }
};

TEST(SetupEqualize, SharesOfDarkerPixels) {
  Histogram histogram({{100, 7}});
  LxBW8Vector table(300, 1);
  PicSetupEqualize(&histogram, &table);
  EXPECT_EQ(TakeOutcome(), "0");
  ASSERT_EQ(table.GetNumElements(), 256U);
  EXPECT_EQ(table.GetMaxElements(), 256U);
  EXPECT_EQ(table[100], 0);
  EXPECT_EQ(table[101], 255);
  // Products beyond 32 bits.
  Histogram large({{0, 4000000000U}, {1, 4000000000U}, {255, 1}});
  PicSetupEqualize(&large, &table);
  EXPECT_EQ(table[0], 0);
  EXPECT_EQ(table[1], 127);
  EXPECT_EQ(table[2], 254);
}

TEST(SetupEqualize, OfUntypedVectorsScalesTo256) {
  LxVector histogram;
  LxVector table;
  histogram.SetType(LX_VECTOR_HISTOGRAM, 0, 0);
  auto* const counts = static_cast<unsigned*>(histogram.GetDataPtr());
  counts[10] = 1;
  counts[20] = 3;
  const auto entry = [&](int level) {
    return static_cast<const std::uint8_t*>(table.GetDataPtr())[level];
  };
  PicSetupEqualize(&histogram, &table);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(table.GetVectType(), LX_VECTOR_TABLE);
  EXPECT_EQ(table.GetGroupLength(), 256);
  EXPECT_EQ(entry(10), 0);
  EXPECT_EQ(entry(20), 64);
  EXPECT_EQ(entry(21), 0);  // 256 in eight bits
  table.SetType(LX_VECTOR_TABLE, 1, 255);
  PicSetupEqualize(&histogram, &table);
  EXPECT_EQ(entry(11), 64);
  EXPECT_EQ(table.GetGroupLength(), 256);
  // The table may take the place of its histogram.
  PicSetupEqualize(&histogram, &histogram);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(histogram.GetVectType(), LX_VECTOR_TABLE);
  EXPECT_EQ(static_cast<const std::uint8_t*>(histogram.GetDataPtr())[20], 64);
}

TEST(SetupEqualize, Refusals) {
  constexpr const char* kName = " PicSetupEqualize ( LxBWHistogramVector)";
  Histogram histogram({{1, 1}});
  Histogram empty({});
  LxBWHistogramVector shorter(256);
  shorter.SetNumElements(255);
  LxBW8Vector table(3, 1);
  PicSetupEqualize(&histogram, nullptr);
  EXPECT_EQ(TakeOutcome(), std::string("1601") + kName);
  PicSetupEqualize(static_cast<LxBWHistogramVector*>(nullptr), &table);
  EXPECT_EQ(TakeOutcome(), std::string("1601") + kName);
  PicSetupEqualize(&shorter, &table);
  EXPECT_EQ(TakeOutcome(), std::string("1613") + kName);
  PicSetupEqualize(&empty, &table);
  EXPECT_EQ(TakeOutcome(), std::string("1051") + kName);
  EXPECT_EQ(table.GetNumElements(), 3U);
}

TEST(SetupEqualize, RefusalsOfUntypedVectors) {
  LxVector vector;
  LxVector table;
  const auto expect = [&](LxVector* histogram, LxVector* to, const char* code) {
    PicSetupEqualize(histogram, to);
    EXPECT_EQ(TakeOutcome(), std::string(code) + " PicSetupEqualize ( LxVector)");
  };
  expect(nullptr, &table, "1601");
  expect(&vector, &table, "1603");
  vector.SetType(LX_VECTOR_TABLE, 1, 256);
  expect(&vector, &table, "1603");
  vector.SetType(LX_VECTOR_HISTOGRAM, 1, 0);
  expect(&vector, &table, "1601");
  vector.SetType(LX_VECTOR_HISTOGRAM, 1, 255);
  expect(&vector, &table, "1613");
  vector.SetType(LX_VECTOR_HISTOGRAM, 0, 0);
  expect(&vector, nullptr, "1601");
  expect(&vector, &table, "1051");
  EXPECT_EQ(table.GetVectType(), LX_VECTOR_NONE);
}

TEST(Equalize, OneLevelBecomesBlackOrWhite) {
  Filled<LxBW8> grey(33, 5, LxBW8(100));
  PicEqualize(&grey, &grey);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(grey.GetPixel(32, 4), 0);
  Filled<LxBW16> words(33, 5, LxBW16(100));
  PicEqualize(&words, &words);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(words.GetPixel(32, 4), 65535);
}

TEST(Equalize, StepsKeepTheirTrace) {
  Filled<LxBW8> image(4, 4, LxBW8(9));
  Filled<LxBW8> other(5, 4, LxBW8(1));
  LxImage<LxBW8> unattached;
  PicEqualize(nullptr, &image);
  EXPECT_EQ(TakeOutcome(), "1400 PicEqualize");
  PicEqualize(&image, &unattached);
  EXPECT_EQ(TakeOutcome(), "1400 PicEqualize");
  PicEqualize(&image, &other);
  EXPECT_EQ(TakeOutcome(), "1403 PicEqualize");
  // Runs confine what is counted, not what is mapped.
  image.AddRun(1, 1, 0);
  PicEqualize(&image, &image);
  EXPECT_EQ(TakeOutcome(), "1051 PicSetupEqualize ( LxBWHistogramVector) < PicEqualize");
  EXPECT_EQ(image.GetPixel(0, 0), 9);
  EXPECT_EQ(other.GetPixel(4, 3), 1);
  image.SetPixel(LxBW8(5), 0, 0);
  image.AddRun(0, 0, 2);
  PicEqualize(&image, &image);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(image.GetPixel(3, 3), 127);
}

TEST(Equalize, OfWordsChecksBothRegionsFirst) {
  Filled<LxBW16> image(4, 4, LxBW16(9));
  Filled<LxBW16> other(4, 5, LxBW16(1));
  LxImage<LxBW16> unattached;
  PicEqualize(&unattached, &image);
  EXPECT_EQ(TakeOutcome(), "1400 PicEqualize (BW16)");
  PicEqualize(&image, nullptr);
  EXPECT_EQ(TakeOutcome(), "1400 PicEqualize (BW16)");
  PicEqualize(&image, &other);
  EXPECT_EQ(TakeOutcome(), "1403 PicEqualize (BW16)");
  EXPECT_EQ(FailEachAllocation([&] { PicEqualize(&image, &image); },
                               [&] {
                                 EXPECT_EQ(TakeOutcome(), "1303 PicEqualize (BW16)");
                                 EXPECT_EQ(image.GetPixel(0, 0), 9);
                               }),
            2);
}

TEST(Equalize, EmptyRegions) {
  LxImage<LxBW8> bytes(0, 5);
  LxImage<LxBW8> others(5, 0);
  LxImage<LxBW16> words(5, 0);
  PicEqualize(&bytes, &bytes);
  EXPECT_EQ(TakeOutcome(), "0");
  PicEqualize(&bytes, &others);
  EXPECT_EQ(TakeOutcome(), "1403 PicEqualize");
  PicEqualize(&words, &words);
  EXPECT_EQ(TakeOutcome(), "0");
}

}  // namespace
}  // namespace lx::test
