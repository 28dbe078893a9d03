// SPDX-License-Identifier: Apache-2.0
// Every format keeps every pixel that it can hold, in the order that other programs expect.
#include "tools/lxpic/file/files.h"

#include <png.h>
#include <tiffio.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <memory>
#include <thread>
#include <tuple>

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

// How a TIFF stores pixels.
struct Stored {
  int photometric;
  unsigned bits;
  unsigned samples;
  bool tiled;
  bool planes;
  int orientation = ORIENTATION_TOPLEFT;

  std::string Text() const {
    return "photometric " + std::to_string(photometric) + ", " + std::to_string(bits) + " bits, " +
           std::to_string(samples) + " samples, orientation " + std::to_string(orientation) +
           (tiled ? ", tiles" : "") + (planes ? ", planes" : "");
  }
  // Sample `k` of the pixel in column `x` of row `y` of the file.
  unsigned At(unsigned x, unsigned y, unsigned k) const {
    return (0x9E37U * (x + 1) + 0x79B9U * y + 0x3C6EU * k) % (1U << bits);
  }
};

constexpr unsigned kWidth = 19;
constexpr unsigned kHeight = 18;

// `count` pixels from (x, y) on with `samples` samples each, the first being `first`, packed.
void Pack(const Stored& stored, unsigned x, unsigned y, unsigned count, unsigned first,
          unsigned samples, unsigned char* bytes) {
  unsigned bit = 0;
  for (unsigned i = 0; i < count * samples; ++i) {
    const unsigned sample = stored.At(x + i / samples, y, first + i % samples);
    if (stored.bits == 16) {
      reinterpret_cast<std::uint16_t*>(bytes)[i] = static_cast<std::uint16_t>(sample);
      continue;
    }
    bytes[bit / 8] =
        static_cast<unsigned char>(bytes[bit / 8] | sample << (8 - stored.bits - bit % 8));
    bit += stored.bits;
  }
}

void WriteStored(const std::string& path, const Stored& stored) {
  const OpenTiff tiff(TIFFOpen(path.c_str(), "w"), TIFFClose);
  const auto set = [&](unsigned tag, auto... values) { TIFFSetField(tiff.get(), tag, values...); };
  set(TIFFTAG_IMAGEWIDTH, kWidth);
  set(TIFFTAG_IMAGELENGTH, kHeight);
  set(TIFFTAG_BITSPERSAMPLE, stored.bits);
  set(TIFFTAG_SAMPLESPERPIXEL, stored.samples);
  set(TIFFTAG_PHOTOMETRIC, stored.photometric);
  set(TIFFTAG_PLANARCONFIG, stored.planes ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG);
  set(TIFFTAG_ORIENTATION, stored.orientation);
  set(TIFFTAG_COMPRESSION, COMPRESSION_LZW);
  std::array<std::array<std::uint16_t, 256>, 3> palette{};
  for (unsigned i = 0; i < 256; ++i) {
    for (unsigned k = 0; k < 3; ++k) palette[k][i] = static_cast<std::uint16_t>(257 * (i ^ k));
  }
  if (stored.photometric == PHOTOMETRIC_PALETTE) {
    set(TIFFTAG_COLORMAP, palette[0].data(), palette[1].data(), palette[2].data());
  }
  const unsigned side = 16;
  if (stored.tiled) set(TIFFTAG_TILEWIDTH, side), set(TIFFTAG_TILELENGTH, side);
  const unsigned stepX = stored.tiled ? side : kWidth;
  const unsigned stepY = stored.tiled ? side : 1;
  const unsigned planes = stored.planes ? stored.samples : 1;
  const unsigned samples = stored.samples / planes;
  const unsigned rowBytes = (stepX * samples * stored.bits + 7) / 8;
  for (unsigned plane = 0; plane < planes; ++plane) {
    for (unsigned y = 0; y < kHeight; y += stepY) {
      for (unsigned x = 0; x < kWidth; x += stepX) {
        std::vector<unsigned char> bytes(std::size_t{rowBytes} * stepY);
        for (unsigned i = 0; i < stepY; ++i) {
          Pack(stored, x, y + i, stepX, plane, samples, bytes.data() + std::size_t{rowBytes} * i);
        }
        const auto number = static_cast<std::uint16_t>(plane);
        if (stored.tiled) {
          TIFFWriteTile(tiff.get(), bytes.data(), x, y, 0, number);
        } else {
          TIFFWriteScanline(tiff.get(), bytes.data(), y, number);
        }
      }
    }
  }
}

// Red, green and blue, or one grey level, of a pixel of the file.
Bytes Seen(const Stored& stored, unsigned x, unsigned y) {
  const unsigned most = (1U << stored.bits) - 1;
  const unsigned level = stored.At(x, y, 0);
  switch (stored.photometric) {
    case PHOTOMETRIC_PALETTE:
      return {static_cast<int>(level), static_cast<int>(level ^ 1), static_cast<int>(level ^ 2)};
    case PHOTOMETRIC_SEPARATED: {
      Bytes colour;
      for (unsigned k = 0; k < 3; ++k) {
        const unsigned light = (255 - stored.At(x, y, k)) * (255 - stored.At(x, y, 3)) / 255;
        colour.push_back(static_cast<int>(light));
      }
      return colour;
    }
    case PHOTOMETRIC_RGB: {
      Bytes colour;
      for (unsigned k = 0; k < 3; ++k) {
        const unsigned sample = stored.At(x, y, k);
        colour.push_back(static_cast<int>(stored.bits == 16 ? sample >> 8 : sample * 255 / most));
      }
      return colour;
    }
    default: {
      const unsigned white = stored.photometric == PHOTOMETRIC_MINISWHITE ? most - level : level;
      return {static_cast<int>(stored.bits == 16 ? white : white * 255 / most)};
    }
  }
}

// Where a pixel of the file is seen: the first two letters of an orientation say where row 0 is,
// the others where column 0 is.
std::pair<unsigned, unsigned> PlaceOf(const Stored& stored, unsigned x, unsigned y) {
  const unsigned fromRight = kWidth - 1 - x;
  const unsigned fromBottom = kHeight - 1 - y;
  switch (stored.orientation) {
    case ORIENTATION_TOPRIGHT:
      return {fromRight, y};
    case ORIENTATION_BOTRIGHT:
      return {fromRight, fromBottom};
    case ORIENTATION_BOTLEFT:
      return {x, fromBottom};
    case ORIENTATION_LEFTTOP:
      return {y, x};
    case ORIENTATION_RIGHTTOP:
      return {fromBottom, x};
    case ORIENTATION_RIGHTBOT:
      return {fromBottom, fromRight};
    case ORIENTATION_LEFTBOT:
      return {y, fromRight};
    default:
      return {x, y};
  }
}

Bytes PixelAt(const ImageValue& image, int x, int y) {
  if (image.PixelType() == Pixel::kBW16) return {image.As<LxBW16>().GetPixel(x, y).value};
  if (image.PixelType() == Pixel::kBW8) return {image.As<LxBW8>().GetPixel(x, y).value};
  const LxC24 pixel = image.As<LxC24>().GetPixel(x, y);
  return {pixel.c2, pixel.c1, pixel.c0};
}

TEST_F(Files, TiffOfEveryLayoutIsRead) {
  std::vector<Stored> layouts;
  for (const bool tiled : {false, true}) {
    for (const unsigned bits : {1U, 2U, 4U, 8U, 16U}) {
      layouts.push_back({PHOTOMETRIC_MINISBLACK, bits, 1, tiled, false});
      layouts.push_back({PHOTOMETRIC_MINISWHITE, bits, 2, tiled, bits == 4});
      layouts.push_back({PHOTOMETRIC_RGB, bits, 3, tiled, false});
      layouts.push_back({PHOTOMETRIC_RGB, bits, 4, tiled, true});
      if (bits < 16) layouts.push_back({PHOTOMETRIC_PALETTE, bits, 1, tiled, false});
    }
  }
  for (int orientation = 2; orientation <= 8; ++orientation) {
    layouts.push_back({PHOTOMETRIC_RGB, 8, 3, false, false, orientation});
    layouts.push_back({PHOTOMETRIC_MINISBLACK, 16, 1, true, false, orientation});
    layouts.push_back({PHOTOMETRIC_SEPARATED, 8, 4, orientation % 2 == 0, false, orientation});
  }
  for (const Stored& stored : layouts) {
    WriteStored(Path("a.tif"), stored);
    const ImageValue image = ReadImage(Path("a.tif"));
    const bool turned = stored.orientation >= ORIENTATION_LEFTTOP;
    ASSERT_EQ(image.SizeText(), turned ? "18x19" : "19x18") << stored.Text();
    for (unsigned i = 0; i < kWidth * kHeight; ++i) {
      const auto [x, y] = PlaceOf(stored, i % kWidth, i / kWidth);
      ASSERT_EQ(PixelAt(image, static_cast<int>(x), static_cast<int>(y)),
                Seen(stored, i % kWidth, i / kWidth))
          << stored.Text() << " at " << x << "," << y;
    }
  }
}

// A PNG of one row.
void WriteRow(const std::string& path, png_uint_32 width, int depth, int colour,
              std::vector<png_byte> row) {
  const OpenFile file = Open(path, "wb");
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_init_io(png, file.get());
  png_set_IHDR(png, info, width, 1, depth, colour, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
               PNG_FILTER_TYPE_DEFAULT);
  const png_color palette[] = {{1, 2, 3}, {40, 50, 60}};
  const png_byte alpha[] = {0, 128};
  if (colour == PNG_COLOR_TYPE_PALETTE) {
    png_set_PLTE(png, info, palette, 2);
    png_set_tRNS(png, info, alpha, 2, nullptr);
  }
  png_bytep rows[] = {row.data()};
  png_set_rows(png, info, rows);
  png_write_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
  png_destroy_write_struct(&png, &info);
}

TEST_F(Files, PngOfOtherLayoutsIsRead) {
  // A palette with transparent entries expands to four channels, of which three are kept.
  WriteRow(Path("a.png"), 1, 8, PNG_COLOR_TYPE_PALETTE, {1});
  EXPECT_EQ(FirstColour(Path("a.png")), (LxC24{60, 50, 40}));
  for (const auto& [depth, byte, levels] :
       {std::tuple{1, 0x40, Bytes{0, 255}}, {2, 0x60, {85, 170}}, {4, 0x2F, {34, 255}}}) {
    WriteRow(Path("g.png"), 2, depth, PNG_COLOR_TYPE_GRAY, {static_cast<png_byte>(byte)});
    EXPECT_EQ(LevelsOf(Path("g.png")), levels) << depth;
  }
}

// A pixel of four inks; the marker says that they are stored as the light that is left.
void WriteInks(const std::string& path, std::array<unsigned char, 4> inks, bool marked) {
  const OpenFile file = Open(path, "wb");
  jpeg_compress_struct codec{};
  jpeg_error_mgr errors{};
  codec.err = jpeg_std_error(&errors);
  jpeg_create_compress(&codec);
  jpeg_stdio_dest(&codec, file.get());
  codec.image_width = codec.image_height = 1;
  codec.input_components = 4;
  codec.in_color_space = JCS_CMYK;
  jpeg_set_defaults(&codec);
  jpeg_set_colorspace(&codec, marked ? JCS_YCCK : JCS_CMYK);
  codec.write_Adobe_marker = marked ? TRUE : FALSE;
  jpeg_set_quality(&codec, 100, TRUE);
  jpeg_start_compress(&codec, TRUE);
  unsigned char* rows[] = {inks.data()};
  jpeg_write_scanlines(&codec, rows, 1);
  jpeg_finish_compress(&codec);
  jpeg_destroy_compress(&codec);
}

TEST_F(Files, JpegOfInksBecomesColour) {
  // Red, green and blue are what the inks leave of 255: 200 * 204 / 255 and so on.
  WriteInks(Path("a.jpg"), {200, 100, 50, 204}, true);
  WriteInks(Path("b.jpg"), {55, 155, 205, 51}, false);
  for (const char* const name : {"a.jpg", "b.jpg"}) {
    const Bytes pixel = PixelAt(ReadImage(Path(name)), 0, 0);
    EXPECT_NEAR(pixel[0], 160, 3) << name;
    EXPECT_NEAR(pixel[1], 80, 3) << name;
    EXPECT_NEAR(pixel[2], 40, 3) << name;
  }
}

// A pipe that gives `content` once.
class Pipe {
 public:
  Pipe(std::string pipePath, std::string content) : path(std::move(pipePath)) {
    mkfifo(path.c_str(), 0600);
    std::signal(SIGPIPE, SIG_IGN);
    writer = std::jthread(
        [this, text = std::move(content)] { std::ofstream(path, std::ios::binary) << text; });
  }
  ~Pipe() {
    // Lets a writer go on that nobody has read from.
    const int opened = open(path.c_str(), O_RDONLY | O_NONBLOCK);
    writer.join();
    close(opened);
    std::filesystem::remove(path);
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

 private:
  std::string path;
  std::jthread writer;
};

TEST_F(Files, PipesAreReadOnceAndInOrder) {
  const std::string part = WriteGrey("part.png", 3, {1, 2, 3});
  const std::string twin = WriteGrey("twin.png", 3, {4, 5, 6});
  const auto pipe = [&](const std::string& content) { return Pipe(Path("pipe"), content); };
  for (const char* const name : {"a.png", "a.tif", "a.jpg", "a.pgm"}) {
    const std::string content = Content(WriteGrey(name, 3, {9, 9, 9}));
    {
      const Pipe operand = pipe(content);
      ASSERT_EQ(
          Tool({part, twin, "oper", "add", Path("pipe"), "--jobs", "2", "-o", Path("o/")}).err, "");
    }
    EXPECT_EQ(LevelsOf(Path("o/part.png")), (Bytes{10, 11, 12})) << name;
    EXPECT_EQ(LevelsOf(Path("o/twin.png")), (Bytes{13, 14, 15})) << name;
    const Pipe input = pipe(content);
    const Redirected standard(STDIN_FILENO, Path("pipe"), O_RDONLY);
    ASSERT_EQ(Tool({"-", "oper", "add", "1", "-o", Path("o.png")}).err, "") << name;
    EXPECT_EQ(LevelsOf(Path("o.png")), (Bytes{10, 10, 10})) << name;
  }
  std::string invert;
  for (int v = 255; v >= 0; --v) invert += std::to_string(v) + " ";
  const Pipe table = pipe(invert);
  ASSERT_EQ(Tool({part, "lut", Path("pipe"), "-o", Path("o.png")}).err, "");
  EXPECT_EQ(LevelsOf(Path("o.png")), (Bytes{254, 253, 252}));
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
