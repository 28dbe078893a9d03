// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "tools/lxpic/file/tiff_layout.h"
#include "tools/lxpic/file/tiff_stream.h"

namespace lx::tool {

namespace {

using Bytes = std::vector<unsigned char>;

// No camera has more, and a damaged header may claim any number.
constexpr unsigned kMaxSamples = 16;
// How much larger than its image a tile may be.
constexpr std::uint64_t kMaxTileExcess = 1UL << 20;

std::uint64_t BytesOf(const TiffLayout& layout, std::uint64_t pixels) {
  const std::uint64_t samples = layout.HasPlanes() ? 1 : layout.samples;
  return (pixels * samples * layout.bits + 7) / 8;
}

bool ReadStrips(TIFF* tiff, const TiffLayout& layout, const ImageValue& image) {
  Bytes row(static_cast<std::size_t>(TIFFScanlineSize(tiff)));
  if (row.size() < BytesOf(layout, layout.width)) return false;
  for (std::size_t plane = 0; plane < layout.PlaneCount(); ++plane) {
    for (std::uint32_t y = 0; y < layout.height; ++y) {
      if (TIFFReadScanline(tiff, row.data(), y, static_cast<std::uint16_t>(plane)) < 0) {
        return false;
      }
      StoreSamples(layout, row.data(), plane, 0, layout.width, image.Row(static_cast<int>(y)));
    }
  }
  return true;
}

class Tiles {
 public:
  Tiles(TIFF* opened, const TiffLayout& tiffLayout) : tiff(opened), layout(tiffLayout) {
    TIFFGetField(tiff, TIFFTAG_TILEWIDTH, &width);
    TIFFGetField(tiff, TIFFTAG_TILELENGTH, &height);
  }

  void CheckSize() const {
    const std::uint64_t most = std::uint64_t{layout.width} * layout.height + kMaxTileExcess;
    if (width > 0 && height > 0 && std::uint64_t{width} * height <= most) return;
    throw NotReadable("TIFF", "tiles of " + std::to_string(width) + "x" + std::to_string(height));
  }

  bool Read(const ImageValue& image) {
    rowBytes = static_cast<std::size_t>(TIFFTileRowSize(tiff));
    tile.resize(static_cast<std::size_t>(TIFFTileSize(tiff)));
    if (rowBytes < BytesOf(layout, width) || tile.size() < rowBytes * height) return false;
    for (std::size_t plane = 0; plane < layout.PlaneCount(); ++plane) {
      for (std::uint32_t y = 0; y < layout.height; y += height) {
        for (std::uint32_t x = 0; x < layout.width; x += width) {
          if (!ReadTile(image, plane, x, y)) return false;
        }
      }
    }
    return true;
  }

 private:
  bool ReadTile(const ImageValue& image, std::size_t plane, std::uint32_t x, std::uint32_t y) {
    if (TIFFReadTile(tiff, tile.data(), x, y, 0, static_cast<std::uint16_t>(plane)) < 0) {
      return false;
    }
    const std::uint32_t rows = std::min(height, layout.height - y);
    for (std::uint32_t i = 0; i < rows; ++i) {
      StoreSamples(layout, tile.data() + i * rowBytes, plane, x, std::min(width, layout.width - x),
                   image.Row(static_cast<int>(y + i)));
    }
    return true;
  }

  TIFF* tiff;
  const TiffLayout& layout;
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::size_t rowBytes = 0;
  Bytes tile;
};

// Whatever libtiff itself turns into 8-bit colour: inks, brightness and colour apart, ...
class ColourRows {
 public:
  ColourRows(TIFF* tiff, const TiffLayout& tiffLayout) : layout(tiffLayout) {
    char reason[1024] = "";
    if (TIFFRGBAImageOK(tiff, reason) == 0 || TIFFRGBAImageBegin(&rgba, tiff, 1, reason) == 0) {
      throw NotReadable("TIFF", reason);
    }
    // Rows stay where they are in the file, so that some of them can be had.
    rgba.req_orientation = rgba.orientation;
    TIFFGetField(tiff, TIFFIsTiled(tiff) != 0 ? TIFFTAG_TILELENGTH : TIFFTAG_ROWSPERSTRIP, &band);
    band = std::clamp<std::uint32_t>(band, 1, layout.height);
  }
  ~ColourRows() { TIFFRGBAImageEnd(&rgba); }
  ColourRows(const ColourRows&) = delete;
  ColourRows& operator=(const ColourRows&) = delete;

  bool Read(const ImageValue& image) {
    std::vector<std::uint32_t> pixels(std::size_t{layout.width} * band);
    for (std::uint32_t y = 0; y < layout.height; y += band) {
      const std::uint32_t rows = std::min(band, layout.height - y);
      rgba.row_offset = static_cast<int>(y);
      if (TIFFRGBAImageGet(&rgba, pixels.data(), layout.width, rows) == 0) return false;
      for (std::uint32_t i = 0; i < rows; ++i) {
        Store(pixels.data() + std::size_t{layout.width} * i, image.Row(static_cast<int>(y + i)));
      }
    }
    return true;
  }

 private:
  void Store(const std::uint32_t* pixels, unsigned char* row) const {
    for (std::size_t x = 0; x < layout.width; ++x) {
      row[3 * x] = static_cast<unsigned char>(TIFFGetB(pixels[x]));
      row[3 * x + 1] = static_cast<unsigned char>(TIFFGetG(pixels[x]));
      row[3 * x + 2] = static_cast<unsigned char>(TIFFGetR(pixels[x]));
    }
  }

  const TiffLayout& layout;
  TIFFRGBAImage rgba{};
  std::uint32_t band = 1;
};

void CheckLayout(const TiffLayout& layout) {
  if (layout.format != SAMPLEFORMAT_UINT && layout.format != SAMPLEFORMAT_VOID) {
    throw Failure(kFileFailed, "TIFF samples that are not unsigned integers are not read");
  }
  if (layout.samples == 0 || layout.samples > kMaxSamples) {
    throw NotReadable("TIFF", std::to_string(layout.samples) + " samples a pixel");
  }
}

}  // namespace

ImageValue ReadTiff(InputFile& file) {
  const TiffStream stream(file);
  TIFF* const tiff = stream.Get();
  if (tiff == nullptr) throw NotReadable("TIFF", stream.Error());
  const TiffLayout layout = ReadTiffLayout(tiff);
  CheckLayout(layout);
  const bool isTiled = TIFFIsTiled(tiff) != 0;
  // libtiff needs four bytes a pixel besides.
  ImageValue image = layout.IsKnown()
                         ? MakeImageFor(layout.PixelType(), layout.width, layout.height)
                         : MakeImageFor(Pixel::kC24, layout.width, layout.height, 2);
  bool isComplete = false;
  if (isTiled) Tiles(tiff, layout).CheckSize();
  if (!layout.IsKnown()) {
    isComplete = ColourRows(tiff, layout).Read(image);
  } else {
    isComplete = isTiled ? Tiles(tiff, layout).Read(image) : ReadStrips(tiff, layout, image);
  }
  if (!stream.Error().empty()) throw NotReadable("TIFF", stream.Error());
  if (!isComplete) throw NotReadable("TIFF", "its data is not what its header says");
  return Oriented(image, layout.orientation);
}

}  // namespace lx::tool
