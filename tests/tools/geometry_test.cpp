// SPDX-License-Identifier: Apache-2.0
// Points, maps and pyramids on the command line, and pictures of products that lie askew.
#include <cmath>
#include <cstdlib>

#include "tools/lxpic/scene/synth.h"
#include "tools/tool_fixture.h"

namespace lx::tool {
namespace {

class GeometryTool : public ToolTest {
 protected:
  std::vector<int> After(std::vector<std::string> words) const {
    words.insert(words.end(), {"-o", Path("out.png")});
    const Run run = Tool(words);
    EXPECT_EQ(run.code, kFine) << run.err;
    return run.code == kFine ? LevelsOf(Path("out.png")) : std::vector<int>();
  }
};

TEST_F(GeometryTool, PointsAreOneWordOrTwo) {
  const std::string in = WriteGrey("in.png", 3, {1, 2, 3, 4, 5, 6});
  const std::vector<int> moved = {0, 0, 0, 0, 1, 2};
  EXPECT_EQ(After({in, "register", "1,1", "2,2", "0"}), moved);
  EXPECT_EQ(After({in, "register", "1", "1", "2", "2", "0"}), moved);
  EXPECT_EQ(After({in, "register", "1,1", "2", "2", "0"}), moved);
  // Two points the same, and three.
  EXPECT_EQ(After({in, "register", "0,0", "1,0", "1,1", "2,1", "0", "0"}), moved);
  EXPECT_EQ(After({in, "register", "0,0", "1,0", "0,1", "1,1", "2,1", "1,2", "0"}), moved);
  EXPECT_EQ(After({in, "scale-rotate", "0,0", "1,1", "1,1", "0", "0"}), moved);
  EXPECT_TRUE(Contains(Tool({"help", "register"}).out, "SOURCE-X,SOURCE-Y"));
  for (const char* const word : {"1,x", ",1", "1,", "1,1,1"}) {
    const Run run = Tool({in, "register", word, "2,2", "0", "-o", Path("no.png")});
    EXPECT_EQ(run.code, kWrongUsage) << word;
  }
}

// The maps of a ring have a size of their own, and the unrolled image has theirs.
TEST_F(GeometryTool, RingsAreUnrolled) {
  constexpr int kSide = 41;
  std::vector<int> levels;
  for (int i = 0; i < kSide * kSide; ++i) {
    const int row = i / kSide;
    const double radius = std::hypot(i % kSide - 20, row - 20);
    levels.push_back(static_cast<int>(10 * std::min(radius, 20.0)));
  }
  const std::string in = WriteGrey("disk.png", kSide, levels);
  const auto ring = After({in, "set-circle-warp", "9x3", "20,20", "3", "5", "15", "9", "0", "180",
                           "warp", "@", "_", "@y-map", "0", "0"});
  ASSERT_EQ(ring.size(), 27U);
  for (std::size_t i = 0; i < ring.size(); ++i) {
    // Coordinates are cut to whole pixels.
    const int level = 150 - 50 * (static_cast<int>(i) / 9);
    EXPECT_NEAR(ring[i], level, 15) << i;
  }
}

TEST_F(GeometryTool, PyramidsAreOneFileForEachLevel) {
  const std::string in = WriteGrey("in.png", 3, {8, 8, 1, 8, 8, 3, 6, 8, 5});
  const Run run = Tool({"pyramid", in, "-o", Path("level.png"), "--levels", "5"});
  EXPECT_EQ(run.code, kFine) << run.err;
  EXPECT_EQ(LevelsOf(Path("level-0.png")), LevelsOf(in));
  EXPECT_EQ(LevelsOf(Path("level-1.png")), std::vector<int>{8});
  EXPECT_FALSE(std::filesystem::exists(Path("level-2.png")));  // nothing is left
  ASSERT_EQ(Tool({"pyramid", in, "-o", Path("odd.png"), "--levels", "2", "--keep-odd"}).code,
            kFine);
  EXPECT_EQ(LevelsOf(Path("odd-1.png")), (std::vector<int>{8, 2, 7, 5}));

  WriteImage(Path("colour.png"), ImageValue(Pixel::kC24, 4, 4));
  EXPECT_EQ(Tool({"pyramid", Path("colour.png"), "-o", Path("c.png")}).code, kWrongUsage);
  const std::string own = WriteGrey("own-1.png", 2, {1, 2, 3, 4});
  EXPECT_EQ(Tool({"pyramid", own, "-o", Path("own.png")}).code, kWrongUsage);
  EXPECT_EQ(LevelsOf(own), (std::vector<int>{1, 2, 3, 4}));
}

// What a product that lies askew shows is where its marks say.
TEST(Pose, MarksBringAProductBack) {
  for (const std::string& scene : {std::string("board"), std::string("label")}) {
    SynthOptions options{.scene = scene, .size = {600, 450}, .noise = 0, .light = 0};
    const SynthPicture straight = Synthesise(options);
    options.pose = {{9.5, -4}, 3, 0.97};
    const SynthPicture askew = Synthesise(options);
    ASSERT_EQ(askew.marks.size(), 3U);
    const auto x = [](const Point& point) { return static_cast<float>(point.x); };
    const auto y = [](const Point& point) { return static_cast<float>(point.y); };
    const auto& from = askew.marks;
    const auto& to = straight.marks;
    ImageValue back(Pixel::kBW8, 600, 450);
    PicRegister(&askew.image.As<LxBW8>(), &back.As<LxBW8>(), x(from[0]), y(from[0]), x(from[1]),
                y(from[1]), x(from[2]), y(from[2]), x(to[0]), y(to[0]), x(to[1]), y(to[1]),
                x(to[2]), y(to[2]), 8);
    ASSERT_EQ(LxGetError(), LX_OK);
    int far = 0;
    for (int row = 60; row < 390; ++row) {
      for (int column = 60; column < 540; ++column) {
        // Interpolation rounds what is sharper than itself; a pixel aside, thousands would differ.
        far += std::abs(back.Row(row)[column] - straight.image.Row(row)[column]) > 90 ? 1 : 0;
      }
    }
    EXPECT_LT(far, 100) << scene;
  }
}

class Sequences : public ToolTest {};

TEST_F(Sequences, FramesDifferInNoiseAndFieldsInPlace) {
  const std::vector<std::string> drawn = {"synth", "board", "--size", "160x120"};
  const auto draw = [&](std::vector<std::string> more) {
    more.insert(more.begin(), drawn.begin(), drawn.end());
    EXPECT_EQ(Tool(more).code, kFine);
  };
  draw({"-o", Path("one.png")});
  draw({"-o", Path("all.png"), "--frames", "2"});
  EXPECT_EQ(LevelsOf(Path("all-0.png")), LevelsOf(Path("one.png")));
  EXPECT_NE(LevelsOf(Path("all-1.png")), LevelsOf(Path("one.png")));

  draw({"-o", Path("still.png"), "--noise", "0"});
  draw({"-o", Path("moved.png"), "--noise", "0", "--shift", "5,0"});
  draw({"-o", Path("fields.png"), "--noise", "0", "--field-shift", "5"});
  const auto still = LevelsOf(Path("still.png"));
  const auto moved = LevelsOf(Path("moved.png"));
  const auto fields = LevelsOf(Path("fields.png"));
  for (std::size_t i = 0; i < fields.size(); ++i) {
    ASSERT_EQ(fields[i], i / 160 % 2 == 0 ? still[i] : moved[i]) << i;
  }
  EXPECT_EQ(Tool({"synth", "sheet", "-o", Path("s.png"), "--defects", "1"}).code, kWrongUsage);
  draw({"-o", Path("far.png"), "--shift", "1000,0"});
  EXPECT_EQ(Tool({"synth", "board", "-o", Path("s.png"), "--shift", "1"}).code, kWrongUsage);
}

// To a power of 4 * 4 rounding to grey levels adds 1/12, and the sixteenth of the sum of sixteen
// frames, which is rounded down, its mean square error of 0.303, which the correction for a
// reference that the frame is part of divides by 15/16: 4.05 in all. A million pixels leave an error
// of 0.003.
TEST_F(Sequences, NoiseThatWasDrawnIsMeasured) {
  std::filesystem::create_directory(Path("frames"));
  ASSERT_EQ(Tool({"synth", "sheet", "-o", Path("frames/f.png"), "--frames", "16", "--noise", "4",
                  "--light", "20", "--size", "320x240"})
                .code,
            kFine);
  const Run run = Tool({"noise", Path("frames"), "--format", "csv"});
  ASSERT_EQ(run.code, kFine) << run.err;
  const std::size_t last = run.out.rfind("all,");
  ASSERT_NE(last, std::string::npos) << run.out;
  EXPECT_NEAR(std::stod(run.out.substr(last + 4)), 4.05, 0.015) << run.out;
  EXPECT_EQ(Tool({"noise", Path("frames/f-00.png")}).code, kWrongUsage);
}

TEST_F(Sequences, FramesAreAveragedWithThoseBefore) {
  const std::string first = WriteGrey("a.png", 2, {10, 20});
  const std::string second = WriteGrey("b.png", 2, {20, 20});
  const std::string other = WriteGrey("c.png", 1, {20, 20});
  const Run run = Tool({"average", first, second, "-o", Path("mean"), "--period", "3"});
  ASSERT_EQ(run.code, kFine) << run.err;
  EXPECT_EQ(LevelsOf(Path("mean/a.png")), (std::vector<int>{10, 20}));
  EXPECT_EQ(LevelsOf(Path("mean/b.png")), (std::vector<int>{13, 20}));
  EXPECT_EQ(Tool({"average", first, other, "-o", Path("mean")}).code, kOperationFailed);
  EXPECT_EQ(Tool({"average", first, second, "-o", Path("")}).code, kWrongUsage);
  EXPECT_EQ(LevelsOf(first), (std::vector<int>{10, 20}));
}

}  // namespace
}  // namespace lx::tool
