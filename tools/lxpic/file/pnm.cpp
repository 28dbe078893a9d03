// SPDX-License-Identifier: Apache-2.0
// The Netpbm formats P2 to P6. Samples are kept as they are stored, whatever their maximum.
#include <cctype>
#include <cstdint>
#include <utility>

#include "tools/lxpic/file/format.h"

namespace lx::tool {

namespace {

[[noreturn]] void Damaged(const std::string& reason) {
  throw Failure(kFileFailed, "damaged PNM: " + reason);
}

class Source {
 public:
  explicit Source(InputFile& opened) : file(opened) {}

  unsigned Byte() {
    const int c = file.Byte();
    if (c < 0) Damaged("the file ends too early");
    return static_cast<unsigned>(c);
  }

  // A decimal number after blanks and comments, and the one blank behind it.
  unsigned Number() {
    unsigned c = FirstOfWord();
    if (std::isdigit(static_cast<int>(c)) == 0) Damaged("a number is missing");
    unsigned value = 0;
    while (std::isdigit(static_cast<int>(c)) != 0) {
      value = 10 * value + (c - '0');
      if (value > kMaxNumber) Damaged("a number is too large");
      const int next = file.Byte();
      if (next < 0) return value;
      c = static_cast<unsigned>(next);
    }
    if (std::isspace(static_cast<int>(c)) == 0) Damaged("a number does not end");
    return value;
  }

 private:
  static constexpr unsigned kMaxNumber = 100'000'000;

  // The next byte that is neither blank nor part of a comment.
  unsigned FirstOfWord() {
    for (;;) {
      const unsigned c = Byte();
      if (c == '#') {
        while (Byte() != '\n') {
        }
      } else if (std::isspace(static_cast<int>(c)) == 0) {
        return c;
      }
    }
  }

  InputFile& file;
};

struct Header {
  unsigned kind;
  unsigned width;
  unsigned height;
  unsigned maximum;

  bool IsColour() const { return kind == 3 || kind == 6; }
  bool IsText() const { return kind == 2 || kind == 3; }
  bool IsWide() const { return maximum > 255; }
  Pixel PixelType() const {
    if (IsColour()) return Pixel::kC24;
    return IsWide() ? Pixel::kBW16 : Pixel::kBW8;
  }
};

Header ReadHeader(Source& source) {
  source.Byte();
  Header header{source.Byte() - '0', 0, 0, 1};
  header.width = source.Number();
  header.height = source.Number();
  if (header.kind != 4) header.maximum = source.Number();
  if (header.maximum < 1 || header.maximum > 65535) Damaged("the maximum is not in 1..65535");
  if (header.IsColour() && header.IsWide() && header.maximum != 65535) {
    throw Failure(kFileFailed, "16-bit colours are read with a maximum of 65535 only");
  }
  return header;
}

unsigned ReadSample(Source& source, const Header& header) {
  unsigned sample = 0;
  if (header.IsText()) {
    sample = source.Number();
  } else {
    sample = source.Byte();
    if (header.IsWide()) sample = sample << 8 | source.Byte();
  }
  if (sample > header.maximum) Damaged("a sample is larger than the maximum");
  return sample;
}

void ReadRow(Source& source, const Header& header, unsigned char* row) {
  for (std::size_t x = 0; x < header.width; ++x) {
    if (header.IsColour()) {
      const unsigned upperBits = header.IsWide() ? 8 : 0;
      for (std::size_t k = 0; k < 3; ++k) {
        row[3 * x + 2 - k] = static_cast<unsigned char>(ReadSample(source, header) >> upperBits);
      }
    } else if (header.IsWide()) {
      reinterpret_cast<std::uint16_t*>(row)[x] =
          static_cast<std::uint16_t>(ReadSample(source, header));
    } else {
      row[x] = static_cast<unsigned char>(ReadSample(source, header));
    }
  }
}

// One bit a pixel, most significant first, 1 being black.
void ReadBits(Source& source, const Header& header, unsigned char* row) {
  unsigned bits = 0;
  for (unsigned x = 0; x < header.width; ++x) {
    if (x % 8 == 0) bits = source.Byte();
    row[x] = (bits >> (7 - x % 8) & 1) != 0 ? 0 : 255;
  }
}

void StoreLine(const unsigned char* row, Pixel pixel, std::vector<unsigned char>& line) {
  line.assign(row, row + line.size());
  if (pixel == Pixel::kC24) {
    for (std::size_t x = 0; x < line.size(); x += 3) std::swap(line[x], line[x + 2]);
  } else if (pixel == Pixel::kBW16) {
    for (std::size_t x = 0; x < line.size(); x += 2) {
      const std::uint16_t sample = reinterpret_cast<const std::uint16_t*>(row)[x / 2];
      line[x] = static_cast<unsigned char>(sample >> 8);
      line[x + 1] = static_cast<unsigned char>(sample & 0xFF);
    }
  }
}

}  // namespace

ImageValue ReadPnm(InputFile& file) {
  Source source(file);
  const Header header = ReadHeader(source);
  ImageValue image = MakeImageFor(header.PixelType(), header.width, header.height);
  for (unsigned char* row : Rows(image)) {
    if (header.kind == 4) {
      ReadBits(source, header, row);
    } else {
      ReadRow(source, header, row);
    }
  }
  return image;
}

void WritePnm(OutputFile& file, const ImageValue& image) {
  const bool wide = image.PixelType() == Pixel::kBW16;
  const std::string header = std::string("P") + (image.PixelType() == Pixel::kC24 ? "6" : "5") +
                             "\n" + std::to_string(image.Width()) + " " +
                             std::to_string(image.Height()) + (wide ? "\n65535\n" : "\n255\n");
  file.Write(header.data(), header.size());
  std::vector<unsigned char> line(image.RowBytes());
  for (const unsigned char* row : Rows(image)) {
    StoreLine(row, image.PixelType(), line);
    file.Write(line.data(), line.size());
  }
}

}  // namespace lx::tool
