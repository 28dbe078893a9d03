// SPDX-License-Identifier: Apache-2.0
#include <utility>

#include "tools/lxpic/file/tiff_stream.h"

namespace lx::tool {

namespace {

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

void WriteTiff(OutputFile& file, const ImageValue& image) {
  TiffStream stream;
  bool written = stream.Get() != nullptr;
  if (written) {
    SetLayout(stream.Get(), image);
    written = WriteRows(stream.Get(), image);
  }
  const std::string& content = stream.Finish();
  if (!written || !stream.Error().empty()) {
    throw Failure(kFileFailed, "cannot be written: " + stream.Error());
  }
  file.Write(content.data(), content.size());
}

}  // namespace lx::tool
