// SPDX-License-Identifier: Apache-2.0
#include "lxpic/histogram/histogram.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

#include "support/allocation_failure.h"
#include "support/filled.h"
#include "support/outcome_text.h"

namespace lx::test {
namespace {

using Counts = std::vector<unsigned>;

Counts CountsOf(const LxBWHistogramVector& histogram) {
  return {histogram.begin(), histogram.end()};
}

unsigned long long TotalOf(const LxBWHistogramVector& histogram) {
  return std::accumulate(histogram.begin(), histogram.end(), 0ULL);
}

// A histogram of three bins that refusals must leave alone.
class Kept : public LxBWHistogramVector {
 public:
  Kept() : LxBWHistogramVector(3) {
    for (const unsigned count : {7U, 8U, 9U}) AddElement(count);
  }
  bool IsKept() const { return CountsOf(*this) == Counts{7, 8, 9}; }
};

TEST(Histogram, BinsOfWords) {
  struct Row {
    unsigned pixel;
    unsigned msb;
    unsigned bits;
    int saturate;
    int bin;  // -1: none
  };
  const std::vector<Row> rows = {
      {0x0FFF, 11, 8, 0, 255},     {0x0010, 11, 8, 0, 1},   {0xFFFF, 11, 8, 1, 255},
      {0xFFFF, 11, 8, 0, -1},      {0x1000, 11, 8, 0, -1},  {0x000F, 11, 8, 0, 0},
      {0xFFFF, 15, 16, 0, 65535},  {0xFFFF, 15, 1, 0, 1},   {0x7FFF, 15, 1, 0, 0},
      {0xFFFF, 15, 0, 0, 0},       {0x8000, 14, 0, 0, -1},  {0x8000, 14, 0, 1, 0},
      {0x0001, 0, 1, 0, 1},        {0x0002, 0, 1, -5, 1},   {0x0002, 0, 1, 0, -1},
      {0x1ABC, 12, 13, 0, 0x1ABC}, {0x2ABC, 12, 13, 0, -1}, {0x2ABC, 12, 13, 1, 0x1FFF}};
  for (const Row& row : rows) {
    // Rows of whole vectors and what is left of them.
    Filled<LxBW16> image(75, 3, LxBW16(static_cast<std::uint16_t>(row.pixel)));
    Filled<LxBW32> wide(75, 3, LxBW32(row.pixel));
    for (int depth = 16; depth <= 32; depth += 16) {
      if (depth == 32 && row.msb == 15) continue;
      Kept histogram;
      if (depth == 16) {
        PicHistogram(&image, &histogram, row.msb, row.bits, row.saturate);
      } else {
        PicHistogram(&wide, &histogram, row.msb, row.bits, row.saturate);
      }
      const auto name = testing::Message() << std::hex << row.pixel << ' ' << row.msb << ' '
                                           << row.bits << ' ' << depth;
      ASSERT_EQ(TakeOutcome(), "0") << name;
      ASSERT_EQ(histogram.GetNumElements(), 1U << row.bits) << name;
      EXPECT_EQ(TotalOf(histogram), row.bin < 0 ? 0U : 225U) << name;
      if (row.bin >= 0) {
        EXPECT_EQ(histogram[static_cast<unsigned>(row.bin)], 225U) << name;
      }
    }
  }
}

TEST(Histogram, BinsOfTheTopOfLongs) {
  Filled<LxBW32> image(3, 3, LxBW32(0xFFFFFFFF));
  Kept histogram;
  PicHistogram(&image, &histogram, 31, 24, 0);
  EXPECT_EQ(TakeOutcome(), "0");
  ASSERT_EQ(histogram.GetNumElements(), 1U << 24);
  EXPECT_EQ(histogram[0xFFFFFF], 9U);
  PicHistogram(&image, &histogram, 31, 0, 0);
  EXPECT_EQ(CountsOf(histogram), Counts{9});
}

TEST(Histogram, ChecksItsArgumentsInOrder) {
  LxImage<LxBW8> bytes(4, 4);
  LxImage<LxBW16> words(4, 4);
  LxImage<LxBW32> longs(4, 4);
  LxImage<LxBW8> noBytes;
  LxImage<LxBW16> noWords;
  LxBWHistogramVector* const none = nullptr;
  LxVector* const noVector = nullptr;
  Kept kept;
  LxVector vector;
  const auto expect = [](const char* outcome) { EXPECT_EQ(TakeOutcome(), outcome); };

  PicHistogram(&noBytes, none);
  expect("1400 PicHistogram");
  PicHistogram(&bytes, none);
  expect("1601 PicHistogram");
  PicHistogram(&noBytes, noVector);
  expect("1400 PicHistogram ( LxVector)");
  PicHistogram(nullptr, &vector);
  expect("1400 PicHistogram ( LxVector)");
  PicHistogram(&bytes, noVector);
  expect("1601 PicHistogram ( LxVector)");
  EXPECT_EQ(vector.GetVectType(), LX_VECTOR_NONE);
  PicHistogram(&noWords, none, 16, 18, 0);
  expect("1400 PicHistogram ( LxBW16)");
  PicHistogram(&words, none, 16, 18, 0);
  expect("1601 PicHistogram ( LxBW16)");
  PicHistogram(&words, &kept, 16, 18, 0);
  expect("1013 PicHistogram ( LxBW16)");
  PicHistogram(&words, &kept, 15, 17, 0);
  expect("1014 PicHistogram ( LxBW16)");
  PicHistogram(&words, &kept, 0, 2, 0);
  expect("1014 PicHistogram ( LxBW16)");
  PicHistogram(&words, &kept, 0xFFFFFFFF, 0, 1);
  expect("1013 PicHistogram ( LxBW16)");
  PicHistogram(&longs, &kept, 32, 0, 1);
  expect("1013 PicHistogram ( LxBW32)");
  for (const unsigned bits : {25U, 32U, 33U, 0xFFFFFFFFU}) {
    PicHistogram(&longs, &kept, 31, bits, 0);
    expect("1014 PicHistogram ( LxBW32)");
  }
  EXPECT_TRUE(kept.IsKept());
}

TEST(Histogram, SurvivesEveryAllocationFailure) {
  LxImage<LxBW8> bytes(4, 4);
  for (int y = 0; y < 4; ++y) bytes.AddRun(0, y, 2);
  LxImage<LxBW16> words(4, 4);
  const auto fail = [](const char* trace, const auto& scene) {
    Kept kept;
    EXPECT_GE(FailEachAllocation([&] { scene(kept); },
                                 [&] {
                                   const std::string outcome = TakeOutcome();
                                   EXPECT_EQ(outcome.substr(0, 4), "1303");
                                   EXPECT_NE(outcome.find(trace), std::string::npos) << outcome;
                                   EXPECT_TRUE(kept.IsKept());
                                 }),
              1);
    EXPECT_EQ(TakeOutcome(), "0");
  };
  fail("PicHistogram", [&](auto& kept) { PicHistogram(&bytes, &kept); });
  fail("PicHistogram ( LxBW16)", [&](auto& kept) { PicHistogram(&words, &kept, 14, 12, 0); });
}

TEST(Histogram, NeedsNoMemoryButItsBins) {
  LxImage<LxBW8> bytes(40, 40);
  LxImage<LxBW16> words(40, 40);
  LxBWHistogramVector histogram(70000);
  const auto before = AllocationCount();
  PicHistogram(&bytes, &histogram);
  for (const unsigned bits : {3U, 10U, 12U, 16U}) PicHistogram(&words, &histogram, 15, bits, 0);
  PicHistogram(&words, &histogram, 13, 12, 0);
  EXPECT_EQ(AllocationCount(), before);
}

// An image whose pixels are 0 in row 0, 1 in row 1, and so on.
class Stairs : public LxImage<LxBW8> {
 public:
  Stairs() : LxImage<LxBW8>(20, 6) {
    for (int y = 0; y < 6; ++y) {
      for (int x = 0; x < 20; ++x) SetPixel(LxBW8(static_cast<std::uint8_t>(y)), x, y);
    }
  }
};

TEST(Histogram, CountsAPixelOnceForEachOfItsRuns) {
  Stairs image;
  image.AddRun(5, 3, 10);
  image.AddRun(0, 1, 20);
  image.AddRun(8, 3, 2);
  image.AddRun(0, 3, 6);
  image.AddRun(15, 3, 0);
  image.AddRun(14, 3, 4);
  LxBWHistogramVector histogram(256);
  PicHistogram(&image, &histogram);
  EXPECT_EQ(histogram[1], 20U);
  EXPECT_EQ(histogram[3], 22U);
  EXPECT_EQ(TotalOf(histogram), 42U);
  // The older form does not know runs.
  LxVector vector;
  PicHistogram(&image, &vector);
  EXPECT_EQ(static_cast<const unsigned*>(vector.GetDataPtr())[5], 20U);
}

TEST(Histogram, RunsOfNoPixelsCountNothing) {
  Stairs image;
  image.AddRun(3, 3, 0);
  Kept histogram;
  PicHistogram(&image, &histogram);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(histogram.GetNumElements(), 256U);
  EXPECT_EQ(TotalOf(histogram), 0U);
}

TEST(Histogram, RunsThatLeaveTheirRegionAreRefused) {
  Stairs image;
  LxROI<LxBW8> region(&image, 2, 2, 10, 3);
  region.AddRun(0, 0, 1);
  region.AddRun(4, 2, 6);
  Kept histogram;
  region.SetPlacement(2, 2, 10, 2);
  PicHistogram(&region, &histogram);
  EXPECT_EQ(TakeOutcome(), "1007 PicHistogram");
  region.SetPlacement(2, 2, 9, 3);
  PicHistogram(&region, &histogram);
  EXPECT_EQ(TakeOutcome(), "1007 PicHistogram");
  EXPECT_TRUE(histogram.IsKept());
  // Offsets follow the region, addresses do not.
  region.SetPlacement(3, 2, 10, 3);
  PicHistogram(&region, &histogram);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(histogram[4], 6U);
  LxVectorTemplate<LxRun> runs(region.GetRuns());
  const auto origin = reinterpret_cast<std::uintptr_t>(region.GetPixelPtr(0, 0));
  for (LxRun& run : runs) {
    run.start += origin;
    run.end += origin;
  }
  region.SetRuns(runs, true);
  PicHistogram(&region, &histogram);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(TotalOf(histogram), 7U);
  region.SetPlacement(2, 2, 10, 3);
  PicHistogram(&region, &histogram);
  EXPECT_EQ(TakeOutcome(), "1007 PicHistogram");
  // Another image below, whose rows lie elsewhere.
  region.SetRuns({}, false);
  image.AddRun(0, 5, 20);
  image.SetSize(70, 6);
  PicHistogram(&image, &histogram);
  EXPECT_EQ(TakeOutcome(), "1007 PicHistogram");
}

TEST(Histogram, LaysUntypedVectorsOut) {
  Filled<LxBW8> image(9, 9, LxBW8(3));
  LxVector vector;
  const auto count = [&](unsigned level) {
    PicHistogram(&image, &vector);
    EXPECT_EQ(TakeOutcome(), "0");
    EXPECT_EQ(vector.GetVectType(), LX_VECTOR_HISTOGRAM);
    return static_cast<const unsigned*>(vector.GetDataPtr())[level];
  };
  vector.SetStructure(LX_DATA_SIZE_32, 1, 256, LX_DATA_UNSIGNED);
  EXPECT_EQ(count(3), 81U);
  EXPECT_EQ(vector.GetGroupLength(), 256);
  for (const int entries : {0, 1, 255}) {
    vector.SetType(LX_VECTOR_HISTOGRAM, 1, entries);
    EXPECT_EQ(count(3), 81U);
    EXPECT_EQ(vector.GetGroupLength(), 256);
  }
  // Entries beyond the first 256 stay.
  vector.SetType(LX_VECTOR_HISTOGRAM, 1, 300);
  static_cast<unsigned*>(vector.GetDataPtr())[256] = 77;
  static_cast<unsigned*>(vector.GetDataPtr())[255] = 77;
  EXPECT_EQ(count(255), 0U);
  EXPECT_EQ(count(256), 77U);
}

}  // namespace
}  // namespace lx::test
