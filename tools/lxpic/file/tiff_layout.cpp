// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/file/tiff_layout.h"

#include <algorithm>
#include <cstring>

namespace lx::tool {

namespace {

// One colour of several pixels. Samples of 16 bits are in the machine's order; of smaller ones the
// first is in the highest bits.
struct Samples {
  const unsigned char* bytes;
  unsigned bits;
  std::size_t first;
  std::size_t step;

  unsigned operator[](std::size_t pixel) const {
    const std::size_t index = first + pixel * step;
    if (bits == 8) return bytes[index];
    if (bits == 16) {
      std::uint16_t sample = 0;
      std::memcpy(&sample, bytes + 2 * index, sizeof sample);
      return sample;
    }
    const std::size_t bit = index * bits;
    return bytes[bit / 8] >> (8 - bits - bit % 8) & ((1U << bits) - 1);
  }
};

// A sample of any depth as a byte.
unsigned char ByteOf(unsigned sample, unsigned bits) {
  return static_cast<unsigned char>(bits >= 8 ? sample >> (bits - 8)
                                              : sample * 255 / ((1U << bits) - 1));
}

void StoreGrey(const TiffLayout& layout, const Samples& samples, std::size_t x, std::size_t count,
               unsigned char* target) {
  const unsigned inversion =
      layout.photometric == PHOTOMETRIC_MINISWHITE ? (1U << layout.bits) - 1 : 0;
  for (std::size_t i = 0; i < count; ++i) {
    const unsigned level = samples[i] ^ inversion;
    if (layout.bits == 16) {
      reinterpret_cast<std::uint16_t*>(target)[x + i] = static_cast<std::uint16_t>(level);
    } else {
      target[x + i] = ByteOf(level, layout.bits);
    }
  }
}

// `target` is the first of every third byte.
void StoreColour(const Samples& samples, std::size_t count, unsigned char* target) {
  for (std::size_t i = 0; i < count; ++i) target[3 * i] = ByteOf(samples[i], samples.bits);
}

void StorePalette(const TiffLayout& layout, const Samples& samples, std::size_t count,
                  unsigned char* target) {
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t k = 0; k < 3; ++k) {
      target[3 * i + 2 - k] = ByteOf(layout.palette[k][samples[i]], layout.isBytePalette ? 8 : 16);
    }
  }
}

bool HasByteEntries(const TiffLayout& layout) {
  return std::all_of(layout.palette.begin(), layout.palette.end(), [&](const std::uint16_t* entry) {
    return std::all_of(entry, entry + (std::size_t{1} << layout.bits),
                       [](std::uint16_t each) { return each < 256; });
  });
}

}  // namespace

bool TiffLayout::IsKnown() const {
  const bool isUnpacked = bits == 1 || bits == 2 || bits == 4 || bits == 8 || bits == 16;
  const bool hasMeaning = IsGrey() || (IsPalette() && palette[0] != nullptr) ||
                          (photometric == PHOTOMETRIC_RGB && samples >= 3);
  return isUnpacked && hasMeaning;
}

Pixel TiffLayout::PixelType() const {
  if (!IsGrey()) return Pixel::kC24;
  return bits == 16 ? Pixel::kBW16 : Pixel::kBW8;
}

TiffLayout ReadTiffLayout(TIFF* tiff) {
  TiffLayout layout;
  TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &layout.width);
  TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &layout.height);
  TIFFGetField(tiff, TIFFTAG_PHOTOMETRIC, &layout.photometric);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_BITSPERSAMPLE, &layout.bits);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLESPERPIXEL, &layout.samples);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_PLANARCONFIG, &layout.planes);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLEFORMAT, &layout.format);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_ORIENTATION, &layout.orientation);
  std::uint16_t compression = COMPRESSION_NONE;
  TIFFGetFieldDefaulted(tiff, TIFFTAG_COMPRESSION, &compression);
  if (compression == COMPRESSION_JPEG && layout.photometric == PHOTOMETRIC_YCBCR &&
      !layout.HasPlanes()) {
    TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
    layout.photometric = PHOTOMETRIC_RGB;
  }
  auto& [red, green, blue] = layout.palette;
  const bool hasPalette =
      layout.IsPalette() && TIFFGetField(tiff, TIFFTAG_COLORMAP, &red, &green, &blue) != 0;
  layout.isBytePalette = hasPalette && HasByteEntries(layout);
  return layout;
}

void StoreSamples(const TiffLayout& layout, const unsigned char* bytes, std::size_t plane,
                  std::size_t x, std::size_t count, unsigned char* target) {
  const std::size_t step = layout.HasPlanes() ? 1 : layout.samples;
  const auto samples = [&](std::size_t first) { return Samples{bytes, layout.bits, first, step}; };
  unsigned char* const colours = target + 3 * x;
  if (layout.IsGrey()) {
    StoreGrey(layout, samples(0), x, count, target);
  } else if (layout.IsPalette()) {
    StorePalette(layout, samples(0), count, colours);
  } else if (layout.HasPlanes()) {
    StoreColour(samples(0), count, colours + 2 - plane);
  } else {
    for (std::size_t k = 0; k < 3; ++k) StoreColour(samples(k), count, colours + 2 - k);
  }
}

ImageValue Oriented(const ImageValue& image, std::uint16_t orientation) {
  if (orientation <= ORIENTATION_TOPLEFT || orientation > ORIENTATION_LEFTBOT) return image;
  // From 5 on the rows of the file are columns.
  const bool isTurned = orientation >= ORIENTATION_LEFTTOP;
  const bool mirrorsX = orientation == ORIENTATION_TOPRIGHT ||
                        orientation == ORIENTATION_BOTRIGHT ||
                        orientation == ORIENTATION_RIGHTTOP || orientation == ORIENTATION_RIGHTBOT;
  const bool mirrorsY = orientation == ORIENTATION_BOTRIGHT || orientation == ORIENTATION_BOTLEFT ||
                        orientation == ORIENTATION_RIGHTBOT || orientation == ORIENTATION_LEFTBOT;
  const int width = isTurned ? image.Height() : image.Width();
  const int height = isTurned ? image.Width() : image.Height();
  ImageValue seen(image.PixelType(), width, height);
  const std::size_t size = image.RowBytes() / static_cast<std::size_t>(image.Width());
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const int column = mirrorsX ? width - 1 - x : x;
      const int row = mirrorsY ? height - 1 - y : y;
      const unsigned char* const from =
          isTurned ? image.Row(column) + size * static_cast<std::size_t>(row)
                   : image.Row(row) + size * static_cast<std::size_t>(column);
      std::memcpy(seen.Row(y) + size * static_cast<std::size_t>(x), from, size);
    }
  }
  return seen;
}

}  // namespace lx::tool
