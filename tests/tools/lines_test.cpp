// SPDX-License-Identifier: Apache-2.0
// What lies along a line of a picture, and the outlines of objects.
#include "tools/lxpic/file/input_file.h"
#include "tools/tool_fixture.h"

namespace lx::tool {
namespace {

class LineTool : public ToolTest {
 protected:
  // Two bright bars, the second brighter than the first, and a dark one.
  std::string Bars() const {
    return WriteGrey("bars.png", 12, {10, 10, 90, 90, 10, 10, 200, 200, 200, 10, 0, 10});
  }
  std::string Output(const std::vector<std::string>& words) const {
    const Run run = Tool(words);
    EXPECT_EQ(run.code, kFine) << run.err;
    return run.out;
  }
};

TEST_F(LineTool, ProfilesArePrintedAndDrawn) {
  const std::string in = Bars();
  EXPECT_EQ(Output({"profile", in, "1,0", "4,0"}), "profile 10,90,90,10\n");
  EXPECT_EQ(Output({"profile", in, "4,0", "1,0", "--smooth", "1"}), "profile 30,70,70,30\n");
  for (const char* const name : {"view.png", "view.svg"}) {
    Output({"profile", in, "0,0", "11,0", "--plot", Path(name)});
    EXPECT_GT(std::filesystem::file_size(Path(name)), 1000U);
  }
  EXPECT_EQ(Tool({"profile", in, "0,0", "12,0"}).code, kOperationFailed);
  EXPECT_EQ(Tool({"profile", in, "0,0", "1.5,0"}).code, kWrongUsage);
  EXPECT_EQ(Tool({"profile", in, "0,0", "3,0", "--plot", in}).code, kWrongUsage);
  EXPECT_EQ(Tool({"profile", in, "0,0", "3,0", "--plot", Path("view.gif")}).code, kWrongUsage);
}

TEST_F(LineTool, PeaksAndTransitionsAreRows) {
  const std::string in = Bars();
  EXPECT_EQ(Output({"peaks", in, "0,0", "11,0", "--low", "5", "--high", "50", "--format", "csv"}),
            "file,start,length,centre,amplitude,area\n" + in + ",2,2,2.5,40,80\n" + in +
                ",6,3,7,150,450\n" + in + ",10,1,10,-5,-5\n");
  EXPECT_EQ(Output({"transitions", in, "0,0", "11,0", "--threshold", "100", "--format", "csv"}),
            "file,x,y,edge\n" + in + ",6,0,1\n" + in + ",9,0,2\n");
  EXPECT_EQ(Output({"transitions", in, "11,0", "0,0", "--threshold", "50", "--edge", "rising",
                    "--maximum", "1", "--format", "csv", "--plot", Path("edges.svg")}),
            "file,x,y,edge\n" + in + ",8,0,1\n");
  EXPECT_TRUE(std::filesystem::exists(Path("edges.svg")));
  EXPECT_EQ(Tool({"transitions", in, "0,0", "3,0", "--threshold", "9", "--edge", "up"}).code,
            kWrongUsage);
}

// A ring, a dot that touches its corner, and a dot alone.
constexpr int kSide = 9;
const std::vector<int> kObjects = {0, 0,   0,   0,   0,   0,   0, 0, 0,    //
                                   0, 200, 200, 200, 200, 0,   0, 0, 0,    //
                                   0, 200, 0,   0,   200, 0,   0, 0, 0,    //
                                   0, 200, 200, 200, 200, 0,   0, 0, 130,  //
                                   0, 0,   0,   0,   0,   200, 0, 0, 0};

TEST_F(LineTool, ObjectsAreOutlinedAndMeasured) {
  const std::string in = WriteGrey("objects.png", kSide, kObjects);
  EXPECT_EQ(Output({"contour", in, "--format", "csv", "-o", Path("outlines.csv")}),
            "file,x,y,width,height,area,centre-x,centre-y,outline\n" + in +
                ",1,1,5,4,11,2.7272727,2.1818182,12\n" + in + ",8,3,1,1,1,8,3,1\n");
  const std::string points = ReadText(Path("outlines.csv"), 10000);
  EXPECT_TRUE(points.starts_with("object,x,y\n0,1,1\n0,2,1\n0,3,1\n0,4,1\n0,4,2\n0,4,3\n0,5,4\n"));
  EXPECT_TRUE(points.ends_with("\n1,8,3\n"));
  Output({"contour", in, "--min-area", "2", "-o", Path("outlines.svg")});
  const std::string svg = ReadText(Path("outlines.svg"), 10000);
  EXPECT_TRUE(Contains(svg, "viewBox=\"0 0 9 5\""));
  EXPECT_TRUE(Contains(svg, "<path d=\"M1 1L2 1L3 1L4 1L4 2L4 3L5 4"));
  EXPECT_FALSE(Contains(svg, "M8 3"));

  Output({"contour", in, "--threshold", "0", "--below", "--min-area", "5", "--on", in, "-o",
          Path("drawn.png")});
  const ImageValue drawn = ReadImage(Path("drawn.png"));
  ASSERT_EQ(drawn.PixelType(), Pixel::kC24);
  // The background is outlined, the hole is too small, and objects stay as they are.
  EXPECT_EQ(drawn.As<LxC24>().GetPixel(0, 0), (LxC24{0, 0, 255}));
  EXPECT_EQ(drawn.As<LxC24>().GetPixel(2, 2), (LxC24{0, 0, 0}));
  EXPECT_EQ(drawn.As<LxC24>().GetPixel(1, 1), (LxC24{200, 200, 200}));
  EXPECT_EQ(Tool({"contour", in, "-o", in}).code, kWrongUsage);
}

}  // namespace
}  // namespace lx::tool
