// SPDX-License-Identifier: Apache-2.0
#include "lxpic/histogram/histogram.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <vector>

#include "support/allocation_failure.h"
#include "support/filled.h"
#include "support/outcome_text.h"

namespace lx::test {
namespace {

unsigned long long TotalOf(const LxBWHistogramVector& histogram) {
  return std::accumulate(histogram.begin(), histogram.end(), 0ULL);
}

// Rows of whole vectors and what is left of them. Bin -1 is none.
template <class Pixel>
void ExpectBin(unsigned pixel, unsigned msb, unsigned bits, int saturate, int bin) {
  SCOPED_TRACE(testing::Message() << std::hex << pixel << ' ' << msb << ' ' << bits);
  Filled<Pixel> image(75, 3, Pixel(static_cast<decltype(Pixel::value)>(pixel)));
  LxBWHistogramVector histogram(3);
  PicHistogram(&image, &histogram, msb, bits, saturate);
  EXPECT_EQ(TakeOutcome(), "0");
  ASSERT_EQ(histogram.GetNumElements(), 1U << bits);
  EXPECT_EQ(TotalOf(histogram), bin < 0 ? 0U : 225U);
  EXPECT_EQ(histogram[static_cast<unsigned>(std::max(bin, 0))], bin < 0 ? 0U : 225U);
}

template <class Pixel>
void ExpectBins() {
  ExpectBin<Pixel>(0x0FFF, 11, 8, 0, 255);
  ExpectBin<Pixel>(0x000F, 11, 8, 0, 0);
  ExpectBin<Pixel>(0x1000, 11, 8, 0, -1);
  ExpectBin<Pixel>(0x1000, 11, 8, 1, 255);
  ExpectBin<Pixel>(0x8000, 14, 0, 0, -1);
  ExpectBin<Pixel>(0x0002, 0, 1, -5, 1);
  ExpectBin<Pixel>(0x1ABC, 12, 13, 0, 0x1ABC);
  ExpectBin<Pixel>(0x2ABC, 12, 13, 1, 0x1FFF);
}

TEST(Histogram, BinsOfChosenBits) {
  ExpectBins<LxBW16>();
  ExpectBins<LxBW32>();
  ExpectBin<LxBW16>(0xFFFF, 15, 16, 0, 65535);
  ExpectBin<LxBW32>(0xFFFFFFFF, 31, 24, 0, 0xFFFFFF);
  ExpectBin<LxBW32>(0xFFFFFFFF, 31, 0, 0, 0);
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

TEST(Histogram, CountsAPixelOnceForEachOfItsRuns) {
  Filled<LxBW8> image(20, 6, LxBW8(3));
  for (const auto& [x, length] : {std::pair{5, 10}, {8, 2}, {0, 6}, {15, 0}, {14, 4}}) {
    image.AddRun(x, 3, length);
  }
  LxBWHistogramVector histogram(256);
  PicHistogram(&image, &histogram);
  EXPECT_EQ(histogram[3], 22U);
  EXPECT_EQ(TotalOf(histogram), 22U);
}

TEST(Histogram, LaysUntypedVectorsOut) {
  Filled<LxBW8> image(9, 9, LxBW8(3));
  LxVector vector;
  const auto expectCounted = [&] {
    PicHistogram(&image, &vector);
    EXPECT_EQ(TakeOutcome(), "0");
    EXPECT_EQ(vector.GetVectType(), LX_VECTOR_HISTOGRAM);
    ASSERT_EQ(vector.GetGroupLength(), 256);
    EXPECT_EQ(static_cast<const unsigned*>(vector.GetDataPtr())[3], 81U);
  };
  // Entries enough, of another kind; the kind without entries.
  vector.SetStructure(LX_DATA_SIZE_32, 1, 256, LX_DATA_UNSIGNED);
  expectCounted();
  vector.SetType(LX_VECTOR_HISTOGRAM, 1, 0);
  expectCounted();
}

}  // namespace
}  // namespace lx::test
