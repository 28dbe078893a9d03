// SPDX-License-Identifier: Apache-2.0
// A drawing of a product, with what is needed to spoil it in believable places.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "common/random.h"
#include "tools/lxpic/common/cairo.h"
#include "tools/lxpic/common/words.h"
#include "tools/lxpic/scene/defect.h"
#include "tools/lxpic/scene/pose.h"

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
  Scene(const Size& size, const Pose& pose, const Colour& background);

  cairo_t* Cairo() const { return context.get(); }
  cairo_surface_t* Surface() const { return surface.get(); }
  /// The pixels of a row: red in bits 16-23, green, blue in bits 0-7.
  std::uint32_t* Row(int y) const;

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
  /// Remembers (x, y) as a place that is found again in any picture of the product.
  void Mark(double x, double y);

  /// Where defects may lie, and with which colours they are made.
  Box area{};
  Colour ground{};   ///< shows where print or a trace is missing
  Colour stain{};    ///< of blobs
  Colour scratch{};  ///< of scratches
  std::vector<Box> prints;
  std::vector<Segment> traces;
  std::vector<Point> marks;  ///< in pixels

 private:
  SurfacePointer surface;
  ContextPointer context;
};

/// Drawings that are always the same, so that any two of a kind can be compared.
Scene DrawLabel(const Size& size, const Pose& pose);
Scene DrawBoard(const Size& size, const Pose& pose);
/// How bright it is, 1 being white.
inline constexpr double kSheetLevel = 0.92;
/// An even sheet of grey, which fills the picture and shows nothing but the light.
Scene DrawSheet(const Size& size, const Pose& pose);

/// Draws `count` defects that do not touch each other and can be seen. Throws Failure when there is
/// no room for them.
std::vector<Defect> AddDefects(Scene& scene, int count, Random& random);

}  // namespace lx::tool
