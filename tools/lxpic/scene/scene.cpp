// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/scene/scene.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace lx::tool {

Scene::Scene(const Size& size, const Colour& background)
    : surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, size.width, size.height)),
      context(cairo_create(surface.get())) {
  CheckCairo(cairo_status(Cairo()));
  SetColour(Cairo(), background);
  cairo_paint(Cairo());
  const double scale = std::min(size.width / kWidth, size.height / kHeight);
  cairo_translate(Cairo(), (size.width - scale * kWidth) / 2, (size.height - scale * kHeight) / 2);
  cairo_scale(Cairo(), scale, scale);
  cairo_set_line_cap(Cairo(), CAIRO_LINE_CAP_ROUND);
  cairo_set_line_join(Cairo(), CAIRO_LINE_JOIN_ROUND);
}

void Scene::Fill(const Colour& colour) {
  SetColour(Cairo(), colour);
  cairo_fill(Cairo());
}

void Scene::Stroke(const Colour& colour, double width) {
  SetColour(Cairo(), colour);
  cairo_set_line_width(Cairo(), width);
  cairo_stroke(Cairo());
}

void Scene::Rectangle(const Box& box, const Colour& colour) {
  cairo_rectangle(Cairo(), box.x, box.y, box.width, box.height);
  Fill(colour);
}

void Scene::RoundedRectangle(const Box& box, double radius, const Colour& colour) {
  constexpr double kQuarter = std::numbers::pi / 2;
  const double right = box.x + box.width - radius;
  const double bottom = box.y + box.height - radius;
  cairo_new_sub_path(Cairo());
  cairo_arc(Cairo(), right, box.y + radius, radius, -kQuarter, 0);
  cairo_arc(Cairo(), right, bottom, radius, 0, kQuarter);
  cairo_arc(Cairo(), box.x + radius, bottom, radius, kQuarter, 2 * kQuarter);
  cairo_arc(Cairo(), box.x + radius, box.y + radius, radius, 2 * kQuarter, 3 * kQuarter);
  cairo_close_path(Cairo());
  Fill(colour);
}

void Scene::Disk(double x, double y, double radius, const Colour& colour) {
  cairo_arc(Cairo(), x, y, radius, 0, 2 * std::numbers::pi);
  Fill(colour);
}

void Scene::Ring(double x, double y, double radius, double width, const Colour& colour) {
  cairo_new_sub_path(Cairo());
  cairo_arc(Cairo(), x, y, radius, 0, 2 * std::numbers::pi);
  Stroke(colour, width);
}

void Scene::Print(double x, double y, double size, bool bold, const std::string& text,
                  const Colour& colour) {
  cairo_select_font_face(Cairo(), kStrokeFont, CAIRO_FONT_SLANT_NORMAL,
                         bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(Cairo(), size);
  cairo_text_extents_t extents;
  cairo_text_extents(Cairo(), text.c_str(), &extents);
  SetColour(Cairo(), colour);
  cairo_move_to(Cairo(), x, y);
  cairo_show_text(Cairo(), text.c_str());
  cairo_new_path(Cairo());
  prints.push_back({x + extents.x_bearing, y + extents.y_bearing, extents.width, extents.height});
}

void Scene::Trace(const std::vector<std::pair<double, double>>& points, double width,
                  const Colour& colour) {
  for (std::size_t i = 0; i < points.size(); ++i) {
    const auto [x, y] = points[i];
    cairo_line_to(Cairo(), x, y);
    if (i == 0) continue;
    traces.push_back({points[i - 1].first, points[i - 1].second, x, y, width});
  }
  Stroke(colour, width);
}

}  // namespace lx::tool
