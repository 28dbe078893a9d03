// SPDX-License-Identifier: Apache-2.0
// What is in the files, told by other readers than the tool's own.
#include <png.h>
#include <tiffio.h>

#include <cstdio>
#include <memory>

// jpeglib.h uses FILE without including what declares it.
#include <jpeglib.h>

#include "tools/tool_fixture.h"

namespace lx::tool {
namespace {

using Bytes = std::vector<int>;

// The samples of a PNG as the file stores them: red first, high byte first.
Bytes PngSamples(const std::string& path) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                             std::fclose);
  png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_init_io(png, file.get());
  png_read_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
  Bytes bytes;
  for (png_uint_32 y = 0; y < png_get_image_height(png, info); ++y) {
    const unsigned char* const row = png_get_rows(png, info)[y];
    bytes.insert(bytes.end(), row, row + png_get_rowbytes(png, info));
  }
  png_destroy_read_struct(&png, &info, nullptr);
  return bytes;
}

// The first pixel of a JPEG as red, green, blue.
Bytes JpegPixel(const std::string& path) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                             std::fclose);
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

// The samples of a one-row TIFF, deep ones as 16-bit numbers.
Bytes TiffSamples(const std::string& path, bool deep) {
  const std::unique_ptr<TIFF, void (*)(TIFF*)> tiff(TIFFOpen(path.c_str(), "r"), TIFFClose);
  std::vector<std::uint16_t> row(static_cast<std::size_t>(TIFFScanlineSize(tiff.get())) / 2 + 1);
  TIFFReadScanline(tiff.get(), row.data(), 0);
  const auto size = static_cast<std::size_t>(TIFFScanlineSize(tiff.get()));
  if (deep) return {row.data(), row.data() + size / 2};
  const auto* const bytes = reinterpret_cast<const unsigned char*>(row.data());
  return {bytes, bytes + size};
}

class FileLayout : public ToolTest {
 protected:
  // Red 200, green 100, blue 50; byte 0 of a pixel is blue.
  ImageValue Colour(int side) const {
    ImageValue image(Pixel::kC24, side, 1);
    for (int x = 0; x < side; ++x) image.As<LxC24>().SetPixel({50, 100, 200}, x, 0);
    return image;
  }
  ImageValue Deep() const {
    ImageValue image(Pixel::kBW16, 2, 1);
    image.As<LxBW16>().SetPixel(std::uint16_t{0x1234}, 0, 0);
    image.As<LxBW16>().SetPixel(std::uint16_t{0xFF01}, 1, 0);
    return image;
  }
};

TEST_F(FileLayout, ColoursAreWrittenRedFirst) {
  WriteImage(Path("a.png"), Colour(1));
  EXPECT_EQ(PngSamples(Path("a.png")), (Bytes{200, 100, 50}));
  WriteImage(Path("a.tif"), Colour(1));
  EXPECT_EQ(TiffSamples(Path("a.tif"), false), (Bytes{200, 100, 50}));
  WriteImage(Path("a.ppm"), Colour(1));
  EXPECT_EQ(Content(Path("a.ppm")), "P6\n1 1\n255\n\xC8\x64\x32");
  WriteImage(Path("a.jpg"), Colour(8));
  const Bytes pixel = JpegPixel(Path("a.jpg"));
  EXPECT_NEAR(pixel[0], 200, 4);
  EXPECT_NEAR(pixel[1], 100, 4);
  EXPECT_NEAR(pixel[2], 50, 4);
}

TEST_F(FileLayout, DeepSamplesKeepTheirBytesInOrder) {
  WriteImage(Path("a.png"), Deep());
  EXPECT_EQ(PngSamples(Path("a.png")), (Bytes{0x12, 0x34, 0xFF, 0x01}));
  WriteImage(Path("a.tif"), Deep());
  EXPECT_EQ(TiffSamples(Path("a.tif"), true), (Bytes{0x1234, 0xFF01}));
  WriteImage(Path("a.pgm"), Deep());
  EXPECT_EQ(Content(Path("a.pgm")), "P5\n2 1\n65535\n\x12\x34\xFF\x01");
}

TEST_F(FileLayout, NetpbmTextAndBitsAreRead) {
  EXPECT_EQ(LevelsOf(Write("a.pgm", "P2 # text\n2 2\n# more\n15\n0 1\n14 15\n")),
            (Bytes{0, 1, 14, 15}));
  EXPECT_EQ(LevelsOf(Write("b.pgm", "P2\n2 1\n1000\n999 1000")), (Bytes{999, 1000}));
  EXPECT_EQ(LevelsOf(Write("c.pbm", "P4\n10 1\n\xA5\x40")),
            (Bytes{0, 255, 0, 255, 255, 0, 255, 0, 255, 0}));
  const LxC24 expected{3, 2, 1};
  EXPECT_EQ(ReadImage(Write("d.ppm", "P3\n1 1\n255\n1 2 3\n")).As<LxC24>().GetPixel(0, 0),
            expected);
  const std::string deep("P6 1 1 65535\n\x01\xFF\x02\xFF\x03\xFF", 19);
  EXPECT_EQ(ReadImage(Write("e.ppm", deep)).As<LxC24>().GetPixel(0, 0), expected);
}

TEST_F(FileLayout, TiffOfOtherLayoutsIsRead) {
  const auto write = [&](const char* name, int photometric, int bits, unsigned char byte) {
    const std::unique_ptr<TIFF, void (*)(TIFF*)> tiff(TIFFOpen(Path(name).c_str(), "w"), TIFFClose);
    TIFFSetField(tiff.get(), TIFFTAG_IMAGEWIDTH, 2);
    TIFFSetField(tiff.get(), TIFFTAG_IMAGELENGTH, 1);
    TIFFSetField(tiff.get(), TIFFTAG_BITSPERSAMPLE, bits);
    TIFFSetField(tiff.get(), TIFFTAG_PHOTOMETRIC, photometric);
    unsigned char row[] = {byte, byte};
    TIFFWriteScanline(tiff.get(), row, 0);
  };
  write("white.tif", PHOTOMETRIC_MINISWHITE, 8, 10);
  EXPECT_EQ(LevelsOf(Path("white.tif")), (Bytes{245, 245}));
  write("bilevel.tif", PHOTOMETRIC_MINISBLACK, 1, 0x40);
  EXPECT_EQ(LevelsOf(Path("bilevel.tif")), (Bytes{0, 255}));
}

// A palette with transparent entries expands to four channels, of which three are kept.
TEST_F(FileLayout, PalettesWithAlphaBecomeColours) {
  {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(
        std::fopen(Path("palette.png").c_str(), "wb"), std::fclose);
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file.get());
    png_set_IHDR(png, info, 2, 1, 8, PNG_COLOR_TYPE_PALETTE, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    const png_color palette[] = {{1, 2, 3}, {40, 50, 60}};
    const png_byte alpha[] = {0, 128};
    png_set_PLTE(png, info, palette, 2);
    png_set_tRNS(png, info, alpha, 2, nullptr);
    png_byte row[] = {1, 0};
    png_bytep rows[] = {row};
    png_set_rows(png, info, rows);
    png_write_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
    png_destroy_write_struct(&png, &info);
  }
  const ImageValue image = ReadImage(Path("palette.png"));
  ASSERT_EQ(image.PixelType(), Pixel::kC24);
  EXPECT_EQ(image.As<LxC24>().GetPixel(0, 0), (LxC24{60, 50, 40}));
  EXPECT_EQ(image.As<LxC24>().GetPixel(1, 0), (LxC24{3, 2, 1}));
}

}  // namespace
}  // namespace lx::tool
