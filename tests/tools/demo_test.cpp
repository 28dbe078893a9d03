// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/report/demo.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <set>

#include "tools/lxpic/scene/synth.h"
#include "tools/tool_fixture.h"

namespace lx::tool {
namespace {

class Demo : public ToolTest {
 protected:
  // Files that the page shows.
  static std::set<std::string> ImagesOf(const std::string& page) {
    std::set<std::string> names;
    for (std::size_t at = page.find("src=\""); at != std::string::npos;
         at = page.find("src=\"", at)) {
      at += 5;
      names.insert(page.substr(at, page.find('"', at) - at));
    }
    return names;
  }
};

TEST_F(Demo, ShowsDrawnDefectsAndFindsThem) {
  const DemoResult result = RunDemo({"", "", Path("demo")});
  const std::string page = Content(result.page);
  EXPECT_TRUE(Contains(page, "<b>8 of 8</b>planted defects found"));
  EXPECT_TRUE(Contains(page, "</html>"));
  const auto images = ImagesOf(page);
  EXPECT_GE(images.size(), 6U);
  for (const std::string& name : images) {
    EXPECT_TRUE(std::filesystem::exists(Path("demo/" + name))) << name;
  }
  EXPECT_GT(result.defectPixels, 500);
  EXPECT_FALSE(Contains(page, "http"));
}

// More than 40 levels apart, counted here from the definition of the steps.
TEST_F(Demo, CountsThePixelsOfGivenImages) {
  SynthOptions options;
  options.size = {200, 150};
  const ImageValue golden = Synthesise(options).image;
  options.seed = 2;
  options.defects = 2;
  const ImageValue part = Synthesise(options).image;
  WriteImage(Path("golden.png"), golden);
  WriteImage(Path("a<b.tif"), part);
  // Differences above 24 grey levels after binomial smoothing with replicated edges.
  const auto smooth = [](const ImageValue& image, int x, int y) {
    constexpr std::array kWeights = {1, 2, 1};
    int sum = 0;
    for (int j = 0; j < 3; ++j) {
      for (int i = 0; i < 3; ++i) {
        const unsigned char* const row = image.Row(std::clamp(y + j - 1, 0, 149));
        sum += kWeights[static_cast<std::size_t>(i)] * kWeights[static_cast<std::size_t>(j)] *
               row[std::clamp(x + i - 1, 0, 199)];
      }
    }
    return sum / 16;
  };
  long expected = 0;
  for (int y = 0; y < 150; ++y) {
    for (int x = 0; x < 200; ++x) {
      expected += std::abs(smooth(golden, x, y) - smooth(part, x, y)) > 24 ? 1 : 0;
    }
  }
  ASSERT_GT(expected, 0);
  const Run run = Tool({"demo", Path("golden.png"), Path("a<b.tif"), "-o", Path("demo")});
  EXPECT_EQ(run.code, kFine) << run.err;
  EXPECT_EQ(run.out,
            std::to_string(expected) + " defect pixels\n" + Path("demo/index.html") + "\n");
  const ImageValue shown = ReadImage(Path("demo/result.png"));
  long red = 0;
  for (int y = 0; y < 150; ++y) {
    for (int x = 0; x < 200; ++x) {
      red += shown.As<LxC24>().GetPixel(x, y) == LxC24{0, 0, 255} ? 1 : 0;
    }
  }
  EXPECT_EQ(red, expected);
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
