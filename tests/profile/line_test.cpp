// SPDX-License-Identifier: Apache-2.0
#include "vectors/line.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace lx::vectors {
namespace {

using Pixels = std::vector<std::pair<int, int>>;

Pixels PixelsOf(Point from, Point to) {
  Pixels pixels;
  Line(from, to).ForEachPoint([&](Point point) { pixels.emplace_back(point.x, point.y); });
  return pixels;
}

TEST(Line, EachDirectionStartsAtItsOwnEnd) {
  EXPECT_EQ(PixelsOf({0, 0}, {4, 2}), (Pixels{{0, 0}, {1, 1}, {2, 1}, {3, 2}, {4, 2}}));
  EXPECT_EQ(PixelsOf({4, 2}, {0, 0}), (Pixels{{4, 2}, {3, 1}, {2, 1}, {1, 0}, {0, 0}}));
  EXPECT_EQ(PixelsOf({3, 3}, {3, 3}), (Pixels{{3, 3}}));
}

// By the decision of the nearer pixel, in twice the distances.
Pixels ByDecision(Point from, Point to) {
  const int dx = std::abs(to.x - from.x);
  const int dy = std::abs(to.y - from.y);
  const bool flat = dx >= dy;
  const int major = flat ? dx : dy;
  const int minor = flat ? dy : dx;
  const int sx = to.x > from.x ? 1 : -1;
  const int sy = to.y > from.y ? 1 : -1;
  Pixels pixels;
  int decision = 2 * minor - major;
  for (int i = 0; i <= major; ++i) {
    pixels.emplace_back(from.x, from.y);
    const bool aside = decision >= 0;
    if (flat || aside) from.x += sx;
    if (!flat || aside) from.y += sy;
    decision += 2 * minor - (aside ? 2 * major : 0);
  }
  return pixels;
}

TEST(Line, TakesTheNearerPixelsInEveryDirection) {
  for (int y = -9; y <= 9; ++y) {
    for (int x = -9; x <= 9; ++x) {
      const Pixels pixels = PixelsOf({2, 5}, {2 + x, 5 + y});
      EXPECT_EQ(pixels, ByDecision({2, 5}, {2 + x, 5 + y})) << x << ' ' << y;
      EXPECT_EQ(pixels.back(), std::pair(2 + x, 5 + y));
      EXPECT_EQ(pixels.size(), Line({2, 5}, {2 + x, 5 + y}).Count());
    }
  }
}

TEST(Line, OffsetsAreThoseOfThePoints) {
  for (const Point to : {Point{7, 40}, Point{-30, 9}, Point{0, -5}}) {
    const Line line({1, 2}, to);
    std::vector<std::ptrdiff_t> offsets;
    line.ForEachOffset(3, -100, [&](std::ptrdiff_t offset) { offsets.push_back(offset); });
    std::vector<std::ptrdiff_t> expected;
    line.ForEachPoint([&](Point point) { expected.push_back(3 * point.x - 100 * point.y); });
    EXPECT_EQ(offsets, expected);
  }
}

}  // namespace
}  // namespace lx::vectors
