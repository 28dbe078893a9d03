// SPDX-License-Identifier: Apache-2.0
#include "lxpic/geometry/resampling.h"

#include <cmath>
#include <initializer_list>

#include "geometry/resample.h"
#include "lxpic/base/settings.h"

namespace {

using namespace lx;
using namespace lx::geometry;

// `inner` are the operations inside this one that a transform is refused by.
template <class T>
void Transform(LxROI<T>* source, const LinearTransform& transform, LxROI<T>* destination, int bits,
               std::initializer_list<const char*> inner = {}) {
  if (!Attached({source, destination})) return;
  FixedAffine inverse;
  if (!Invert(transform, bits, inverse)) {
    for (const char* const name : inner) LxTraceError(name);
    return;
  }
  Resample(inverse, bits, source, destination);
}

struct Motion {
  float fromX;
  float fromY;
  float toX;
  float toY;
  float scaleX;
  float scaleY;
  float angle;
};

LinearTransform TransformOf(const Motion& m) {
  const double angle = LxToRadians(m.angle);
  LinearTransform t{};
  t.a0 = static_cast<float>(m.scaleX * std::cos(angle));
  t.a1 = static_cast<float>(m.scaleY * std::sin(angle));
  t.b0 = static_cast<float>(-m.scaleX * std::sin(angle));
  t.b1 = static_cast<float>(m.scaleY * std::cos(angle));
  const double x = m.fromX;
  const double y = m.fromY;
  t.a2 = static_cast<float>(m.toX - (t.a0 * x + t.a1 * y));
  t.b2 = static_cast<float>(m.toY - (t.b0 * x + t.b1 * y));
  return t;
}

template <class T>
void Move(const char* trace, LxROI<T>* source, const Motion& motion, LxROI<T>* destination,
          int bits) {
  RunOperation(trace, [&] {
    const LinearTransform t = TransformOf(motion);
    PicLinearTransform(source, t.a0, t.a1, t.a2, t.b0, t.b1, t.b2, destination, bits);
  });
}

template <class T>
void MoveInPlace(const char* trace, LxROI<T>* region, const Motion& motion, int bits,
                 const char* inner) {
  RunOperation(trace, [&] {
    Transform(region, TransformOf(motion), region, bits, {inner, trace});
  });
}

}  // namespace

void PicLinearTransform(LxROI<LxBW8>* source, float a0, float a1, float a2, float b0, float b1,
                        float b2, LxROI<LxBW8>* destination, int interpolation) {
  RunOperation("PicLinearTransform", [&] {
    Transform(source, {a0, a1, a2, b0, b1, b2}, destination, interpolation);
  });
}

void PicLinearTransform(LxROI<LxBW16>* source, float a0, float a1, float a2, float b0, float b1,
                        float b2, LxROI<LxBW16>* destination, int interpolation) {
  RunOperation("PicLinearTransform (BW16)", [&] {
    Transform(source, {a0, a1, a2, b0, b1, b2}, destination, interpolation);
  });
}

void PicLinearTransform(LxROI<LxC24>* source, float a0, float a1, float a2, float b0, float b1,
                        float b2, LxROI<LxC24>* destination, int interpolation) {
  RunOperation("PicLinearTransform ( C24)", [&] {
    Transform(source, {a0, a1, a2, b0, b1, b2}, destination, interpolation, {"PicLinearTransform"});
  });
}

void PicScaleRotate(LxROI<LxBW8>* source, float sourcePivotX, float sourcePivotY,
                    float destinationPivotX, float destinationPivotY, float scaleX, float scaleY,
                    float angle, LxROI<LxBW8>* destination, int interpolation) {
  Move("PicScaleRotate", source,
       {sourcePivotX, sourcePivotY, destinationPivotX, destinationPivotY, scaleX, scaleY, angle},
       destination, interpolation);
}

void PicScaleRotate(LxROI<LxBW16>* source, float sourcePivotX, float sourcePivotY,
                    float destinationPivotX, float destinationPivotY, float scaleX, float scaleY,
                    float angle, LxROI<LxBW16>* destination, int interpolation) {
  Move("PicScaleRotate (BW16)", source,
       {sourcePivotX, sourcePivotY, destinationPivotX, destinationPivotY, scaleX, scaleY, angle},
       destination, interpolation);
}

void PicScaleRotate(LxROI<LxC24>* source, float sourcePivotX, float sourcePivotY,
                    float destinationPivotX, float destinationPivotY, float scaleX, float scaleY,
                    float angle, LxROI<LxC24>* destination, int interpolation) {
  const Motion motion = {sourcePivotX, sourcePivotY, destinationPivotX, destinationPivotY, scaleX,
                         scaleY,       angle};
  RunOperation("PicScaleRotate ( C24)", [&] {
    Transform(source, TransformOf(motion), destination, interpolation,
              {"PicLinearTransform", "PicScaleRotate"});
  });
}

void PicScaleRotate(LxROI<LxBW8>* region, float sourcePivotX, float sourcePivotY,
                    float destinationPivotX, float destinationPivotY, float scaleX, float scaleY,
                    float angle, int interpolation) {
  MoveInPlace(
      "PicScaleRotate", region,
      {sourcePivotX, sourcePivotY, destinationPivotX, destinationPivotY, scaleX, scaleY, angle},
      interpolation, "PicLinearTransform");
}

void PicScaleRotate(LxROI<LxBW16>* region, float sourcePivotX, float sourcePivotY,
                    float destinationPivotX, float destinationPivotY, float scaleX, float scaleY,
                    float angle, int interpolation) {
  MoveInPlace(
      "PicScaleRotate (BW16)", region,
      {sourcePivotX, sourcePivotY, destinationPivotX, destinationPivotY, scaleX, scaleY, angle},
      interpolation, "PicLinearTransform (BW16)");
}
