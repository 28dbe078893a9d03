// SPDX-License-Identifier: Apache-2.0
// Projections, focus, noise and correlation at their edges.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "common/random.h"
#include "support/execution_path.h"
#include "support/filled.h"
#include "support/outcome_text.h"

namespace lx::test {
namespace {

// Rows of this length hold more vectors of bytes than lanes of 32 bits hold squares of.
constexpr int kLong = 600'000;

template <class Body>
void OnEveryPath(const Body& body) {
  for (const ExecutionPath& path : ExecutionPaths()) {
    SCOPED_TRACE(path.name);
    const PathScope scope(path);
    body();
    EXPECT_EQ(TakeOutcome(), "0");
  }
}

// `one` where x + y is even, `other` elsewhere.
template <class T>
class Checkered : public LxImage<T> {
 public:
  Checkered(int width, int height, T one, T other) : LxImage<T>(width, height) {
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) this->SetPixel((x + y) % 2 == 0 ? one : other, x, y);
    }
  }
};

// What the first entry of a projection is.
template <class Vector, class T, class Project>
unsigned FirstOf(LxROI<T>* source, const Project& project) {
  Vector vector;
  project(source, &vector);
  return vector[0].value;
}

constexpr auto kOnRow = [](auto* source, auto* vector) { PicProjectOnARow(source, vector); };
constexpr auto kOnColumn = [](auto* source, auto* vector) { PicProjectOnAColumn(source, vector); };

TEST(Projection, SumsThatNarrowerLanesWouldWrap) {
  Filled<LxBW8> flat(65536, 1, 255);
  Filled<LxBW8> tall(1, 65536, 255);
  OnEveryPath([&] {
    EXPECT_EQ(FirstOf<LxBW32Vector>(&flat, kOnColumn), 65536U * 255);
    EXPECT_EQ(FirstOf<LxBW32Vector>(&tall, kOnRow), 65536U * 255);
    EXPECT_EQ(FirstOf<LxBW8Vector>(&flat, kOnColumn), 255U);
    EXPECT_EQ(FirstOf<LxBW8Vector>(&tall, kOnRow), 255U);
  });
}

// Sums are modulo 2^32 where they are the result, and averages those of the true sums.
TEST(Projection, SumsBeyond32Bits) {
  constexpr int kMany = 70'000;
  constexpr auto kWrapped = static_cast<unsigned>(kMany * 65535ULL);
  Filled<LxBW16> flat(kMany, 1, 65535);
  Filled<LxBW16> tall(1, kMany, 65535);
  OnEveryPath([&] {
    EXPECT_EQ(FirstOf<LxBW32Vector>(&flat, kOnColumn), kWrapped);
    EXPECT_EQ(FirstOf<LxBW32Vector>(&tall, kOnRow), kWrapped);
    EXPECT_EQ(FirstOf<LxBW16Vector>(&flat, kOnColumn), 65535U);
    EXPECT_EQ(FirstOf<LxBW16Vector>(&tall, kOnRow), 65535U);
  });
}

TEST(Focus, OfACheckerboard) {
  const auto score = [](double difference, double width, double height) {
    return static_cast<float>(
        std::sqrt(2 * difference * difference * (width - 1) * (height - 1) / (width * height)));
  };
  Checkered<LxBW8> bytes(301, 40, 0, 255);
  Checkered<LxBW8> flat(kLong, 2, 255, 0);
  Checkered<LxBW16> words(301, 40, 65535, 0);
  Checkered<LxC24> colours(301, 40, {0, 255, 0}, {255, 0, 255});
  OnEveryPath([&] {
    EXPECT_EQ(PicFocusing(&bytes), score(255, 301, 40));
    EXPECT_EQ(PicFocusing(&flat), score(255, kLong, 2));
    EXPECT_EQ(PicFocusing(&words), score(65535, 301, 40));
    EXPECT_EQ(PicFocusing(&colours), score(255, 301, 40));
  });
}

TEST(Noise, SumsThatNarrowerLanesWouldWrap) {
  Filled<LxBW8> white(kLong, 1, 255);
  Filled<LxBW8> black(kLong, 1, 0);
  Filled<LxBW16> most(kLong, 1, 65535);
  Filled<LxBW16> none(kLong, 1, 0);
  OnEveryPath([&] {
    EXPECT_EQ(PicRmsNoise(&white, &black, PIC_REFERENCE_NOISE_NONE), 255.0F);
    EXPECT_EQ(PicRmsNoise(&most, &none, PIC_REFERENCE_NOISE_NONE), 65535.0F);
    EXPECT_EQ(PicRmsNoise(&black, &most, 1, PIC_REFERENCE_NOISE_NONE), 65535.0F);
    EXPECT_EQ(PicSignalNoiseRatio(&white, &black, PIC_REFERENCE_NOISE_NONE), 0.0F);
    EXPECT_EQ(PicSignalNoiseRatio(&most, &none, PIC_REFERENCE_NOISE_NONE), 0.0F);
  });
}

TEST(Noise, RatiosWithoutNoiseOrSignal) {
  Filled<LxBW8> grey(9, 9, 7);
  Filled<LxBW8> black(9, 9, 0);
  EXPECT_EQ(PicSignalNoiseRatio(&grey, &grey, PIC_REFERENCE_NOISE_INDEPENDENT), 0.0F);
  EXPECT_EQ(PicSignalNoiseRatio(&black, &grey, PIC_REFERENCE_NOISE_NONE),
            -std::numeric_limits<float>::infinity());
  EXPECT_EQ(TakeOutcome(), "0");
}

// The number of frames is looked at before the regions, and what it is combined with behind them.
TEST(Noise, OrderOfRefusals) {
  Filled<LxBW8> source(9, 9, 7);
  Filled<LxBW16> reference(9, 9, 7);
  LxROI<LxBW16>* const missing = nullptr;
  const auto refusal = [&](LxROI<LxBW16>* to, unsigned frames) {
    EXPECT_EQ(PicRmsNoise(&source, to, frames, PIC_REFERENCE_NOISE_DEPENDENT), 0.0F);
    return TakeOutcome().substr(0, 4);
  };
  EXPECT_EQ(refusal(missing, 3), "1013");
  EXPECT_EQ(refusal(missing, 512), "1013");
  EXPECT_EQ(refusal(missing, 1), "1400");
  EXPECT_EQ(refusal(&reference, 1), "1013");
}

// A source and the sum of sixteen frames with noise of deviation 8 on level 128, each rounded. The
// rounding adds 1/12 to the variance of a frame. Shifting the sum truncates: what is cut is any of
// 0/16 .. 15/16, with mean 15/32 and variance (256 - 1) / 12 / 256, and adds their squares to the
// mean squared difference before the correction. For a normal distribution a measured deviation
// has a standard error of 1 / sqrt(2n) of itself; sums of four even parts have a lighter tail, and
// so a smaller one. Five of them are allowed.
TEST(Noise, OfDrawnFramesIsWhatWasDrawn) {
  constexpr int kSide = 400;
  constexpr unsigned kFrames = 16;
  constexpr double kVariance = 64 + 1.0 / 12;
  constexpr double kCut = 15.0 / 32 * 15 / 32 + 255.0 / 12 / 256;
  constexpr double kAllowed = 5 / (1.4142 * kSide);
  Random random("noise");
  Filled<LxBW8> clean(kSide, kSide, 128);
  LxImage<LxBW8> apart(kSide, kSide);
  LxImage<LxBW8> among(kSide, kSide);
  LxImage<LxBW16> sum(kSide, kSide);
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) {
      const auto level = [&] { return std::lround(128 + 8 * random.Noise()); };
      const long last = level();
      long total = last;
      for (unsigned frame = 1; frame < kFrames; ++frame) total += level();
      among.SetPixel(static_cast<std::uint8_t>(last), x, y);
      apart.SetPixel(static_cast<std::uint8_t>(level()), x, y);
      sum.SetPixel(static_cast<std::uint16_t>(total), x, y);
    }
  }
  const auto expect = [&](float measured, double factor, double cut) {
    const double expected = std::sqrt(kVariance + cut / factor);
    EXPECT_NEAR(measured, expected, kAllowed * expected);
  };
  expect(PicRmsNoise(&apart, &clean, PIC_REFERENCE_NOISE_NONE), 1, 0);
  expect(PicRmsNoise(&apart, &among, PIC_REFERENCE_NOISE_INDEPENDENT), 2, 0);
  expect(PicRmsNoise(&apart, &sum, kFrames, PIC_REFERENCE_NOISE_INDEPENDENT), 17.0 / 16, kCut);
  expect(PicRmsNoise(&among, &sum, kFrames, PIC_REFERENCE_NOISE_DEPENDENT), 15.0 / 16, kCut);
}

TEST(Regression, OfALineAndOnItself) {
  Checkered<LxBW8> first(kLong, 2, 255, 5);
  Checkered<LxBW8> second(kLong, 2, 0, 125);
  OnEveryPath([&] {
    std::array<float, 3> fit{};
    PicLinearRegression(&first, &first, fit[0], fit[1], fit[2], 0);
    EXPECT_EQ(fit, (std::array{1.0F, 0.0F, 1.0F}));
    PicLinearRegression(&first, &second, fit[0], fit[1], fit[2], 0);
    EXPECT_EQ(fit, (std::array{-0.5F, 127.5F, -1.0F}));
  });
}

// Equal neighbours are counted at once, others one by one; both stop at the largest count.
TEST(Correlogram, CountsSaturate) {
  Filled<LxBW8> constant(400, 400, 9);
  Checkered<LxBW8> checkered(400, 400, 3, 4);
  LxImage<LxBW8> bytes;
  LxImage<LxBW16> words;
  OnEveryPath([&] {
    PicCorrelogram(&constant, &constant, &words);
    EXPECT_EQ(words.GetPixel(9, 246).value, 65535);
    for (LxROI<LxBW8>* const second :
         {static_cast<LxROI<LxBW8>*>(&constant), static_cast<LxROI<LxBW8>*>(&checkered)}) {
      PicCorrelogram(&checkered, second, &words);
      PicCorrelogram(&checkered, second, &bytes);
      for (const int level : {3, 4}) {
        const int row = 255 - second->GetPixel(level - 3, 0);
        EXPECT_EQ(words.GetPixel(level, row).value, 65535);
        EXPECT_EQ(bytes.GetPixel(level, row).value, 255);
      }
    }
  });
}

TEST(Correlogram, OfRegionsInTheResult) {
  Filled<LxBW8> image(256, 256, 6);
  LxROI<LxBW8> part(&image, 10, 200, 30, 10);
  PicCorrelogram(&part, &part, &image);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(image.GetPixel(6, 249).value, 255);
  EXPECT_EQ(image.GetPixel(6, 248).value, 0);
}

}  // namespace
}  // namespace lx::test
