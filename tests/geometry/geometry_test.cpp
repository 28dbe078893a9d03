// SPDX-License-Identifier: Apache-2.0
// Shrinking, halving and warps at their edges.
#include <gtest/gtest.h>
#include <sys/mman.h>

#include <cmath>
#include <limits>

#include "foundation/exact_division.h"
#include "support/execution_path.h"
#include "support/filled.h"
#include "support/trial.h"
#include "support/trial/content.h"

namespace lx::test {
namespace {

// How a call with these pictures differs from the reference on any path; "" when it does not.
std::string Failure(const Operation& operation, const std::vector<Picture>& pictures) {
  Trial trial(operation, Arguments(operation));
  for (const std::size_t i : trial.Regions()) {
    trial.Place(i, pictures[i], {Pitch::kOdd, static_cast<int>(i)});
  }
  for (const ExecutionPath& path : ExecutionPaths()) {
    const PathScope scope(path);
    trial.Expect(*FindReference(operation.signature));
    trial.Run();
    if (const std::string found = trial.Difference(); !found.empty()) {
      return std::string(path.name) + ": " + found;
    }
  }
  return {};
}

TEST(Shrink, ToEveryRatio) {
  for (const Operation& operation : catalogue::All()) {
    if (operation.function != "PicShrink") continue;
    Random random(operation.signature);
    const Pixel pixel = operation.parameters.front().pixel;
    for (const int width : {1, 2, 3, 12, 37, 64, 140, 301}) {
      for (int columns = 1; columns <= width; ++columns) {
        const auto height = static_cast<int>(random.Between(1, columns % 16 == 0 ? 700 : 40));
        Picture source(pixel, width, height);
        Picture result(pixel, columns, static_cast<int>(random.Between(1, height)));
        Fill(source, random.Pick(kContents), 0, random.Next(), random);
        EXPECT_EQ(Failure(operation, {source, result}), "")
            << operation.signature << " " << width << "x" << height << " to " << columns << "x"
            << result.height;
      }
    }
  }
}

// The average of a white image that is one level darker at its end.
template <class T>
T AverageOf(int width, int height, decltype(T::value) white) {
  Filled<T> source(width, height, white);
  source.SetPixel(static_cast<decltype(T::value)>(white - 1), width - 1, height - 1);
  Filled<T> one(1, 1, T{0});
  PicShrink(&source, &one);
  EXPECT_EQ(LxGetError(), LX_OK);
  return one.GetPixel(0, 0);
}

TEST(Shrink, SumsBeyond32Bits) {
  for (const int fast : {0, 1}) {
    LxSetMMX(fast);
    EXPECT_EQ(AverageOf<LxBW16>(65538, 2, 65535), 65534);  // across
    EXPECT_EQ(AverageOf<LxBW16>(2, 65538, 65535), 65534);  // and down
    EXPECT_EQ(AverageOf<LxBW16>(3, 65537, 65535), 65534);
    EXPECT_EQ(AverageOf<LxBW8>(5000, 4000, 255), 254);
    EXPECT_EQ(AverageOf<LxBW8>(3, 257, 255), 254);  // the last sums that fit 16 bits
    EXPECT_EQ(AverageOf<LxBW8>(3, 258, 255), 254);
  }
  LxSetMMX(1);
}

// Around every multiple of the count.
template <typename T>
void ExpectExact(std::uint64_t count) {
  const PixelAverage<T> average(count);
  for (std::uint64_t quotient = 0; quotient <= std::numeric_limits<T>::max(); ++quotient) {
    ASSERT_EQ(average(quotient * count), quotient) << count;
    if (quotient > 0) {
      ASSERT_EQ(average(quotient * count - 1), quotient - 1) << count;
    }
  }
}

TEST(Shrink, AveragesAreExact) {
  for (std::uint64_t count = 1; count < 5000; ++count) ExpectExact<std::uint8_t>(count);
  for (const std::uint64_t near : {std::uint64_t{1} << 24, std::uint64_t{1} << 32}) {
    for (std::uint64_t count = near - 9; count < near + 9; ++count) {
      ExpectExact<std::uint8_t>(count);
    }
  }
  for (const std::uint64_t count :
       {1U, 2U, 3U, 9U, 255U, 257U, 65533U, 65534U, 65535U, 65536U, 65537U}) {
    ExpectExact<std::uint16_t>(count);
  }
  for (unsigned count = 1; count <= ShortAverage::kMost; ++count) {
    const ShortAverage average = ShortAverage::Of(count);
    for (unsigned sum = 0; sum <= 255 * count; ++sum) {
      ASSERT_EQ((2 * sum * average.multiplier >> 16) >> average.shift, sum / count) << count;
    }
  }
}

TEST(Halve, DestinationsThatCannotTakeTheSize) {
  Filled<LxBW8> image(9, 5, 7);
  LxROI<LxBW8> child(&image, 0, 0, 8, 4);
  PicHalve(&child, &image, 1);  // would free what it reads
  EXPECT_EQ(LxGetError(), LX_ERROR_DESTINATION_IS_SOURCE);
  EXPECT_EQ(image.GetWidth(), 9U);

  LxROI<LxBW8> nowhere;
  PicHalve(&image, &nowhere, 1);
  EXPECT_EQ(LxGetError(), LX_ERROR_SIZE_MISMATCH);
  const Filled<LxBW8> dot(1, 1, 7);
  LxROI<LxBW8> pixel(&image, 0, 0, 1, 1);
  PicHalve(&pixel, &nowhere, 1);  // nothing to write
  EXPECT_EQ(LxGetError(), LX_OK);
}

// Maps that name the place where they stand.
struct PlainMaps {
  PlainMaps(int width, int height) : x(width, height, 0), y(width, height, 0) {
    for (int v = 0; v < height; ++v) {
      for (int u = 0; u < width; ++u) {
        x.SetPixel(static_cast<std::uint16_t>(u), u, v);
        y.SetPixel(static_cast<std::uint16_t>(v), u, v);
      }
    }
  }
  Filled<LxBW16> x;
  Filled<LxBW16> y;
};

TEST(Warp, RowsFarApartInMemory) {
  constexpr std::ptrdiff_t kPitch = std::ptrdiff_t{3} << 29;
  constexpr std::size_t kBytes = 3 * static_cast<std::size_t>(kPitch);
  void* const memory = mmap(nullptr, kBytes, PROT_READ | PROT_WRITE,
                            MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  ASSERT_NE(memory, MAP_FAILED);
  PlainMaps maps(40, 3);
  Filled<LxC24> to(40, 3, {});
  for (const bool bottomUp : {false, true}) {
    LxImage<LxC24> from;
    from.Attach(static_cast<char*>(memory) + (bottomUp ? 2 * kPitch : 0), 40, 3,
                bottomUp ? -kPitch : kPitch);
    for (int y = 0; y < 3; ++y) from.SetPixel({1, static_cast<std::uint8_t>(50 + y), 3}, 39, y);
    PicWarp(&from, &to, &maps.x, &maps.y, 2, 0);
    for (int y = 0; y < 3; ++y) {
      EXPECT_EQ(to.GetPixel(37, y).c1, 50 + y);
      EXPECT_EQ(to.GetPixel(36, y).c0, 0);
      EXPECT_EQ(to.GetPixel(38, y).c0, 0);  // outside
    }
  }
  munmap(memory, kBytes);
}

TEST(Warp, MapsThatAreTooSmall) {
  Filled<LxBW8> from(6, 5, 1);
  Filled<LxBW8> to(6, 5, 2);
  Filled<LxBW32> narrow(5, 5, 0);
  Filled<LxBW32> low(6, 4, 0);
  for (LxImage<LxBW32>* const map : {&narrow, &low}) {
    PicWarp(&from, &to, map);
    EXPECT_EQ(LxGetError(), LX_ERROR_WARP_RANGE);
    EXPECT_EQ(to.GetPixel(0, 0), 2);
  }
}

TEST(CircleWarp, RowsLieOnCircles) {
  LxImage<LxBW16> x;
  LxImage<LxBW16> y;
  PicSetCircleWarp(100.5F, -50.5F, 3, 0, 80, 5, 0, 360, &x, &y);
  constexpr int kColumns[] = {180, 100, 20, 100, 180};
  constexpr int kRows[] = {-50, 29, -50, -130, -50};
  for (int u = 0; u < 5; ++u) {
    EXPECT_EQ(static_cast<std::int16_t>(x.GetPixel(u, 0).value), kColumns[u]);
    EXPECT_EQ(static_cast<std::int16_t>(y.GetPixel(u, 0).value), kRows[u]);
    EXPECT_EQ(static_cast<std::int16_t>(x.GetPixel(u, 2).value), 100);
    EXPECT_EQ(static_cast<std::int16_t>(y.GetPixel(u, 2).value), -50);
  }
  PicSetCircleWarp(0, 1e9F, 2, NAN, -1e9F, 1, 0, 7, &x, &y);
  EXPECT_EQ(x.GetPixel(0, 0), 0);  // no number, as the other circle's share of it is none
  EXPECT_EQ(y.GetPixel(0, 1), 0);
  PicSetCircleWarp(0, 1e9F, 1, 5, -1e9F, 1, 0, 7, &x, &y);
  EXPECT_EQ(x.GetPixel(0, 0), 0x8000);
  EXPECT_EQ(y.GetPixel(0, 0), 0x7FFF);
}

}  // namespace
}  // namespace lx::test
