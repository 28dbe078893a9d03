// SPDX-License-Identifier: Apache-2.0
// The command line: outputs, many inputs, exit codes and messages.
#include "tools/tool_fixture.h"

namespace lx::tool {
namespace {

class Batch : public ToolTest {
 protected:
  Batch() : a(WriteGrey("a.png", 2, {1, 2})), b(WriteGrey("b.tif", 2, {3, 4})) {}

  // Code and message of a run that fails.
  static std::string Failing(const std::vector<std::string>& arguments) {
    const Run run = Tool(arguments);
    return std::to_string(run.code) + " " + run.err;
  }

  std::string a;
  std::string b;
};

TEST_F(Batch, ManyInputsGoToAFolder) {
  const std::string out = Path("new/out");
  EXPECT_EQ(Tool({a, b, "oper", "add", "10", "-o", out}).code, kFine);
  EXPECT_EQ(LevelsOf(out + "/a.png"), (std::vector<int>{11, 12}));
  EXPECT_EQ(LevelsOf(out + "/b.tif"), (std::vector<int>{13, 14}));
  EXPECT_EQ(Tool({a, "-o", Path("one/")}).code, kFine);
  EXPECT_EQ(LevelsOf(Path("one/a.png")), (std::vector<int>{1, 2}));
  const std::string bitmap = Write("c.pbm", "P4\n1 1\n\x80");
  EXPECT_EQ(Tool({bitmap, "-o", Path("one/")}).code, kFine);
  EXPECT_EQ(LevelsOf(Path("one/c.png")), (std::vector<int>{0}));
}

TEST_F(Batch, OneFailureDoesNotStopTheOthers) {
  const std::string bad = Write("bad.png", "no image");
  const std::string wide = WriteGrey("wide.png", 3, {1, 2, 3});
  const Run run = Tool({bad, wide, a, "oper", "subtract", a, "-o", Path("out/")});
  EXPECT_EQ(run.code, kFileFailed);
  EXPECT_EQ(run.err, "lxpic: " + bad +
                         ": not an image: PNG, TIFF, JPEG and PNM are read\nlxpic: " + wide +
                         ": oper: the sizes of the regions differ (1403); trace: PicOper ( BW8 "
                         "Image, Image to Image)\n");
  EXPECT_EQ(LevelsOf(Path("out/a.png")), (std::vector<int>{0, 0}));
  EXPECT_EQ(Tool({wide, a, "oper", "subtract", a, "-o", Path("out/")}).code, kOperationFailed);
}

TEST_F(Batch, InputsNeverCollideInTheFolder) {
  std::filesystem::create_directories(Path("sub"));
  const std::string twin = WriteGrey("sub/a.png", 2, {5, 6});
  EXPECT_EQ(Failing({a, twin, "copy", "-o", Path("out/")}),
            "2 lxpic: two inputs would be written to " + Path("out/a.png") + "\n");
  EXPECT_EQ(Failing({a, b, "copy", "-o", folder.string() + "/"}),
            "2 lxpic: " + a + " would be overwritten by its result\n");
  EXPECT_EQ(LevelsOf(a), (std::vector<int>{1, 2}));
  EXPECT_EQ(Failing({a, b, "copy", "-o", Path("out.png")}),
            "2 lxpic: several images need a folder to be written to: -o FOLDER/\n");
}

// The overlay colour that a chain sets holds for the rest of that chain only.
TEST_F(Batch, ImagesDoNotInfluenceEachOther) {
  ASSERT_EQ(Tool({a, WriteGrey("d.png", 2, {1, 2}), "oper", "overlay", "@", "set-overlay-color",
                  "1,2,3", "-o", Path("colours/")})
                .code,
            kFine);
  for (const char* const name : {"colours/a.png", "colours/d.png"}) {
    EXPECT_EQ(ReadImage(Path(name)).As<LxC24>().GetPixel(0, 0), (LxC24{0, 0, 255})) << name;
  }
}

TEST_F(Batch, WrongCommandLinesAreTold) {
  EXPECT_EQ(Failing({a, "gain-ofset", "1"}),
            "2 lxpic: 'gain-ofset' is neither a file nor an operation; did you mean "
            "'gain-offset'?\n");
  EXPECT_EQ(Failing({a, "oper", "invert"}), "2 lxpic: nothing is written: add -o FILE\n");
  EXPECT_EQ(Failing({a, "store"}), "2 lxpic: " + a + ": store: a name is missing\n");
  EXPECT_EQ(Failing({a, "oper", "add", "@no", "-o", Path("o.png")}),
            "2 lxpic: " + a + ": oper: nothing is kept as '@no'\n");
  EXPECT_EQ(
      Failing({"copy", "bw8", "7", "-o", Path("o.png")}),
      "2 lxpic: copy: there is no image yet: write the size behind the name, for instance 'copy "
      "640x480'\n");
  for (const std::vector<std::string>& wrong :
       {std::vector<std::string>{a, "-o", Path("o.xyz")},
        {a, "--nonsense"},
        {"help", "lutt"},
        {"copy", "bw8", "4x4", "7", "-o", folder.string() + "/"},
        {"demo", a, "-o", Path("d")},
        {"synth", "bord", "-o", Path("s.png")},
        {"synth", "board", "--noise", "nan", "-o", Path("s.png")}}) {
    EXPECT_EQ(Tool(wrong).code, kWrongUsage) << wrong.back();
  }
  EXPECT_EQ(Failing({Path("no.png"), "copy", "-o", Path("o.png")}),
            "3 lxpic: " + Path("no.png") + ": cannot be opened: No such file or directory\n");
}

TEST_F(Batch, HelpVersionAndInfoArePrinted) {
  EXPECT_EQ(Tool({"--version"}).out.substr(0, 6), "lxpic ");
  EXPECT_TRUE(Contains(Tool({}).out, "Exit codes"));
  EXPECT_TRUE(Contains(Tool({"help"}).out, "A chain is"));
  EXPECT_TRUE(Contains(Tool({"help", "oper"}).out, "PicOper ( BW8 Image to Image)"));
  EXPECT_EQ(Tool({"list", "set-over"}).out,
            "POINT\n  set-overlay-color\n    constant                  Sets the overlay colour of "
            "the calling "
            "thread\n");
  EXPECT_EQ(Tool({"info", b}).out, b + ": TIFF, 2x1, bw8\n  grey   3..4, mean 3.50\n");
}

TEST_F(Batch, TimesArePrintedForEachStep) {
  const Run run = Tool({a, "--time", "--repeat", "3", "oper", "invert", "gain-offset", "2", "0"});
  EXPECT_EQ(run.code, kFine);
  EXPECT_TRUE(Contains(run.err, a + ": oper invert: ")) << run.err;
  EXPECT_TRUE(Contains(run.err, a + ": gain-offset 2 0: ")) << run.err;
  EXPECT_TRUE(Contains(run.err, " ms (median of 3)\n")) << run.err;
}

}  // namespace
}  // namespace lx::tool
