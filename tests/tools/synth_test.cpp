// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/scene/synth.h"

#include <cstdlib>
#include <cstring>

#include "tools/tool_fixture.h"

namespace lx::tool {
namespace {

bool Same(const ImageValue& a, const ImageValue& b) {
  for (int y = 0; y < a.Height(); ++y) {
    if (std::memcmp(a.Row(y), b.Row(y), a.RowBytes()) != 0) return false;
  }
  return true;
}

SynthOptions Clean(const std::string& scene) {
  SynthOptions options;
  options.scene = scene;
  options.size = {600, 450};
  options.noise = 0;
  options.light = 0;
  return options;
}

TEST(Synth, TheSameOptionsGiveTheSamePicture) {
  for (const std::string& scene : SceneNames()) {
    SynthOptions options;
    options.scene = scene;
    options.size = {320, 240};
    options.defects = 3;
    const SynthPicture first = Synthesise(options);
    EXPECT_TRUE(Same(first.image, Synthesise(options).image)) << scene;
    options.seed = 2;
    EXPECT_FALSE(Same(first.image, Synthesise(options).image)) << scene;
  }
}

TEST(Synth, DefectsAreWhereTheyAreSaidToBeAndNowhereElse) {
  for (const std::string& scene : SceneNames()) {
    SynthOptions options = Clean(scene);
    const ImageValue golden = Synthesise(options).image;
    options.defects = 8;
    const SynthPicture part = Synthesise(options);
    ASSERT_EQ(part.defects.size(), 8U);
    std::vector<int> changed(part.defects.size());
    for (int y = 0; y < golden.Height(); ++y) {
      for (int x = 0; x < golden.Width(); ++x) {
        const int change = std::abs(golden.Row(y)[x] - part.image.Row(y)[x]);
        bool inside = false;
        for (std::size_t i = 0; i < part.defects.size(); ++i) {
          const Defect& box = part.defects[i];
          // Soft edges of a defect reach a little beyond its box.
          const bool near = x >= box.x - 6 && x < box.x + box.width + 6 && y >= box.y - 6 &&
                            y < box.y + box.height + 6;
          inside = inside || near;
          if (near && change > 40) ++changed[i];
        }
        ASSERT_TRUE(inside || change == 0) << scene << " " << x << "," << y;
      }
    }
    for (std::size_t i = 0; i < changed.size(); ++i) {
      EXPECT_GE(changed[i], 8) << scene << " " << part.defects[i].kind;
    }
  }
}

// Noise of the asked deviation around the same picture, and light that falls off to a corner.
TEST(Synth, NoiseAndLightAreAsAsked) {
  SynthOptions options = Clean("label");
  const ImageValue clean = Synthesise(options).image;
  options.noise = 5;
  const ImageValue noisy = Synthesise(options).image;
  double sum = 0;
  double squares = 0;
  int count = 0;
  for (int y = 0; y < clean.Height(); ++y) {
    for (int x = 0; x < clean.Width(); ++x) {
      // Away from the ends of the range, where the noise is cut.
      if (clean.Row(y)[x] < 30 || clean.Row(y)[x] > 225) continue;
      const double difference = noisy.Row(y)[x] - clean.Row(y)[x];
      sum += difference;
      squares += difference * difference;
      ++count;
    }
  }
  ASSERT_GT(count, 10000);
  EXPECT_NEAR(sum / count, 0, 0.1);
  EXPECT_NEAR(squares / count, 25, 1.5);

  options = Clean("label");
  options.light = 50;
  const ImageValue dark = Synthesise(options).image;
  const int x = clean.Width() - 1;
  const int y = clean.Height() - 1;
  EXPECT_NEAR(dark.Row(y)[x], clean.Row(y)[x] / 2.0, 1);
}

class SynthFiles : public ToolTest {};

TEST_F(SynthFiles, TheCommandWritesThePictureAndPrintsItsDefects) {
  const std::string out = Path("a.png");
  const Run run =
      Tool({"synth", "board", "-o", out, "--defects", "2", "--size", "400x300", "--color"});
  EXPECT_EQ(run.code, kFine) << run.err;
  EXPECT_TRUE(Contains(run.out, "scratch at ") && Contains(run.out, "missing print at "));
  EXPECT_EQ(ReadImage(out).TypeName() + ReadImage(out).SizeText(), "c24400x300");
  EXPECT_EQ(Tool({"synth", "board", "-o", out, "--size", "10x10"}).code, kWrongUsage);
  EXPECT_EQ(Tool({"synth", "label", "-o", out, "--size", "160x120", "--defects", "100"}).code,
            kWrongUsage);
}

}  // namespace
}  // namespace lx::tool
