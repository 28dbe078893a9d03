// SPDX-License-Identifier: Apache-2.0
// libjpeg reports an error by a long jump. The functions that it may leave in this way hold nothing
// that needs a destructor; what does, lives in their callers.
#include <array>
#include <csetjmp>
#include <cstdio>

// jpeglib.h uses FILE without including what declares it.
#include <jerror.h>
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

struct Source : jpeg_source_mgr {
  InputFile* file;
  std::array<JOCTET, 16384> bytes;
};

boolean Fill(j_decompress_ptr codec) {
  auto* const source = static_cast<Source*>(codec->src);
  source->next_input_byte = source->bytes.data();
  source->bytes_in_buffer = source->file->Read(source->bytes.data(), source->bytes.size());
  if (source->bytes_in_buffer == 0) ERREXIT(codec, JERR_INPUT_EOF);
  return TRUE;
}

void Skip(j_decompress_ptr codec, long count) {
  for (; count > 0 && codec->src->bytes_in_buffer < static_cast<std::size_t>(count); Fill(codec)) {
    count -= static_cast<long>(codec->src->bytes_in_buffer);
  }
  if (count <= 0) return;
  codec->src->next_input_byte += count;
  codec->src->bytes_in_buffer -= static_cast<std::size_t>(count);
}

struct Reader {
  explicit Reader(InputFile& file) : codec() {
    Prepare(errors);
    codec.err = &errors;
    source.file = &file;
    source.bytes_in_buffer = 0;
    source.next_input_byte = nullptr;
    source.init_source = [](j_decompress_ptr) {};
    source.fill_input_buffer = Fill;
    source.skip_input_data = Skip;
    source.resync_to_restart = jpeg_resync_to_restart;
    source.term_source = [](j_decompress_ptr) {};
  }
  ~Reader() { jpeg_destroy_decompress(&codec); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  ErrorManager errors;
  Source source;
  jpeg_decompress_struct codec;
};

struct Target : jpeg_destination_mgr {
  OutputFile* file;
  std::array<JOCTET, 16384> bytes;

  void Empty() {
    file->Write(bytes.data(), bytes.size() - free_in_buffer);
    next_output_byte = bytes.data();
    free_in_buffer = bytes.size();
  }
};

Target& TargetOf(j_compress_ptr codec) { return *static_cast<Target*>(codec->dest); }

struct Writer {
  explicit Writer(OutputFile& file) : codec() {
    Prepare(errors);
    codec.err = &errors;
    target.file = &file;
    target.next_output_byte = target.bytes.data();
    target.free_in_buffer = target.bytes.size();
    target.init_destination = [](j_compress_ptr) {};
    target.empty_output_buffer = [](j_compress_ptr full) {
      // All of it is full, whatever the codec has made of the count by now.
      TargetOf(full).free_in_buffer = 0;
      TargetOf(full).Empty();
      return boolean{TRUE};
    };
    target.term_destination = [](j_compress_ptr finished) { TargetOf(finished).Empty(); };
  }
  ~Writer() { jpeg_destroy_compress(&codec); }
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;

  ErrorManager errors;
  Target target;
  jpeg_compress_struct codec;
};

bool ReadHeader(Reader& reader) {
  if (setjmp(reader.errors.jump) != 0) return false;
  jpeg_create_decompress(&reader.codec);
  reader.codec.src = &reader.source;
  jpeg_read_header(&reader.codec, TRUE);
  switch (reader.codec.num_components) {
    case 1:
      reader.codec.out_color_space = JCS_GRAYSCALE;
      break;
    case 4:
      reader.codec.out_color_space = JCS_CMYK;
      break;
    default:
      reader.codec.out_color_space = JCS_EXT_BGR;
  }
  return true;
}

// Four inks as blue, green and red. Files that carry Adobe's marker store how much light is left.
void StoreInks(const unsigned char* inks, bool inverted, std::size_t width, unsigned char* target) {
  for (std::size_t x = 0; x < width; ++x) {
    const auto light = [&](std::size_t k) {
      return inverted ? unsigned{inks[4 * x + k]} : 255U - inks[4 * x + k];
    };
    for (std::size_t k = 0; k < 3; ++k) {
      target[3 * x + 2 - k] = static_cast<unsigned char>((light(k) * light(3) + 127) / 255);
    }
  }
}

// `inks` is a row of them, where the file has four.
bool ReadRows(Reader& reader, unsigned char** rows, unsigned char* inks) {
  if (setjmp(reader.errors.jump) != 0) return false;
  jpeg_decompress_struct& codec = reader.codec;
  jpeg_start_decompress(&codec);
  while (codec.output_scanline < codec.output_height) {
    unsigned char** const row = rows + codec.output_scanline;
    if (codec.out_color_space != JCS_CMYK) {
      jpeg_read_scanlines(&codec, row, 1);
    } else {
      jpeg_read_scanlines(&codec, &inks, 1);
      StoreInks(inks, codec.saw_Adobe_marker != 0, codec.output_width, *row);
    }
  }
  jpeg_finish_decompress(&codec);
  return true;
}

struct Layout {
  unsigned width;
  unsigned height;
  bool colour;
};

bool WriteAll(Writer& writer, const Layout& layout, unsigned char** rows) {
  if (setjmp(writer.errors.jump) != 0) return false;
  jpeg_compress_struct& codec = writer.codec;
  jpeg_create_compress(&codec);
  codec.dest = &writer.target;
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

ImageValue ReadJpeg(InputFile& file) {
  Reader reader(file);
  if (!ReadHeader(reader)) throw NotReadable("JPEG", reader.errors.message);
  const jpeg_decompress_struct& codec = reader.codec;
  const Pixel pixel = codec.out_color_space == JCS_GRAYSCALE ? Pixel::kBW8 : Pixel::kC24;
  // Of a picture in several scans all coefficients are kept, each in two bytes.
  const unsigned long cost = jpeg_has_multiple_scans(&reader.codec) != 0 ? 2 : 1;
  ImageValue image = MakeImageFor(pixel, codec.image_width, codec.image_height, cost);
  std::vector<unsigned char> inks(4UL * codec.image_width);
  if (!ReadRows(reader, Rows(image).data(), inks.data())) {
    throw NotReadable("JPEG", reader.errors.message);
  }
  return image;
}

void WriteJpeg(OutputFile& file, const ImageValue& image) {
  Writer writer(file);
  const Layout layout{static_cast<unsigned>(image.Width()), static_cast<unsigned>(image.Height()),
                      image.PixelType() == Pixel::kC24};
  if (!WriteAll(writer, layout, Rows(image).data())) {
    throw Failure(kFileFailed, std::string("cannot be written: ") + writer.errors.message);
  }
}

}  // namespace lx::tool
