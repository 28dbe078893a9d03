// SPDX-License-Identifier: Apache-2.0
// Every format keeps every pixel that it can hold.
#include "tools/lxpic/file/files.h"

#include <cstdlib>

#include "tools/lxpic/common/words.h"
#include "tools/tool_fixture.h"

namespace lx::tool {
namespace {

// Levels that use all bits, with odd sizes so that padding would show.
ImageValue TestImage(Pixel pixel, int width, int height) {
  ImageValue image(pixel, width, height);
  unsigned level = 7;
  for (int y = 0; y < height; ++y) {
    for (std::size_t i = 0; i < image.RowBytes(); ++i) {
      level = level * 1103515245 + 12345;
      image.Row(y)[i] = static_cast<unsigned char>(level >> 16);
    }
  }
  return image;
}

void ExpectEqual(const ImageValue& expected, const ImageValue& actual, const std::string& name) {
  ASSERT_EQ(expected.TypeName(), actual.TypeName()) << name;
  ASSERT_EQ(expected.SizeText(), actual.SizeText()) << name;
  for (int y = 0; y < expected.Height(); ++y) {
    for (std::size_t i = 0; i < expected.RowBytes(); ++i) {
      ASSERT_EQ(int{expected.Row(y)[i]}, int{actual.Row(y)[i]}) << name << " " << i << "," << y;
    }
  }
}

class Files : public ToolTest {};

TEST_F(Files, LosslessFormatsGiveBackWhatWasWritten) {
  struct Case {
    const char* name;
    Pixel pixel;
  };
  for (const Case& each :
       {Case{"a.png", Pixel::kBW8}, Case{"b.png", Pixel::kBW16}, Case{"c.png", Pixel::kC24},
        Case{"a.tif", Pixel::kBW8}, Case{"b.tiff", Pixel::kBW16}, Case{"c.TIF", Pixel::kC24},
        Case{"a.pgm", Pixel::kBW8}, Case{"b.pgm", Pixel::kBW16}, Case{"c.ppm", Pixel::kC24},
        Case{"a.pnm", Pixel::kBW8}, Case{"b.pnm", Pixel::kBW16}, Case{"c.pnm", Pixel::kC24}}) {
    for (const Size& size : {Size{1, 1}, Size{37, 11}}) {
      const ImageValue image = TestImage(each.pixel, size.width, size.height);
      WriteImage(Path(each.name), image);
      ExpectEqual(image, ReadImage(Path(each.name)), each.name);
    }
  }
}

TEST_F(Files, JpegKeepsGreyAndColourNearly) {
  ImageValue grey(Pixel::kBW8, 40, 24);
  for (int y = 0; y < 24; ++y) {
    for (int x = 0; x < 40; ++x) grey.Row(y)[x] = static_cast<unsigned char>(4 * x + y);
  }
  WriteImage(Path("grey.jpg"), grey);
  const ImageValue back = ReadImage(Path("grey.jpg"));
  ASSERT_EQ(back.PixelType(), Pixel::kBW8);
  for (int y = 0; y < 24; ++y) {
    for (int x = 0; x < 40; ++x) ASSERT_NEAR(back.Row(y)[x], grey.Row(y)[x], 4) << x << "," << y;
  }
  ImageValue orange(Pixel::kC24, 16, 16);
  for (int y = 0; y < 16; ++y) {
    for (int x = 0; x < 16; ++x) orange.As<LxC24>().SetPixel({20, 120, 230}, x, y);
  }
  WriteImage(Path("orange.jpeg"), orange);
  const LxC24 pixel = ReadImage(Path("orange.jpeg")).As<LxC24>().GetPixel(5, 9);
  EXPECT_NEAR(pixel.c0, 20, 4);
  EXPECT_NEAR(pixel.c1, 120, 4);
  EXPECT_NEAR(pixel.c2, 230, 4);
}

TEST_F(Files, TypesWithoutAFormatAreConvertedOrRefused) {
  ImageValue packed(Pixel::kC16, 1, 1);
  packed.As<LxC16>().SetPixel({0xF81F}, 0, 0);
  WriteImage(Path("packed.png"), packed);
  EXPECT_EQ(ReadImage(Path("packed.png")).As<LxC24>().GetPixel(0, 0), (LxC24{248, 0, 248}));

  ImageValue alpha(Pixel::kC24A, 1, 1);
  alpha.As<LxC24A>().SetPixel({1, 2, 3, 4}, 0, 0);
  WriteImage(Path("alpha.tif"), alpha);
  EXPECT_EQ(ReadImage(Path("alpha.tif")).As<LxC24>().GetPixel(0, 0), (LxC24{1, 2, 3}));

  ImageValue binary(Pixel::kBinary, 10, 1);
  binary.Clear();
  binary.As<int>().SetPixel(1, 9, 0);
  WriteImage(Path("binary.png"), binary);
  EXPECT_EQ(LevelsOf(Path("binary.png")), (std::vector<int>{0, 0, 0, 0, 0, 0, 0, 0, 0, 255}));

  ImageValue grey(Pixel::kBW8, 1, 1);
  grey.As<LxBW8>().SetPixel(9, 0, 0);
  WriteImage(Path("grey.ppm"), grey);
  EXPECT_EQ(ReadImage(Path("grey.ppm")).As<LxC24>().GetPixel(0, 0), (LxC24{9, 9, 9}));

  for (const auto& [name, pixel] : {std::pair{"a.png", Pixel::kBW32},
                                    {"a.jpg", Pixel::kBW16},
                                    {"a.pgm", Pixel::kC24},
                                    {"a.ppm", Pixel::kBW16}}) {
    EXPECT_THROW(WriteImage(Path(name), ImageValue(pixel, 2, 2)), Failure) << name;
    EXPECT_FALSE(std::filesystem::exists(Path(name))) << name;
  }
}

TEST_F(Files, FormatIsToldByContentNotByName) {
  WriteImage(Path("a.png"), TestImage(Pixel::kBW8, 5, 4));
  std::filesystem::rename(Path("a.png"), Path("a.jpg"));
  EXPECT_EQ(FormatOf(Path("a.jpg")), "PNG");
  EXPECT_EQ(ReadImage(Path("a.jpg")).SizeText(), "5x4");
  EXPECT_THROW(WriteImage(Path("a.bmp"), TestImage(Pixel::kBW8, 5, 4)), Failure);
}

}  // namespace
}  // namespace lx::tool
