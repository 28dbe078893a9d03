// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "convolution/chosen_case.h"
#include "support/filled.h"

namespace lx::test {
namespace {

// Every half-width and radius up to beyond the image, whose rows are fewer and more than the boxes'.
TEST(BoxesAndDisks, OfEverySize) {
  constexpr int kLargest = 45;
  for (const Operation& operation : catalogue::All()) {
    const bool isDisk = operation.function.ends_with("Disk");
    if (operation.family != "morphology" || !(isDisk || operation.function.ends_with("Box")))
      continue;
    Random random(operation.signature);
    for (int size = 0; size <= kLargest; ++size) {
      std::vector<double> numbers = {static_cast<double>(size)};
      if (!isDisk) numbers.push_back(static_cast<double>((size * 7 + 3) % kLargest));
      const Size image = {static_cast<int>(random.Between(1, 90)),
                          static_cast<int>(random.Between(1, 40))};
      const Onto onto = random.Below(2) == 0 ? Onto::kNone : Onto::kFirst;
      EXPECT_EQ(NumbersFailure(operation, numbers, image, Content::kNoise, onto), "");
    }
  }
}

int PixelsOfDisk(unsigned radius) {
  Filled<LxBW8> image(15, 15, 0);
  image.SetPixel(1, 7, 7);
  PicDilateDisk(&image, nullptr, radius);
  int count = 0;
  for (int i = 0; i < 15 * 15; ++i) count += image.GetPixel(i % 15, i / 15);
  return count;
}

TEST(BoxesAndDisks, KnownResults) {
  EXPECT_EQ(PixelsOfDisk(0), 1);
  EXPECT_EQ(PixelsOfDisk(1), 5);
  EXPECT_EQ(PixelsOfDisk(2), 21);
  EXPECT_EQ(PixelsOfDisk(3), 37);
  EXPECT_EQ(PixelsOfDisk(4), 69);

  Filled<LxBW8> dot(9, 9, 50);
  dot.SetPixel(200, 4, 4);
  PicWhiteTopHatBox(&dot, nullptr, 1);
  for (int i = 0; i < 81; ++i) EXPECT_EQ(dot.GetPixel(i % 9, i / 9), i == 40 ? 150 : 0) << i;
}

}  // namespace
}  // namespace lx::test
