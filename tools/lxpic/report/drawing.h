// SPDX-License-Identifier: Apache-2.0
// A drawing in a PNG or SVG file.
#pragma once

#include <string>

#include "lxpic/lxpic.h"
#include "tools/lxpic/common/cairo.h"
#include "tools/lxpic/common/words.h"
#include "tools/lxpic/report/drawing_format.h"
#include "tools/lxpic/value/image_value.h"

namespace lx::tool {

/// Lines and texts on white, one pen after the other.
class Drawing : public LxDrawTarget {
 public:
  /// A drawing of `size` pixels for the file `path`.
  Drawing(std::string path, DrawingFormat format, const Size& size);

  /// Chooses what later lines are drawn with.
  void SetPen(const Colour& colour, double width);
  /// Moves the origin of all that is drawn later, from where the drawing begins.
  void SetOrigin(int x, int y);
  /// The image, of bw8, bw16 or c24, in a rectangle of `size` pixels at the origin.
  void Picture(const ImageValue& image, const Size& size);
  /// Whether later texts are written.
  void SetTextShown(bool shown) { textShown = shown; }

  void MoveTo(int x, int y) override;
  void LineTo(int x, int y) override;
  void Text(int x, int y, const char* text) override;

  /// Writes the file. Throws Failure, which names it.
  void Finish();

 private:
  void Check(cairo_status_t status) const;

  std::string path;
  bool isSvg;
  std::string content;  // of an SVG, as it grows
  SurfacePointer surface;
  ContextPointer context;
  bool textShown = true;
};

}  // namespace lx::tool
