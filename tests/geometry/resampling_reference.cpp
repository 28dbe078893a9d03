// SPDX-License-Identifier: Apache-2.0
// Affine transforms, point by point.
#include <cmath>
#include <optional>

#include "support/reference.h"

namespace lx::test {

namespace {

// A coordinate of source points: column * X + row * Y + origin in units of 2^-16, without limits.
__extension__ using Exact = __int128;

struct Axis {
  Exact column;
  Exact row;
  Exact origin;

  Exact At(int x, int y) const { return column * x + row * y + origin; }
};

struct Coefficients {
  float a0, a1, a2, b0, b1, b2;
};

std::optional<Exact> Fixed(float value) {
  const double fixed = std::trunc(static_cast<double>(value) * 65536);
  if (!(std::abs(fixed) < 0x1p63)) return std::nullopt;
  return static_cast<std::int64_t>(fixed);
}

std::optional<Axis> AxisOf(float column, float row, float origin, int bits) {
  const auto c = Fixed(column);
  const auto r = Fixed(row);
  const auto o = Fixed(origin);
  if (!c || !r || !o) return std::nullopt;
  const Exact twice = *c + *r + (bits == 0 ? 0 : 65536);
  return Axis{*c, *r, *o + (twice - (twice & 1)) / 2};
}

// One or two pixels of one dimension with their weights, and whether there are any.
struct Taps {
  bool inside;
  int first;
  int second;
  Value fraction;
};

// Five zones: outside, the edge pixel alone, two neighbours, the edge pixel alone, outside.
Taps TapsOf(Exact at, int size, int bits) {
  const Exact end = Exact{size} * 65536;
  if (bits == 0) {
    if (at < 0 || at >= end) return {false, 0, 0, 0};
    return {true, static_cast<int>(at / 65536), static_cast<int>(at / 65536), 0};
  }
  if (at < 32768 || at >= end + 32768) return {false, 0, 0, 0};
  if (at < 65536) return {true, 0, 0, 0};
  if (at >= end) return {true, size - 1, size - 1, 0};
  const int first = static_cast<int>(at / 65536) - 1;
  return {true, first, first + 1, static_cast<Value>(at % 65536) >> (16 - bits)};
}

Value Between(const Picture& source, const Taps& x, const Taps& y, int component, int bits) {
  const Value one = Value{1} << bits;
  const auto across = [&](int row) {
    return (one - x.fraction) * source.At(x.first, row, component) +
           x.fraction * source.At(x.second, row, component);
  };
  return ((one - y.fraction) * across(y.first) + y.fraction * across(y.second)) >> (2 * bits);
}

void Sample(const Picture& source, const std::optional<Axis>& x, const std::optional<Axis>& y,
            int bits, Picture& destination) {
  for (int row = 0; row < destination.height; ++row) {
    for (int column = 0; column < destination.width; ++column) {
      Taps across{};
      Taps down{};
      if (x && y) {
        across = TapsOf(x->At(column, row), source.width, bits);
        down = TapsOf(y->At(column, row), source.height, bits);
      }
      for (int k = 0; k < destination.components; ++k) {
        destination.At(column, row, k) =
            across.inside && down.inside ? Between(source, across, down, k, bits) : 0;
      }
    }
  }
}

struct Regions {
  std::size_t source;
  std::size_t destination;
};

// `inner` are traced by what refuses within.
void Transform(const Coefficients& c, int bits, Regions regions,
               const std::vector<std::string>& inner, Outcome& outcome) {
  const float determinant = c.a0 * c.b1 - c.a1 * c.b0;
  if (determinant == 0 || !std::isfinite(determinant) || !std::isfinite(c.a2) ||
      !std::isfinite(c.b2)) {
    return outcome.Refuse(LX_ERROR_DIVISION_BY_ZERO, inner);
  }
  if (bits != 0 && bits != 4 && bits != 8) {
    return outcome.Refuse(LX_ERROR_INCONSISTENT_ARGUMENTS, inner);
  }
  const float k0 = c.b1 / determinant;
  const float k1 = -c.a1 / determinant;
  const float m0 = -c.b0 / determinant;
  const float m1 = c.a0 / determinant;
  const float k2 = -(k0 * c.a2 + k1 * c.b2);
  const float m2 = -(m0 * c.a2 + m1 * c.b2);
  const Picture source = outcome.Image(regions.source);
  Sample(source, AxisOf(k0, k1, k2, bits), AxisOf(m0, m1, m2, bits), bits,
         outcome.Image(regions.destination));
}

struct Point {
  float x;
  float y;
};

// Scaled and rotated by `angle`, in the unit of angles; `from` comes to lie on `to`.
Coefficients MotionOf(Point from, Point to, float scaleX, float scaleY, float angle) {
  const double radians = LxToRadians(angle);
  const auto a0 = static_cast<float>(scaleX * std::cos(radians));
  const auto a1 = static_cast<float>(scaleY * std::sin(radians));
  const auto b0 = static_cast<float>(-scaleX * std::sin(radians));
  const auto b1 = static_cast<float>(scaleY * std::cos(radians));
  const double x = static_cast<double>(a0) * from.x + static_cast<double>(a1) * from.y;
  const double y = static_cast<double>(b0) * from.x + static_cast<double>(b1) * from.y;
  return {a0, a1, static_cast<float>(to.x - x), b0, b1, static_cast<float>(to.y - y)};
}

float AngleOf(Point a, Point b) {
  const double x = static_cast<double>(b.x) - a.x;
  const double y = static_cast<double>(b.y) - a.y;
  return x == 0 && y == 0 ? 0 : static_cast<float>(std::atan2(y, x));
}

double Distance(Point a, Point b) {
  const float x = b.x - a.x;
  const float y = b.y - a.y;
  return std::sqrt(static_cast<double>(x * x + y * y));
}

// The numbers of a call, in order.
class Reader {
 public:
  Reader(const Arguments& arguments, std::size_t first) : call(arguments), at(first) {}

  float Next() { return static_cast<float>(call.Number(at++)); }
  Point NextPoint() {
    const float x = Next();
    return {x, Next()};
  }
  int NextWhole() { return static_cast<int>(call.Number(at++)); }
  void Skip() { ++at; }

 private:
  const Arguments& call;
  std::size_t at;
};

using Inner = std::vector<std::string>;

OutcomeRule LinearTransform(const Inner& inner) {
  return [inner](const Arguments& call, Outcome& outcome) {
    Reader read(call, 1);
    Coefficients c{};
    for (float* const each : {&c.a0, &c.a1, &c.a2, &c.b0, &c.b1, &c.b2}) *each = read.Next();
    read.Skip();
    Transform(c, read.NextWhole(), {0, 7}, inner, outcome);
  };
}

OutcomeRule ScaleRotate(const Inner& inner, bool inPlace) {
  return [=](const Arguments& call, Outcome& outcome) {
    Reader read(call, 1);
    const Point from = read.NextPoint();
    const Point to = read.NextPoint();
    const Point scale = read.NextPoint();
    const Coefficients c = MotionOf(from, to, scale.x, scale.y, read.Next());
    if (!inPlace) read.Skip();
    const std::size_t destination = inPlace ? 0 : 8;
    Transform(c, read.NextWhole(), {0, destination}, inner, outcome);
  };
}

OutcomeRule RegisterOne(const Inner& inner) {
  return [=](const Arguments& call, Outcome& outcome) {
    Reader read(call, 2);
    const Point from = read.NextPoint();
    const Point to = read.NextPoint();
    Transform(MotionOf(from, to, 1, 1, 0), read.NextWhole(), {0, 1}, inner, outcome);
  };
}

OutcomeRule RegisterTwo(const Inner& inner) {
  return [=](const Arguments& call, Outcome& outcome) {
    Reader read(call, 2);
    const Point s0 = read.NextPoint();
    const Point s1 = read.NextPoint();
    const Point r0 = read.NextPoint();
    const Point r1 = read.NextPoint();
    const int bits = read.NextWhole();
    const float turn = LxFromRadians(AngleOf(r0, r1) - AngleOf(s0, s1));
    const bool scaling = read.NextWhole() != 0;
    const auto scale = scaling ? static_cast<float>(Distance(r0, r1) / Distance(s0, s1)) : 1.0F;
    Transform(MotionOf(s0, r0, scale, scale, -turn), bits, {0, 1}, inner, outcome);
  };
}

// The determinant of three columns, by the rule of Sarrus.
struct Column {
  long double x, y, z;
};

long double Determinant(Column a, Column b, Column c) {
  return a.x * b.y * c.z + b.x * c.y * a.z + c.x * a.y * b.z - c.x * b.y * a.z - b.x * a.y * c.z -
         a.x * c.y * b.z;
}

OutcomeRule RegisterThree(const Inner& inner) {
  return [=](const Arguments& call, Outcome& outcome) {
    Reader read(call, 2);
    Point s[3];
    Point r[3];
    for (Point& each : s) each = read.NextPoint();
    for (Point& each : r) each = read.NextPoint();
    const Column x = {s[0].x, s[1].x, s[2].x};
    const Column y = {s[0].y, s[1].y, s[2].y};
    const Column one = {1, 1, 1};
    const auto whole = static_cast<double>(Determinant(x, y, one));
    if (whole == 0) return outcome.Refuse(LX_ERROR_SINGULAR_SYSTEM);
    const auto share = [whole](long double d) { return static_cast<float>(d / whole); };
    const Column u = {r[0].x, r[1].x, r[2].x};
    const Column v = {r[0].y, r[1].y, r[2].y};
    const Coefficients c = {share(Determinant(u, y, one)), share(Determinant(x, u, one)),
                            share(Determinant(x, y, u)),   share(Determinant(v, y, one)),
                            share(Determinant(x, v, one)), share(Determinant(x, y, v))};
    Transform(c, read.NextWhole(), {0, 1}, inner, outcome);
  };
}

}  // namespace

std::vector<Reference> ResamplingReferences() {
  std::vector<Reference> references;
  const auto floats = [](int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += ", float";
    return text;
  };
  for (const auto& [pixel, suffix] :
       {std::pair<std::string, std::string>{"BW8", ""}, {"BW16", " (BW16)"}, {"C24", " ( C24)"}}) {
    const std::string region = "LxROI<Lx" + pixel + ">*";
    // Colours are refused by what resamples their first component.
    const bool colour = pixel == "C24";
    const Inner transform = {"PicLinearTransform" + (colour ? "" : suffix)};
    const Inner byComponent = {"PicLinearTransform", "PicScaleRotate"};
    const Inner moved = colour ? byComponent : transform;
    const auto add = [&](const std::string& name, const std::string& rest, OutcomeRule rule) {
      references.push_back(Measured(name + "(" + region + rest + ")", std::move(rule)));
    };
    add("PicLinearTransform", floats(6) + ", " + region + ", int",
        LinearTransform(colour ? transform : Inner{}));
    add("PicScaleRotate", floats(7) + ", " + region + ", int", ScaleRotate(moved, false));
    if (!colour) {
      add("PicScaleRotate", floats(7) + ", int",
          ScaleRotate({transform.front(), "PicScaleRotate" + suffix}, true));
    }
    add("PicRegister", ", " + region + floats(4) + ", int", RegisterOne(moved));
    add("PicRegister", ", " + region + floats(8) + ", int, int", RegisterTwo(moved));
    const Inner nested = {"PicLinearTransform", "PicLinearTransform ( C24)"};
    add("PicRegister", ", " + region + floats(12) + ", int",
        RegisterThree(colour ? nested : transform));
  }
  return references;
}

}  // namespace lx::test
