// SPDX-License-Identifier: Apache-2.0
// libjpeg reports an error by a long jump. The functions that it may leave in this way hold nothing
// that needs a destructor; what does, lives in their callers.
#include <csetjmp>
#include <cstdio>

// jpeglib.h uses FILE without including what declares it.
#include <jpeglib.h>

#include "tools/lxpic/file/format.h"

namespace lx::tool {

namespace {

constexpr int kQuality = 95;

struct ErrorManager : jpeg_error_mgr {
  std::jmp_buf jump;
  char message[JMSG_LENGTH_MAX] = "";
};

void OnError(j_common_ptr codec) {
  auto* const errors = static_cast<ErrorManager*>(codec->err);
  codec->err->format_message(codec, errors->message);
  std::longjmp(errors->jump, 1);
}

// A negative level says that data is damaged, and that libjpeg would make up pixels for it.
void OnMessage(j_common_ptr codec, int level) {
  if (level < 0) OnError(codec);
}

void Prepare(ErrorManager& errors) {
  jpeg_std_error(&errors);
  errors.error_exit = OnError;
  errors.emit_message = OnMessage;
}

struct Reader {
  Reader() : codec() {
    Prepare(errors);
    codec.err = &errors;
  }
  ~Reader() { jpeg_destroy_decompress(&codec); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  ErrorManager errors;
  jpeg_decompress_struct codec;
};

struct Writer {
  Writer() : codec() {
    Prepare(errors);
    codec.err = &errors;
  }
  ~Writer() { jpeg_destroy_compress(&codec); }
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;

  ErrorManager errors;
  jpeg_compress_struct codec;
};

bool ReadHeader(Reader& reader, std::FILE* file) {
  if (setjmp(reader.errors.jump) != 0) return false;
  jpeg_create_decompress(&reader.codec);
  jpeg_stdio_src(&reader.codec, file);
  jpeg_read_header(&reader.codec, TRUE);
  reader.codec.out_color_space =
      reader.codec.jpeg_color_space == JCS_GRAYSCALE ? JCS_GRAYSCALE : JCS_EXT_BGR;
  return true;
}

bool ReadRows(Reader& reader, unsigned char** rows) {
  if (setjmp(reader.errors.jump) != 0) return false;
  jpeg_start_decompress(&reader.codec);
  while (reader.codec.output_scanline < reader.codec.output_height) {
    jpeg_read_scanlines(&reader.codec, rows + reader.codec.output_scanline, 1);
  }
  jpeg_finish_decompress(&reader.codec);
  return true;
}

struct Layout {
  unsigned width;
  unsigned height;
  bool colour;
};

bool WriteAll(Writer& writer, std::FILE* file, const Layout& layout, unsigned char** rows) {
  if (setjmp(writer.errors.jump) != 0) return false;
  jpeg_compress_struct& codec = writer.codec;
  jpeg_create_compress(&codec);
  jpeg_stdio_dest(&codec, file);
  codec.image_width = layout.width;
  codec.image_height = layout.height;
  codec.input_components = layout.colour ? 3 : 1;
  codec.in_color_space = layout.colour ? JCS_EXT_BGR : JCS_GRAYSCALE;
  jpeg_set_defaults(&codec);
  jpeg_set_quality(&codec, kQuality, TRUE);
  jpeg_start_compress(&codec, TRUE);
  while (codec.next_scanline < layout.height) {
    jpeg_write_scanlines(&codec, rows + codec.next_scanline, 1);
  }
  jpeg_finish_compress(&codec);
  return true;
}

}  // namespace

ImageValue ReadJpeg(const std::string& path) {
  const File file = OpenFile(path, "rb");
  Reader reader;
  if (!ReadHeader(reader, file.get())) {
    throw Failure(kFileFailed, std::string("damaged JPEG: ") + reader.errors.message);
  }
  const Pixel pixel = reader.codec.out_color_space == JCS_GRAYSCALE ? Pixel::kBW8 : Pixel::kC24;
  ImageValue image = MakeImageFor(pixel, reader.codec.image_width, reader.codec.image_height);
  if (!ReadRows(reader, Rows(image).data())) {
    throw Failure(kFileFailed, std::string("damaged JPEG: ") + reader.errors.message);
  }
  return image;
}

void WriteJpeg(const std::string& path, const ImageValue& image) {
  File file = OpenFile(path, "wb");
  Writer writer;
  const Layout layout{static_cast<unsigned>(image.Width()), static_cast<unsigned>(image.Height()),
                      image.PixelType() == Pixel::kC24};
  if (!WriteAll(writer, file.get(), layout, Rows(image).data())) {
    throw Failure(kFileFailed, std::string("cannot be written: ") + writer.errors.message);
  }
  CloseWritten(std::move(file));
}

}  // namespace lx::tool
