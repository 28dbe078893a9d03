// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "lxpic/lxpic.h"

namespace lx::test {
namespace {

// Converts one pixel over an old one.
template <class To, class From>
To Converted(From pixel, To old) {
  LxImage<From> source(1, 1);
  LxImage<To> destination(1, 1);
  *static_cast<From*>(source.GetPixelPtr(0, 0)) = pixel;
  *static_cast<To*>(destination.GetPixelPtr(0, 0)) = old;
  PicConvert(&source, &destination);
  EXPECT_EQ(LxGetError(), LX_OK);
  return *static_cast<To*>(destination.GetPixelPtr(0, 0));
}

TEST(Convert, WorkedExamples) {
  const LxC24 white{255, 255, 255};
  EXPECT_EQ(Converted(white, LxBW8(0)).value, 254);
  EXPECT_EQ(Converted(LxC24{3, 0, 0}, LxBW8(9)).value, 0);
  EXPECT_EQ(Converted(LxC24{1, 2, 1}, LxBW8(9)).value, 1);
  EXPECT_EQ(Converted(white, LxC16{0}).word, 0xFFFF);
  EXPECT_EQ(Converted(white, LxC15{0}).word, 0x7FFF);
  EXPECT_EQ(Converted(LxC24{0, 0, 0}, LxC15{0xFFFF}).word, 0x8000);
  EXPECT_EQ(Converted(LxC24{8, 0, 0}, LxC15{0}).word, 1);
  EXPECT_EQ(Converted(LxC24{0, 0, 8}, LxC16{0}).word, 1 << 11);
  EXPECT_EQ(Converted(LxC16{0xFFFF}, LxC24{}), (LxC24{248, 252, 248}));
  EXPECT_EQ(Converted(LxC16{0xFFFF}, LxBW8(0)).value, 249);
  EXPECT_EQ(Converted(LxC15{0xFFFF}, LxBW8(0)).value, 248);
  EXPECT_EQ(Converted(LxC24{1, 2, 3}, LxC24A{9, 9, 9, 44}), (LxC24A{1, 2, 3, 44}));
}

}  // namespace
}  // namespace lx::test
