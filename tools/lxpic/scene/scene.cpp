// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/scene/scene.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace lx::tool {

Scene::Scene(const Size& size, const Pose& pose, const Colour& background)
    : surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, size.width, size.height)),
      context(cairo_create(surface.get())) {
  CheckCairo(cairo_status(Cairo()));
  SetColour(Cairo(), background);
  cairo_paint(Cairo());
  const double scale = pose.scale * std::min(size.width / kWidth, size.height / kHeight);
  cairo_translate(Cairo(), size.width / 2.0 + pose.shift.x, size.height / 2.0 + pose.shift.y);
  cairo_rotate(Cairo(), -pose.angle * std::numbers::pi / 180);
  cairo_scale(Cairo(), scale, scale);
  cairo_translate(Cairo(), -kWidth / 2, -kHeight / 2);
  // Letters that are fitted to the pixels would lie elsewhere in every pose.
  cairo_font_options_t* const unfitted = cairo_font_options_create();
  cairo_font_options_set_hint_style(unfitted, CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(unfitted, CAIRO_HINT_METRICS_OFF);
  cairo_set_font_options(Cairo(), unfitted);
  cairo_font_options_destroy(unfitted);
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
  cairo_move_to(Cairo(), x, y);
  // As outlines: letters that are shown lie on whole pixels.
  cairo_text_path(Cairo(), text.c_str());
  Fill(colour);
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

void Scene::Mark(double x, double y) {
  cairo_user_to_device(Cairo(), &x, &y);
  marks.push_back({x, y});
}

std::uint32_t* Scene::Row(int y) const {
  cairo_surface_flush(Surface());
  unsigned char* const pixels = cairo_image_surface_get_data(Surface());
  const std::ptrdiff_t stride = cairo_image_surface_get_stride(Surface());
  return reinterpret_cast<std::uint32_t*>(pixels + y * stride);
}

Scene DrawSheet(const Size& size, const Pose& pose) {
  return {size, pose, {kSheetLevel, kSheetLevel, kSheetLevel}};
}

}  // namespace lx::tool
