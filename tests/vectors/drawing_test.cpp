// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <new>
#include <string>
#include <vector>

#include "lxpic/vectors/histogram_vector.h"
#include "lxpic/vectors/path_vectors.h"
#include "support/outcome_text.h"
#include "vectors/histograms.h"

namespace {

using lx::test::HistogramOf;
using lx::test::TakeOutcome;

// Keeps the moves and lines, as "M1,2 L3,4 ".
struct Recorder : LxDrawTarget {
  void MoveTo(int x, int y) override { Add('M', x, y); }
  void LineTo(int x, int y) override { Add('L', x, y); }
  void Text(int /*x*/, int /*y*/, const char* text) override { texts.emplace_back(text); }
  void Add(char what, int x, int y) {
    lines += what + std::to_string(x) + ',' + std::to_string(y) + ' ';
  }
  std::string lines;
  std::vector<std::string> texts;
};

template <class Path>
std::string Drawn(const Path& path, float zoomX = 1, float zoomY = 0, float panX = 0,
                  float panY = 0) {
  Recorder target;
  path.Draw(&target, zoomX, zoomY, panX, panY);
  EXPECT_EQ(TakeOutcome(), "0");
  return target.lines;
}

template <class Path>
Path PathOf(const std::vector<LxPath>& points, int closed) {
  Path path(1);
  for (const LxPath& point : points) {
    auto element = std::remove_reference_t<decltype(path[0])>();
    element.m_n16X = point.m_n16X;
    element.m_n16Y = point.m_n16Y;
    path.AddElement(element);
  }
  path.m_bClosed = closed;
  return path;
}

template <class Path>
class Paths : public testing::Test {};
using PathTypes = testing::Types<LxPathVector, LxBW8PathVector, LxBW16PathVector, LxC24PathVector>;
TYPED_TEST_SUITE(Paths, PathTypes);

TYPED_TEST(Paths, AreDrawnOpenAndClosed) {
  const std::vector<LxPath> points = {{0, 0}, {3, -1}, {-2, 5}};
  EXPECT_EQ(Drawn(PathOf<TypeParam>(points, 0)), "M0,0 L3,-1 L-2,5 ");
  EXPECT_EQ(Drawn(PathOf<TypeParam>(points, 7)), "M-2,5 L0,0 L3,-1 L-2,5 ");
  EXPECT_EQ(Drawn(PathOf<TypeParam>({{4, 5}}, 0)), "M4,5 ");
  EXPECT_EQ(Drawn(PathOf<TypeParam>({{4, 5}}, 1)), "M4,5 L4,5 ");
  EXPECT_EQ(Drawn(TypeParam(10)), "");
}

TYPED_TEST(Paths, CopiesKeepWhetherTheyAreClosed) {
  const auto path = PathOf<TypeParam>({{1, 2}}, 1);
  TypeParam assigned(5);
  EXPECT_EQ(assigned.m_bClosed, 0);
  assigned = path;
  EXPECT_EQ(Drawn(assigned), "M1,2 L1,2 ");
  EXPECT_EQ(Drawn(TypeParam(path)), "M1,2 L1,2 ");
}

TEST(PathDrawing, MapsPixelCentres) {
  const auto path = PathOf<LxPathVector>({{0, 0}, {-1, -1}, {10, 20}}, 0);
  EXPECT_EQ(Drawn(path, 2, 0, 0, 0), "M1,1 L-1,-1 L21,41 ");
  EXPECT_EQ(Drawn(path, 0.5F, 3, 0, 0), "M0,1 L-1,-2 L5,61 ");
  EXPECT_EQ(Drawn(path, 1, 1, -0.75F, 9.5F), "M-1,10 L-2,9 L9,30 ");
  EXPECT_EQ(Drawn(path, 0, 0, 5, 5), "M0,0 L0,0 L0,0 ");
  // The product rounds up to a whole number in single precision before the floor.
  EXPECT_EQ(Drawn(PathOf<LxPathVector>({{32767, 0}}, 0), 512.0F, 0, 0x1.FFFFFEp-2F, 0),
            "M16777216,256 ");
  // What no device has is clamped.
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  const auto point = PathOf<LxPathVector>({{1, -1}}, 0);
  EXPECT_EQ(Drawn(point, 1e30F, 0, 0, 0), "M2147483647,-2147483648 ");
  EXPECT_EQ(Drawn(point, 1, 1, kInfinity, -kInfinity), "M2147483647,-2147483648 ");
  EXPECT_EQ(Drawn(point, 1, 1, std::nanf(""), 1e9F), "M0,1000000000 ");
}

template <class What>
struct Throwing : LxDrawTarget {
  void MoveTo(int /*x*/, int /*y*/) override { throw What(); }
  void LineTo(int /*x*/, int /*y*/) override { throw What(); }
  void Text(int /*x*/, int /*y*/, const char* /*text*/) override { throw What(); }
};
struct Late : Recorder {
  void LineTo(int /*x*/, int /*y*/) override { throw 1; }
};

TEST(Drawing, TargetsMayThrowOrBeMissing) {
  Throwing<int> broken;
  Throwing<std::bad_alloc> full;
  const auto path = PathOf<LxPathVector>({{1, 2}, {3, 4}}, 1);
  auto histogram = HistogramOf({1, 2, 3});
  const std::vector<std::pair<HDC, const char*>> rows = {
      {&broken, "32767"}, {&full, "1303"}, {nullptr, "0"}};
  for (const auto& [target, outcome] : rows) {
    path.Draw(target, 1, 1, 0, 0);
    EXPECT_EQ(TakeOutcome(), outcome);
    histogram.Draw(target, 0, 0, 100, 100);
    EXPECT_EQ(TakeOutcome(), outcome);
    MoveToEx(target, 1, 2);
    EXPECT_EQ(TakeOutcome(), outcome);
    LineTo(target, 1, 2);
    EXPECT_EQ(TakeOutcome(), outcome);
    LxPlot().DrawAnnotations(target, 0, 0, 100, 100, "x", "y");
    EXPECT_EQ(TakeOutcome(), outcome);
  }
  // Nothing is drawn behind an exception.
  Late late;
  histogram.Draw(&late, 0, 0, 100, 100);
  EXPECT_EQ(late.lines, "M25,74 ");
  EXPECT_EQ(TakeOutcome(), "32767");
}

// Axes, and bars with the mapping of an own plot.
TEST(HistogramDrawing, DrawsBarsAboveTheAxes) {
  const auto expect = [](const std::vector<unsigned>& counts, double xMaximum, double yMaximum) {
    Recorder expected;
    LxPlot plot;
    plot.SetRange(0, xMaximum, 0, yMaximum);
    plot.DrawAnnotations(&expected, 10, -20, 300, 200, "Value", "Count");
    for (std::size_t i = 0; i < counts.size(); ++i) {
      const int left = plot.XView(static_cast<double>(i));
      const int right = std::max(left + 1, plot.XView(static_cast<double>(i) + 1));
      for (int column = left; column < right; ++column) {
        expected.Add('M', column, plot.GetAxisOrigin());
        expected.Add('L', column, plot.YView(counts[i]));
      }
    }
    Recorder target;
    HistogramOf(counts).Draw(&target, 10.9F, -20.9F, 300.5F, 200.0F);
    EXPECT_EQ(TakeOutcome(), "0");
    EXPECT_EQ(target.lines, expected.lines);
    EXPECT_EQ(target.texts, expected.texts);
  };
  expect({}, 1, 1);
  expect({5}, 1, 5);
  expect({0, 7}, 1, 7);
  expect({4, 9, 2}, 2, 9);
  expect(std::vector<unsigned>(256, 0), 255, 1);
  expect({0xFFFFFFFF, 1, 0, 3}, 3, 4294967295.0);
}

TEST(HistogramDrawing, SurvivesAnyRectangle) {
  for (const float position : {-1e30F, 1e30F, std::nanf("")}) {
    Recorder target;
    HistogramOf({4, 9, 2}).Draw(&target, position, position, 500, -position);
    EXPECT_EQ(TakeOutcome(), "0");
    EXPECT_FALSE(target.lines.empty());
  }
}

}  // namespace
