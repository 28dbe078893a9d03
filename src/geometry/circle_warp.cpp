// SPDX-License-Identifier: Apache-2.0
#include <cmath>
#include <cstring>

#include "foundation/frame.h"
#include "foundation/rows.h"
#include "foundation/scratch.h"
#include "foundation/truncate.h"
#include "lxpic/base/settings.h"
#include "lxpic/geometry/warp.h"

namespace {

using namespace lx;

// A column's points on both circles.
struct Ray {
  float x1;
  float y1;
  float x2;
  float y2;
};

struct Ring {
  float centreX;
  float centreY;
  float radius1;
  float radius2;
};

Ray RayAt(const Ring& ring, float angle) {
  const double cosine = std::cos(static_cast<double>(angle));
  const double sine = std::sin(static_cast<double>(angle));
  const auto on = [](float centre, float radius, double part) {
    return static_cast<float>(static_cast<double>(centre) + static_cast<double>(radius) * part);
  };
  return {on(ring.centreX, ring.radius1, cosine), on(ring.centreY, ring.radius1, sine),
          on(ring.centreX, ring.radius2, cosine), on(ring.centreY, ring.radius2, sine)};
}

float AngleAt(std::uint32_t column, std::uint32_t width, float angle1, float angle2) {
  if (width == 1) return angle1;
  const auto rest = static_cast<float>(width - 1 - column);
  return (rest * angle1 + static_cast<float>(column) * angle2) / static_cast<float>(width - 1);
}

void StoreCoordinate(float value, LxBW16* to) {
  const std::int64_t whole = TruncateTo(static_cast<double>(value), INT16_MIN, INT16_MAX);
  const auto word = static_cast<std::uint16_t>(whole);
  std::memcpy(to, &word, sizeof(word));  // rows lie at any address
}

void FillMaps(const Ray* rays, const LxImage<LxBW16>* xMap, const LxImage<LxBW16>* yMap) {
  const std::uint32_t width = xMap->GetWidth();
  const std::uint32_t height = xMap->GetHeight();
  const float step = 1.0F / static_cast<float>(height - 1);
  float t = 0;
  float s = 1;
  for (std::uint32_t v = 0; v < height; ++v) {
    auto* const toX = RowsOf(xMap).Row<LxBW16>(v);
    auto* const toY = RowsOf(yMap).Row<LxBW16>(v);
    for (std::uint32_t u = 0; u < width; ++u) {
      StoreCoordinate(t * rays[u].x1 + s * rays[u].x2, toX + u);
      StoreCoordinate(t * rays[u].y1 + s * rays[u].y2, toY + u);
    }
    t += step;
    s -= step;
  }
}

}  // namespace

void PicSetCircleWarp(float centreX, float centreY, int height, float radius1, float radius2,
                      int width, float angle1, float angle2, LxImage<LxBW16>* xMap,
                      LxImage<LxBW16>* yMap) {
  RunOperation("PicSetCircleWarp", [&] {
    if (!Require(height >= 1, LX_ERROR_ARGUMENT_3_OUT_OF_RANGE) ||
        !Require(width >= 1, LX_ERROR_ARGUMENT_6_OUT_OF_RANGE) ||
        !Require(xMap != nullptr && yMap != nullptr, LX_ERROR_ROI_NOT_ATTACHED)) {
      return;
    }
    const auto columns = static_cast<std::uint32_t>(width);
    const auto rows = static_cast<std::uint32_t>(height);
    const Scratch<Ray> rays(columns);
    if (!rays || !Resize(xMap, columns, rows) || !Resize(yMap, columns, rows)) return;
    const float first = LxToRadians(angle1);
    const float last = LxToRadians(angle2);
    for (std::uint32_t u = 0; u < columns; ++u) {
      rays.get()[u] = RayAt({centreX, centreY, radius1, radius2}, AngleAt(u, columns, first, last));
    }
    FillMaps(rays.get(), xMap, yMap);
  });
}
