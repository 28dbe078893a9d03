// SPDX-License-Identifier: Apache-2.0
// What chains leave besides images: kept under names, printed, written as tables and drawn.

#include <cmath>
#include <map>

#include "tools/lxpic/report/plot.h"
#include "tools/lxpic/report/table.h"
#include "tools/tool_fixture.h"

namespace lx::tool {
namespace {

Numbers Number(double value) { return {false, Numbers::Drawing::kNone, {""}, {value}}; }

Numbers Profile(std::vector<double> values) {
  return {true, Numbers::Drawing::kLine, {""}, std::move(values)};
}

TEST(Table, OneFileIsListedAndManyMakeATable) {
  const TableRow one{"a.png", {{"threshold", Number(128)}, {"mean", Number(101.43327F)}}};
  EXPECT_EQ(TableText({one}, TableFormat::kText), "threshold 128\nmean 101.433\n");
  const TableRow two{"longer.png", {{"threshold", Number(7)}}};
  EXPECT_EQ(TableText({one, two}, TableFormat::kText),
            "file        threshold  mean\n"
            "a.png       128        101.433\n"
            "longer.png  7\n");
  // Single precision is written with its own digits, double precision with all of them.
  const TableRow exact{"x,\"y\"", {{"single", Number(0.1F)}, {"double", Number(0.1)}}};
  EXPECT_EQ(TableText({exact}, TableFormat::kCsv), "file,single,double\n\"x,\"\"y\"\"\",0.1,0.1\n");
  const TableRow precise{"", {{"single", Number(1.0F / 3)}, {"double", Number(1.0 / 3)}}};
  EXPECT_EQ(TableText({precise}, TableFormat::kCsv),
            "single,double\n0.33333334,0.3333333333333333\n");
  EXPECT_EQ(TableText({TableRow{"a.png", {}}}, TableFormat::kJson), "");
}

TEST(Table, VectorsAreShortInTextAndWholeElsewhere) {
  std::vector<double> values(256);
  for (std::size_t i = 0; i < values.size(); ++i) values[i] = static_cast<double>(i) / 2;
  const TableRow row{"", {{"n", Number(3)}, {"histogram", Profile(values)}}};
  EXPECT_EQ(TableText({row}, TableFormat::kText),
            "n 3\nhistogram 0,0.5,1,1.5,...,126,126.5,127,127.5 (256)\n");
  const std::string csv = TableText({row}, TableFormat::kCsv);
  EXPECT_TRUE(csv.starts_with("index,n,histogram\n0,3,0\n1,3,0.5\n")) << csv;
  EXPECT_TRUE(csv.ends_with("255,3,127.5\n")) << csv;

  const Numbers path{true, Numbers::Drawing::kPath, {"x", "y"}, {1, 2, 3, -4}};
  const TableRow both{"b\n", {{"path", path}, {"none", Number(NAN)}, {"p", Profile({5})}}};
  EXPECT_EQ(TableText({both}, TableFormat::kText), "path 1,2 3,-4\nnone nan\np 5\n");
  EXPECT_EQ(TableText({both}, TableFormat::kCsv),
            "file,index,path.x,path.y,none,p\n\"b\n\",0,1,2,nan,5\n\"b\n\",1,3,-4,nan,\n");
  EXPECT_TRUE(TableText({both, row}, TableFormat::kJson)
                  .starts_with("[\n  {\"file\": \"b\\u000a\", \"path\": [{\"x\": 1, \"y\": 2}, "
                               "{\"x\": 3, \"y\": -4}], \"none\": null, \"p\": [5]},\n"));
}

class Values : public ToolTest {
 protected:
  Values() : a(WriteGrey("a.png", 2, {1, 2})), b(WriteGrey("b.png", 2, {3, 4})) {}

  // Runs `chain` with `options` behind it.
  static Run With(std::vector<std::string> chain, const std::vector<std::string>& options) {
    chain.insert(chain.end(), options.begin(), options.end());
    return Tool(chain);
  }

  std::string a;
  std::string b;
};

TEST_F(Values, AreKeptUnderTheirNamesAndTakenByLaterSteps) {
  // 1,2 becomes 11,12, then 22,24.
  const std::vector<std::string> twice = {"vect1c2", "add",      "1,2",          "10",
                                          "vect1c2", "multiply", "@destination", "2"};
  EXPECT_EQ(Tool(twice).out, "destination 22,24\n");
  EXPECT_EQ(
      Tool({"vect1c2", "add", "1,2", "10", "store", "sum", "vect1c2", "multiply", "@sum", "2"}).out,
      "sum 11,12\ndestination 22,24\n");
  const Run wrong = Tool({a, "vect1c2", "add", "1,2", "3", "oper", "add", "@destination"});
  EXPECT_EQ(wrong.code, kWrongUsage);
  EXPECT_TRUE(Contains(wrong.err, "oper: ")) << wrong.err;
  EXPECT_TRUE(Contains(Tool({a, "vect1c2", "add", "@destinatoin", "3"}).err,
                       "nothing is kept as '@destinatoin'"));
  EXPECT_TRUE(
      Contains(Tool({a, "store", "x", "vect1c2", "add", "@x", "3"}).err, "'@x' is an image"));
}

TEST_F(Values, OfHistogramsBecomeThresholdsAndTables) {
  const std::string part = WriteGrey("part.png", 4, {10, 10, 12, 12, 200, 200, 202, 202});
  const std::vector<int> white = {0, 0, 0, 0, 255, 255, 255, 255};
  const Run run = Tool({part, "histogram", "histogram-threshold", "@histogram", "isodata", "oper",
                        "greater-or-equal", "@threshold", "-o", Path("out.png")});
  EXPECT_EQ(run.code, kFine) << run.err;
  EXPECT_TRUE(run.out.starts_with("histogram 0,0,0,0,...,0,0,0,0 (256)\nthreshold 106\n"))
      << run.out;
  EXPECT_TRUE(run.out.ends_with("average-below 11\naverage-above 201\n")) << run.out;
  EXPECT_EQ(LevelsOf(Path("out.png")), white);
  // A returned value, a number that was left out, a form of another class.
  EXPECT_EQ(Tool({part, "histogram", "untyped", "store", "h", "isodata-threshold", "@h", "0", "255",
                  "store", "t"})
                .out,
            "h 0,0,0,0,...,0,0,0,0 (256)\nt 106\n");
  // The counts of one image as the table of another step: 2 where there are two.
  ASSERT_EQ(Tool({part, "histogram", "lut", "@histogram", "-o", Path("out.png")}).code, kFine);
  EXPECT_EQ(LevelsOf(Path("out.png")), (std::vector<int>(8, 2)));
  EXPECT_TRUE(Contains(Tool({part, "histogram", "oper", "add", "@histogram"}).err, "oper: "));
}

TEST_F(Values, GoWhereTheOptionsSay) {
  const auto run = [&](const std::vector<std::string>& options) {
    return With({a, b, "vect1c2", "add", "u8:1,2", "3"}, options);
  };
  EXPECT_TRUE(run({}).out.starts_with("file")) << run({}).out;
  EXPECT_TRUE(Contains(run({}).out, a + "  4,5\n"));
  EXPECT_EQ(run({"--format", "csv"}).out,
            "file,index,destination\n" + a + ",0,4\n" + a + ",1,5\n" + b + ",0,4\n" + b + ",1,5\n");
  EXPECT_EQ(run({"--values", Path("v.json")}).out, "");
  const std::string written = Content(Path("v.json"));
  EXPECT_TRUE(Contains(written, a + "\", \"destination\": [4, 5]},\n")) << written;
  EXPECT_TRUE(Contains(written, b + "\", \"destination\": [4, 5]}\n]\n")) << written;
  EXPECT_EQ(run({"--format", "xml"}).code, kWrongUsage);
  EXPECT_EQ(run({"--values", Path("no/v.csv")}).code, kFileFailed);
}

TEST_F(Values, VectorsAreDrawn) {
  const auto run = [&](const std::vector<std::string>& options) {
    return With({a, "vect1c2", "add", "u8:1,200,7", "3"}, options);
  };
  EXPECT_EQ(run({"-o", Path("p.svg")}).code, kFine);
  EXPECT_TRUE(Contains(Content(Path("p.svg")), "<svg"));
  EXPECT_EQ(run({"-o", Path("p.png")}).code, kFine);
  EXPECT_GT(ReadImage(Path("p.png")).Width(), 100);
  // The image stays the image where the drawing has a file of its own, or where a step follows.
  EXPECT_EQ(run({"-o", Path("i.png"), "--plot", Path("q.svg")}).code, kFine);
  EXPECT_EQ(LevelsOf(Path("i.png")), (std::vector<int>{1, 2}));
  EXPECT_TRUE(std::filesystem::exists(Path("q.svg")));
  EXPECT_EQ(run({"oper", "invert", "-o", Path("i.png"), "--plot", Path("plots/")}).code, kFine);
  EXPECT_EQ(LevelsOf(Path("i.png")), (std::vector<int>{254, 253}));
  EXPECT_GT(ReadImage(Path("plots/a.png")).Width(), 100);
  const std::string tiff = WriteGrey("a.tif", 2, {5, 6});
  ASSERT_EQ(Tool({tiff, "histogram", "-o", Path("plots/")}).code, kFine);
  EXPECT_GT(ReadImage(Path("plots/a.tif.png")).Width(), 100);
  EXPECT_EQ(Tool({a, "oper", "invert", "--plot", Path("n.png")}).code, kWrongUsage);
  EXPECT_EQ(run({"-o", Path("s.png"), "--plot", Path("s.png")}).code, kWrongUsage);
}

// The rows where each column of a drawing has the blue of bars and lines.
std::map<int, std::vector<int>> InkOf(const ImageValue& image) {
  std::map<int, std::vector<int>> ink;
  for (int i = 0; i < image.Width() * image.Height(); ++i) {
    const int x = i % image.Width();
    const LxC24 pixel = image.As<LxC24>().GetPixel(x, i / image.Width());
    if (pixel.c0 > pixel.c2 + 80) ink[x].push_back(i / image.Width());
  }
  return ink;
}

int InkIn(const auto& column) { return static_cast<int>(column->second.size()); }

TEST_F(Values, DrawingsShowWhatTheyShould) {
  const auto drawn = [&](Numbers::Drawing drawing, std::vector<std::string> parts,
                         std::vector<double> values) {
    WritePlot(Path("p.png"), {"name", {true, drawing, std::move(parts), std::move(values)}});
    return InkOf(ReadImage(Path("p.png")));
  };
  // Bars of 1 and 4 counts.
  const auto bars = drawn(Numbers::Drawing::kBars, {""}, {1, 4});
  ASSERT_GT(bars.size(), 300U);
  EXPECT_NEAR(InkIn(bars.rbegin()), 4 * InkIn(bars.begin()), 4);

  // A closed square of 10 x 10 pixels keeps its shape, and its left side is drawn.
  const auto square =
      drawn(Numbers::Drawing::kClosedPath, {"x", "y"}, {20, 30, 29, 30, 29, 39, 20, 39});
  ASSERT_FALSE(square.empty());
  const int width = square.rbegin()->first - square.begin()->first;
  const auto& middle = std::next(square.begin(), width / 2)->second;
  EXPECT_NEAR(width, middle.back() - middle.front(), 2);
  EXPECT_GT(InkIn(square.begin()) + InkIn(std::next(square.begin())), width);

  // Nothing, one element, and what is no number can be drawn too.
  for (const auto& values : {std::vector<double>{}, {5}, {NAN, INFINITY}, {1e300, -1e300}}) {
    EXPECT_NO_THROW(drawn(Numbers::Drawing::kLine, {""}, values));
  }
  EXPECT_NO_THROW(drawn(Numbers::Drawing::kPath, {"x", "y"}, {}));
  for (const char* const name : {"no/such/p.png", "no/such/p.svg"}) {
    EXPECT_THROW(WritePlot(Path(name), {"profile", Profile({1})}), Failure);
  }
}

TEST_F(Values, JobsChangeNothingThatIsSeen) {
  const auto name = [](int i) { return std::to_string(i) + ".png"; };
  std::vector<std::string> inputs;
  for (int i = 0; i < 12; ++i) {
    inputs.push_back(i == 5 ? Write(name(i), "no image") : WriteGrey(name(i), 2, {i, 2 * i}));
  }
  const auto run = [&](const std::string& jobs) {
    return With(inputs, {"lut", "invert", "transform", "invert", "store", "x", "vect1c2", "add",
                         "1,2", "3", "oper", "add", "@", "--jobs", jobs, "-o", Path(jobs + "/")});
  };
  const Run one = run("1");
  const Run four = run("4");
  EXPECT_EQ(one.code, kFileFailed);
  EXPECT_EQ(four.code, one.code);
  EXPECT_EQ(four.out, one.out);
  EXPECT_EQ(four.err, one.err);
  for (int i = 0; i < 12; ++i) {
    if (i == 5) continue;
    EXPECT_EQ(LevelsOf(Path("4/" + name(i))), (std::vector<int>{2 * i, 4 * i})) << i;
  }
}

}  // namespace
}  // namespace lx::tool
