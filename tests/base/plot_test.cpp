// SPDX-License-Identifier: Apache-2.0
#include "lxpic/base/plot.h"

#include <gtest/gtest.h>

#include <array>
#include <cfloat>
#include <climits>
#include <cmath>
#include <string>
#include <vector>

namespace {

struct Recorder : LxDrawTarget {
  void MoveTo(int x, int y) override { Add("M", x, y); }
  void LineTo(int x, int y) override { Add("L", x, y); }
  void Text(int x, int y, const char* text) override { Add(text, x, y); }
  void Add(const char* call, int x, int y) {
    calls.emplace_back(call);
    inside = inside && 100 <= x && x < 500 && 50 <= y && y < 350;
  }
  std::vector<std::string> calls;
  bool inside = true;
};

TEST(Plot, MapsItsRangeToWhatTheAxesEnclose) {
  LxPlot plot;
  const std::array corners = {plot.XView(0.0), plot.XView(1.0), plot.YView(1.0), plot.YView(0.0),
                              plot.GetAxisOrigin()};
  EXPECT_EQ(corners, (std::array{0, 1, 0, 1, 1}));

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

  EXPECT_EQ(target.calls, (std::vector<std::string>{"M", "L", "M", "L", "-10", "90", "0", "200",
                                                    "Value", "Count"}));
  EXPECT_TRUE(target.inside);
}

TEST(Plot, UnusableRangesCountAsZeroToOne) {
  const double bad[][2] = {{5, 5}, {5, 4}, {NAN, 1}, {0, NAN}, {0, INFINITY}, {-DBL_MAX, DBL_MAX}};
  LxPlot standard;
  standard.DrawAnnotations(nullptr, 0, 0, 1000, 1000, nullptr, nullptr);
  for (const auto& [low, high] : bad) {
    LxPlot plot;
    plot.SetRange(low, high, low, high);
    plot.DrawAnnotations(nullptr, 0, 0, 1000, 1000, nullptr, nullptr);
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
  LxPlot().DrawAnnotations(&target, 0, 0, 100, 100, nullptr, nullptr);
  EXPECT_EQ(target.calls,
            (std::vector<std::string>{"M", "L", "M", "L", "M", "L", "0", "1", "0", "1"}));
}

}  // namespace
