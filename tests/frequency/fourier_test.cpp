// SPDX-License-Identifier: Apache-2.0
// Fourier transforms against exact sums and against what is known of their results.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <functional>

#include "common/random.h"
#include "lxpic/lxpic.h"
#include "support/allocation_failure.h"
#include "support/filled.h"

namespace lx::test {
namespace {

using Transform = void (*)(LxROI<LxBW8>*, LxROI<LxComplex64>*, float);
using Number = std::complex<double>;
using Numbers = std::vector<Number>;

struct Size {
  int width;
  int height;
};

// A picture of a rule of x and y.
struct Painted : LxImage<LxBW8> {
  Painted(Size size, const std::function<int(int, int)>& rule)
      : LxImage<LxBW8>(size.width, size.height) {
    for (int y = 0; y < size.height; ++y) {
      for (int x = 0; x < size.width; ++x) SetPixel(static_cast<std::uint8_t>(rule(x, y)), x, y);
    }
  }
};

Painted Noise(Size size) {
  Random random("noise");
  return {size, [&](int, int) { return static_cast<int>(random.Below(256)); }};
}

Numbers Spectrum(Transform transform, LxImage<LxBW8>& image, float factor = 1) {
  const auto width = static_cast<int>(image.GetWidth());
  const auto height = static_cast<int>(image.GetHeight());
  LxImage<LxComplex64> spectrum(width, height);
  transform(&image, &spectrum, factor);
  EXPECT_EQ(LxGetError(), LX_OK);
  Numbers numbers;
  for (int v = 0; v < height; ++v) {
    for (int u = 0; u < width; ++u) {
      const LxComplex64 pixel = spectrum.GetPixel(u, v);
      numbers.emplace_back(pixel.re, pixel.im);
    }
  }
  return numbers;
}

// Sums over lines of `count` numbers that lie `step` apart.
void SumLines(Numbers& numbers, std::size_t count, std::size_t step) {
  Numbers roots;
  for (std::size_t j = 0; j < count; ++j) {
    roots.push_back(std::polar(
        1.0, -2 * std::acos(-1.0) * static_cast<double>(j) / static_cast<double>(count)));
  }
  const Numbers before = numbers;
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const std::size_t k = i / step % count;
    const std::size_t first = i - k * step;
    Number sum = 0;
    for (std::size_t n = 0; n < count; ++n) sum += before[first + n * step] * roots[k * n % count];
    numbers[i] = sum;
  }
}

Numbers ExactSpectrum(const LxImage<LxBW8>& image) {
  const std::size_t width = image.GetWidth();
  const std::size_t height = image.GetHeight();
  Numbers numbers;
  for (int y = 0; y < static_cast<int>(height); ++y) {
    for (int x = 0; x < static_cast<int>(width); ++x) {
      const double level = image.GetPixel(x, y).value;
      numbers.push_back(((x + y) % 2 == 0 ? level : -level) /
                        std::sqrt(static_cast<double>(width * height)));
    }
  }
  SumLines(numbers, width, 1);
  SumLines(numbers, height, width);
  return numbers;
}

double Norm(const Numbers& numbers) {
  double sum = 0;
  for (const Number& each : numbers) sum += std::norm(each);
  return std::sqrt(sum);
}

double Distance(Numbers a, const Numbers& b) {
  for (std::size_t i = 0; i < a.size(); ++i) a[i] -= b[i];
  return Norm(a);
}

constexpr double kRounding = 0x1p-24;

// How far a spectrum may lie from the exact one, as a part of its norm, which is that of the samples
// times the root of their number. Samples are rounded twice. A step of either recurrence adds less
// than 6 roundings to a twiddle of modulus 1, so that those of N elements are off by 6 N at most;
// a stage or a term adds its product, 3, and its sum, 1.

// Stages of spans N / 2, N / 4, ... 1 each keep the norm, but for these errors.
double FastBound(Size size) {
  const double stages = std::log2(size.width) + std::log2(size.height);
  return kRounding * (2 + 6.0 * (size.width + size.height) + 4 * stages);
}

// N terms are off by their twiddles and by N additions at most, and their moduli add up to the root
// of N times the norm.
double SlowBound(Size size) {
  const auto line = [](double count) { return (7 * count + 3) * std::sqrt(count); };
  return kRounding * (2 + line(size.width) + line(size.height));
}

void ExpectNearExact(LxImage<LxBW8>& image, bool isFast) {
  const Size size = {static_cast<int>(image.GetWidth()), static_cast<int>(image.GetHeight())};
  SCOPED_TRACE(std::to_string(size.width) + "x" + std::to_string(size.height));
  const Numbers exact = ExactSpectrum(image);
  const Numbers slow = Spectrum(PicSlowDFT, image);
  EXPECT_LE(Distance(slow, exact), SlowBound(size) * Norm(exact));
  if (!isFast) return;
  const Numbers fast = Spectrum(PicFastDFT, image);
  EXPECT_LE(Distance(fast, exact), FastBound(size) * Norm(exact));
  EXPECT_LE(Distance(fast, slow), (FastBound(size) + SlowBound(size)) * Norm(exact));
}

TEST(Fourier, LiesWithinTheRoundingOfExactSums) {
  for (int side = 1; side <= 4096; side *= 2) {
    for (const Size size : {Size{side, 1}, Size{1, side}}) {
      Painted noise = Noise(size);
      ExpectNearExact(noise, true);
    }
  }
  for (const Size size : {Size{64, 32}, Size{2, 128}, Size{128, 4}}) {
    Painted ramp(size, [](int x, int y) { return 3 * x + 2 * y; });
    ExpectNearExact(ramp, true);
  }
  for (const Size size : {Size{3, 1}, Size{7, 5}, Size{1, 61}, Size{127, 31}, Size{53, 97}}) {
    Painted noise = Noise(size);
    ExpectNearExact(noise, false);
  }
}

// What is 0 in theory may be as far from it as the bound says.
void ExpectPeaks(Transform transform, Size size, const std::function<int(int, int)>& image,
                 const std::function<double(int, int)>& modulus) {
  Painted source(size, image);
  const Numbers spectrum = Spectrum(transform, source, 2);
  const double far = std::max(FastBound(size), SlowBound(size)) * Norm(spectrum);
  for (std::size_t i = 0; i < spectrum.size(); ++i) {
    const int u = static_cast<int>(i) % size.width;
    const int v = static_cast<int>(i) / size.width;
    EXPECT_NEAR(std::abs(spectrum[i]), modulus(u, v), far) << u << " " << v;
  }
}

TEST(Fourier, SpectraOfSimpleImages) {
  constexpr Size kSize = {16, 8};
  const double root = std::sqrt(16.0 * 8.0);
  for (const Transform transform : {PicSlowDFT, PicFastDFT}) {
    ExpectPeaks(
        transform, kSize, [](int, int) { return 100; },
        [=](int u, int v) { return u == 8 && v == 4 ? 200 * root : 0; });
    ExpectPeaks(
        transform, kSize, [](int x, int y) { return x == 5 && y == 3 ? 100 : 0; },
        [=](int, int) { return 200 / root; });
    ExpectPeaks(
        transform, kSize, [](int x, int y) { return (x + y) % 2 == 0 ? 200 : 0; },
        [=](int u, int v) { return (u == 8 && v == 4) || (u == 0 && v == 0) ? 200 * root : 0; });
    // A square wave of period 4: its mean, and its fundamental on both sides.
    ExpectPeaks(
        transform, kSize, [](int x, int) { return x % 4 < 2 ? 50 : 0; },
        [=](int u, int v) {
          if (v != 4) return 0.0;
          return u == 8 ? 50 * root : u == 4 || u == 12 ? 50 * root / std::sqrt(2.0) : 0.0;
        });
  }
  Filled<LxBW8> single(1, 1, 7);
  EXPECT_EQ(Spectrum(PicSlowDFT, single, -3), Numbers(1, -21.0));
  EXPECT_EQ(Spectrum(PicFastDFT, single, -3), Numbers(1, -21.0));
}

TEST(Fourier, KeepsTheSumOfSquares) {
  const auto expectKept = [](Transform transform, Size size, double bound) {
    Painted image = Noise(size);
    double squares = 0;
    for (int y = 0; y < size.height; ++y) {
      for (int x = 0; x < size.width; ++x) squares += std::pow(image.GetPixel(x, y).value, 2);
    }
    EXPECT_NEAR(Norm(Spectrum(transform, image)), std::sqrt(squares), bound * std::sqrt(squares));
  };
  expectKept(PicFastDFT, {1024, 256}, FastBound({1024, 256}));
  expectKept(PicSlowDFT, {97, 60}, SlowBound({97, 60}));
}

TEST(Fourier, SizesThatAreRefused) {
  const auto code = [](Transform transform, Size size) {
    LxImage<LxBW8> image(size.width, size.height);
    LxImage<LxComplex64> spectrum(size.width, size.height);
    transform(&image, &spectrum, 1);
    return LxGetError();
  };
  for (const Size size : {Size{6, 8}, Size{8, 6}, Size{0, 8}, Size{8, 0}, Size{0, 0}}) {
    EXPECT_EQ(code(PicSlowDFT, size), LX_OK);
    EXPECT_EQ(code(PicFastDFT, size), LX_ERROR_NOT_POWER_OF_TWO);
  }
}

TEST(Fourier, WritesNothingWithoutScratchMemory) {
  for (const Transform transform : {PicSlowDFT, PicFastDFT}) {
    Filled<LxBW8> image(32, 8, 9);
    Filled<LxComplex64> spectrum(32, 8, LxComplex64{5, 5});
    const int failures = FailEachAllocation([&] { transform(&image, &spectrum, 1); },
                                            [&] {
                                              EXPECT_EQ(LxGetError(), LX_ERROR_ALLOCATION_FAILED);
                                              EXPECT_EQ(spectrum.GetPixel(0, 0).re, 5);
                                              EXPECT_EQ(spectrum.GetPixel(31, 7).re, 5);
                                            });
    EXPECT_GE(failures, 2);
    EXPECT_NE(spectrum.GetPixel(0, 0).re, 5);
  }
}

}  // namespace
}  // namespace lx::test
