// SPDX-License-Identifier: Apache-2.0
// A populated circuit board under a camera.
#include <array>

#include "tools/lxpic/scene/scene.h"

namespace lx::tool {

namespace {

constexpr Colour kTable{0.16, 0.16, 0.18};
constexpr Colour kMask{0.04, 0.27, 0.16};
constexpr Colour kCopper{0.30, 0.68, 0.42};
constexpr Colour kGold{0.86, 0.74, 0.42};
constexpr Colour kSilver{0.78, 0.79, 0.80};
constexpr Colour kSilk{0.92, 0.93, 0.90};
constexpr Colour kBody{0.09, 0.09, 0.10};
constexpr Colour kCeramic{0.62, 0.50, 0.36};

using Points = std::vector<std::pair<double, double>>;

void Via(Scene& scene, double x, double y) {
  scene.Disk(x, y, 11, kGold);
  scene.Disk(x, y, 5, kBody);
}

// Traces that run down, aslant and on to the right, side by side, with a via at either end.
void DrawBus(Scene& scene, double x, double y, int count, double pitch, double slant,
             double length) {
  for (int i = 0; i < count; ++i) {
    const double shift = i * pitch;
    // The rightmost bends first, so that the traces never meet.
    const double bend = y + 60 + (count - 1 - i) * pitch;
    const Points points = {{x + shift, y},
                           {x + shift, bend},
                           {x + shift + slant, bend + slant},
                           {x + slant + length, bend + slant}};
    scene.Trace(points, 7, kCopper);
    Via(scene, points.front().first, points.front().second);
    Via(scene, points.back().first, points.back().second);
  }
}

void DrawChip(Scene& scene, const Box& box, int pins, const char* name) {
  const double pitch = box.width / pins;
  for (int i = 0; i < pins; ++i) {
    const double x = box.x + (i + 0.5) * pitch;
    scene.Rectangle({x - 0.28 * pitch, box.y - 22, 0.56 * pitch, box.height + 44}, kSilver);
  }
  scene.Rectangle(box, kBody);
  scene.Disk(box.x + 18, box.y + box.height - 18, 6, kSilk);
  scene.Print(box.x + 40, box.y + box.height / 2 + 10, 28, true, name, kSilk);
}

// A two-pin part and its name beside it.
void DrawPart(Scene& scene, double x, double y, const Colour& body, const char* name) {
  scene.Rectangle({x, y, 16, 30}, kSilver);
  scene.Rectangle({x + 52, y, 16, 30}, kSilver);
  scene.Rectangle({x + 13, y + 1, 42, 28}, body);
  scene.Print(x + 14, y - 9, 21, false, name, kSilk);
}

struct Part {
  double x;
  double y;
  const char* name;
};

constexpr std::array kResistors = {Part{700, 160, "R11"}, Part{800, 160, "R12"},
                                   Part{900, 160, "R13"}, Part{1000, 160, "R14"},
                                   Part{150, 640, "R21"}, Part{150, 710, "R22"}};
constexpr std::array kCapacitors = {Part{700, 235, "C11"}, Part{800, 235, "C12"},
                                    Part{900, 235, "C13"}, Part{1000, 235, "C14"},
                                    Part{270, 640, "C21"}, Part{270, 710, "C22"}};

void DrawHoles(Scene& scene) {
  for (const double x : {100.0, 1100.0}) {
    for (const double y : {100.0, 800.0}) {
      scene.Disk(x, y, 30, kGold);
      scene.Disk(x, y, 19, kTable);
    }
  }
  for (const auto& [x, y] : Points{{190, 100}, {1010, 800}}) {
    scene.Ring(x, y, 18, 3, kSilk);
    scene.Disk(x, y, 8, kGold);
    scene.Mark(x, y);
  }
  scene.Mark(100, 800);
}

// Round pins in two rows, in a printed frame.
void DrawConnector(Scene& scene, double left, double top, int pins) {
  constexpr double kPitch = 38;
  const Box frame{left - 26, top - 26, (pins - 1) * kPitch + 52, kPitch + 52};
  cairo_rectangle(scene.Cairo(), frame.x, frame.y, frame.width, frame.height);
  scene.Stroke(kSilk, 4);
  for (int i = 0; i < 2 * pins; ++i) {
    const int column = i / 2;
    const double x = left + column * kPitch;
    const double y = top + (i % 2) * kPitch;
    scene.Disk(x, y, 14, kGold);
    scene.Disk(x, y, 7, kBody);
  }
  scene.prints.push_back(frame);
}

void DrawCoil(Scene& scene, double x, double y) {
  scene.RoundedRectangle({x - 66, y - 66, 132, 132}, 18, kBody);
  for (const double radius : {54.0, 44.0, 34.0, 24.0}) scene.Ring(x, y, radius, 5, kCeramic);
  scene.Disk(x, y, 15, kSilver);
}

// Long thin lines in the ground, from pin rows to the edge.
void DrawComb(Scene& scene) {
  for (int i = 0; i < 7; ++i) {
    const double x = 520 + 32.0 * i;
    scene.Trace({{x, 560}, {x, 610 + 14.0 * i}, {x - 60, 670 + 14.0 * i}, {x - 60, 812}}, 6,
                kCopper);
    scene.Rectangle({x - 70, 802, 20, 40}, kGold);
  }
}

}  // namespace

Scene DrawBoard(const Size& size, const Pose& pose) {
  Scene scene(size, pose, kTable);
  scene.RoundedRectangle({50, 45, 1100, 810}, 26, kMask);
  DrawBus(scene, 300, 150, 6, 24, 25, 320);
  DrawBus(scene, 770, 325, 5, 24, 50, 230);
  DrawComb(scene);
  DrawHoles(scene);
  DrawChip(scene, {470, 400, 260, 130}, 10, "LX-8051");
  DrawChip(scene, {800, 590, 220, 110}, 8, "DRV-24");
  for (const Part& part : kResistors) DrawPart(scene, part.x, part.y, kBody, part.name);
  for (const Part& part : kCapacitors) DrawPart(scene, part.x, part.y, kCeramic, part.name);
  DrawConnector(scene, 150, 420, 6);
  DrawCoil(scene, 190, 300);
  scene.Print(250, 108, 34, true, "CONTROLLER  REV B", kSilk);
  scene.Print(790, 770, 26, false, "2207-118  24 V", kSilk);
  scene.Print(130, 545, 24, false, "J1  I/O", kSilk);
  scene.area = {120, 140, 960, 620};
  scene.ground = kMask;
  scene.stain = kSilver;
  scene.scratch = kGold;
  return scene;
}

}  // namespace lx::tool
