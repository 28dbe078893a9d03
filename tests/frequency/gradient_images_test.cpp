// SPDX-License-Identifier: Apache-2.0
// Gradients through lookup images and spectra as images at their edges.
#include <gtest/gtest.h>
#include <sys/mman.h>

#include <cmath>
#include <limits>
#include <vector>

#include "support/filled.h"

namespace lx::test {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kLargest = std::numeric_limits<float>::max();

TEST(GradientTables, Landmarks) {
  LxImage<LxBW8> table;
  PicModulusImage(&table, 1);
  EXPECT_EQ(LxGetError(), LX_OK);
  EXPECT_EQ(table.GetPixel(0, 0), 255);
  EXPECT_EQ(table.GetPixel(511, 511), 255);
  EXPECT_EQ(table.GetPixel(256, 256), 0);
  EXPECT_EQ(table.GetPixel(257, 256), 1);
  EXPECT_EQ(table.GetPixel(256, 255), 1);
  EXPECT_EQ(table.GetPixel(259, 260), 5);
  PicArgumentImage(&table, 0, 0);
  EXPECT_EQ(table.GetPixel(256, 256), 0);
  EXPECT_EQ(table.GetPixel(257, 256), 0);
  EXPECT_EQ(table.GetPixel(256, 300), 64);
  EXPECT_EQ(table.GetPixel(200, 256), 128);
  EXPECT_EQ(table.GetPixel(256, 200), 192);
}

TEST(GradientTables, GainsAndPeriodsOfNoNumbers) {
  LxImage<LxBW8> table;
  PicModulusImage(&table, NAN);
  EXPECT_EQ(table.GetPixel(3, 3), 255);
  PicModulusImage(&table, kInfinity);
  EXPECT_EQ(table.GetPixel(256, 256), 255);  // 0 times infinity
  PicModulusImage(&table, -kInfinity);
  EXPECT_EQ(table.GetPixel(3, 3), 0);
  PicArgumentImage(&table, 9, NAN);
  EXPECT_EQ(table.GetPixel(3, 3), 255);
  EXPECT_EQ(table.GetPixel(256, 256), 0);
  PicArgumentImage(&table, 9, kInfinity);
  EXPECT_EQ(table.GetPixel(3, 3), 9);
}

TEST(GradientScalar, TablesAnywhereInMemory) {
  LxImage<LxBW8> magnitudes;
  PicModulusImage(&magnitudes, 0.7F);
  LxImage<LxBW8> parent(600, 530);
  LxROI<LxBW8> child(&parent, 31, 7, 512, 512);
  std::vector<std::uint8_t> stacked(std::size_t{512} * 512);
  LxImage<LxBW8> upsideDown;
  upsideDown.Attach(stacked.data() + 511 * 512, 512, 512, -512);
  // Rows so far apart that places leave 32 bits: memory that is only reserved.
  constexpr std::ptrdiff_t kPitch = std::ptrdiff_t{5} << 20;
  void* const far = mmap(nullptr, 512 * kPitch, PROT_READ | PROT_WRITE,
                         MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  ASSERT_NE(far, MAP_FAILED);
  LxImage<LxBW8> wide;
  wide.Attach(far, 512, 512, kPitch);
  const std::vector<LxROI<LxBW8>*> tables = {&child, &upsideDown, &wide};
  Filled<LxBW8> image(300, 3, 9);
  for (int x = 0; x < 300; ++x) image.SetPixel(static_cast<std::uint8_t>(x * x), x, 1);
  LxImage<LxBW8> expected(300, 3);
  PicGradientScalar(&image, &expected, &magnitudes);
  for (LxROI<LxBW8>* const table : tables) {
    PicCopy(&magnitudes, table);
    LxImage<LxBW8> seen(300, 3);
    PicGradientScalar(&image, &seen, table);
    EXPECT_EQ(LxGetError(), LX_OK);
    for (int x = 0; x < 300; ++x) ASSERT_EQ(seen.GetPixel(x, 2), expected.GetPixel(x, 2)) << x;
  }
  munmap(far, 512 * kPitch);
}

LxBW8 Rendered(void (*render)(LxROI<LxComplex64>*, LxROI<LxBW8>*), float re, float im) {
  Filled<LxComplex64> spectrum(1, 1, {re, im});
  LxImage<LxBW8> image(1, 1);
  render(&spectrum, &image);
  EXPECT_EQ(LxGetError(), LX_OK);
  return image.GetPixel(0, 0);
}

TEST(ComplexArgument, Angles) {
  const auto code = [](float re, float im) { return Rendered(PicComplexArgument, re, im).value; };
  EXPECT_EQ(code(1, 0), 0);
  EXPECT_EQ(code(0, 1), 64);
  EXPECT_EQ(code(-1, 0), 128);
  EXPECT_EQ(code(0, -1), 192);
  EXPECT_EQ(code(1, -1e-30F), 255);  // a full turn
  EXPECT_EQ(code(-0.0F, 0), 0);
  EXPECT_EQ(code(-0.0F, -0.0F), 0);
  EXPECT_EQ(code(-1, -0.0F), 128);
  EXPECT_EQ(code(kInfinity, kInfinity), 32);
  EXPECT_EQ(code(NAN, 1), 255);
}

TEST(ComplexModulus, ValuesOfEverySize) {
  for (const int fast : {0, 1}) {
    LxSetMMX(fast);
    const auto code = [](float re, float im) {
      return Rendered([](auto* s, auto* d) { PicComplexModulus(s, d, 1, 0, 0); }, re, im).value;
    };
    EXPECT_EQ(code(3, 4), 5);
    EXPECT_EQ(code(300, 0), 255);
    EXPECT_EQ(code(0, -255.99F), 255);
    EXPECT_EQ(code(1e-30F, 0), 0);
    EXPECT_EQ(code(kLargest, kLargest), 255);
    EXPECT_EQ(code(-kInfinity, 0), 255);
    EXPECT_EQ(code(NAN, 0), 255);
    const auto negative = [](float re) {
      return Rendered([](auto* s, auto* d) { PicComplexModulus(s, d, -1, 0, 0); }, re, 0).value;
    };
    EXPECT_EQ(negative(0.5F), 0);
    EXPECT_EQ(negative(1), 255);
    const auto logarithm = [](float re) {
      return Rendered([](auto* s, auto* d) { PicComplexModulus(s, d, -1, 1, 9); }, re, 0).value;
    };
    EXPECT_EQ(logarithm(0), 0);
    EXPECT_EQ(logarithm(1), 255);  // the logarithm of 0
    EXPECT_EQ(logarithm(3), 255);  // and of less
  }
}

TEST(ComplexModulus, OnlyThePlainFormRoundsItsSquares) {
  const float below = std::nextafter(std::sqrt(399.0F), 0.0F);
  ASSERT_LT(199.0 * 199 + double{below} * double{below}, 40000);
  const auto plain = [](auto* s, auto* d) { PicComplexModulus(s, d, 1, 0, 0); };
  const auto weighted = [](auto* s, auto* d) { PicComplexRescaledModulus(s, d, 1, 0, 0); };
  EXPECT_EQ(Rendered(plain, 199, below), 200);
  EXPECT_EQ(Rendered(weighted, 199, below), 199);  // the weight of a single pixel is 1
}

TEST(ComplexModulus, TheCentreHasNoWeight) {
  Filled<LxComplex64> spectrum(6, 4, {kLargest, 1});
  LxImage<LxBW8> image(6, 4);
  PicComplexRescaledModulus(&spectrum, &image, 1, 0, 0);
  EXPECT_EQ(image.GetPixel(3, 2), 0);
  EXPECT_EQ(image.GetPixel(2, 2), 255);
}

TEST(DiscEnergy, LeavesOutTheCentre) {
  Filled<LxComplex64> spectrum(4, 4, {2, 1});
  LxVector energy;
  PicComplexDiscEnergy(&spectrum, &energy);
  EXPECT_EQ(LxGetError(), LX_ERROR_VECTOR_CONTENT);
  energy.SetType(LX_VECTOR_DISC_ENERGY, 0, 0);
  PicComplexDiscEnergy(&spectrum, &energy);
  EXPECT_EQ(LxGetError(), LX_OK);
  ASSERT_EQ(energy.GetNbGroup(), 3);
  const auto* const discs = static_cast<const float*>(energy.GetDataPtr());
  EXPECT_EQ(discs[0], 0);
  EXPECT_EQ(discs[2], 75);
}

TEST(DiscEnergy, SumsAreNotSinglePrecision) {
  constexpr int kWidth = 5000;
  Filled<LxComplex64> spectrum(kWidth, 1, {1, 0});
  LxComplex64 large = {4096, 0};
  *static_cast<LxComplex64*>(spectrum.GetPixelPtr(kWidth / 2 + 1, 0)) = large;  // 2^24
  LxVector energy;
  energy.SetType(LX_VECTOR_DISC_ENERGY, 0, 0);
  PicComplexDiscEnergy(&spectrum, &energy);
  const auto* const discs = static_cast<const float*>(energy.GetDataPtr());
  EXPECT_EQ(discs[energy.GetNbGroup() - 1], 16777216.0F + 4998);
  EXPECT_EQ(discs[0], 0);
}

}  // namespace
}  // namespace lx::test
