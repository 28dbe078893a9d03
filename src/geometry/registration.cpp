// SPDX-License-Identifier: Apache-2.0
#include "lxpic/geometry/registration.h"

#include <array>
#include <cmath>

#include "foundation/frame.h"
#include "geometry/linear_system.h"
#include "lxpic/base/settings.h"

namespace {

using namespace lx;
using namespace lx::geometry;

struct Pivot {
  float x;
  float y;
};

template <class T>
void RegisterOne(LxROI<T>* source, LxROI<T>* destination, Pivot from, Pivot to, int bits) {
  PicScaleRotate(source, from.x, from.y, to.x, to.y, 1.0F, 1.0F, 0.0F, destination, bits);
}

// A line from one pivot to another.
struct Line {
  Pivot from;
  Pivot to;

  float Angle() const {
    const double x = static_cast<double>(to.x) - from.x;
    const double y = static_cast<double>(to.y) - from.y;
    return x == 0.0 && y == 0.0 ? 0.0F : static_cast<float>(std::atan2(y, x));
  }
  double Length() const {
    const float x = to.x - from.x;
    const float y = to.y - from.y;
    return std::sqrt(static_cast<double>(x * x + y * y));
  }
};

template <class T>
void RegisterTwo(LxROI<T>* source, LxROI<T>* destination, const std::array<Pivot, 2>& from,
                 const std::array<Pivot, 2>& to, int bits, bool scaling) {
  const Line line = {from[0], from[1]};
  const Line reference = {to[0], to[1]};
  const float angle = LxFromRadians(reference.Angle() - line.Angle());
  // Not finite without a line in the source: a transform that is refused.
  const auto scale = scaling ? static_cast<float>(reference.Length() / line.Length()) : 1.0F;
  PicScaleRotate(source, from[0].x, from[0].y, to[0].x, to[0].y, scale, scale, -angle, destination,
                 bits);
}

template <class T>
void RegisterThree(const char* trace, LxROI<T>* source, LxROI<T>* destination,
                   const std::array<Pivot, 3>& from, const std::array<Pivot, 3>& to, int bits) {
  RunOperation(trace, [&] {
    const std::array<Triple, 3> points = {Triple{from[0].x, from[1].x, from[2].x},
                                          Triple{from[0].y, from[1].y, from[2].y}, Triple{1, 1, 1}};
    Triple a{};
    Triple b{};
    if (!SolveSystem(points, {to[0].x, to[1].x, to[2].x}, a)) return;
    if (!SolveSystem(points, {to[0].y, to[1].y, to[2].y}, b)) return;
    PicLinearTransform(source, a[0], a[1], a[2], b[0], b[1], b[2], destination, bits);
  });
}

}  // namespace

#define LX_DEFINE_REGISTER(pixel, trace)                                                           \
  void PicRegister(LxROI<pixel>* source, LxROI<pixel>* destination, float sourcePivotX,            \
                   float sourcePivotY, float destinationPivotX, float destinationPivotY,           \
                   int interpolation) {                                                            \
    RegisterOne<pixel>(source, destination, {sourcePivotX, sourcePivotY},                          \
                       {destinationPivotX, destinationPivotY}, interpolation);                     \
  }                                                                                                \
  void PicRegister(LxROI<pixel>* source, LxROI<pixel>* destination, float sourcePivot0X,           \
                   float sourcePivot0Y, float sourcePivot1X, float sourcePivot1Y,                  \
                   float destinationPivot0X, float destinationPivot0Y, float destinationPivot1X,   \
                   float destinationPivot1Y, int interpolation, int scaling) {                     \
    RegisterTwo<pixel>(                                                                            \
        source, destination,                                                                       \
        {Pivot{sourcePivot0X, sourcePivot0Y}, {sourcePivot1X, sourcePivot1Y}},                     \
        {Pivot{destinationPivot0X, destinationPivot0Y}, {destinationPivot1X, destinationPivot1Y}}, \
        interpolation, scaling != 0);                                                              \
  }                                                                                                \
  void PicRegister(LxROI<pixel>* source, LxROI<pixel>* destination, float sourcePivot0X,           \
                   float sourcePivot0Y, float sourcePivot1X, float sourcePivot1Y,                  \
                   float sourcePivot2X, float sourcePivot2Y, float destinationPivot0X,             \
                   float destinationPivot0Y, float destinationPivot1X, float destinationPivot1Y,   \
                   float destinationPivot2X, float destinationPivot2Y, int interpolation) {        \
    RegisterThree<pixel>(trace, source, destination,                                               \
                         {Pivot{sourcePivot0X, sourcePivot0Y},                                     \
                          {sourcePivot1X, sourcePivot1Y},                                          \
                          {sourcePivot2X, sourcePivot2Y}},                                         \
                         {Pivot{destinationPivot0X, destinationPivot0Y},                           \
                          {destinationPivot1X, destinationPivot1Y},                                \
                          {destinationPivot2X, destinationPivot2Y}},                               \
                         interpolation);                                                           \
  }

LX_DEFINE_REGISTER(LxBW8, "PicRegister ( BW8, 3 pivots)")
LX_DEFINE_REGISTER(LxBW16, "PicRegister ( BW16, 3 pivots)")
LX_DEFINE_REGISTER(LxC24, "PicRegister ( C24, 3 pivots)")

#undef LX_DEFINE_REGISTER
