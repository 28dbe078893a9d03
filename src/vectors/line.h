// SPDX-License-Identifier: Apache-2.0
// The digital line between two pixels: what is sampled, drawn and scanned along a segment.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <type_traits>

namespace lx::vectors {

struct Point {
  int x;
  int y;

  Point& operator+=(Point step) {
    x += step.x;
    y += step.y;
    return *this;
  }
};

// The pixels from one point to another, both included. Each direction starts on its first point and
// ends exactly on the other, so that a line back may take other pixels. The differences of the
// coordinates fit an int.
class Line {
 public:
  Line(Point from, Point to) : from_(from) {
    const int dx = to.x - from.x;
    const int dy = to.y - from.y;
    const Point alongX = {dx > 0 ? 1 : -1, 0};
    const Point alongY = {0, dy > 0 ? 1 : -1};
    const bool isFlat = std::abs(dx) >= std::abs(dy);
    major_ = isFlat ? alongX : alongY;
    minor_ = isFlat ? alongY : alongX;
    steps_ = std::abs(isFlat ? dx : dy);
    sideSteps_ = std::abs(isFlat ? dy : dx);
  }

  // How many pixels there are; one at least.
  std::uint32_t Count() const { return static_cast<std::uint32_t>(steps_) + 1; }

  // Calls `visit` with the coordinates of each pixel. A visit that returns false is the last.
  template <class Visit>
  void ForEachPoint(const Visit& visit) const {
    Walk(from_, major_, Point{major_.x + minor_.x, major_.y + minor_.y}, visit);
  }

  // Calls `visit` with the distance of each pixel from the origin of a region, in units of `across`,
  // from a pixel to its right neighbour, and `down`, to the one below.
  template <class Visit>
  void ForEachOffset(std::ptrdiff_t across, std::ptrdiff_t down, const Visit& visit) const {
    const auto distance = [=](Point step) { return step.x * across + step.y * down; };
    const std::ptrdiff_t straight = distance(major_);
    Walk(distance(from_), straight, straight + distance(minor_), visit);
  }

 private:
  template <class Position, class Visit>
  void Walk(Position position, Position straight, Position diagonal, const Visit& visit) const {
    if (!GoesOn(visit, position)) return;
    std::uint32_t error = static_cast<std::uint32_t>(steps_) / 2;
    const auto whole = static_cast<std::uint32_t>(steps_);
    for (std::uint32_t i = 0; i < whole; ++i) {
      error += static_cast<std::uint32_t>(sideSteps_);
      const bool aside = error >= whole;
      error -= aside ? whole : 0;
      position += aside ? diagonal : straight;
      if (!GoesOn(visit, position)) return;
    }
  }

  template <class Visit, class Position>
  static bool GoesOn(const Visit& visit, Position position) {
    if constexpr (std::is_same_v<decltype(visit(position)), bool>) {
      return visit(position);
    } else {
      visit(position);
      return true;
    }
  }

  Point from_;
  Point major_{};
  Point minor_{};
  int steps_ = 0;
  int sideSteps_ = 0;
};

}  // namespace lx::vectors
