// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "convolution/chosen_case.h"
#include "lxpic/lxpic.h"
#include "support/filled.h"

namespace lx::test {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

std::vector<std::string> Trace() {
  std::vector<std::string> names;
  for (int i = 0; i < LxGetTraceCount(); ++i) names.emplace_back(LxGetTrace(i));
  return names;
}

using Names = std::vector<std::string>;
using Six = std::array<double, 6>;

// A transform on every path, pixel type and interpolation, with nearly `size` on both sides.
void ExpectReference(const Six& c, Size size) {
  for (const char* const pixel : {"LxBW8", "LxBW16", "LxC24"}) {
    const Operation& operation = OperationOn("PicLinearTransform", pixel);
    for (const double bits : {0.0, 4.0, 8.0}) {
      Arguments call(operation);
      for (std::size_t i = 0; i < c.size(); ++i) call.SetNumber(i + 1, c[i]);
      call.Set("interpolation", bits);
      EXPECT_EQ(CaseFailure(operation, call, size), "");
    }
  }
}

// Enough rows and columns for several tiles, at steep angles and scales where tiles do not pay.
TEST(LinearTransform, TilesAndWhatIsTooLargeForThem) {
  constexpr Size kSize = {230, 190};
  for (const double degrees : {1.0, 33.0, 90.0, 135.0, 181.0, -80.0}) {
    for (const double scale : {0.03, 0.4, 1.02, 6.0}) {
      const double a = scale * std::cos(degrees * M_PI / 180);
      const double b = scale * std::sin(degrees * M_PI / 180);
      // The centre stays.
      ExpectReference({a, b, 115 - a * 115 - b * 95, -b, a, 95 + b * 115 - a * 95}, kSize);
    }
  }
}

TEST(LinearTransform, CoordinatesBeyond32Bits) {
  constexpr double kSlope = 2.0 / 65536;  // some rows up or down in a long row
  ExpectReference({1, 0, 2.25, 0, 1, -0.5}, {70000, 1});
  ExpectReference({1, 0, 2.25, kSlope, 1, -0.5}, {70000, 3});
  ExpectReference({1.0001, 0.5, -7, -kSlope, 1, 2}, {70000, 3});
  ExpectReference({0.001, 0, 2.25, 0, 1, 0}, {70000, 1});
  ExpectReference({0.001, kSlope, 2.25, kSlope, 1, 0}, {70000, 2});
  ExpectReference({1, 0, -65536, kSlope, 1, 2}, {70000, 2});
  ExpectReference({1, kSlope, 0.75, 0.5, 1, -65536}, {3, 70000});
  // Far away: everything is outside. A wrap would bring it back.
  ExpectReference({1, 0.25, 131072, -0.25, 1, 65536 * 4}, {40, 9});
  ExpectReference({1, 0.25, 1e30, -0.25, 1, -1e20}, {40, 9});
  ExpectReference({1e-30, 0, 3, 0, 1e-5, 3}, {40, 9});
}

// Half a pixel inside the border the edge stands alone, and beyond it there is nothing.
TEST(LinearTransform, Borders) {
  LxImage<LxBW8> source(3, 1);
  for (int x = 0; x < 3; ++x) source.SetPixel(static_cast<std::uint8_t>(100 + 55 * x), x, 0);
  struct Row {
    float shift;
    int bits;
    std::array<int, 6> pixels;
  };
  for (const Row& row :
       {Row{0, 0, {100, 155, 210, 0, 0, 0}}, Row{0, 4, {100, 155, 210, 0, 0, 0}},
        Row{0.5F, 8, {100, 127, 182, 0, 0, 0}}, Row{0.5F, 4, {100, 127, 182, 0, 0, 0}},
        Row{0.5625F, 4, {0, 124, 179, 210, 0, 0}}, Row{0.50390625F, 8, {0, 127, 182, 210, 0, 0}},
        Row{1.5F, 0, {0, 100, 155, 210, 0, 0}}, Row{1.515625F, 0, {0, 0, 100, 155, 210, 0}},
        Row{-0.5F, 8, {127, 182, 0, 0, 0, 0}}, Row{-0.49609375F, 8, {127, 182, 210, 0, 0, 0}}}) {
    Filled<LxBW8> destination(6, 2, 77);
    PicLinearTransform(&source, 1, 0, row.shift, 0, 1, 0, &destination, row.bits);
    for (int x = 0; x < 6; ++x) {
      EXPECT_EQ(destination.GetPixel(x, 0), row.pixels[static_cast<std::size_t>(x)])
          << row.shift << " " << row.bits << " " << x;
      EXPECT_EQ(destination.GetPixel(x, 1), 0);
    }
  }
}

TEST(LinearTransform, CoefficientsThatCannotBeInverted) {
  struct Row {
    std::array<float, 6> c;
    int bits;
    LX_ERRORS code;
  };
  Filled<LxBW8> source(9, 9, 50);
  for (const Row& row : {Row{{0, 0, 0, 0, 0, 0}, 2, LX_ERROR_DIVISION_BY_ZERO},
                         Row{{2, 4, 0, 1, 2, 0}, 8, LX_ERROR_DIVISION_BY_ZERO},
                         Row{{kNan, 0, 0, 0, 1, 0}, 8, LX_ERROR_DIVISION_BY_ZERO},
                         Row{{kInfinity, 0, 0, 0, 1, 0}, 8, LX_ERROR_DIVISION_BY_ZERO},
                         Row{{1e30F, 0, 0, 0, 1e30F, 0}, 8, LX_ERROR_DIVISION_BY_ZERO},
                         Row{{1, 0, kInfinity, 0, 1, 0}, 8, LX_ERROR_DIVISION_BY_ZERO},
                         Row{{1, 0, 0, 0, 1, kNan}, 2, LX_ERROR_DIVISION_BY_ZERO},
                         Row{{1, 0, 0, 0, 1, 0}, 2, LX_ERROR_INCONSISTENT_ARGUMENTS},
                         Row{{1, 0, 0, 0, 1, 0}, -4, LX_ERROR_INCONSISTENT_ARGUMENTS},
                         Row{{1, 0, 3e38F, 0, 1, 0}, 8, LX_OK}}) {
    Filled<LxBW8> destination(9, 9, 77);
    PicLinearTransform(&source, row.c[0], row.c[1], row.c[2], row.c[3], row.c[4], row.c[5],
                       &destination, row.bits);
    EXPECT_EQ(LxGetError(), row.code);
    EXPECT_EQ(destination.GetPixel(4, 4), row.code == LX_OK ? 0 : 77);
  }
}

// There and back by every degree. A pass is off by less than 1 for the truncation of its result; by
// a quarter of the second derivative A / L^2 between pixels; and by the gradient, at most A / L along
// either axis, times how far its coordinate is off: coefficients of 16 fraction bits over 100 columns
// and 100 rows and single-precision origins around 100, together less than 0.01 pixels, and cut
// weights, less than 2^-bits. With the original rounded to integers:
// 2 (1 + 0.0625 + 2 * 5 (0.01 + 2^-bits)) + 1.
TEST(ScaleRotate, ThereAndBackByEveryDegree) {
  constexpr int kSize = 101;
  constexpr double kAmplitude = 100;
  constexpr double kLength = 20;
  constexpr float kCentre = kSize / 2.0F;
  LxImage<LxBW8> source(kSize, kSize);
  LxImage<LxBW8> turned(kSize, kSize);
  LxImage<LxBW8> back(kSize, kSize);
  for (int y = 0; y < kSize; ++y) {
    for (int x = 0; x < kSize; ++x) {
      const double wave = std::sin(x / kLength) * std::cos(y / kLength);
      source.SetPixel(static_cast<std::uint8_t>(std::lround(128 + kAmplitude * wave)), x, y);
    }
  }
  for (const int bits : {4, 8}) {
    const double bound = 2 * (1.0625 + 2 * kAmplitude / kLength * (0.01 + std::exp2(-bits))) + 1;
    double worst = 0;
    for (int degrees = 0; degrees < 360; ++degrees) {
      const auto angle = static_cast<float>(degrees);
      PicScaleRotate(&source, kCentre, kCentre, kCentre, kCentre, 1, 1, angle, &turned, bits);
      PicScaleRotate(&turned, kCentre, kCentre, kCentre, kCentre, 1, 1, -angle, &back, bits);
      for (int y = 0; y < kSize; ++y) {
        for (int x = 0; x < kSize; ++x) {
          if (std::hypot(x + 0.5 - kCentre, y + 0.5 - kCentre) > kCentre - 2) continue;
          const int difference = source.GetPixel(x, y).value - back.GetPixel(x, y).value;
          worst = std::max(worst, std::abs(static_cast<double>(difference)));
        }
      }
    }
    EXPECT_LT(worst, bound) << bits;
  }
}

// A quarter turn takes what lies to the right upwards, in every unit of angles.
TEST(ScaleRotate, CounterClockwiseInTheCurrentUnit) {
  LxImage<LxBW8> source(5, 5);
  for (int i = 0; i < 25; ++i) source.SetPixel(static_cast<std::uint8_t>(10 + i), i % 5, i / 5);
  const std::array<float, 4> quarter = {90, static_cast<float>(M_PI / 2), 0.25F, 100};
  for (const int unit : {0, 1, 2, 3}) {
    LxSetAngleUnit(static_cast<LX_ANGLE_UNITS>(unit));
    LxImage<LxBW8> turned(5, 5);
    PicScaleRotate(&source, 2.5F, 2.5F, 2.5F, 2.5F, 1, 1, quarter[static_cast<std::size_t>(unit)],
                   &turned, 0);
    EXPECT_EQ(turned.GetPixel(2, 0), source.GetPixel(4, 2)) << unit;
    EXPECT_EQ(turned.GetPixel(0, 0), source.GetPixel(4, 0)) << unit;
  }
  LxSetAngleUnit(LX_ANGLE_UNIT_DEGREES);
}

TEST(Register, ThreePointsOntoThemselves) {
  LxImage<LxBW16> source(60, 40);
  for (int i = 0; i < 2400; ++i) {
    source.SetPixel(static_cast<std::uint16_t>(i * 7919), i % 60, i / 60);
  }
  for (const int bits : {0, 4, 8}) {
    Filled<LxBW16> same(60, 40, 7);
    PicRegister(&source, &same, 3.5F, 2, 50, 7.25F, 11, 38, 3.5F, 2, 50, 7.25F, 11, 38, bits);
    EXPECT_EQ(LxGetError(), LX_OK);
    int wrong = 0;
    for (int i = 0; i < 2400; ++i) {
      wrong += same.GetPixel(i % 60, i / 60) == source.GetPixel(i % 60, i / 60) ? 0 : 1;
    }
    EXPECT_EQ(wrong, 0) << bits;
  }
}

TEST(Register, PivotsOnOneLineComeFirst) {
  LxROI<LxC24> none;
  PicRegister(&none, &none, 1, 1, 2, 2, 3, 3, 0, 0, 5, 0, 0, 5, 3);
  EXPECT_EQ(LxGetError(), LX_ERROR_SINGULAR_SYSTEM);
  EXPECT_EQ(Trace(), Names{"PicRegister ( C24, 3 pivots)"});
  PicRegister(&none, &none, 1, 1, 2, 2, 3, 4, 0, 0, 0, 0, 0, 5, 3);
  EXPECT_EQ(LxGetError(), LX_ERROR_ROI_NOT_ATTACHED);
  Filled<LxC24> image(9, 9, LxC24{1, 2, 3});
  PicRegister(&image, &image, 1, 1, 2, 2, 3, 4, 0, 0, 0, 0, 0, 5, 3);
  EXPECT_EQ(LxGetError(), LX_ERROR_DIVISION_BY_ZERO);
  EXPECT_EQ(Trace(), (Names{"PicLinearTransform", "PicLinearTransform ( C24)",
                            "PicRegister ( C24, 3 pivots)"}));
}

TEST(Register, TwoPivotsThatCoincide) {
  Filled<LxBW8> source(9, 9, 50);
  Filled<LxBW8> destination(9, 9, 77);
  PicRegister(&source, &destination, 4, 4, 4, 4, 5, 5, 8, 5, 8, 1);
  EXPECT_EQ(LxGetError(), LX_ERROR_DIVISION_BY_ZERO);
  EXPECT_EQ(Trace(), (Names{"PicLinearTransform", "PicScaleRotate"}));
  EXPECT_EQ(destination.GetPixel(8, 8), 77);
  // Without scaling only the direction is missing, and taken as that of the rows.
  PicRegister(&source, &destination, 4, 4, 4, 4, 5, 5, 8, 5, 8, 0);
  EXPECT_EQ(LxGetError(), LX_OK);
  EXPECT_EQ(destination.GetPixel(8, 8), 50);
  EXPECT_EQ(destination.GetPixel(0, 8), 0);
}

// Pivot 1 comes to lie on pivot 1: twice as far from pivot 0, and a quarter turn on.
TEST(Register, TwoPivotsScaleAndTurn) {
  Filled<LxBW8> source(20, 20, 0);
  LxImage<LxBW8> destination(40, 40);
  source.SetPixel(200, 12, 7);
  PicRegister(&source, &destination, 4.5F, 7.5F, 12.5F, 7.5F, 10, 30, 10, 14, 0, 1);
  for (int y = 0; y < 40; ++y) {
    for (int x = 0; x < 40; ++x) {
      const bool inside = std::abs(x + 0.5 - 10) < 1 && std::abs(y + 0.5 - 14) < 1;
      EXPECT_EQ(destination.GetPixel(x, y), inside ? 200 : 0) << x << " " << y;
    }
  }
}

}  // namespace
}  // namespace lx::test
