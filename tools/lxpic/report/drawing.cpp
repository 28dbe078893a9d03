// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/report/drawing.h"

#include <cairo-svg.h>

#include <algorithm>
#include <filesystem>
#include <utility>

#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/file/output_file.h"

namespace lx::tool {

namespace {

constexpr double kFontSize = 13;
constexpr double kWhite = 1;
// A coordinate names the middle of its pixel, so that lines one pixel wide are sharp.
constexpr double kMiddle = 0.5;

bool HasExtension(const std::string& path, const char* extension) {
  return std::filesystem::path(path).extension() == extension;
}

// Cairo calls this from C, so nothing may be thrown through it.
cairo_status_t Append(void* text, const unsigned char* data, unsigned count) {
  try {
    static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(data), count);
    return CAIRO_STATUS_SUCCESS;
  } catch (const std::exception&) {
    return CAIRO_STATUS_NO_MEMORY;
  }
}

cairo_surface_t* MakeSurface(std::string* content, bool isSvg, const Size& size) {
  if (isSvg) return cairo_svg_surface_create_for_stream(Append, content, size.width, size.height);
  return cairo_image_surface_create(CAIRO_FORMAT_RGB24, size.width, size.height);
}

// The level at which an image of 16 bits is shown.
unsigned char HighByte(const unsigned char* word) { return word[1]; }

// The pixels as Cairo holds them: blue, green, red and a byte that does not count.
SurfacePointer PixelsOf(const ImageValue& image) {
  SurfacePointer surface(
      cairo_image_surface_create(CAIRO_FORMAT_RGB24, image.Width(), image.Height()));
  unsigned char* const data = cairo_image_surface_get_data(surface.get());
  if (data == nullptr) return surface;
  const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface.get()));
  const std::size_t bytes = image.RowBytes() / static_cast<std::size_t>(image.Width());
  for (int y = 0; y < image.Height(); ++y) {
    const unsigned char* from = image.Row(y);
    unsigned char* to = data + stride * static_cast<std::size_t>(y);
    for (int x = 0; x < image.Width(); ++x, from += bytes, to += 4) {
      const bool isColour = bytes == 3;
      const unsigned char grey = bytes == 2 ? HighByte(from) : from[0];
      for (int k = 0; k < 3; ++k) to[k] = isColour ? from[k] : grey;
    }
  }
  cairo_surface_mark_dirty(surface.get());
  return surface;
}

}  // namespace

std::optional<DrawingFormat> DrawingFormatOf(const std::string& path) {
  if (HasExtension(path, ".png")) return DrawingFormat::kPng;
  if (HasExtension(path, ".svg")) return DrawingFormat::kSvg;
  return std::nullopt;
}

Drawing::Drawing(std::string fileName, DrawingFormat format, const Size& size)
    : path(std::move(fileName)),
      isSvg(format == DrawingFormat::kSvg),
      surface(MakeSurface(&content, isSvg, size)),
      context(cairo_create(surface.get())) {
  Check(cairo_status(context.get()));
  SetColour(context.get(), {kWhite, kWhite, kWhite});
  cairo_paint(context.get());
  cairo_select_font_face(context.get(), kStrokeFont, CAIRO_FONT_SLANT_NORMAL,
                         CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(context.get(), kFontSize);
  cairo_set_line_cap(context.get(), CAIRO_LINE_CAP_SQUARE);
  cairo_set_line_join(context.get(), CAIRO_LINE_JOIN_ROUND);
}

void Drawing::SetPen(const Colour& colour, double width) {
  cairo_stroke(context.get());
  SetColour(context.get(), colour);
  cairo_set_line_width(context.get(), width);
}

void Drawing::SetOrigin(int x, int y) {
  cairo_stroke(context.get());
  cairo_identity_matrix(context.get());
  cairo_translate(context.get(), x, y);
}

void Drawing::Picture(const ImageValue& image, const Size& size) {
  const SurfacePointer pixels = PixelsOf(image);
  Check(cairo_surface_status(pixels.get()));
  cairo_stroke(context.get());
  cairo_save(context.get());
  cairo_scale(context.get(), 1.0 * size.width / image.Width(), 1.0 * size.height / image.Height());
  cairo_set_source_surface(context.get(), pixels.get(), 0, 0);
  cairo_paint(context.get());
  cairo_restore(context.get());
}

void Drawing::MoveTo(int x, int y) { cairo_move_to(context.get(), x + kMiddle, y + kMiddle); }

void Drawing::LineTo(int x, int y) { cairo_line_to(context.get(), x + kMiddle, y + kMiddle); }

void Drawing::Text(int x, int y, const char* text) {
  if (!textShown) return;
  cairo_stroke(context.get());
  cairo_move_to(context.get(), x, y);
  cairo_show_text(context.get(), text);
  cairo_new_path(context.get());
}

void Drawing::Finish() {
  cairo_stroke(context.get());
  Check(cairo_status(context.get()));
  if (!isSvg) Check(cairo_surface_write_to_png_stream(surface.get(), Append, &content));
  cairo_surface_finish(surface.get());
  Check(cairo_surface_status(surface.get()));
  WriteText(path, content);
}

void Drawing::Check(cairo_status_t status) const {
  if (status != CAIRO_STATUS_SUCCESS) {
    throw Failure(kFileFailed, path + ": " + cairo_status_to_string(status));
  }
}

}  // namespace lx::tool
