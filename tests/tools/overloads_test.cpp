// SPDX-License-Identifier: Apache-2.0
// Which overload a step means, and what is said when it means none.
#include "tools/lxpic/chain/overloads.h"

#include <regex>

#include "tools/tool_fixture.h"

namespace lx::tool {
namespace {

ImageValue ImageOfName(const std::string& word) {
  for (const Pixel pixel : {Pixel::kBW8, Pixel::kBW16, Pixel::kC24, Pixel::kC16}) {
    if (word.substr(1) == catalogue::PixelName(pixel)) return ImageValue(pixel, 2, 2);
  }
  throw Failure(kFileFailed, word + ": no such file");
}

// The parameters of the overload that is chosen for a step on an image of type `current`, regions
// by their pixels only: "(BW8, BW8, float, float)"; or why there is none.
std::string Chosen(Pixel current, const std::string& step) {
  static const std::regex kBlanks(" ");
  static const std::regex kRegion("LxROI<Lx(\\w+)>\\*");
  const std::vector<std::string> words(
      std::sregex_token_iterator(step.begin(), step.end(), kBlanks, -1), {});
  const ImageValue image(current, 2, 2);
  try {
    const Call call =
        ChooseOverload(words[0], std::span(words).subspan(1), ContextOf(image, ImageOfName));
    const std::string& signature = call.operation->signature;
    return std::regex_replace(signature.substr(signature.find('(')), kRegion, "$1");
  } catch (const Failure& failure) {
    return failure.what();
  }
}

struct Row {
  Pixel current;
  const char* step;
  std::string chosen;
};

void ExpectChosen(std::initializer_list<Row> rows) {
  for (const Row& row : rows) EXPECT_EQ(Chosen(row.current, row.step), row.chosen) << row.step;
}

const std::string kOper = "(ARITH_LOGIC_OPERATIONS, ";

TEST(Overloads, TheResultKeepsTheTypeUnlessAnotherIsNamed) {
  ExpectChosen({{Pixel::kBW8, "oper add @bw8", kOper + "BW8, BW8, BW8)"},
                {Pixel::kBW8, "oper bw16 add @bw8", kOper + "BW8, BW8, BW16)"},
                {Pixel::kBW8, "oper copy", kOper + "BW8, BW8)"},
                {Pixel::kBW8, "oper onto @c24 overlay", kOper + "BW8, C24)"},
                {Pixel::kC24, "overlay onto @c16 1 -2 0,0,0", "(C24, C16, int, int, LxC24)"},
                {Pixel::kBW16, "convert 8",
                 "the result may be bw8, bw32: write the type behind the name, for instance "
                 "'convert bw8'"},
                {Pixel::kC16, "convert bw8", "(C16, BW8)"}});
}

TEST(Overloads, OperandsChoose) {
  ExpectChosen({{Pixel::kC24, "oper overlay @bw8", kOper + "C24, BW8, C24)"},
                {Pixel::kBW8, "oper overlay @c24 _", kOper + "C24, BW8, C24)"},
                {Pixel::kBW8, "oper overlay @c24", kOper + "BW8, C24, C24)"},
                {Pixel::kBW8, "oper add 3", kOper + "BW8, LxBW8, BW8)"},
                {Pixel::kBW8, "oper add 3 _", kOper + "LxBW8, BW8, BW8)"},
                // A constant alone fills; the current image only gives type and size.
                {Pixel::kBW16, "copy 300", "(LxBW16, BW16)"}});
}

TEST(Overloads, AStepEndsWhereTheNextBegins) {
  // "copy" and "overlay" are choices and operations.
  ExpectChosen({{Pixel::kBW8, "oper copy copy", kOper + "BW8, BW8)"},
                {Pixel::kBW8, "convol-uniform 2 copy", "(BW8, BW8, unsigned int, unsigned int)"},
                {Pixel::kBW8, "oper invert oper subtract 3 _", kOper + "BW8, BW8)"},
                {Pixel::kBW8, "oper add store a", "constant is missing"}});
}

TEST(Overloads, TheReasonThatGotFurthestIsTold) {
  ExpectChosen(
      {{Pixel::kBW8, "oper substract 3",
        "operation: 'substract' is no choice; did you mean 'subtract'?"},
       {Pixel::kBW8, "oper subtract golden.png", "golden.png: no such file"},
       {Pixel::kBW8, "oper subtract @bw16", "source2: @bw16 is bw16, not bw8"},
       {Pixel::kBW8, "oper subtract 300", "constant: 300 is not a whole number of 0..255"},
       {Pixel::kBW8, "gain-offset 1 x", "offset: 'x' is not a number"},
       {Pixel::kBW8, "gain-offset nan 1", "gain: 'nan' is not a number"},
       {Pixel::kBW8, "gain-offset 1 -inf", "offset: '-inf' is not a number"},
       {Pixel::kBW8, "gain-offset 1e39 1", "gain: '1e39' is not a number"},
       {Pixel::kBW8, "gain-offset 1 2 3", "'3' is one word too many"},
       {Pixel::kBW8, "copy coppy", "value: 'coppy' is not a number"},
       {Pixel::kBW32, "gain-offset 1 2", "takes bw8, c24, bw16 images, and this one is bw32"},
       {Pixel::kBW16, "lut bw8 identity -1", "shift: -1 is not a whole number of 0..4294967295"}});
}

}  // namespace
}  // namespace lx::tool
