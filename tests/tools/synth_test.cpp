// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/scene/synth.h"

#include <algorithm>
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
  return {.scene = scene, .size = {600, 450}, .noise = 0, .light = 0};
}

TEST(Synth, DefectsAreWhereTheyAreSaidToBeAndNowhereElse) {
  for (const std::string& scene : {std::string("board"), std::string("label")}) {
    SynthOptions options = Clean(scene);
    const ImageValue golden = Synthesise(options).image;
    options.defects = 8;
    const SynthPicture part = Synthesise(options);
    ASSERT_EQ(part.defects.size(), 8U);
    // What is left over when every box is taken out.
    ImageValue rest = part.image;
    for (const Defect& box : part.defects) {
      int changed = 0;
      // Soft edges of a defect reach a little beyond its box.
      for (int y = std::max(box.y - 6, 0); y < std::min(box.y + box.height + 6, 450); ++y) {
        for (int x = std::max(box.x - 6, 0); x < std::min(box.x + box.width + 6, 600); ++x) {
          changed += std::abs(golden.Row(y)[x] - part.image.Row(y)[x]) > 40 ? 1 : 0;
          rest.Row(y)[x] = golden.Row(y)[x];
        }
      }
      EXPECT_GE(changed, 8) << scene << " " << box.kind;
    }
    EXPECT_TRUE(Same(rest, golden)) << scene;
  }
}

class SynthFiles : public ToolTest {};

TEST_F(SynthFiles, TheCommandWritesThePictureAndPrintsItsDefects) {
  const std::string out = Path("a.png");
  const Run run =
      Tool({"synth", "board", "-o", out, "--defects", "2", "--size", "400x300", "--color"});
  EXPECT_EQ(run.code, kFine) << run.err;
  EXPECT_TRUE(Contains(run.out, "scratch at ") && Contains(run.out, "missing print at "));
  EXPECT_TRUE(Contains(run.out, "mark at 63.33,33.33\n")) << run.out;
  EXPECT_EQ(ReadImage(out).TypeName() + ReadImage(out).SizeText(), "c24400x300");
  EXPECT_EQ(Tool({"synth", "board", "-o", out, "--size", "10x10"}).code, kWrongUsage);
  EXPECT_EQ(Tool({"synth", "label", "-o", out, "--size", "160x120", "--defects", "100"}).code,
            kWrongUsage);
}

}  // namespace
}  // namespace lx::tool
