// SPDX-License-Identifier: Apache-2.0
// Which overload a step means, and what is said when it means none.
#include "tools/lxpic/chain/overloads.h"

#include "tools/tool_fixture.h"

namespace lx::tool {
namespace {

class Overloads : public ToolTest {
 protected:
  // The signature that is chosen for a step on an image of type `current`.
  static std::string Chosen(Pixel current, const std::vector<std::string>& words) {
    const StepContext context = ContextOf(
        current == Pixel::kNone ? ImageValue() : ImageValue(current, 2, 2),
        [](const std::string& word) {
          for (const Pixel pixel : {Pixel::kBW8, Pixel::kBW16, Pixel::kC24, Pixel::kC16}) {
            if (word.substr(1) == catalogue::PixelName(pixel)) return ImageValue(pixel, 2, 2);
          }
          throw Failure(kFileFailed, word + ": no such file");
        });
    try {
      const Call call = ChooseOverload(words[0], std::span(words).subspan(1), context);
      return call.operation->signature.substr(call.operation->signature.find('('));
    } catch (const Failure& failure) {
      return failure.what();
    }
  }
};

#define ROI(type) "LxROI<Lx" type ">*"
constexpr const char* kOperation = "(ARITH_LOGIC_OPERATIONS, ";

TEST_F(Overloads, TheCurrentTypeChooses) {
  EXPECT_EQ(Chosen(Pixel::kBW8, {"gain-offset", "1", "2"}),
            "(" ROI("BW8") ", " ROI("BW8") ", float, float)");
  EXPECT_EQ(Chosen(Pixel::kBW16, {"gain-offset", "1", "2"}),
            "(" ROI("BW16") ", " ROI("BW16") ", float, float)");
  EXPECT_EQ(Chosen(Pixel::kC24, {"gain-offset", "1,2,3", "0"}),
            "(" ROI("C24") ", " ROI("C24") ", LxColor, LxColor)");
  EXPECT_EQ(Chosen(Pixel::kC15, {"copy"}), "(" ROI("C15") ", " ROI("C15") ")");
}

TEST_F(Overloads, TheResultKeepsTheTypeUnlessAnotherIsNamed) {
  const std::string two = ROI("BW8") ", " ROI("BW8") ", ";
  EXPECT_EQ(Chosen(Pixel::kBW8, {"oper", "add", "@bw8"}), kOperation + two + ROI("BW8") ")");
  EXPECT_EQ(Chosen(Pixel::kBW8, {"oper", "bw16", "add", "@bw8"}),
            kOperation + two + ROI("BW16") ")");
  EXPECT_EQ(Chosen(Pixel::kBW8, {"oper", "copy"}),
            std::string(kOperation) + ROI("BW8") ", " ROI("BW8") ")");
  EXPECT_EQ(Chosen(Pixel::kBW8, {"oper", "onto", "@c24", "overlay"}),
            std::string(kOperation) + ROI("BW8") ", " ROI("C24") ")");
  EXPECT_EQ(Chosen(Pixel::kC24, {"overlay", "onto", "@c16", "1", "-2", "0,0,0"}),
            "(" ROI("C24") ", " ROI("C16") ", int, int, LxC24)");
  EXPECT_EQ(Chosen(Pixel::kBW16, {"convert", "8"}),
            "the result may be bw8, bw32: write the type behind the name, for instance 'convert "
            "bw8'");
  EXPECT_EQ(Chosen(Pixel::kC16, {"convert", "bw8"}), "(" ROI("C16") ", " ROI("BW8") ")");
}

TEST_F(Overloads, OperandsChoose) {
  EXPECT_EQ(Chosen(Pixel::kC24, {"oper", "overlay", "@bw8"}),
            std::string(kOperation) + ROI("C24") ", " ROI("BW8") ", " ROI("C24") ")");
  EXPECT_EQ(Chosen(Pixel::kBW8, {"oper", "overlay", "@c24", "_"}),
            std::string(kOperation) + ROI("C24") ", " ROI("BW8") ", " ROI("C24") ")");
  EXPECT_EQ(Chosen(Pixel::kBW8, {"oper", "overlay", "@c24"}),
            std::string(kOperation) + ROI("BW8") ", " ROI("C24") ", " ROI("C24") ")");
  EXPECT_EQ(Chosen(Pixel::kBW8, {"oper", "add", "3"}),
            std::string(kOperation) + ROI("BW8") ", LxBW8, " ROI("BW8") ")");
  EXPECT_EQ(Chosen(Pixel::kBW8, {"oper", "add", "3", "_"}),
            std::string(kOperation) + "LxBW8, " ROI("BW8") ", " ROI("BW8") ")");
  // A constant alone fills; the current image only gives type and size.
  EXPECT_EQ(Chosen(Pixel::kBW16, {"copy", "300"}), "(LxBW16, " ROI("BW16") ")");
}

TEST_F(Overloads, AStepEndsWhereTheNextBegins) {
  // "copy" and "overlay" are choices and operations.
  EXPECT_EQ(Chosen(Pixel::kBW8, {"oper", "copy", "copy"}),
            std::string(kOperation) + ROI("BW8") ", " ROI("BW8") ")");
  EXPECT_EQ(Chosen(Pixel::kBW8, {"convol-uniform", "2", "copy"}),
            "(" ROI("BW8") ", " ROI("BW8") ", unsigned int, unsigned int)");
  EXPECT_EQ(Chosen(Pixel::kBW8, {"oper", "invert", "oper", "subtract", "3", "_"}),
            std::string(kOperation) + ROI("BW8") ", " ROI("BW8") ")");
  EXPECT_EQ(Chosen(Pixel::kBW8, {"oper", "add", "store", "a"}), "constant is missing");
}

TEST_F(Overloads, TheReasonThatGotFurthestIsTold) {
  EXPECT_EQ(Chosen(Pixel::kBW8, {"oper", "substract", "3"}),
            "operation: 'substract' is no choice; did you mean 'subtract'?");
  EXPECT_EQ(Chosen(Pixel::kBW8, {"oper", "subtract", "golden.png"}), "golden.png: no such file");
  EXPECT_EQ(Chosen(Pixel::kBW8, {"oper", "subtract", "@bw16"}), "source2: @bw16 is bw16, not bw8");
  EXPECT_EQ(Chosen(Pixel::kBW8, {"oper", "subtract", "300"}),
            "constant: 300 is not a whole number of 0..255");
  EXPECT_EQ(Chosen(Pixel::kBW8, {"gain-offset", "1", "x"}), "offset: 'x' is not a number");
  EXPECT_EQ(Chosen(Pixel::kBW8, {"gain-offset", "1", "2", "3"}), "'3' is one word too many");
  EXPECT_EQ(Chosen(Pixel::kBW8, {"copy", "coppy"}), "value: 'coppy' is not a number");
  EXPECT_EQ(Chosen(Pixel::kBW32, {"gain-offset", "1", "2"}),
            "takes bw8, c24, bw16 images, and this one is bw32");
  EXPECT_EQ(Chosen(Pixel::kBW16, {"lut", "bw8", "identity", "-1"}),
            "shift: -1 is not a whole number of 0..4294967295");
}

}  // namespace
}  // namespace lx::tool
