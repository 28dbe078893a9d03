// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/report/demo.h"

#include <regex>
#include <set>

#include "tools/tool_fixture.h"

namespace lx::tool {
namespace {

class Demo : public ToolTest {};

TEST_F(Demo, ShowsDrawnDefectsAndFindsThem) {
  const DemoResult result = RunDemo({"", "", {}, "", Path("demo")});
  const std::string page = Content(result.page);
  EXPECT_TRUE(Contains(page, "<b>8 of 8</b>planted defects found"));
  EXPECT_TRUE(Contains(page, "</html>"));
  static const std::regex kSource("src=\"([^\"]*)");
  std::set<std::string> images(std::sregex_token_iterator(page.begin(), page.end(), kSource, 1),
                               {});
  EXPECT_GE(images.size(), 6U);
  for (const std::string& name : images) {
    EXPECT_TRUE(std::filesystem::exists(Path("demo/" + name))) << name;
  }
  // Hardly anything is marked besides them, though the part lies askew.
  EXPECT_GT(result.defectPixels, 3000);
  EXPECT_LT(result.defectPixels, 4000);
  EXPECT_FALSE(Contains(page, "http"));
}

// Binomial smoothing spreads a bright square to what is beside it, leaves the middle of a larger one
// as it is, and makes five pixels of a spot, which holds no square. More than 24 levels count.
TEST_F(Demo, CountsThePixelsOfGivenImages) {
  constexpr int kWidth = 20;
  std::vector<int> levels(kWidth * 15);
  WriteGrey("golden.png", kWidth, levels);
  const auto square = [&levels](int x, int y, int size, int level) {
    for (int i = 0; i < size * size; ++i) {
      levels[static_cast<std::size_t>((y + i / size) * kWidth + x + i % size)] = level;
    }
  };
  square(2, 2, 3, 255);
  square(8, 2, 5, 25);
  square(14, 2, 5, 24);
  square(4, 11, 1, 255);
  WriteGrey("a<b.tif", kWidth, levels);
  const Run run = Tool({"demo", Path("golden.png"), Path("a<b.tif"), "-o", Path("demo")});
  EXPECT_EQ(run.code, kFine) << run.err;
  EXPECT_EQ(run.out, "30 defect pixels\n" + Path("demo/index.html") + "\n");
  const ImageValue shown = ReadImage(Path("demo/result.png"));
  int red = 0;
  for (int i = 0; i < kWidth * 15; ++i) {
    red += shown.As<LxC24>().GetPixel(i % kWidth, i / kWidth) == LxC24{0, 0, 255} ? 1 : 0;
  }
  EXPECT_EQ(red, 30);
}

TEST_F(Demo, DepthsMayDifferButSizesMayNot) {
  ImageValue deep(Pixel::kBW16, 6, 4);
  deep.Clear();
  WriteImage(Path("deep.png"), deep);
  ImageValue colour(Pixel::kC24, 6, 4);
  colour.Clear();
  for (int i = 0; i < 9; ++i) {
    colour.As<LxC24>().SetPixel({255, 255, 255}, 3 + i % 3, 1 + i / 3);
  }
  WriteImage(Path("colour.png"), colour);
  // Smoothing spreads the white square in the corner to the six pixels beside it.
  EXPECT_EQ(RunDemo({Path("deep.png"), Path("colour.png"), {}, "", Path("d1")}).defectPixels, 15);
  EXPECT_EQ(RunDemo({Path("colour.png"), Path("deep.png"), {}, "", Path("d2")}).defectPixels, 15);

  WriteGrey("small.png", 2, {1, 2});
  const Run run = Tool({"demo", Path("colour.png"), Path("small.png"), "-o", Path("d3")});
  EXPECT_EQ(run.code, kOperationFailed);
  EXPECT_TRUE(Contains(run.err, "colour.png is 6x4")) << run.err;
  EXPECT_TRUE(Contains(run.err, "small.png is 2x1")) << run.err;
}

}  // namespace
}  // namespace lx::tool
