// SPDX-License-Identifier: Apache-2.0
// The walk along the boundary of an object.
//
// Directions are numbered anticlockwise from east, in steps of 45 degrees, y pointing down.
//
// Why every walk ends. Its state is an object pixel and the direction in which it will be left; there
// are eight states for each pixel, and the next follows from the state alone. Each has at most one
// predecessor, so that no state can come again before the first one does: within eight steps for
// each pixel of the region, a walk stops at the border or is back where it started. The predecessor
// of the state (p, d), clockwise (anticlockwise is its mirror image):
//
// - Eight neighbours. The neighbour of p before d is background, and where d is even the one before
//   that too: so the first step is chosen. Of a later one, the turn has seen those that it passed;
//   the others lie between them and the pixel q where the walk came from, and are neighbours of q
//   that its own step was behind. So all neighbours of p from q on to d are background, and q is the
//   first that is not, going back from d.
// - Four neighbours. A turn looks to the left first. If the neighbour to the left of d belongs to the
//   object, it was not passed: the walk came from there. If not, it was passed, and the walk came from
//   the first neighbour, going back from there, that belongs to the object.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "foundation/rows.h"
#include "vectors/line.h"

namespace lx::profile {

using vectors::Point;

// A place in the order in which a walk looks around. As wide as an address: the walk waits for it.
using Place = std::ptrdiff_t;

// That order: directions from north on, at least twice around. Places in it stand for directions, so
// that looking on is counting.
class Turns {
 public:
  static constexpr int kPlaces = 16;

  constexpr Turns(bool eight, bool clockwise) : eight_(eight) {
    const int step = (eight ? 1 : 2) * (clockwise ? -1 : 1);
    const int around = eight ? 8 : 4;
    for (int i = 0; i < kPlaces; ++i) {
      const int direction = (2 + i * step) & 7;
      directions_[Index(i)] = static_cast<std::int8_t>(direction);
      // Beside the pixel where it came from lies one that is known to be background.
      const int back = eight && direction % 2 != 0 ? 2 : 1;
      after_[Index(i)] = static_cast<std::int8_t>((i - back) & (around - 1));
    }
  }

  int Direction(Place place) const { return directions_[Index(place)]; }
  // Where a walk looks first behind a step. The seven places behind it are all directions.
  Place After(Place place) const { return after_[Index(place)]; }
  // Whether a first step there needs two background pixels before it.
  bool NeedsTwo(Place place) const { return eight_ && Direction(place) % 2 == 0; }

 private:
  static constexpr std::size_t Index(Place i) { return static_cast<std::size_t>(i); }

  bool eight_;
  std::array<std::int8_t, kPlaces> directions_{};
  std::array<std::int8_t, kPlaces> after_{};
};

// By connectivity (4, 8) and sense (anticlockwise, clockwise).
inline constexpr std::array<std::array<Turns, 2>, 2> kTurns = {
    {{Turns(false, false), Turns(false, true)}, {Turns(true, false), Turns(true, true)}}};

// The levels of an object: `least` and the `range` ones above it.
struct Levels {
  std::uint32_t least;
  std::uint32_t range;

  bool Hold(std::uint32_t level) const { return level - least <= range; }
};

enum class Seen {
  kBackground,
  kObject,
  kOutside
};

// What is walked in.
struct Ground {
  Rows rows;
  int width;
  int height;
  Levels object;
  Seen outside;
};

// Where a walk is. Passed by value, so that it stays in registers.
struct Spot {
  Point at;
  const std::uint8_t* pixel;
};

// What is seen from the pixels of a region. `Level` is the integer of a pixel.
template <typename Level>
class View {
 public:
  View(const Ground& ground, const Turns& turns) : ground_(ground) {
    static constexpr std::array<Point, 8> kSteps = {
        {{1, 0}, {1, -1}, {0, -1}, {-1, -1}, {-1, 0}, {-1, 1}, {0, 1}, {1, 1}}};
    for (Place place = 0; place < Turns::kPlaces; ++place) {
      const Point step = kSteps[Index(turns.Direction(place))];
      steps_[Index(place)] = step;
      offsets_[Index(place)] = step.x * kAcross + step.y * ground.rows.pitch;
    }
  }

  bool Contains(Point at) const {
    return IsBelow(at.x, ground_.width) && IsBelow(at.y, ground_.height);
  }
  Spot At(Point at) const {
    return {at, ground_.rows.template Row<std::uint8_t>(Index(at.y)) + at.x * kAcross};
  }
  bool IsObject(const std::uint8_t* pixel) const { return ground_.object.Hold(Load(pixel)); }

  Seen Look(Spot spot, Place place) const {
    spot.at += steps_[Index(place)];
    if (!Contains(spot.at)) return ground_.outside;
    return SeesObject(spot, place) ? Seen::kObject : Seen::kBackground;
  }

  Spot Moved(Spot spot, Place place) const {
    spot.at += steps_[Index(place)];
    spot.pixel += offsets_[Index(place)];
    return spot;
  }

  // The first place, from `place` on, where there is an object, which there is; -1 when the border
  // comes first.
  Place FirstObject(Spot spot, Place place) const {
    if (IsInside(spot.at)) {
      while (!SeesObject(spot, place)) ++place;
      return place;
    }
    Seen seen = Look(spot, place);
    while (seen == Seen::kBackground) seen = Look(spot, ++place);
    return seen == Seen::kObject ? place : -1;
  }

  static Level Load(const std::uint8_t* pixel) {
    Level level;
    std::memcpy(&level, pixel, sizeof(level));
    return level;
  }

 private:
  static constexpr std::ptrdiff_t kAcross = sizeof(Level);

  static std::size_t Index(std::ptrdiff_t i) { return static_cast<std::size_t>(i); }
  bool SeesObject(Spot spot, Place place) const {
    return IsObject(spot.pixel + offsets_[Index(place)]);
  }
  static bool IsBelow(int coordinate, int size) {
    return static_cast<unsigned>(coordinate) < static_cast<unsigned>(size);
  }
  // All neighbours lie in the region.
  bool IsInside(Point at) const {
    return at.x > 0 && at.y > 0 && at.x < ground_.width - 1 && at.y < ground_.height - 1;
  }

  Ground ground_;
  std::array<Point, Turns::kPlaces> steps_;
  std::array<std::ptrdiff_t, Turns::kPlaces> offsets_;
};

// The place of the first step from a spot; -1 when there is none. `last` becomes what was seen last.
template <typename Level>
Place FirstStep(const View<Level>& view, Spot spot, const Turns& turns, Seen& last) {
  constexpr Place kExamined = 10;  // two more than all
  Seen older = view.Look(spot, 0);
  last = view.Look(spot, 1);
  for (Place place = 2; place < kExamined; ++place) {
    const Seen seen = view.Look(spot, place);
    const bool behind =
        last == Seen::kBackground && (older == Seen::kBackground || !turns.NeedsTwo(place));
    if (behind && seen == Seen::kObject) return place;
    older = last;
    last = seen;
  }
  return -1;
}

// Walks from `start` until the contour closes, and says how it ended. At the border `start` becomes
// the last point that it came to; beyond what the record can hold, the last point before that.
// A record has Begin(), Fits(point), Add(point, level, direction) and Close(), which tell failures by
// code.
template <typename Level, class MakeRecord>
LX_ERRORS Follow(const Ground& ground, const Turns& turns, Point& start,
                 const MakeRecord& makeRecord) {
  const View<Level> view(ground, turns);
  auto record = makeRecord();
  if (const LX_ERRORS code = record.Begin(); code != LX_OK) return code;
  if (!view.Contains(start)) return LX_ERROR_CONTOUR_START;
  Spot spot = view.At(start);
  if (!view.IsObject(spot.pixel)) return LX_ERROR_CONTOUR_START;
  Seen last{};
  Place place = FirstStep(view, spot, turns, last);
  if (place < 0) {
    return last == Seen::kBackground ? LX_ERROR_CONTOUR_START_ISOLATED
                                     : LX_ERROR_CONTOUR_START_INSIDE_OBJECT;
  }
  if (!record.Fits(start)) return LX_ERROR_POINT_OUTSIDE_IMAGE;
  const Spot origin = spot;
  const int first = turns.Direction(place);
  for (;;) {
    const LX_ERRORS code = record.Add(spot.at, view.Load(spot.pixel), turns.Direction(place));
    if (code != LX_OK) return code;
    const Spot next = view.Moved(spot, place);
    if (!record.Fits(next.at)) break;
    spot = next;
    place = view.FirstObject(spot, turns.After(place));
    if (place < 0) break;
    // Rows may share their memory: the address alone does not tell.
    const bool isBack = spot.pixel == origin.pixel && spot.at.x == origin.at.x &&
                        spot.at.y == origin.at.y && turns.Direction(place) == first;
    if (isBack) return record.Close();
  }
  start = spot.at;
  return LX_ERROR_POINT_OUTSIDE_IMAGE;
}

}  // namespace lx::profile
