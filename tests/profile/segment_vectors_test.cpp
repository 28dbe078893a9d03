// SPDX-License-Identifier: Apache-2.0
// Segment vectors, and filters of vectors, at their edges.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <vector>

#include "lxpic/lxpic.h"
#include "support/allocation_failure.h"
#include "support/filled.h"
#include "support/outcome_text.h"

namespace lx::test {
namespace {

constexpr int kLargest = std::numeric_limits<int>::max();
constexpr int kSmallest = std::numeric_limits<int>::min();

// One group of integers.
template <class T>
class Signal : public LxVector {
 public:
  explicit Signal(const std::vector<T>& elements) {
    SetStructure(2 * sizeof(T), 1, static_cast<int>(elements.size()),
                 std::is_signed_v<T> ? LX_DATA_SIGNED : LX_DATA_UNSIGNED);
    std::copy(elements.begin(), elements.end(), static_cast<T*>(GetDataPtr()));
  }
};

template <class T>
std::vector<T> ElementsOf(const LxVector& vector) {
  const auto* const data = static_cast<const T*>(vector.GetDataPtr());
  return {data, data + vector.GetNbGroup() * vector.GetGroupLength()};
}

std::vector<int> NumbersOf(const LxVector& vector) { return ElementsOf<int>(vector); }

TEST(SegmentVector, StorageWithRoomStays) {
  Filled<LxBW8> image(40, 30, 7);
  LxVector segment;
  PicLineSegToVect(&image, &segment, 39, 0, 0, 0);
  const void* const data = segment.GetDataPtr();
  segment.SetUse(0);
  PicLineSegToVect(&image, &segment, 3, 4, 3, 4);
  EXPECT_EQ(segment.GetDataPtr(), data);
  EXPECT_EQ(segment.GetUse(), 5);
  EXPECT_EQ(NumbersOf(segment), (std::vector<int>{7, 3, 4}));
  // Groups of four are laid out anew, and are no segment to draw.
  segment.SetType(LX_VECTOR_SEGMENT, 40, 4);
  PicVectToLineSeg(&segment, &image);
  EXPECT_EQ(TakeOutcome(), "1602 PicVectToLineSeg");
  PicVectToLineSeg(&segment, 0, 0, 3, 0, &image);
  EXPECT_EQ(TakeOutcome(), "1602 PicVectToLineSeg");
  PicTransitionScan(TRANS_SCAN_EDGE_ANY, &image, 0, 0, 9, 0, 3, 0, &segment);
  EXPECT_EQ(segment.GetGroupLength(), 3);
  EXPECT_EQ(segment.GetNbGroup(), 0);
}

TEST(SegmentVector, AGroupTooFewAndAGroupOutside) {
  Filled<LxBW8> image(9, 9, 7);
  LxVector segment;
  PicLineSegToVect(&image, &segment, 0, 0, 6, 3);
  PicVectToLineSeg(&segment, 8, 0, 8, 7, &image);
  EXPECT_EQ(TakeOutcome(), "1602 PicVectToLineSeg");
  PicVectToLineSeg(&segment, 8, 0, 8, 6, &image);
  EXPECT_EQ(TakeOutcome(), "0");
  // In the middle, where the ends say nothing about it.
  auto* const numbers = static_cast<int*>(segment.GetDataPtr());
  numbers[0] = 200;
  for (const int outside : {-1, 9, kSmallest, kLargest}) {
    numbers[3 * 3 + 2] = outside;
    PicVectToLineSeg(&segment, &image);
    EXPECT_EQ(TakeOutcome(), "1007 PicVectToLineSeg");
  }
  EXPECT_EQ(image.GetPixel(0, 0), 7);
}

TEST(TransitionScan, KeepsThePixelsBehindTheCrossings) {
  LxImage<LxBW8> image(5, 1);
  const std::uint8_t levels[] = {0, 0, 200, 200, 0};
  std::copy(std::begin(levels), std::end(levels),
            static_cast<std::uint8_t*>(image.GetPixelPtr(0, 0)));
  LxVector found;
  const auto scan = [&](TRANS_SCAN_EDGE edge, int threshold, int maximum) {
    PicTransitionScan(edge, &image, 0, 0, 4, 0, threshold, maximum, &found);
    return NumbersOf(found);
  };
  EXPECT_EQ(scan(TRANS_SCAN_EDGE_ANY, 100, 0), (std::vector<int>{2, 0, 1, 4, 0, 2}));
  EXPECT_EQ(scan(TRANS_SCAN_EDGE_ANY, 100, 1), (std::vector<int>{2, 0, 1}));
  EXPECT_EQ(scan(TRANS_SCAN_EDGE_RISING, 200, kLargest), (std::vector<int>{2, 0, 1}));
  EXPECT_EQ(scan(TRANS_SCAN_EDGE_FALLING, 0, kSmallest), (std::vector<int>{4, 0, 2}));
}

TEST(VectorTransition, ResultsHoldAsManyPairsAsTheyHadRoomFor) {
  Signal<std::int8_t> source({0, 10, 0});
  LxVector found;
  PicGetVectTransition(&source, &found, 5);
  EXPECT_EQ(TakeOutcome(), "1608 PicGetVectTransition");
  PicGetVectTransition(&source, &found, 10);
  EXPECT_EQ(TakeOutcome(), "0");
  found.SetStructure(LX_DATA_SIZE_8, 8, 1, LX_DATA_UNSIGNED);
  PicGetVectTransition(&source, &found, 5);
  EXPECT_EQ(TakeOutcome(), "1608 PicGetVectTransition");
  EXPECT_EQ(NumbersOf(found), (std::vector<int>{0, 10}));
  found.SetStructure(LX_DATA_SIZE_8, 16, 1, LX_DATA_UNSIGNED);
  PicGetVectTransition(&source, &found, 5);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(NumbersOf(found), (std::vector<int>{0, 10, 1, -10}));
  Signal<int> extremes({kSmallest, kLargest});
  PicGetVectTransition(&extremes, &found, -1);
  EXPECT_EQ(NumbersOf(found), (std::vector<int>{0, -1}));
  EXPECT_EQ(found.GetUse(), 7);
}

TEST(VectorFilters, RefuseTheirOwnSource) {
  Signal<int> vector({1, 2, 3});
  LxKernel kernel(3, 1, 1.0F, 0, RECTIFIER_NONE, 0);
  PicConvolVect(&vector, &vector, &kernel, 0, -1);
  EXPECT_EQ(TakeOutcome(), "1413 PicConvolVect");
  PicGetVectTransition(&vector, &vector, 1);
  EXPECT_EQ(TakeOutcome(), "1413 PicGetVectTransition");
  PicGetVectExtremes(&vector, &vector, 1, 2);
  EXPECT_EQ(TakeOutcome(), "1413 PicGetVectExtremes");
  EXPECT_EQ(NumbersOf(vector), (std::vector<int>{1, 2, 3}));
}

template <class T>
std::vector<T> Convolved(const std::vector<T>& elements, const std::vector<float>& taps, float gain,
                         short rectifier, unsigned offset = 0) {
  Signal<T> source(elements);
  LxVector result;
  LxKernel kernel(3, 1, gain, offset, rectifier, 0);
  std::copy(taps.begin(), taps.end(), kernel.GetDataPtr());
  PicConvolVect(&source, &result, &kernel, 0, -1);
  EXPECT_EQ(TakeOutcome(), "0");
  return ElementsOf<T>(result);
}

TEST(VectorConvolution, NumbersThatNoElementHolds) {
  using Ints = std::vector<int>;
  using Words = std::vector<std::uint32_t>;
  EXPECT_EQ(Convolved<int>({kLargest, kSmallest}, {0, 3, 0}, 9, 0), (Ints{kLargest, kSmallest}));
  EXPECT_EQ(Convolved<int>({kSmallest}, {0, 1, 0}, 1, RECTIFIER_NEGATIVE), (Ints{kLargest}));
  EXPECT_EQ(Convolved<int>({kSmallest}, {0, 1, 0}, 1, RECTIFIER_ABSOLUTE, 0xFFFFFFFF),
            (Ints{kLargest}));
  // Beyond signed numbers, and moved before it is clamped.
  EXPECT_EQ(Convolved<std::uint32_t>({0xFFFFFFFF}, {0, 2, 0}, 2, 2, 0x80000000),
            (Words{0xFFFFFFFF}));
  EXPECT_EQ(Convolved<std::uint32_t>({0xFFFFFFFF}, {0, 1, 0}, 1, 2, 0xFFFFFFFF),
            (Words{0xFFFFFFFE}));
  for (const float odd : {NAN, INFINITY, -INFINITY}) {
    const int whole = std::isnan(odd) ? 0 : odd > 0 ? kLargest : kSmallest;
    EXPECT_EQ(Convolved<int>({5, 5}, {0, 1, 0}, odd, 0), (Ints{0, 0}));
    EXPECT_EQ(Convolved<int>({5}, {1, odd, -1}, 0, 0), (Ints{whole}));
  }
}

TEST(VectorConvolution, PrecisionIsThatOfDoubles) {
  EXPECT_EQ(Convolved<std::uint8_t>({3, 6, 9}, {1, 1, 1}, 1, RECTIFIER_POSITIVE),
            (std::vector<std::uint8_t>{3, 6, 5}));
  // Neither product fits single precision.
  EXPECT_EQ(Convolved<int>({16777217, 16777219}, {-1, 0, 1}, 1, 0),
            (std::vector<int>{16777219, -16777217}));
}

TEST(VectorConvolution, AKernelWithoutStorageLeavesTheResultLaidOut) {
  Signal<int> source({1, 2, 3});
  LxVector result;
  const auto failing = std::make_unique<FailAllocation>(0);
  LxKernel kernel(3, 1, 1.0F, 0, RECTIFIER_NONE, 0);
  EXPECT_TRUE(failing->Fired());
  PicConvolVect(&source, &result, &kernel, 0, -1);
  EXPECT_EQ(TakeOutcome(), "1700 PicConvolVect");
  EXPECT_EQ(NumbersOf(result), (std::vector<int>{0, 0, 0}));
}

TEST(VectorExtremes, RunsEndAndStartAtTheirLimits) {
  LxVector found;
  Signal<std::int8_t> wave({0, 5, 9, 7, 0, -6, -8, 0});
  PicGetVectExtremes(&wave, &found, -2, 4);
  EXPECT_EQ(NumbersOf(found), (std::vector<int>{2, 3, 9, 5, 2, -10}));
  Signal<std::uint8_t> between({60, 120, 80, 40, 60});
  PicGetVectExtremes(&between, &found, 100U, 50U);
  EXPECT_EQ(NumbersOf(found), (std::vector<int>{1, 2, 100}));
  // The -9 ends a run and starts none.
  Signal<int> steep({9, -9, -9});
  PicGetVectExtremes(&steep, &found, 0, 0);
  EXPECT_EQ(NumbersOf(found), (std::vector<int>{0, 1, 9, 2, 1, -9}));
}

TEST(VectorExtremes, AResultThatCannotGrowHoldsWhatFitted) {
  std::vector<std::uint8_t> elements(2 * 4097);
  for (std::size_t i = 0; i < elements.size(); i += 2) elements[i] = 9;
  Signal<std::uint8_t> source(elements);
  LxVector found;
  found.SetType(LX_VECTOR_EXTREMES, 0, 0);
  {
    const FailAllocation guard(1);
    PicGetVectExtremes(&source, &found, 0U, 5U);
    EXPECT_TRUE(guard.Fired());
  }
  EXPECT_EQ(TakeOutcome(), "1303 LxVector::Reallocate < PicGetVectExtremes");
  EXPECT_EQ(found.GetNbGroup(), 4096);
  PicGetVectExtremes(&source, &found, 0U, 5U);
  EXPECT_EQ(found.GetNbGroup(), 4097);
  EXPECT_EQ(found.GetNbMaxGroup(), 3 * 2048);
  EXPECT_EQ(NumbersOf(found)[3 * 4096 + 0], 2 * 4096);
}

TEST(VectorShift, CountsBeyondTheElement) {
  Signal<std::int16_t> words({-5, 300});
  PicVectDataShift(&words, 20, 0, 0);
  EXPECT_EQ(ElementsOf<std::int16_t>(words), (std::vector<std::int16_t>{-1, 0}));
  Signal<std::uint32_t> wide({0x80000001, 3});
  PicVectDataShift(&wide, -1, 0, 0);
  EXPECT_EQ(ElementsOf<std::uint32_t>(wide), (std::vector<std::uint32_t>{2, 6}));
  PicVectDataShift(&wide, kSmallest, 0, 0);
  EXPECT_EQ(ElementsOf<std::uint32_t>(wide), (std::vector<std::uint32_t>{2, 6}));
}

}  // namespace
}  // namespace lx::test
