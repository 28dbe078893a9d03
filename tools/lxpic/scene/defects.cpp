// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <numbers>
#include <optional>

#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/scene/scene.h"

namespace lx::tool {

namespace {

// A pixel counts as changed when its brightness differs by more than this, and a defect as visible
// when it changed this part of the picture.
constexpr int kVisibleChange = 60;
constexpr double kVisiblePart = 1.0 / 20000;

void DrawScratch(Scene& scene, Random& random) {
  const double x = random.Real(scene.area.x, scene.area.x + scene.area.width - 150);
  const double y = random.Real(scene.area.y, scene.area.y + scene.area.height - 110);
  const double length = random.Real(90, 150);
  const double slope = random.Real(-0.7, 0.7);
  cairo_move_to(scene.Cairo(), x, y);
  cairo_curve_to(scene.Cairo(), x + 0.3 * length, y + 0.4 * slope * length, x + 0.6 * length,
                 y + 0.5 * slope * length, x + length, y + slope * length);
  scene.Stroke(scene.scratch, random.Real(2.6, 4));
}

void DrawMissingPrint(Scene& scene, Random& random) {
  const Box& print = scene.prints[random.Below(scene.prints.size())];
  const double width = std::min(print.width, random.Real(22, 46));
  const double height = std::min(print.height, random.Real(18, 40));
  const double x = random.Real(print.x, print.x + print.width - width);
  const double y = random.Real(print.y, print.y + print.height - height);
  scene.RoundedRectangle({x, y, width, height}, std::min(width, height) / 3, scene.ground);
}

void DrawBlob(Scene& scene, Random& random) {
  const double x = random.Real(scene.area.x + 30, scene.area.x + scene.area.width - 30);
  const double y = random.Real(scene.area.y + 30, scene.area.y + scene.area.height - 30);
  for (int drop = 0; drop < 5; ++drop) {
    scene.Disk(x + random.Real(-9, 9), y + random.Real(-8, 8), random.Real(5, 11), scene.stain);
  }
}

void DrawBreak(Scene& scene, Random& random) {
  const Segment& trace = scene.traces[random.Below(scene.traces.size())];
  const double along = random.Real(0.25, 0.75);
  const double dx = trace.x2 - trace.x1;
  const double dy = trace.y2 - trace.y1;
  const double half = random.Real(8, 14) / std::hypot(dx, dy);
  cairo_move_to(scene.Cairo(), trace.x1 + (along - half) * dx, trace.y1 + (along - half) * dy);
  cairo_line_to(scene.Cairo(), trace.x1 + (along + half) * dx, trace.y1 + (along + half) * dy);
  scene.Stroke(scene.ground, trace.width + 5);
}

struct DefectKind {
  const char* name;
  void (*draw)(Scene&, Random&);
};

constexpr std::array kKinds = {DefectKind{"scratch", DrawScratch},
                               DefectKind{"missing print", DrawMissingPrint},
                               DefectKind{"blob", DrawBlob}, DefectKind{"broken line", DrawBreak}};

// The picture's pixels, 32 bits each: red in bits 16-23, green, blue in bits 0-7.
struct Pixels {
  std::uint32_t* data;
  int width;
  int height;

  std::size_t Count() const {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  }
};

Pixels PixelsOf(const Scene& scene) {
  cairo_surface_flush(scene.Surface());
  // 32-bit rows need no padding.
  return {reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(scene.Surface())),
          cairo_image_surface_get_width(scene.Surface()),
          cairo_image_surface_get_height(scene.Surface())};
}

int Brightness(std::uint32_t pixel) {
  return static_cast<int>(((pixel >> 16 & 0xFF) + (pixel >> 8 & 0xFF) + (pixel & 0xFF)) / 3);
}

// The box around what changed since `before`, if enough did.
std::optional<Defect> FindChange(const Pixels& pixels, const std::vector<std::uint32_t>& before) {
  int left = pixels.width;
  int right = -1;
  int top = pixels.height;
  int bottom = -1;
  int count = 0;
  for (int y = 0; y < pixels.height; ++y) {
    for (int x = 0; x < pixels.width; ++x) {
      const std::size_t i = static_cast<std::size_t>(y) * static_cast<std::size_t>(pixels.width) +
                            static_cast<std::size_t>(x);
      if (std::abs(Brightness(pixels.data[i]) - Brightness(before[i])) <= kVisibleChange) continue;
      ++count;
      left = std::min(left, x);
      right = std::max(right, x);
      top = std::min(top, y);
      bottom = std::max(bottom, y);
    }
  }
  if (count < std::max(8.0, kVisiblePart * static_cast<double>(pixels.Count()))) return {};
  return Defect{"", left, top, right - left + 1, bottom - top + 1};
}

bool Touch(const Defect& a, const Defect& b) {
  constexpr int kGap = 12;
  return a.x < b.x + b.width + kGap && b.x < a.x + a.width + kGap && a.y < b.y + b.height + kGap &&
         b.y < a.y + a.height + kGap;
}

// Draws a defect of this kind; draws nothing when it would not be seen or touch another.
std::optional<Defect> TryDefect(Scene& scene, const DefectKind& kind,
                                const std::vector<Defect>& others, Random& random) {
  const Pixels pixels = PixelsOf(scene);
  const std::vector<std::uint32_t> before(pixels.data, pixels.data + pixels.Count());
  kind.draw(scene, random);
  auto defect = FindChange(PixelsOf(scene), before);
  const bool alone = defect && std::none_of(others.begin(), others.end(), [&](const Defect& each) {
                       return Touch(each, *defect);
                     });
  if (alone) {
    defect->kind = kind.name;
    return defect;
  }
  std::copy(before.begin(), before.end(), pixels.data);
  cairo_surface_mark_dirty(scene.Surface());
  return {};
}

}  // namespace

std::vector<Defect> AddDefects(Scene& scene, int count, Random& random) {
  constexpr int kTries = 200;
  std::vector<Defect> defects;
  for (int i = 0; i < count; ++i) {
    const DefectKind& kind = kKinds[static_cast<std::size_t>(i) % kKinds.size()];
    std::optional<Defect> defect;
    for (int attempt = 0; attempt < kTries && !defect; ++attempt) {
      defect = TryDefect(scene, kind, defects, random);
    }
    if (!defect) {
      throw Failure(kWrongUsage, "there is no room for " + std::to_string(count) + " defects");
    }
    defects.push_back(*defect);
  }
  return defects;
}

}  // namespace lx::tool
