// SPDX-License-Identifier: Apache-2.0
// How the pixels of a TIFF are stored, and what they are worth.
#pragma once

#include <tiffio.h>

#include <array>
#include <cstdint>

#include "tools/lxpic/file/format.h"

namespace lx::tool {

struct TiffLayout {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::uint16_t bits = 1;
  std::uint16_t samples = 1;
  std::uint16_t photometric = PHOTOMETRIC_MINISBLACK;
  std::uint16_t planes = PLANARCONFIG_CONTIG;
  std::uint16_t format = SAMPLEFORMAT_UINT;
  std::uint16_t orientation = ORIENTATION_TOPLEFT;
  /// Of a palette: red, green and blue of each value.
  std::array<const std::uint16_t*, 3> palette{};
  /// Its entries are bytes, although there is room for more.
  bool isBytePalette = false;

  bool IsGrey() const {
    return photometric == PHOTOMETRIC_MINISBLACK || photometric == PHOTOMETRIC_MINISWHITE;
  }
  bool IsPalette() const { return photometric == PHOTOMETRIC_PALETTE; }
  /// Whether each sample lies apart from those of the other colours.
  bool HasPlanes() const { return planes == PLANARCONFIG_SEPARATE && samples > 1; }
  /// How many planes make the image.
  std::size_t PlaneCount() const { return HasPlanes() && photometric == PHOTOMETRIC_RGB ? 3 : 1; }
  /// Whether StoreSamples knows what the samples mean.
  bool IsKnown() const;
  Pixel PixelType() const;
};

TiffLayout ReadTiffLayout(TIFF* tiff);

/// Stores `count` pixels, whose samples start at `bytes`, from pixel `x` of the row `target` on;
/// where the colours lie apart those of plane `plane`.
void StoreSamples(const TiffLayout& layout, const unsigned char* bytes, std::size_t plane,
                  std::size_t x, std::size_t count, unsigned char* target);

/// The image turned and mirrored as the file says it is to be seen.
ImageValue Oriented(const ImageValue& image, std::uint16_t orientation);

}  // namespace lx::tool
