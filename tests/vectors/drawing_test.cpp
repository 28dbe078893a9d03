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

namespace {

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

struct View {
  float zoomX = 1.0F;
  float zoomY = 0.0F;
  float panX = 0.0F;
  float panY = 0.0F;
};

template <class Path>
std::string Drawn(const Path& path, const View& view) {
  Recorder target;
  path.Draw(&target, view.zoomX, view.zoomY, view.panX, view.panY);
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
  EXPECT_EQ(Drawn(PathOf<TypeParam>(points, 0), {}), "M0,0 L3,-1 L-2,5 ");
  EXPECT_EQ(Drawn(PathOf<TypeParam>(points, 7), {}), "M-2,5 L0,0 L3,-1 L-2,5 ");
  EXPECT_EQ(Drawn(PathOf<TypeParam>({{4, 5}}, 0), {}), "M4,5 ");
  EXPECT_EQ(Drawn(PathOf<TypeParam>({{4, 5}}, 1), {}), "M4,5 L4,5 ");
  EXPECT_EQ(Drawn(TypeParam(10), {}), "");
}

TYPED_TEST(Paths, CopiesKeepWhetherTheyAreClosed) {
  const auto path = PathOf<TypeParam>({{1, 2}}, 1);
  TypeParam copy(path);
  EXPECT_EQ(copy.m_bClosed, 1);
  TypeParam assigned(5);
  EXPECT_EQ(assigned.m_bClosed, 0);
  assigned = path;
  EXPECT_EQ(assigned.m_bClosed, 1);
  EXPECT_EQ(assigned.GetNumElements(), 1U);
  EXPECT_EQ(assigned[0].m_n16Y, 2);
}

TEST(PathDrawing, MapsPixelCentres) {
  const auto path = PathOf<LxPathVector>({{0, 0}, {-1, -1}, {10, 20}}, 0);
  EXPECT_EQ(Drawn(path, {2, 0, 0, 0}), "M1,1 L-1,-1 L21,41 ");
  EXPECT_EQ(Drawn(path, {0.5F, 3, 0, 0}), "M0,1 L-1,-2 L5,61 ");
  EXPECT_EQ(Drawn(path, {1, 1, -0.75F, 9.5F}), "M-1,10 L-2,9 L9,30 ");
  EXPECT_EQ(Drawn(path, {0, 0, 5, 5}), "M0,0 L0,0 L0,0 ");
  // The product rounds up to a whole number in single precision before the floor.
  EXPECT_EQ(Drawn(PathOf<LxPathVector>({{32767, 0}}, 0), {512.0F, 0, 0x1.FFFFFEp-2F, 0}),
            "M16777216,256 ");
}

TEST(PathDrawing, ClampsWhatNoDeviceHas) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  const auto path = PathOf<LxPathVector>({{1, -1}}, 0);
  EXPECT_EQ(Drawn(path, {1e30F, 0, 0, 0}), "M2147483647,-2147483648 ");
  EXPECT_EQ(Drawn(path, {1, 1, kInfinity, -kInfinity}), "M2147483647,-2147483648 ");
  EXPECT_EQ(Drawn(path, {1, 1, std::nanf(""), 1e9F}), "M0,1000000000 ");
}

TEST(PathDrawing, ToNothing) {
  PathOf<LxPathVector>({{1, 2}, {3, 4}}, 1).Draw(nullptr, 1, 1, 0, 0);
  EXPECT_EQ(TakeOutcome(), "0");
}

struct Throwing : Recorder {
  void LineTo(int /*x*/, int /*y*/) override {
    if (noMemory) throw std::bad_alloc();
    throw 5;
  }
  bool noMemory = false;
};

TEST(Drawing, TargetsMayThrow) {
  Throwing target;
  const auto path = PathOf<LxPathVector>({{1, 2}, {3, 4}}, 1);
  path.Draw(&target, 1, 1, 0, 0);
  EXPECT_EQ(TakeOutcome(), "32767");
  LxBWHistogramVector histogram(0);
  histogram.Draw(&target, 0, 0, 100, 100);
  EXPECT_EQ(TakeOutcome(), "32767");
  target.noMemory = true;
  histogram.Draw(&target, 0, 0, 100, 100);
  EXPECT_EQ(TakeOutcome(), "1303");
}

LxBWHistogramVector HistogramOf(const std::vector<unsigned>& counts) {
  LxBWHistogramVector histogram(0);
  for (const unsigned count : counts) histogram.AddElement(count);
  return histogram;
}

// What a histogram must draw in a rectangle: axes and bars, with the mapping of an own plot.
std::string Expected(double xMaximum, double yMaximum, int x, int y, int width, int height,
                     const std::vector<unsigned>& counts) {
  Recorder target;
  LxPlot plot;
  plot.SetRange(0, xMaximum, 0, yMaximum);
  plot.DrawAnnotations(&target, x, y, width, height, "Value", "Count");
  for (std::size_t i = 0; i < counts.size(); ++i) {
    const int left = plot.XView(static_cast<double>(i));
    const int right = std::max(left + 1, plot.XView(static_cast<double>(i) + 1));
    for (int column = left; column < right; ++column) {
      target.Add('M', column, plot.GetAxisOrigin());
      target.Add('L', column, plot.YView(counts[i]));
    }
  }
  return target.lines;
}

TEST(HistogramDrawing, DrawsBarsAboveTheAxes) {
  struct Row {
    std::vector<unsigned> counts;
    double xMaximum;
    double yMaximum;
  };
  const std::vector<Row> rows = {{{}, 1, 1},
                                 {{5}, 1, 5},
                                 {{0, 7}, 1, 7},
                                 {{4, 9, 2}, 2, 9},
                                 {std::vector<unsigned>(256, 0), 255, 1},
                                 {{0xFFFFFFFF, 1, 0, 3}, 3, 4294967295.0}};
  for (const Row& row : rows) {
    auto histogram = HistogramOf(row.counts);
    Recorder target;
    histogram.Draw(&target, 10.9F, -20.9F, 300.5F, 200.0F);
    EXPECT_EQ(TakeOutcome(), "0");
    EXPECT_EQ(target.lines, Expected(row.xMaximum, row.yMaximum, 10, -20, 300, 200, row.counts));
    ASSERT_EQ(target.texts.size(), 6U);
    EXPECT_EQ(target.texts[4], "Value");
    EXPECT_EQ(target.texts[5], "Count");
  }
}

TEST(HistogramDrawing, SurvivesAnyRectangle) {
  auto histogram = HistogramOf({4, 9, 2});
  histogram.Draw(nullptr, 0, 0, 100, 100);
  EXPECT_EQ(TakeOutcome(), "0");
  for (const float position : {-1e30F, 1e30F, std::nanf("")}) {
    Recorder target;
    histogram.Draw(&target, position, position, 500, -position);
    EXPECT_EQ(TakeOutcome(), "0");
    EXPECT_FALSE(target.lines.empty());
  }
}

}  // namespace
