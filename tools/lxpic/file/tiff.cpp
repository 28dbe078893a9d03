// SPDX-License-Identifier: Apache-2.0
#include <tiffio.h>

#include <cstdarg>
#include <utility>

#include "tools/lxpic/file/format.h"

namespace lx::tool {

namespace {

int OnError(TIFF* /*tiff*/, void* kept, const char* /*module*/, const char* format,
            va_list arguments) {
  auto* const error = static_cast<ErrorText*>(kept);
  // The first error is the cause, later ones follow from it.
  if (error->text[0] == '\0') std::vsnprintf(error->text, sizeof error->text, format, arguments);
  return 1;
}

int OnWarning(TIFF* /*tiff*/, void* /*kept*/, const char* /*module*/, const char* /*format*/,
              va_list /*arguments*/) {
  return 1;
}

struct TiffCloser {
  void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using TiffFile = std::unique_ptr<TIFF, TiffCloser>;

TiffFile OpenTiff(const std::string& path, const char* mode, ErrorText& error) {
  TIFFOpenOptions* const options = TIFFOpenOptionsAlloc();
  if (options == nullptr) throw Failure(kFileFailed, "not enough memory");
  TIFFOpenOptionsSetErrorHandlerExtR(options, OnError, &error);
  TIFFOpenOptionsSetWarningHandlerExtR(options, OnWarning, nullptr);
  TiffFile tiff(TIFFOpenExt(path.c_str(), mode, options));
  TIFFOpenOptionsFree(options);
  return tiff;
}

struct Layout {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::uint16_t bits = 1;
  std::uint16_t samples = 1;
  std::uint16_t photometric = PHOTOMETRIC_MINISBLACK;
  std::uint16_t planes = PLANARCONFIG_CONTIG;
  std::uint16_t format = SAMPLEFORMAT_UINT;
  bool tiled = false;

  bool IsGrey() const {
    return photometric == PHOTOMETRIC_MINISBLACK || photometric == PHOTOMETRIC_MINISWHITE;
  }
  // Whether the samples lie in the file as they do in an image, so that rows can be copied.
  bool IsPlain() const {
    return (bits == 8 || bits == 16) && planes == PLANARCONFIG_CONTIG && !tiled &&
           ((IsGrey() && samples >= 1) || (photometric == PHOTOMETRIC_RGB && samples >= 3));
  }
  Pixel PixelType() const {
    if (!IsGrey()) return Pixel::kC24;
    return bits == 16 ? Pixel::kBW16 : Pixel::kBW8;
  }
};

Layout ReadLayout(TIFF* tiff) {
  Layout layout;
  TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &layout.width);
  TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &layout.height);
  TIFFGetField(tiff, TIFFTAG_PHOTOMETRIC, &layout.photometric);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_BITSPERSAMPLE, &layout.bits);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLESPERPIXEL, &layout.samples);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_PLANARCONFIG, &layout.planes);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLEFORMAT, &layout.format);
  layout.tiled = TIFFIsTiled(tiff) != 0;
  return layout;
}

// Sample `index` of a row, 16-bit ones in the machine's order.
unsigned Sample(const std::vector<unsigned char>& row, std::size_t index, const Layout& layout) {
  if (layout.bits == 8) return row[index];
  return reinterpret_cast<const std::uint16_t*>(row.data())[index];
}

void StoreRow(const std::vector<unsigned char>& row, const Layout& layout, unsigned char* target) {
  const unsigned upperBits = layout.bits == 16 ? 8 : 0;
  const unsigned inversion =
      layout.photometric == PHOTOMETRIC_MINISWHITE ? (1U << layout.bits) - 1 : 0;
  for (std::size_t x = 0; x < layout.width; ++x) {
    const std::size_t first = x * layout.samples;
    if (layout.PixelType() == Pixel::kC24) {
      for (std::size_t k = 0; k < 3; ++k) {
        target[3 * x + 2 - k] =
            static_cast<unsigned char>(Sample(row, first + k, layout) >> upperBits);
      }
    } else if (layout.bits == 16) {
      reinterpret_cast<std::uint16_t*>(target)[x] =
          static_cast<std::uint16_t>(Sample(row, first, layout) ^ inversion);
    } else {
      target[x] = static_cast<unsigned char>(Sample(row, first, layout) ^ inversion);
    }
  }
}

bool ReadPlain(TIFF* tiff, const Layout& layout, const ImageValue& image) {
  const std::size_t samples = std::size_t{layout.width} * layout.samples;
  if (static_cast<std::size_t>(TIFFScanlineSize(tiff)) < samples * layout.bits / 8) return false;
  std::vector<unsigned char> row(static_cast<std::size_t>(TIFFScanlineSize(tiff)));
  for (std::uint32_t y = 0; y < layout.height; ++y) {
    if (TIFFReadScanline(tiff, row.data(), y) < 0) return false;
    StoreRow(row, layout, image.Row(static_cast<int>(y)));
  }
  return true;
}

// Palettes, tiles, bilevel fax pages and whatever else libtiff itself turns into 8-bit colour.
bool ReadThroughColour(TIFF* tiff, const Layout& layout, const ImageValue& image) {
  const auto pixels =
      std::make_unique_for_overwrite<std::uint32_t[]>(std::size_t{layout.width} * layout.height);
  if (TIFFReadRGBAImageOriented(tiff, layout.width, layout.height, pixels.get(),
                                ORIENTATION_TOPLEFT, 1) == 0) {
    return false;
  }
  const std::uint32_t* pixel = pixels.get();
  for (unsigned char* row : Rows(image)) {
    for (std::size_t x = 0; x < layout.width; ++x, ++pixel) {
      if (image.PixelType() == Pixel::kBW8) {
        row[x] = static_cast<unsigned char>(TIFFGetG(*pixel));
        continue;
      }
      row[3 * x] = static_cast<unsigned char>(TIFFGetB(*pixel));
      row[3 * x + 1] = static_cast<unsigned char>(TIFFGetG(*pixel));
      row[3 * x + 2] = static_cast<unsigned char>(TIFFGetR(*pixel));
    }
  }
  return true;
}

void SetLayout(TIFF* tiff, const ImageValue& image) {
  const bool colour = image.PixelType() == Pixel::kC24;
  TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(image.Width()));
  TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, static_cast<std::uint32_t>(image.Height()));
  TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, image.PixelType() == Pixel::kBW16 ? 16 : 8);
  TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, colour ? 3 : 1);
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, colour ? PHOTOMETRIC_RGB : PHOTOMETRIC_MINISBLACK);
  TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
  TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
  TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(tiff, 0));
}

bool WriteRows(TIFF* tiff, const ImageValue& image) {
  std::vector<unsigned char> line(image.RowBytes());
  for (int y = 0; y < image.Height(); ++y) {
    // libtiff may change what it is given, and wants red first.
    line.assign(image.Row(y), image.Row(y) + line.size());
    if (image.PixelType() == Pixel::kC24) {
      for (std::size_t x = 0; x < line.size(); x += 3) std::swap(line[x], line[x + 2]);
    }
    if (TIFFWriteScanline(tiff, line.data(), static_cast<std::uint32_t>(y)) < 0) return false;
  }
  return TIFFFlush(tiff) != 0;
}

}  // namespace

ImageValue ReadTiff(const std::string& path) {
  ErrorText error;
  const TiffFile tiff = OpenTiff(path, "r", error);
  if (!tiff) throw Failure(kFileFailed, std::string("damaged TIFF: ") + error.text);
  const Layout layout = ReadLayout(tiff.get());
  if (layout.format != SAMPLEFORMAT_UINT && layout.format != SAMPLEFORMAT_VOID) {
    throw Failure(kFileFailed, "TIFF samples that are not unsigned integers are not read");
  }
  if (!layout.IsPlain() && layout.bits > 8) {
    throw Failure(kFileFailed, "TIFF files of " + std::to_string(layout.bits) +
                                   " bits are read in strips of whole pixels only");
  }
  ImageValue image = MakeImageFor(layout.PixelType(), layout.width, layout.height);
  const bool complete = layout.IsPlain() ? ReadPlain(tiff.get(), layout, image)
                                         : ReadThroughColour(tiff.get(), layout, image);
  if (!complete || error.text[0] != '\0') {
    throw Failure(kFileFailed, std::string("damaged TIFF: ") + error.text);
  }
  return image;
}

void WriteTiff(const std::string& path, const ImageValue& image) {
  // Opened once without libtiff, which does not say why a file cannot be opened.
  OpenFile(path, "wb").reset();
  ErrorText error;
  const TiffFile tiff = OpenTiff(path, "w", error);
  if (!tiff) throw Failure(kFileFailed, std::string("cannot be opened: ") + error.text);
  SetLayout(tiff.get(), image);
  if (!WriteRows(tiff.get(), image) || error.text[0] != '\0') {
    throw Failure(kFileFailed, std::string("cannot be written: ") + error.text);
  }
}

}  // namespace lx::tool
