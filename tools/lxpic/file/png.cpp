// SPDX-License-Identifier: Apache-2.0
// libpng reports an error by a long jump. The functions that it may leave in this way hold nothing
// that needs a destructor; what does, lives in their callers.
#include <png.h>

#include <bit>
#include <csetjmp>
#include <cstdio>

#include "tools/lxpic/file/format.h"

namespace lx::tool {

namespace {

void OnError(png_structp png, png_const_charp text) {
  auto* const kept = static_cast<ErrorText*>(png_get_error_ptr(png));
  std::snprintf(kept->text, sizeof kept->text, "%s", text);
  png_longjmp(png, 1);
}

void OnWarning(png_structp /*png*/, png_const_charp /*text*/) {}

void OnRead(png_structp png, png_bytep bytes, png_size_t count) {
  auto* const file = static_cast<InputFile*>(png_get_io_ptr(png));
  if (file->Read(bytes, count) != count) png_error(png, "the file ends too early");
}

void OnWrite(png_structp png, png_bytep bytes, png_size_t count) {
  static_cast<OutputFile*>(png_get_io_ptr(png))->Write(bytes, count);
}

void OnFlush(png_structp /*png*/) {}

struct Reader {
  Reader() : png(png_create_read_struct(PNG_LIBPNG_VER_STRING, &error, OnError, OnWarning)) {
    if (png != nullptr) info = png_create_info_struct(png);
  }
  ~Reader() { png_destroy_read_struct(&png, &info, nullptr); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  ErrorText error;
  png_structp png = nullptr;
  png_infop info = nullptr;
};

struct Writer {
  Writer() : png(png_create_write_struct(PNG_LIBPNG_VER_STRING, &error, OnError, OnWarning)) {
    if (png != nullptr) info = png_create_info_struct(png);
  }
  ~Writer() { png_destroy_write_struct(&png, &info); }
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;

  ErrorText error;
  png_structp png = nullptr;
  png_infop info = nullptr;
};

// Has libpng deliver grey of 8 or 16 bits in the machine's order, or 8-bit blue, green, red.
void ChooseLayout(png_structp png, png_infop info) {
  const int colour = png_get_color_type(png, info);
  const int depth = png_get_bit_depth(png, info);
  if (colour == PNG_COLOR_TYPE_PALETTE) png_set_palette_to_rgb(png);
  if (colour == PNG_COLOR_TYPE_GRAY && depth < 8) png_set_expand_gray_1_2_4_to_8(png);
  // A palette may bring an alpha channel that the colour type does not tell.
  png_set_strip_alpha(png);
  if ((colour & PNG_COLOR_MASK_COLOR) != 0) {
    png_set_strip_16(png);
    png_set_bgr(png);
  } else if (depth == 16 && std::endian::native == std::endian::little) {
    png_set_swap(png);
  }
}

bool ReadHeader(png_structp png, png_infop info, InputFile* file) {
  if (setjmp(png_jmpbuf(png)) != 0) return false;
  png_set_read_fn(png, file, OnRead);
  png_read_info(png, info);
  ChooseLayout(png, info);
  png_set_interlace_handling(png);
  png_read_update_info(png, info);
  return true;
}

bool ReadRows(png_structp png, png_bytepp rows) {
  if (setjmp(png_jmpbuf(png)) != 0) return false;
  png_read_image(png, rows);
  png_read_end(png, nullptr);
  return true;
}

struct Layout {
  png_uint_32 width;
  png_uint_32 height;
  int depth;
  int colour;
};

bool WriteAll(png_structp png, png_infop info, OutputFile* file, const Layout& layout,
              png_bytepp rows) {
  if (setjmp(png_jmpbuf(png)) != 0) return false;
  png_set_write_fn(png, file, OnWrite, OnFlush);
  png_set_IHDR(png, info, layout.width, layout.height, layout.depth, layout.colour,
               PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_write_info(png, info);
  if (layout.colour == PNG_COLOR_TYPE_RGB) png_set_bgr(png);
  if (layout.depth == 16 && std::endian::native == std::endian::little) png_set_swap(png);
  png_write_image(png, rows);
  png_write_end(png, nullptr);
  return true;
}

Pixel PixelOfLayout(png_structp png, png_infop info) {
  if (png_get_channels(png, info) == 3) return Pixel::kC24;
  return png_get_bit_depth(png, info) == 16 ? Pixel::kBW16 : Pixel::kBW8;
}

}  // namespace

ImageValue ReadPng(InputFile& file) {
  Reader reader;
  if (reader.info == nullptr) throw Failure(kFileFailed, "not enough memory");
  if (!ReadHeader(reader.png, reader.info, &file)) {
    throw NotReadable("PNG", reader.error.text);
  }
  ImageValue image = MakeImageFor(PixelOfLayout(reader.png, reader.info),
                                  png_get_image_width(reader.png, reader.info),
                                  png_get_image_height(reader.png, reader.info));
  if (png_get_rowbytes(reader.png, reader.info) != image.RowBytes()) {
    throw Failure(kFileFailed, "a PNG layout that is not read");
  }
  if (!ReadRows(reader.png, Rows(image).data())) {
    throw NotReadable("PNG", reader.error.text);
  }
  return image;
}

void WritePng(OutputFile& file, const ImageValue& image) {
  Writer writer;
  if (writer.info == nullptr) throw Failure(kFileFailed, "not enough memory");
  const Layout layout{static_cast<png_uint_32>(image.Width()),
                      static_cast<png_uint_32>(image.Height()),
                      image.PixelType() == Pixel::kBW16 ? 16 : 8,
                      image.PixelType() == Pixel::kC24 ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_GRAY};
  if (!WriteAll(writer.png, writer.info, &file, layout, Rows(image).data())) {
    throw Failure(kFileFailed, std::string("cannot be written: ") + writer.error.text);
  }
}

}  // namespace lx::tool
