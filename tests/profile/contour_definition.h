// SPDX-License-Identifier: Apache-2.0
// Contours as they are defined: coordinates, and tables as they are written down.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

#include "lxpic/base/errors.h"

namespace lx::test {

/// The pixels that a walk sees.
struct Scene {
  int width;
  int height;
  std::function<bool(int x, int y)> isObject;
  std::size_t most = SIZE_MAX;  ///< points before it overflows
};

struct ContourPoint {
  int x;
  int y;
  int direction;
  bool operator==(const ContourPoint&) const = default;
};

struct DefinedContour {
  std::vector<ContourPoint> points;
  LX_ERRORS error = LX_OK;
  int closed = 1;
};

class ContourDefinition {
 public:
  ContourDefinition(const Scene& seen, bool eight, int beyond)
      : scene(seen), connected8(eight), outside(beyond) {}

  // One pass. (x, y) is where it starts, and where it stopped.
  LX_ERRORS Pass(int& x, int& y, bool clockwise, std::vector<ContourPoint>& points) const {
    static constexpr int kScan[4][8] = {{1, 2, 3, 4, 5, 6, 7, 0},
                                        {7, 0, 1, 2, 3, 4, 5, 6},
                                        {2, -1, 4, -1, 6, -1, 0, -1},
                                        {6, -1, 0, -1, 2, -1, 4, -1}};
    static constexpr int kRestart[4][8] = {{7, 7, 1, 1, 3, 3, 5, 5},
                                           {1, 3, 3, 5, 5, 7, 7, 1},
                                           {6, -1, 0, -1, 2, -1, 4, -1},
                                           {2, -1, 4, -1, 6, -1, 0, -1}};
    const int table = (connected8 ? 0 : 2) + (clockwise ? 1 : 0);
    points.clear();
    if (State(x, y) != 1) return LX_ERROR_CONTOUR_START;
    int d = kScan[table][2];
    int older = StateAt(x, y, 2);
    int old = StateAt(x, y, d);
    bool found = false;
    for (int i = 0; i < 8 && !found; ++i) {
      d = kScan[table][d];
      const int now = StateAt(x, y, d);
      found = old == 0 && now == 1 && (older == 0 || !connected8 || d % 2 == 1);
      older = old;
      old = now;
    }
    if (!found) {
      return old == 0 ? LX_ERROR_CONTOUR_START_ISOLATED : LX_ERROR_CONTOUR_START_INSIDE_OBJECT;
    }
    const ContourPoint start = {x, y, d};
    while (true) {
      if (points.size() == scene.most) return LX_ERROR_CONTOUR_OVERFLOW;
      if (!points.empty() && ContourPoint{x, y, d} == start) return LX_OK;
      points.push_back({x, y, d});
      x += ColumnStep(d);
      y += RowStep(d);
      d = kRestart[table][d];
      while (StateAt(x, y, d) == 0) d = kScan[table][d];
      if (StateAt(x, y, d) == 2) return LX_ERROR_POINT_OUTSIDE_IMAGE;
    }
  }

 private:
  static int ColumnStep(int d) { return d == 2 || d == 6 ? 0 : d < 2 || d == 7 ? 1 : -1; }
  static int RowStep(int d) { return d % 4 == 0 ? 0 : d < 4 ? -1 : 1; }
  int StateAt(int x, int y, int d) const { return State(x + ColumnStep(d), y + RowStep(d)); }
  int State(int x, int y) const {
    if (x < 0 || x >= scene.width || y < 0 || y >= scene.height) return outside;
    return scene.isObject(x, y) ? 1 : 0;
  }

  const Scene& scene;
  bool connected8;
  int outside;
};

inline DefinedContour DefineContour(const Scene& scene, int mode, int x, int y, bool eight) {
  const ContourDefinition definition(scene, eight, mode == 1 || mode == 5 ? 0 : 2);
  const bool clockwise = mode <= 2;
  DefinedContour made;
  made.error = definition.Pass(x, y, clockwise, made.points);
  if (made.error != LX_ERROR_POINT_OUTSIDE_IMAGE) return made;
  made.closed = 0;
  if (mode != 2 && mode != 4) return made;
  const LX_ERRORS second = definition.Pass(x, y, !clockwise, made.points);
  if (second == LX_ERROR_CONTOUR_OVERFLOW) made.error = second;
  return made;
}

}  // namespace lx::test
