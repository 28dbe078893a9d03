// SPDX-License-Identifier: Apache-2.0
#include "lxpic/profile/contour.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>

#include "common/random.h"
#include "lxpic/base/image.h"
#include "profile/contour_definition.h"

namespace lx::test {
namespace {

using Rows = std::vector<std::string>;

// A picture in characters: # belongs to the object.
class Drawing {
 public:
  Drawing(int width, int height, char all = '.')
      : rows(static_cast<std::size_t>(height), std::string(static_cast<std::size_t>(width), all)) {}
  explicit Drawing(const Rows& drawn) : rows(drawn) {}

  int Width() const { return static_cast<int>(rows.front().size()); }
  int Height() const { return static_cast<int>(rows.size()); }
  char& At(int x, int y) { return rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)]; }
  char At(int x, int y) const { return const_cast<Drawing*>(this)->At(x, y); }
  bool Contains(int x, int y) const { return x >= 0 && y >= 0 && x < Width() && y < Height(); }

  // `from` becomes `to` in (x, y) and all that hangs together with it.
  void Flood(int x, int y, char from, char to, bool eight) {
    if (!Contains(x, y) || At(x, y) != from) return;
    At(x, y) = to;
    for (int dy = -1; dy <= 1; ++dy) {
      for (int dx = -1; dx <= 1; ++dx) {
        if (eight || dx == 0 || dy == 0) Flood(x + dx, y + dy, from, to, eight);
      }
    }
  }

  Rows rows;
};

// The drawing in the middle of an image whose other pixels look like the object.
template <class T>
class Region {
 public:
  Region(const Drawing& drawing, bool above)
      : image_(drawing.Width() + 5, drawing.Height() + 4),
        region_(&image_, 3, 2, drawing.Width(), drawing.Height()) {
    for (int y = 0; y < drawing.Height() + 4; ++y) {
      for (int x = 0; x < drawing.Width() + 5; ++x) {
        const bool object = !drawing.Contains(x - 3, y - 2) || drawing.At(x - 3, y - 2) == '#';
        const int beside = object ? x % 2 : -1 - x % 2;
        const int level = int{kThreshold} + (above ? beside : -beside);
        image_.SetPixel(T(static_cast<decltype(T::value)>(level)), x, y);
      }
    }
  }

  LxROI<T>* Get() { return &region_; }

  static constexpr unsigned kThreshold = sizeof(T) == 1 ? 100 : 30000;

 private:
  LxImage<T> image_;
  LxROI<T> region_;
};

Scene SceneOf(const Drawing& drawing) {
  return {drawing.Width(), drawing.Height(),
          [&drawing](int x, int y) { return drawing.At(x, y) == '#'; }};
}

template <class Vector>
std::vector<ContourPoint> PointsOf(const Vector& path) {
  std::vector<ContourPoint> points;
  for (const auto& each : path) {
    ContourPoint point = {each.m_n16X, each.m_n16Y, 0};
    if constexpr (requires { each.m_bw8Pixel; }) point.direction = each.m_bw8Pixel;
    if constexpr (requires { each.m_bw16Pixel; }) point.direction = each.m_bw16Pixel;
    points.push_back(point);
  }
  return points;
}

// Contours in every mode and connectivity from every pixel.
template <class T, class Vector>
void ExpectAsDefined(const Drawing& drawing, bool above) {
  const Scene scene = SceneOf(drawing);
  Region<T> region(drawing, above);
  Vector path(0);
  for (int i = 0; i < drawing.Width() * drawing.Height() * 12; ++i) {
    const int x = i / 12 % drawing.Width();
    const int y = i / 12 / drawing.Width();
    const auto mode = static_cast<CONTOUR_MODE>(i % 6);
    const auto connectivity = static_cast<CONNEXITY>(i / 6 % 2);
    const DefinedContour defined = DefineContour(scene, mode, x, y, connectivity == CONNEXITY_8);
    path.m_bClosed = 7;
    PicContour(region.Get(), mode, x, y,
               above ? CONTOUR_ABOVE_THRESHOLD : static_cast<CONTOUR_THRESHOLD>(5),
               Region<T>::kThreshold, connectivity, &path, 1);
    ASSERT_EQ(LxGetError(), defined.error) << x << ' ' << y << " mode " << mode;
    ASSERT_EQ(path.m_bClosed, defined.closed);
    ASSERT_EQ(PointsOf(path), defined.points)
        << x << ' ' << y << " mode " << mode << " connectivity " << connectivity;
  }
}

// Disks, lines, spirals and touching corners, some of them cut by the border.
Drawing DrawAnything(Random& random) {
  Drawing made(static_cast<int>(random.Between(1, 22)), static_cast<int>(random.Between(1, 18)));
  const auto draw = [&](std::int64_t x, std::int64_t y, char with) {
    const auto column = static_cast<int>(x);
    const auto row = static_cast<int>(y);
    if (made.Contains(column, row)) made.At(column, row) = with;
  };
  for (std::int64_t shapes = random.Between(1, 4); shapes > 0; --shapes) {
    const auto x = random.Between(-1, made.Width());
    const auto y = random.Between(-1, made.Height());
    const auto size = random.Between(0, 7);
    const std::size_t style = random.Below(5);
    const char with = random.Below(4) == 0 ? '.' : '#';
    for (std::int64_t j = -size; j <= size; ++j) {
      if (style == 0) draw(x + j, y + j, with);
      if (style == 1) draw(x + j, y, with);
      for (std::int64_t i = -size; i <= size; ++i) {
        if (style == 2 && i * i + j * j <= size * size) draw(x + i, y + j, with);
        if (style == 3 && (i + j) % 2 == 0) draw(x + i, y + j, with);
      }
    }
    // Turns right after ever longer legs.
    if (style == 4) {
      std::int64_t px = x, py = y, dx = 1, dy = 0;
      for (std::int64_t leg = 1; leg < 2 * size; ++leg) {
        for (std::int64_t i = 0; i < leg + leg % 2; ++i) draw(px += dx, py += dy, with);
        dy = std::exchange(dx, -dy);
      }
    }
  }
  return made;
}

TEST(PicContour, FollowsEveryShapeFromEveryPixel) {
  Random random("contours");
  for (int turn = 0; turn < 150; ++turn) {
    const Drawing drawing = DrawAnything(random);
    std::string text;
    for (const std::string& row : drawing.rows) text += row + '\n';
    SCOPED_TRACE(text);
    ExpectAsDefined<LxBW8, LxBW8PathVector>(drawing, turn % 2 == 0);
    ExpectAsDefined<LxBW16, LxBW16PathVector>(drawing, turn % 2 == 1);
    if (HasFatalFailure()) return;
  }
}

// A contour that starts on the outside encloses its object and the holes of it, and nothing else.
TEST(PicContour, ClosedContoursFilledAreTheirObjects) {
  Random random("filled");
  std::size_t points = 0;
  for (int turn = 0; turn < 300; ++turn) {
    Drawing drawing = DrawAnything(random);
    const bool eight = turn % 2 == 0;
    int start = 0;
    const int pixels = drawing.Width() * drawing.Height();
    while (start < pixels && drawing.At(start % drawing.Width(), start / drawing.Width()) != '#') {
      ++start;
    }
    if (start == pixels) continue;
    const int x = start % drawing.Width();
    const int y = start / drawing.Width();
    const auto mode =
        turn % 4 < 2 ? CONTOUR_CLOCKWISE_ALONG_BORDER : CONTOUR_ANTICLOCKWISE_ALONG_BORDER;
    Region<LxBW8> region(drawing, true);
    LxPathVector path(0);
    PicContour(region.Get(), mode, x, y, CONTOUR_ABOVE_THRESHOLD, 100,
               eight ? CONNEXITY_8 : CONNEXITY_4, &path);
    if (LxGetError() == LX_ERROR_CONTOUR_START_ISOLATED) continue;
    ASSERT_EQ(LxGetError(), LX_OK);
    points += path.GetNumElements();
    // The outside, with a margin, is what is reached past the object, and past the contour.
    drawing.Flood(x, y, '#', 'o', eight);
    Drawing object(drawing.Width() + 2, drawing.Height() + 2);
    Drawing contour = object;
    for (int row = 0; row < drawing.Height(); ++row) {
      for (int column = 0; column < drawing.Width(); ++column) {
        if (drawing.At(column, row) == 'o') object.At(column + 1, row + 1) = 'o';
      }
    }
    for (const LxPath& each : path) {
      ASSERT_EQ(drawing.At(each.m_n16X, each.m_n16Y), 'o');
      contour.At(each.m_n16X + 1, each.m_n16Y + 1) = 'o';
    }
    for (Drawing* const each : {&object, &contour}) {
      each->Flood(0, 0, '.', ' ', !eight);
      for (std::string& row : each->rows) std::ranges::replace(row, '.', 'o');
    }
    EXPECT_EQ(contour.rows, object.rows);
  }
  EXPECT_GT(points, 2000U);
}

TEST(PicContour, ClockwiseIsAsDisplayed) {
  const Drawing drawing(Rows{".....", ".###.", ".###.", ".###.", "....."});
  Region<LxBW8> region(drawing, true);
  LxBW8PathVector path(0);
  const std::vector<ContourPoint> clockwise = {{1, 1, 0}, {2, 1, 0}, {3, 1, 6}, {3, 2, 6},
                                               {3, 3, 4}, {2, 3, 4}, {1, 3, 2}, {1, 2, 2}};
  PicContour(region.Get(), CONTOUR_CLOCKWISE, 1, 1, CONTOUR_ABOVE_THRESHOLD, 100, CONNEXITY_8,
             &path, -1);
  EXPECT_EQ(PointsOf(path), clockwise);
}

// A comb has more points than the vector has room for at first, and fewer than an eighth of the
// pixels.
TEST(PicContour, UntypedVectorsGrow) {
  Drawing comb(400, 100);
  for (int y = 10; y < 90; ++y) {
    for (int x = 10; x < 390; ++x) comb.At(x, y) = y < 12 || x % 15 == 0 ? '#' : '.';
  }
  Region<LxBW8> region(comb, true);
  LxVector groups;
  PicContour(region.Get(), CONTOUR_CLOCKWISE, 10, 10, CONTOUR_ABOVE_THRESHOLD, 100, CONNEXITY_4,
             &groups);
  ASSERT_EQ(LxGetError(), LX_OK);
  std::vector<ContourPoint> points;
  const auto* data = static_cast<const std::int32_t*>(groups.GetDataPtr());
  for (int i = 0; i < groups.GetNbGroup(); ++i, data += 3) {
    points.push_back({data[0], data[1], data[2]});
  }
  EXPECT_GT(points.size(), 4048U);
  EXPECT_EQ(points, DefineContour(SceneOf(comb), CONTOUR_CLOCKWISE, 10, 10, false).points);
}

// What a walk from row 1 leaves that ends at the border, or where coordinates do not fit 16 bits.
std::vector<ContourPoint> OpenContour(const Drawing& drawing, CONTOUR_MODE mode, int x,
                                      CONNEXITY connectivity) {
  Region<LxBW8> region(drawing, true);
  LxPathVector path(0);
  PicContour(region.Get(), mode, x, 1, CONTOUR_ABOVE_THRESHOLD, 100, connectivity, &path);
  EXPECT_EQ(LxGetError(), LX_ERROR_POINT_OUTSIDE_IMAGE);
  EXPECT_EQ(path.m_bClosed, 0);
  return PointsOf(path);
}

TEST(PicContour, PathsEndWhereCoordinatesDoNotFit) {
  constexpr int kLast = 32767;
  constexpr CONTOUR_MODE kBothWays = CONTOUR_CLOCKWISE_THEN_ANTICLOCKWISE;
  Drawing stripe(kLast + 9, 4);
  stripe.rows[1] = stripe.rows[2] = std::string(kLast + 9, '#');
  const auto along = OpenContour(stripe, CONTOUR_CLOCKWISE_ALONG_BORDER, kLast - 4, CONNEXITY_8);
  ASSERT_EQ(along.size(), 5U);
  EXPECT_EQ(along[4].x, kLast);
  const auto back = OpenContour(stripe, kBothWays, kLast - 4, CONNEXITY_8);
  ASSERT_EQ(back.size(), std::size_t{kLast});
  EXPECT_EQ(back.front().x, kLast);
  EXPECT_EQ(back.back().x, 1);
  EXPECT_TRUE(OpenContour(stripe, CONTOUR_CLOCKWISE, kLast + 1, CONNEXITY_8).empty());
  // The last point lies in an inner corner: from there nothing is behind background.
  stripe.rows[3] = stripe.rows[2];
  stripe.rows[1].replace(kLast + 1, 8, 8, '.');
  ASSERT_EQ(OpenContour(stripe, CONTOUR_CLOCKWISE, kLast - 6, CONNEXITY_4).size(), 8U);
  EXPECT_TRUE(OpenContour(stripe, kBothWays, kLast - 6, CONNEXITY_4).empty());
}

}  // namespace
}  // namespace lx::test
