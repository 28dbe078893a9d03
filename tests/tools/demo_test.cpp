// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/report/demo.h"

#include <regex>
#include <set>

#include "tools/tool_fixture.h"

namespace lx::tool {
namespace {

class Demo : public ToolTest {};

TEST_F(Demo, ShowsDrawnDefectsAndFindsThem) {
  const DemoResult result = RunDemo({"", "", Path("demo")});
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
  EXPECT_GT(result.defectPixels, 500);
  EXPECT_FALSE(Contains(page, "http"));
}

// Binomial smoothing leaves 4, 2 and 1 sixteenths of a spot, and more than 24 levels count: of the
// first spot the middle and four neighbours, of the second the middle, of the third nothing.
TEST_F(Demo, CountsThePixelsOfGivenImages) {
  std::vector<int> levels(20 * 15);
  WriteGrey("golden.png", 20, levels);
  levels[3 * 20 + 3] = 255;
  levels[9 * 20 + 9] = 100;
  levels[9 * 20 + 15] = 99;
  WriteGrey("a<b.tif", 20, levels);
  const Run run = Tool({"demo", Path("golden.png"), Path("a<b.tif"), "-o", Path("demo")});
  EXPECT_EQ(run.code, kFine) << run.err;
  EXPECT_EQ(run.out, "6 defect pixels\n" + Path("demo/index.html") + "\n");
  const ImageValue shown = ReadImage(Path("demo/result.png"));
  int red = 0;
  for (int i = 0; i < 20 * 15; ++i) {
    red += shown.As<LxC24>().GetPixel(i % 20, i / 20) == LxC24{0, 0, 255} ? 1 : 0;
  }
  EXPECT_EQ(red, 6);
}

TEST_F(Demo, DepthsMayDifferButSizesMayNot) {
  ImageValue deep(Pixel::kBW16, 6, 4);
  deep.Clear();
  WriteImage(Path("deep.png"), deep);
  ImageValue colour(Pixel::kC24, 6, 4);
  colour.Clear();
  colour.As<LxC24>().SetPixel({255, 255, 255}, 5, 3);
  WriteImage(Path("colour.png"), colour);
  // Smoothing spreads the white corner to its two neighbours.
  EXPECT_EQ(RunDemo({Path("deep.png"), Path("colour.png"), Path("d1")}).defectPixels, 3);
  EXPECT_EQ(RunDemo({Path("colour.png"), Path("deep.png"), Path("d2")}).defectPixels, 3);

  WriteGrey("small.png", 2, {1, 2});
  const Run run = Tool({"demo", Path("colour.png"), Path("small.png"), "-o", Path("d3")});
  EXPECT_EQ(run.code, kOperationFailed);
  EXPECT_TRUE(Contains(run.err, "colour.png is 6x4")) << run.err;
  EXPECT_TRUE(Contains(run.err, "small.png is 2x1")) << run.err;
}

}  // namespace
}  // namespace lx::tool
