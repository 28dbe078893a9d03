// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "lxpic/lxpic.h"
#include "support/execution_path.h"
#include "support/filled.h"

namespace lx::test {
namespace {

constexpr unsigned kTopBits = 0xFFFFFFFF;

TEST(Lut, BitsThatCannotSelect) {
  struct Row {
    unsigned entries;
    unsigned shift;
    LX_ERRORS code;
  };
  const std::vector<Row> rows = {{1, 16, LX_OK},
                                 {1, 17, LX_ERROR_ARGUMENT_4_OUT_OF_RANGE},
                                 {1, 0xFFFFFFFE, LX_ERROR_ARGUMENT_4_OUT_OF_RANGE},
                                 {300, 0, LX_ERROR_WRONG_VECTOR_SIZE},
                                 {300, 9, LX_ERROR_ARGUMENT_4_OUT_OF_RANGE},
                                 {131072, kTopBits, LX_ERROR_WRONG_VECTOR_SIZE},
                                 {0, kTopBits, LX_ERROR_WRONG_VECTOR_SIZE}};
  Filled<LxBW16> source(3, 3, 0xABCD);
  for (const Row& row : rows) {
    Filled<LxBW8> destination(3, 3, 9);
    LxBW8Vector table(row.entries, 1);
    PicLut(&source, &destination, &table, row.shift);
    EXPECT_EQ(LxGetError(), row.code) << row.entries << " " << row.shift;
    EXPECT_EQ(destination.GetPixel(2, 2), row.code == LX_OK ? 0 : 9);
  }
}

int calls = 0;
unsigned char lastArgument = 0;
unsigned char CountCalls(unsigned char value) {
  ++calls;
  lastArgument = value;
  return static_cast<unsigned char>(value + calls);
}

TEST(Transform, CallsOncePerPixelInRowOrder) {
  LxImage<LxBW8> image(3, 2);
  for (int i = 0; i < 6; ++i) image.SetPixel(static_cast<std::uint8_t>(10 * i), i % 3, i / 3);
  calls = 0;
  PicTransform(&image, &image, CountCalls, 0);
  EXPECT_EQ(calls, 6);
  for (int i = 0; i < 6; ++i) EXPECT_EQ(image.GetPixel(i % 3, i / 3), 11 * i + 1);
}

TEST(Transform, CallsOncePerValueForATable) {
  for (const int width : {1, 300}) {
    Filled<LxBW8> image(width, 3, 20);
    calls = 0;
    PicTransform(&image, &image, CountCalls, 1);
    EXPECT_EQ(calls, 256);
    EXPECT_EQ(lastArgument, 255);
    EXPECT_EQ(image.GetPixel(width - 1, 2), 41);
  }
}

struct GainRow {
  float gain;
  float offset;
  int value;
  int result;
};

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

// Each value in the middle of a row that is long enough for whole vectors.
template <class T>
void ExpectGains(const std::vector<GainRow>& rows) {
  for (const ExecutionPath& path : ExecutionPaths()) {
    const PathScope scope(path);
    for (const GainRow& row : rows) {
      using Level = decltype(T::value);
      Filled<T> image(150, 1, T(static_cast<Level>(row.value)));
      PicGainOffset(&image, &image, row.gain, row.offset);
      EXPECT_EQ(LxGetError(), LX_OK);
      for (const int x : {0, 75, 149}) {
        EXPECT_EQ(image.GetPixel(x, 0).value, row.result)
            << row.gain << " * " << row.value << " + " << row.offset << " on " << path.name;
      }
    }
  }
}

TEST(GainOffset, GreyEdges) {
  ExpectGains<LxBW8>({{0.51F, 0, 3, 1},
                      {-0.04F, 10, 1, 9},
                      {0.031F, 0, 255, 0},
                      {1, 0.99F, 7, 7},
                      {1, -0.99F, 7, 7},
                      {1e9F, -1e9F, 1, 0},
                      {1e30F, 0, 1, 255},
                      {-1e30F, 255, 1, 0},
                      {1e30F, 9, 0, 9},
                      {kInfinity, 0, 1, 255},
                      {-kInfinity, 0, 200, 0},
                      {kNan, 7, 200, 7},
                      {1, kNan, 200, 200},
                      {1, kInfinity, 0, 255},
                      {1, -kInfinity, 255, 0}});
  ExpectGains<LxBW16>({{-1, 65535, 1, 65534},
                       {0.51F, 0, 3, 1},
                       {1.5F, -0.5F, 40000, 60000},
                       {1000, -65535000, 65535, 0},
                       {1000, -65534000, 65535, 1000},
                       {2000, 0, 65535, 65535},
                       {1e30F, 0, 1, 65535},
                       {-1e30F, 65535, 1, 0},
                       {kNan, 7, 200, 7},
                       {1, kInfinity, 0, 65535}});
}

// Every gain of 11 bits and some beyond, which kernels treat in another way.
TEST(GainOffset, EveryGainAndLevel) {
  LxImage<LxBW8> levels(256, 1);
  LxImage<LxBW8> result(256, 1);
  for (int v = 0; v < 256; ++v) levels.SetPixel(static_cast<std::uint8_t>(v), v, 0);
  const auto* const scaled = static_cast<const std::uint8_t*>(result.GetPixelPtr(0, 0));
  for (const ExecutionPath& path : ExecutionPaths()) {
    const PathScope scope(path);
    for (int gain = -2060; gain <= 2060; ++gain) {
      for (const int offset : {-40000, -16601, -16320, -300, 0, 77, 16319, 16601, 40000}) {
        PicGainOffset(&levels, &result, static_cast<float>(gain) / 32, static_cast<float>(offset));
        int wrong = 0;
        for (int v = 0; v < 256; ++v) {
          wrong += scaled[v] == std::clamp((gain * v >> 5) + offset, 0, 255) ? 0 : 1;
        }
        ASSERT_EQ(wrong, 0) << gain << " / 32, " << offset << " on " << path.name;
      }
    }
  }
}

TEST(GainOffset, ColoursAreReversed) {
  Filled<LxC24> image(100, 2, LxC24{10, 20, 30});
  PicGainOffset(&image, &image, LxColor{1, 2, 3}, LxColor{0.5F, 0, 100});
  EXPECT_EQ(image.GetPixel(99, 1), (LxC24{130, 40, 30}));
  PicCopy(LxC24{1, 0, 0}, &image);
  PicGainOffset(&image, &image, LxColor{-kInfinity, kInfinity, kNan}, LxColor{kInfinity, 7, 3});
  EXPECT_EQ(image.GetPixel(50, 0), (LxC24{3, 7, 255}));
}

TEST(Overlay, SourceThatIsTooLargeIsTracedOnly) {
  for (const auto& [width, height] : {std::pair{5, 1}, std::pair{1, 5}}) {
    Filled<LxC24> source(width, height, LxC24{255, 255, 255});
    Filled<LxC16> image(4, 4, LxC16{1});
    PicOverlay(&source, &image, 0, 0, LxC24{0, 0, 0});
    EXPECT_EQ(LxGetError(), LX_OK);
    ASSERT_EQ(LxGetTraceCount(), 1);
    EXPECT_STREQ(LxGetTrace(0), "PicOverlay ( C24 on C16 Image)");
    EXPECT_EQ(image.GetPixel(0, 0).word, 1);
  }
}

}  // namespace
}  // namespace lx::test
