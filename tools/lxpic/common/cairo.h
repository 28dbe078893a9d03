// SPDX-License-Identifier: Apache-2.0
// What everything that draws with Cairo shares.
#pragma once

#include <cairo.h>

#include <memory>
#include <string>

#include "tools/lxpic/common/failure.h"

namespace lx::tool {

struct Colour {
  double red;
  double green;
  double blue;
};

/// Cairo's built-in stroke font: it needs no font files and looks the same everywhere.
inline constexpr const char* kStrokeFont = "@cairo:";

struct CairoDestroyer {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  void operator()(cairo_t* context) const { cairo_destroy(context); }
};
using SurfacePointer = std::unique_ptr<cairo_surface_t, CairoDestroyer>;
using ContextPointer = std::unique_ptr<cairo_t, CairoDestroyer>;

inline void CheckCairo(cairo_status_t status) {
  if (status == CAIRO_STATUS_SUCCESS) return;
  throw Failure(kOperationFailed, std::string("drawing: ") + cairo_status_to_string(status));
}

inline void SetColour(cairo_t* context, const Colour& colour) {
  cairo_set_source_rgb(context, colour.red, colour.green, colour.blue);
}

}  // namespace lx::tool
