// SPDX-License-Identifier: Apache-2.0
// A drawing of a product, with what is needed to spoil it in believable places.
#pragma once

#include <string>
#include <vector>

#include "common/random.h"
#include "tools/lxpic/common/cairo.h"
#include "tools/lxpic/common/words.h"
#include "tools/lxpic/scene/defect.h"

namespace lx::tool {

struct Box {
  double x;
  double y;
  double width;
  double height;
};

struct Segment {
  double x1;
  double y1;
  double x2;
  double y2;
  double width;
};

/// The drawing is laid out on 1200 x 900 units, whatever its size in pixels.
class Scene {
 public:
  static constexpr double kWidth = 1200;
  static constexpr double kHeight = 900;

  /// A drawing of `size` pixels filled with `background`. Throws Failure.
  Scene(const Size& size, const Colour& background);

  cairo_t* Cairo() const { return context.get(); }
  cairo_surface_t* Surface() const { return surface.get(); }

  void Fill(const Colour& colour);
  void Stroke(const Colour& colour, double width);
  void Rectangle(const Box& box, const Colour& colour);
  void RoundedRectangle(const Box& box, double radius, const Colour& colour);
  void Disk(double x, double y, double radius, const Colour& colour);
  void Ring(double x, double y, double radius, double width, const Colour& colour);
  /// A line of text on its baseline at (x, y), remembered as print.
  void Print(double x, double y, double size, bool bold, const std::string& text,
             const Colour& colour);
  /// A line through points, remembered as traces.
  void Trace(const std::vector<std::pair<double, double>>& points, double width,
             const Colour& colour);

  /// Where defects may lie, and with which colours they are made.
  Box area{};
  Colour ground{};   ///< shows where print or a trace is missing
  Colour stain{};    ///< of blobs
  Colour scratch{};  ///< of scratches
  std::vector<Box> prints;
  std::vector<Segment> traces;

 private:
  SurfacePointer surface;
  ContextPointer context;
};

/// Drawings that are always the same, so that any two of a kind can be compared.
Scene DrawLabel(const Size& size);
Scene DrawBoard(const Size& size);

/// Draws `count` defects that do not touch each other and can be seen. Throws Failure when there is
/// no room for them.
std::vector<Defect> AddDefects(Scene& scene, int count, Random& random);

}  // namespace lx::tool
