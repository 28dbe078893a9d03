// SPDX-License-Identifier: Apache-2.0
#include "lxpic/base/plot.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace {

struct Recorder : LxDrawTarget {
  void MoveTo(int x, int y) override { Add('M', x, y); }
  void LineTo(int x, int y) override { Add('L', x, y); }
  void Text(int x, int y, const char* text) override {
    Add('T', x, y);
    texts.emplace_back(text);
  }
  void Add(char what, int x, int y) {
    calls += what;
    left = std::min(left, x);
    right = std::max(right, x);
    top = std::min(top, y);
    bottom = std::max(bottom, y);
  }
  std::string calls;
  std::vector<std::string> texts;
  int left = INT_MAX, right = INT_MIN, top = INT_MAX, bottom = INT_MIN;
};

TEST(Plot, MapsItsRangeToWhatTheAxesEnclose) {
  LxPlot plot;
  EXPECT_EQ(plot.XView(0.0), 0);
  EXPECT_EQ(plot.XView(1.0), 1);
  EXPECT_EQ(plot.GetAxisOrigin(), 1);
  EXPECT_EQ(plot.YView(0.0), 1);
  EXPECT_EQ(plot.YView(1.0), 0);

  plot.SetRange(-10.0, 90.0, 0.0, 200.0);
  Recorder target;
  plot.DrawAnnotations(&target, 100, 50, 400, 300, "Value", "Count");
  const int left = plot.XView(-10.0);
  const int right = plot.XView(90.0);
  const int origin = plot.YView(0.0);
  const int top = plot.YView(200.0);
  EXPECT_EQ(origin, plot.GetAxisOrigin());
  EXPECT_TRUE(100 <= left && left < right && right < 500);
  EXPECT_TRUE(50 <= top && top < origin && origin < 350);
  EXPECT_NEAR(plot.XView(40.0), (left + right) / 2.0, 0.5);
  EXPECT_NEAR(plot.YView(50.0), origin - (origin - top) / 4.0, 0.5);
  EXPECT_GT(plot.XView(190.0), right);

  EXPECT_EQ(target.calls.substr(0, 4), "MLML");
  EXPECT_EQ(target.texts, (std::vector<std::string>{"-10", "90", "0", "200", "Value", "Count"}));
  EXPECT_TRUE(target.left >= 100 && target.right < 500);
  EXPECT_TRUE(target.top >= 50 && target.bottom < 350);
}

TEST(Plot, UnusableRangesCountAsZeroToOne) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kMax = std::numeric_limits<double>::max();
  const double bad[][2] = {{5, 5}, {5, 4}, {kNaN, 1}, {0, kNaN}, {0, kInfinity}, {-kMax, kMax}};
  for (const auto& [low, high] : bad) {
    LxPlot plot;
    plot.SetRange(low, high, low, high);
    plot.DrawAnnotations(nullptr, 0, 0, 1000, 1000, nullptr, nullptr);
    LxPlot standard;
    standard.DrawAnnotations(nullptr, 0, 0, 1000, 1000, nullptr, nullptr);
    for (const double value : {0.0, 0.25, 1.0}) {
      EXPECT_EQ(plot.XView(value), standard.XView(value)) << low << ' ' << high;
      EXPECT_EQ(plot.YView(value), standard.YView(value)) << low << ' ' << high;
    }
  }
}

TEST(Plot, ClampsWhatNoDeviceHas) {
  LxPlot plot;
  EXPECT_EQ(plot.XView(1e300), INT_MAX);
  EXPECT_EQ(plot.XView(-1e300), INT_MIN);
  EXPECT_EQ(plot.YView(1e300), INT_MIN);
  EXPECT_EQ(plot.XView(std::nan("")), 0);
  Recorder target;
  for (const int extreme : {INT_MIN, -1, 0, 1, 5, INT_MAX}) {
    plot.DrawAnnotations(&target, extreme, extreme, extreme, extreme, "x", "y");
    EXPECT_LE(plot.XView(0.0), plot.XView(1.0)) << extreme;
    EXPECT_GE(plot.YView(0.0), plot.YView(1.0)) << extreme;
  }
}

TEST(Plot, DrawsNothingWithoutATarget) {
  MoveToEx(nullptr, 1, 2);
  LineTo(nullptr, 1, 2);
  Recorder target;
  MoveToEx(&target, 1, 2);
  LineTo(&target, 3, 4);
  EXPECT_EQ(target.calls, "ML");
  LxPlot plot;
  plot.DrawAnnotations(&target, 0, 0, 100, 100, nullptr, nullptr);
  EXPECT_EQ(target.texts.size(), 4U);
}

}  // namespace
