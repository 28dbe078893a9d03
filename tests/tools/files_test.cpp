// SPDX-License-Identifier: Apache-2.0
// Every format keeps every pixel that it can hold, in the order that other programs expect.
#include "tools/lxpic/file/files.h"

#include <png.h>
#include <tiffio.h>

#include <cstdio>
#include <memory>

// jpeglib.h uses FILE without including what declares it.
#include <jpeglib.h>

#include "tools/lxpic/common/words.h"
#include "tools/tool_fixture.h"

namespace lx::tool {
namespace {

using Bytes = std::vector<int>;
using OpenFile = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;
using OpenTiff = std::unique_ptr<TIFF, void (*)(TIFF*)>;

OpenFile Open(const std::string& path, const char* mode) {
  return {std::fopen(path.c_str(), mode), std::fclose};
}

// Bytes that use all bits, or a slope that lossy formats keep.
ImageValue TestImage(Pixel pixel, const Size& size, bool smooth) {
  ImageValue image(pixel, size.width, size.height);
  const std::size_t channels = image.RowBytes() / static_cast<std::size_t>(size.width);
  unsigned level = 7;
  for (int y = 0; y < size.height; ++y) {
    for (std::size_t i = 0; i < image.RowBytes(); ++i) {
      level = level * 1103515245 + 12345;
      const std::size_t slope = 3 * (i / channels) + static_cast<unsigned>(y) + 50 * (i % channels);
      image.Row(y)[i] = static_cast<unsigned char>(smooth ? slope : level >> 16);
    }
  }
  return image;
}

template <class T>
ImageValue OnePixel(Pixel pixel, const T& value) {
  ImageValue image(pixel, 1, 1);
  image.As<T>().SetPixel(value, 0, 0);
  return image;
}

// The samples of a PNG as the file stores them: red first, high byte first.
Bytes PngSamples(const std::string& path) {
  const OpenFile file = Open(path, "rb");
  png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_init_io(png, file.get());
  png_read_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
  const unsigned char* const row = png_get_rows(png, info)[0];
  Bytes bytes(row, row + png_get_rowbytes(png, info));
  png_destroy_read_struct(&png, &info, nullptr);
  return bytes;
}

// The first pixel of a JPEG as red, green, blue.
Bytes JpegPixel(const std::string& path) {
  const OpenFile file = Open(path, "rb");
  jpeg_decompress_struct codec{};
  jpeg_error_mgr errors{};
  codec.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&codec);
  jpeg_stdio_src(&codec, file.get());
  jpeg_read_header(&codec, TRUE);
  codec.out_color_space = JCS_RGB;
  jpeg_start_decompress(&codec);
  std::vector<unsigned char> row(3UL * codec.output_width);
  unsigned char* rows[] = {row.data()};
  jpeg_read_scanlines(&codec, rows, 1);
  jpeg_destroy_decompress(&codec);
  return {row[0], row[1], row[2]};
}

// The samples of a small TIFF.
template <class Sample>
Bytes TiffSamples(const std::string& path) {
  const OpenTiff tiff(TIFFOpen(path.c_str(), "r"), TIFFClose);
  Sample samples[8];
  const tmsize_t size = TIFFReadEncodedStrip(tiff.get(), 0, samples, sizeof samples);
  return {samples, samples + static_cast<std::size_t>(size) / sizeof(Sample)};
}

class Files : public ToolTest {
 protected:
  LxC24 FirstColour(const std::string& path) const {
    const ImageValue image = ReadImage(path);
    return image.PixelType() == Pixel::kC24 ? image.As<LxC24>().GetPixel(0, 0) : LxC24{};
  }
};

TEST_F(Files, FormatsGiveBackWhatWasWritten) {
  struct Case {
    const char* name;
    Pixel pixel;
    int tolerance = 0;
  };
  for (const Case& each :
       {Case{"a.png", Pixel::kBW8}, Case{"b.png", Pixel::kBW16}, Case{"c.png", Pixel::kC24},
        Case{"a.tif", Pixel::kBW8}, Case{"b.tiff", Pixel::kBW16}, Case{"c.TIF", Pixel::kC24},
        Case{"a.pgm", Pixel::kBW8}, Case{"b.pgm", Pixel::kBW16}, Case{"c.ppm", Pixel::kC24},
        Case{"a.pnm", Pixel::kBW8}, Case{"b.pnm", Pixel::kBW16}, Case{"c.pnm", Pixel::kC24},
        Case{"a.jpg", Pixel::kBW8, 4}, Case{"c.jpeg", Pixel::kC24, 4}}) {
    // Odd sizes, so that padding would show.
    for (const Size& size : {Size{1, 1}, Size{37, 11}}) {
      const ImageValue image = TestImage(each.pixel, size, each.tolerance > 0);
      WriteImage(Path(each.name), image);
      const ImageValue back = ReadImage(Path(each.name));
      ASSERT_EQ(back.TypeName() + back.SizeText(), image.TypeName() + image.SizeText());
      for (int y = 0; y < size.height; ++y) {
        for (std::size_t i = 0; i < image.RowBytes(); ++i) {
          ASSERT_NEAR(image.Row(y)[i], back.Row(y)[i], each.tolerance)
              << each.name << i << "," << y;
        }
      }
    }
  }
}

TEST_F(Files, ColoursAreWrittenRedFirst) {
  const ImageValue colour = OnePixel(Pixel::kC24, LxC24{50, 100, 200});
  for (const char* const name : {"a.png", "a.tif", "a.ppm", "a.jpg"}) {
    WriteImage(Path(name), colour);
  }
  EXPECT_EQ(PngSamples(Path("a.png")), (Bytes{200, 100, 50}));
  EXPECT_EQ(TiffSamples<std::uint8_t>(Path("a.tif")), (Bytes{200, 100, 50}));
  EXPECT_EQ(Content(Path("a.ppm")), "P6\n1 1\n255\n\xC8\x64\x32");
  const Bytes pixel = JpegPixel(Path("a.jpg"));
  EXPECT_NEAR(pixel[0], 200, 4);
  EXPECT_NEAR(pixel[2], 50, 4);
}

TEST_F(Files, DeepSamplesKeepTheirBytesInOrder) {
  const ImageValue deep = OnePixel(Pixel::kBW16, LxBW16{0x12FF});
  for (const char* const name : {"a.png", "a.tif", "a.pgm"}) WriteImage(Path(name), deep);
  EXPECT_EQ(PngSamples(Path("a.png")), (Bytes{0x12, 0xFF}));
  EXPECT_EQ(TiffSamples<std::uint16_t>(Path("a.tif")), (Bytes{0x12FF}));
  EXPECT_EQ(Content(Path("a.pgm")), "P5\n1 1\n65535\n\x12\xFF");
}

TEST_F(Files, NetpbmTextAndBitsAreRead) {
  for (const auto& [content, levels] :
       {std::pair{"P2 # text\n2 2\n# more\n15\n0 1\n14 15\n", Bytes{0, 1, 14, 15}},
        {"P2\n2 1\n1000\n999 1000", {999, 1000}},
        {"P4\n10 1\n\xA5\x40", {0, 255, 0, 255, 255, 0, 255, 0, 255, 0}}}) {
    EXPECT_EQ(LevelsOf(Write("a.pnm", content)), levels) << content;
  }
  for (const std::string& content :
       {std::string("P3\n1 1\n255\n1 2 3\n"), std::string("P6 1 1 65535\n\1\xFF\2\xFF\3\xFF")}) {
    EXPECT_EQ(FirstColour(Write("a.ppm", content)), (LxC24{3, 2, 1})) << content;
  }
}

TEST_F(Files, TiffOfOtherLayoutsIsRead) {
  const auto levels = [&](int photometric, int bits, unsigned char byte) {
    {
      const OpenTiff tiff(TIFFOpen(Path("a.tif").c_str(), "w"), TIFFClose);
      TIFFSetField(tiff.get(), TIFFTAG_IMAGEWIDTH, 2);
      TIFFSetField(tiff.get(), TIFFTAG_IMAGELENGTH, 1);
      TIFFSetField(tiff.get(), TIFFTAG_BITSPERSAMPLE, bits);
      TIFFSetField(tiff.get(), TIFFTAG_PHOTOMETRIC, photometric);
      unsigned char row[] = {byte, byte};
      TIFFWriteScanline(tiff.get(), row, 0);
    }
    return LevelsOf(Path("a.tif"));
  };
  EXPECT_EQ(levels(PHOTOMETRIC_MINISWHITE, 8, 10), (Bytes{245, 245}));
  EXPECT_EQ(levels(PHOTOMETRIC_MINISBLACK, 1, 0x40), (Bytes{0, 255}));
}

// A palette with transparent entries expands to four channels, of which three are kept.
TEST_F(Files, PalettesWithAlphaBecomeColours) {
  {
    const OpenFile file = Open(Path("palette.png"), "wb");
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file.get());
    png_set_IHDR(png, info, 1, 1, 8, PNG_COLOR_TYPE_PALETTE, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    const png_color palette[] = {{1, 2, 3}, {40, 50, 60}};
    const png_byte alpha[] = {0, 128};
    png_set_PLTE(png, info, palette, 2);
    png_set_tRNS(png, info, alpha, 2, nullptr);
    png_byte row[] = {1};
    png_bytep rows[] = {row};
    png_set_rows(png, info, rows);
    png_write_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
    png_destroy_write_struct(&png, &info);
  }
  EXPECT_EQ(FirstColour(Path("palette.png")), (LxC24{60, 50, 40}));
}

TEST_F(Files, TypesWithoutAFormatAreConvertedOrRefused) {
  const auto colour = [&](const char* name, const ImageValue& image) {
    WriteImage(Path(name), image);
    return FirstColour(Path(name));
  };
  EXPECT_EQ(colour("a.png", OnePixel(Pixel::kC16, LxC16{0xF81F})), (LxC24{248, 0, 248}));
  EXPECT_EQ(colour("a.tif", OnePixel(Pixel::kC24A, LxC24A{1, 2, 3, 4})), (LxC24{1, 2, 3}));
  EXPECT_EQ(colour("a.ppm", OnePixel(Pixel::kBW8, LxBW8{9})), (LxC24{9, 9, 9}));
  ImageValue binary(Pixel::kBinary, 10, 1);
  binary.Clear();
  binary.As<int>().SetPixel(1, 9, 0);
  WriteImage(Path("binary.png"), binary);
  EXPECT_EQ(LevelsOf(Path("binary.png")), (Bytes{0, 0, 0, 0, 0, 0, 0, 0, 0, 255}));

  for (const auto& [name, pixel] :
       {std::pair{"b.png", Pixel::kBW32}, std::pair{"b.jpg", Pixel::kBW16},
        std::pair{"b.pgm", Pixel::kC24}, std::pair{"b.ppm", Pixel::kBW16},
        std::pair{"b.bmp", Pixel::kBW8}}) {
    EXPECT_THROW(WriteImage(Path(name), ImageValue(pixel, 2, 2)), Failure) << name;
    EXPECT_FALSE(std::filesystem::exists(Path(name))) << name;
  }
}

TEST_F(Files, FormatIsToldByContentNotByName) {
  std::filesystem::rename(WriteGrey("a.png", 2, {1, 2}), Path("a.jpg"));
  EXPECT_EQ(ReadFile(Path("a.jpg")).format, "PNG");
  EXPECT_EQ(LevelsOf(Path("a.jpg")), (Bytes{1, 2}));
}

}  // namespace
}  // namespace lx::tool
