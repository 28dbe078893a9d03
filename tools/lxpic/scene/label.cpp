// SPDX-License-Identifier: Apache-2.0
// A shipping label on a conveyor.
#include <array>

#include "tools/lxpic/scene/scene.h"

namespace lx::tool {

namespace {

constexpr Colour kBelt{0.25, 0.27, 0.29};
constexpr Colour kBeltRib{0.21, 0.23, 0.25};
constexpr Colour kShadow{0.13, 0.14, 0.15};
constexpr Colour kPaper{0.93, 0.92, 0.88};
constexpr Colour kInk{0.10, 0.10, 0.12};
constexpr Colour kAccent{0.05, 0.30, 0.60};
constexpr Colour kWarning{0.90, 0.60, 0.05};

constexpr std::uint64_t kCodeSeed = 20240;

void DrawBelt(Scene& scene) {
  constexpr int kPitch = 34;
  constexpr int kHeight = static_cast<int>(Scene::kHeight);
  for (int y = -kHeight; y < 2 * kHeight; y += kPitch) {
    scene.Rectangle({-Scene::kWidth, static_cast<double>(y), 3 * Scene::kWidth, 4}, kBeltRib);
  }
}

void DrawHeader(Scene& scene) {
  scene.Rectangle({90, 80, 1020, 110}, kAccent);
  scene.Disk(150, 135, 38, kPaper);
  scene.Ring(150, 135, 24, 7, kAccent);
  scene.Disk(150, 135, 9, kAccent);
  scene.Print(212, 154, 56, true, "AXIAL FAN UNIT", kPaper);
  scene.Print(838, 150, 42, false, "TYPE 7-204", kPaper);
}

struct Line {
  double x;
  double y;
  double size;
  bool bold;
  const char* text;
};

constexpr std::array kLines = {Line{110, 250, 27, false, "SHIP TO"},
                               Line{110, 300, 40, true, "ASSEMBLY LINE 4"},
                               Line{110, 345, 32, false, "Hall 2, Dock 17"},
                               Line{560, 250, 27, false, "PART NO."},
                               Line{560, 300, 40, true, "AF-204-1187"},
                               Line{560, 345, 32, false, "Rev. C   24 V DC   3.2 A"},
                               Line{110, 425, 27, false, "QTY"},
                               Line{110, 482, 52, true, "24"},
                               Line{250, 425, 27, false, "LOT"},
                               Line{250, 482, 44, true, "W2207-B"},
                               Line{560, 425, 27, false, "MASS"},
                               Line{560, 482, 44, true, "12.5 kg"}};

void DrawTable(Scene& scene) {
  for (const double y : {210.0, 375.0, 515.0}) scene.Trace({{90, y}, {1110, y}}, 4, kInk);
  scene.Trace({{530, 210}, {530, 515}}, 4, kInk);
  scene.Trace({{220, 375}, {220, 515}}, 4, kInk);
  scene.Trace({{820, 375}, {820, 515}}, 4, kInk);
  for (const Line& line : kLines) {
    scene.Print(line.x, line.y, line.size, line.bold, line.text, kInk);
  }
}

// Bars and gaps of 1 to 3 modules.
void DrawBars(Scene& scene, const Box& box) {
  Random random(kCodeSeed);
  constexpr double kModule = 4.4;
  double x = box.x;
  while (x < box.x + box.width) {
    const double width = kModule * static_cast<double>(1 + random.Below(3));
    scene.Rectangle({x, box.y, width, box.height}, kInk);
    x += width + kModule * static_cast<double>(1 + random.Below(3));
  }
  scene.prints.push_back(box);
}

// Cells with a solid and a dotted border on two sides each, like a two-dimensional code.
void DrawMatrix(Scene& scene, double left, double top, double cell) {
  Random random(kCodeSeed + 1);
  constexpr int kCells = 24;
  for (int row = 0; row < kCells; ++row) {
    for (int column = 0; column < kCells; ++column) {
      bool dark = random.Below(2) == 0;
      if (row == 0) dark = column % 2 == 0;
      if (column == kCells - 1) dark = row % 2 == 1;
      if (column == 0 || row == kCells - 1) dark = true;
      // A little overlap leaves no hairlines between cells.
      if (dark)
        scene.Rectangle({left + column * cell, top + row * cell, cell + 0.7, cell + 0.7}, kInk);
    }
  }
  scene.prints.push_back({left, top, kCells * cell, kCells * cell});
}

void DrawArrow(Scene& scene, double x) {
  constexpr double kTop = 398;
  cairo_t* const cairo = scene.Cairo();
  cairo_move_to(cairo, x, kTop);
  cairo_line_to(cairo, x + 32, kTop + 38);
  cairo_line_to(cairo, x + 12, kTop + 38);
  cairo_line_to(cairo, x + 12, kTop + 88);
  cairo_line_to(cairo, x - 12, kTop + 88);
  cairo_line_to(cairo, x - 12, kTop + 38);
  cairo_line_to(cairo, x - 32, kTop + 38);
  cairo_close_path(cairo);
  scene.Fill(kInk);
  scene.prints.push_back({x - 32, kTop, 64, 88});
}

void DrawWarning(Scene& scene) {
  cairo_t* const cairo = scene.Cairo();
  cairo_move_to(cairo, 1046, 396);
  cairo_line_to(cairo, 1096, 484);
  cairo_line_to(cairo, 996, 484);
  cairo_close_path(cairo);
  scene.Fill(kWarning);
  scene.Rectangle({1041, 424, 10, 32}, kInk);
  scene.Disk(1046, 469, 6, kInk);
  scene.Trace({{840, 500}, {968, 500}}, 6, kInk);
}

}  // namespace

Scene DrawLabel(const Size& size, const Pose& pose) {
  Scene scene(size, pose, kBelt);
  DrawBelt(scene);
  scene.RoundedRectangle({70, 60, 1076, 800}, 22, kShadow);
  scene.RoundedRectangle({60, 50, 1080, 800}, 22, kPaper);
  DrawHeader(scene);
  DrawTable(scene);
  DrawArrow(scene, 866);
  DrawArrow(scene, 942);
  DrawWarning(scene);
  DrawBars(scene, {110, 550, 640, 170});
  scene.Print(170, 768, 38, false, "4 0 1 2 3 4 5  6 7 8 9 0 1", kInk);
  scene.Print(110, 822, 26, false, "Keep dry.  Handle with care.  Made for test benches.", kInk);
  DrawMatrix(scene, 818, 548, 10.8);
  // The middle of the header's rings, and corners of the code and the bars.
  scene.Mark(150, 135);
  scene.Mark(818 + 24 * 10.8, 548 + 24 * 10.8);
  scene.Mark(110, 720);
  scene.area = {95, 200, 1010, 630};
  scene.ground = kPaper;
  scene.stain = kInk;
  scene.scratch = kPaper;
  return scene;
}

}  // namespace lx::tool
