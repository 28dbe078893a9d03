// SPDX-License-Identifier: Apache-2.0
// Chains of operations give the pixels that their definitions say.
#include <algorithm>
#include <cmath>

#include "tools/tool_fixture.h"

namespace lx::tool {
namespace {

class ChainTest : public ToolTest {
 protected:
  ChainTest() : part(WriteGrey("part.png", 4, {0, 1, 40, 100, 120, 200, 254, 255})) {}

  // Runs `steps` on the part and returns the grey levels of the result.
  std::vector<int> After(std::vector<std::string> steps) const {
    steps.insert(steps.begin(), part);
    steps.insert(steps.end(), {"-o", Path("out.png")});
    const Run run = Tool(steps);
    EXPECT_EQ(run.code, kFine) << run.err;
    EXPECT_EQ(run.err, "");
    return LevelsOf(Path("out.png"));
  }

  // What `rule` makes of each level of the part.
  template <class Rule>
  static std::vector<int> Expected(Rule rule) {
    std::vector<int> levels = {0, 1, 40, 100, 120, 200, 254, 255};
    for (int& level : levels) level = std::clamp(static_cast<int>(rule(level)), 0, 255);
    return levels;
  }

  std::string part;
};

TEST_F(ChainTest, StepsWorkOnTheResultOfTheOneBefore) {
  // 1.4 is 44 parts of 32.
  const auto gain = [](int v) { return std::clamp((44 * v >> 5) - 20, 0, 255); };
  EXPECT_EQ(After({"gain-offset", "1.4", "-20"}), Expected(gain));
  EXPECT_EQ(After({"gain-offset", "1.4", "-20", "oper", "invert", "oper", "subtract", "9"}),
            Expected([&](int v) { return 255 - gain(v) - 9; }));
  EXPECT_EQ(After({"gain-offset", "-.5", "130"}),
            Expected([](int v) { return static_cast<int>(std::floor(-16 * v / 32.0)) + 130; }));
  // At the border the paths differ by definition: this one sees black there.
  const std::string flat = WriteGrey("flat.png", 3, std::vector<int>(9, 100));
  ASSERT_EQ(Tool({flat, "--plain", "convol-sobel-x", "-o", Path("o.png")}).code, kFine);
  EXPECT_EQ(LevelsOf(Path("o.png"))[3], 255);
}

TEST_F(ChainTest, UnderscorePutsTheImageBehindTheOtherOperand) {
  EXPECT_EQ(After({"oper", "subtract", "100"}), Expected([](int v) { return v - 100; }));
  EXPECT_EQ(After({"oper", "subtract", "100", "_"}), Expected([](int v) { return 100 - v; }));
  EXPECT_EQ(After({"oper", "subtract", "_", "100"}), Expected([](int v) { return v - 100; }));
  const std::string golden = WriteGrey("golden.png", 4, {9, 9, 50, 90, 120, 0, 255, 0});
  EXPECT_EQ(After({"oper", "subtract", golden}), (std::vector<int>{0, 0, 0, 10, 0, 200, 0, 255}));
  EXPECT_EQ(After({"oper", "subtract", golden, "_"}), (std::vector<int>{9, 8, 10, 0, 0, 0, 1, 0}));
}

TEST_F(ChainTest, ImagesAreStoredAndNamedAgain) {
  EXPECT_EQ(
      After({"oper", "invert", "store", "dark", "gain-offset", "0", "7", "oper", "add", "@dark"}),
      Expected([](int v) { return 255 - v + 7; }));
  EXPECT_EQ(After({"oper", "invert", "oper", "subtract", "@", "_"}),
            Expected([](int v) { return v - (255 - v); }));
  // The second takes the name from the first.
  EXPECT_EQ(After({"store", "x", "oper", "invert", "store", "x", "oper", "subtract", "@x"}),
            Expected([](int) { return 0; }));
}

TEST_F(ChainTest, ADestinationThatKeepsPixelsStartsAsTheCurrentImage) {
  EXPECT_EQ(After({"oper", "set-where-zero", "77"}),
            Expected([](int v) { return v == 0 ? 77 : v; }));
  EXPECT_EQ(After({"store", "in", "oper", "greater", "100", "oper", "onto", "@in",
                   "set-where-nonzero", "5"}),
            Expected([](int v) { return v > 100 ? 5 : v; }));
  // Of another type it starts black.
  EXPECT_EQ(Tool({part, "oper", "c24", "overlay", "-o", Path("out.ppm")}).code, kFine);
  const ImageValue painted = ReadImage(Path("out.ppm"));
  EXPECT_EQ(painted.As<LxC24>().GetPixel(0, 0), (LxC24{0, 0, 0}));
  EXPECT_EQ(painted.As<LxC24>().GetPixel(1, 0), (LxC24{0, 0, 255}));
}

TEST_F(ChainTest, ColoursAreRedGreenBlue) {
  const auto pixel = [&](std::vector<std::string> chain) {
    chain.insert(chain.end(), {"-o", Path("c.png")});
    EXPECT_EQ(Tool(chain).code, kFine);
    return ReadImage(Path("c.png")).As<LxC24>().GetPixel(2, 1);
  };
  EXPECT_EQ(pixel({"copy", "c24", "3x2", "10,20,30"}), (LxC24{30, 20, 10}));
  EXPECT_EQ(pixel({Path("c.png"), "gain-offset", "2,1,0", "0,0,7"}), (LxC24{7, 20, 20}));
  // Stored as 5, 6 and 5 bits.
  EXPECT_EQ(pixel({"copy", "c16", "3x2", "255,4,8"}), (LxC24{8, 4, 248}));
  EXPECT_EQ(pixel({"copy", "c15", "3x2", "255,0,8"}), (LxC24{8, 0, 248}));
  EXPECT_EQ(pixel({part, "set-overlay-color", "1,2,3", "oper", "overlay", "@"}), (LxC24{3, 2, 1}));
}

TEST_F(ChainTest, TablesHaveNamesOrAreFiles) {
  for (const char* const step : {"lut", "transform"}) {
    const auto expect = [&](const char* table, auto rule) {
      EXPECT_EQ(After({step, table}), Expected(rule)) << step << " " << table;
    };
    expect("identity", [](int v) { return v; });
    expect("invert", [](int v) { return 255 - v; });
    expect("threshold:120", [](int v) { return v >= 120 ? 255 : 0; });
    expect("gamma:2", [](int v) { return std::lround(255 * std::sqrt(v / 255.0)); });
  }
  std::string numbers;
  for (int v = 0; v < 256; ++v) numbers += std::to_string(v / 2) + (v % 8 == 7 ? "\n" : ", ");
  EXPECT_EQ(After({"lut", Write("half.txt", numbers)}), Expected([](int v) { return v / 2; }));
  const auto run = [&](const char* step, const char* entries) {
    return Tool({part, step, Write("table.txt", entries), "-o", Path("o.png")});
  };
  EXPECT_EQ(run("lut", "1 2 256").code, kFileFailed);
  EXPECT_EQ(run("transform", "1 2").code, kWrongUsage);
  // Too few entries reach the library, which refuses them.
  const Run few = run("lut", "1 2 3");
  EXPECT_EQ(few.code, kOperationFailed);
  EXPECT_EQ(few.err, "lxpic: " + part +
                         ": lut: the vector has the wrong number of elements (1613); trace: "
                         "PicLut\n");
}

// The middle row only, so that the border does not matter.
TEST_F(ChainTest, KernelsAreRowsOrPresetsWithSettings) {
  const std::string bump = WriteGrey("bump.png", 3, {10, 20, 40, 10, 20, 40, 10, 20, 40});
  const auto middle = [&](const std::string& kernel) {
    const Run run = Tool({bump, "convol-kernel", kernel, "-o", Path("out.png")});
    EXPECT_EQ(run.code, kFine) << run.err;
    return LevelsOf(Path("out.png"))[4];
  };
  EXPECT_EQ(middle("-1,0,1/-2,0,2/-1,0,1:gain=0.5"), 60);
  EXPECT_EQ(middle("sobel-x"), 120);
  EXPECT_EQ(middle("sobel-x:gain=0.5:offset=7:rectifier=absolute"), 67);
  EXPECT_EQ(middle("1,0,-1/2,0,-2/1,0,-1"), 0);
  EXPECT_EQ(middle("1,0,-1/2,0,-2/1,0,-1:rectifier=absolute"), 120);
  EXPECT_EQ(middle("1,0,-1/2,0,-2/1,0,-1:rectifier=negative"), 120);
  EXPECT_EQ(middle("1,0,-1/2,0,-2/1,0,-1:rectifier=none:offset=200"), 80);
  EXPECT_EQ(middle("sobel-x:rectifier=negative"), 0);
  EXPECT_EQ(middle("sobel-x:rectifier=positive"), 120);
  EXPECT_EQ(middle("prewitt-x"), 90);
  for (const char* const wrong : {"sobel", "1,2/3", "1,2,3/4,5", "1,a", "sobel-x:gain",
                                  "ring:gian=1", "ring:offset=-1", "ring:rectifier=5", "", "/"}) {
    EXPECT_EQ(Tool({bump, "convol-kernel", wrong, "-o", Path("o.png")}).code, kWrongUsage) << wrong;
  }
}

TEST_F(ChainTest, DepthsAndFurtherResultsAreReached) {
  EXPECT_EQ(After({"convert", "bw16", "8"}),
            (std::vector<int>{0, 256, 10240, 25600, 30720, 51200, 65024, 65280}));
  EXPECT_EQ(After({"convert", "bw32", "8", "convert", "bw8", "8"}),
            Expected([](int v) { return v; }));
  EXPECT_EQ(After({"oper", "bw16", "multiply", part}),
            (std::vector<int>{0, 1, 1600, 10000, 14400, 40000, 64516, 65025}));
  // Colour and alpha are taken apart again; the alpha is stored under a name.
  EXPECT_EQ(After({"store", "a", "convert", "c24", "convert", "c24a", "@a", "convert", "c24",
                   "alpha", "oper", "multiply", "@alpha", "convert", "bw8"}),
            Expected([](int v) { return std::min(v * v, 255) * 255 >> 8; }));
}

TEST_F(ChainTest, VectorsArePrinted) {
  // An error of long ago is none of theirs.
  LxSetError(LX_ERROR_ROI_NOT_ATTACHED);
  EXPECT_EQ(Tool({"vect1c2", "add", "u8:1,200,255", "100"}).out, "destination 101,255,255\n");
  EXPECT_EQ(Tool({"vect1c2", "add", "s16:-5,32767", "1"}).out, "destination -4,32767\n");
  EXPECT_EQ(Tool({"vect1c2", "divide", "1,2", "0"}).code, kOperationFailed);
  EXPECT_EQ(Tool({"vect1c2", "add", "u8:1,256", "1"}).code, kWrongUsage);
}

}  // namespace
}  // namespace lx::tool
