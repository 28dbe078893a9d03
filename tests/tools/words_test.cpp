// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/common/words.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

namespace lx::tool {
namespace {

TEST(Words, NumbersFillTheWholeWord) {
  EXPECT_EQ(ReadNumber("-20"), -20);
  EXPECT_EQ(ReadNumber("1.5e3"), 1500);
  EXPECT_TRUE(std::isnan(ReadNumber("nan").value()));
  for (const char* word : {"", "1x", "x1", "1 ", "--1", "golden.png", "1,2"}) {
    EXPECT_FALSE(ReadNumber(word)) << word;
  }
  EXPECT_EQ(ReadNumbers("1,-2,0.5"), (std::vector<double>{1, -2, 0.5}));
  for (const char* word : {"", "1,", ",1", "1,,2", "1,a"}) EXPECT_FALSE(ReadNumbers(word)) << word;
}

TEST(Words, SizesHaveTwoPositiveSides) {
  const Size size = ReadSize("640x48").value();
  EXPECT_EQ(std::pair(size.width, size.height), std::pair(640, 48));
  for (const char* word :
       {"x", "640", "640x", "x48", "0x48", "-1x4", "640x48x2", "99999999999x1"}) {
    EXPECT_FALSE(ReadSize(word)) << word;
  }
}

TEST(Words, NumberTextIsShort) {
  EXPECT_EQ(NumberText(100000), "100000");
  EXPECT_EQ(NumberText(-1), "-1");
  EXPECT_EQ(NumberText(1.4), "1.4");
  EXPECT_EQ(NumberText(4294967295.0), "4294967295");
}

TEST(Words, NearestNameIsNearOrNone) {
  const std::vector<std::string> names = {"lut", "gain-offset", "oper", "copy", "overlay"};
  EXPECT_EQ(NearestName("gain-ofset", names), "gain-offset");
  EXPECT_EQ(NearestName("gainoffset", names), "gain-offset");
  EXPECT_EQ(NearestName("opre", names), "oper");
  EXPECT_EQ(NearestName("lutt", names), "lut");
  EXPECT_EQ(NearestName("sobel", names), "");
  EXPECT_EQ(Suggestion("coppy", names), "; did you mean 'copy'?");
  EXPECT_EQ(Suggestion("zzzzzz", names), "");
}

}  // namespace
}  // namespace lx::tool
