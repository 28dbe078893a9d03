// SPDX-License-Identifier: Apache-2.0
// Rows that are so wide that the 3 × 3 filters work on them strip by strip.
#include <gtest/gtest.h>

#include <vector>

#include "convolution/chosen_case.h"

namespace lx::test {
namespace {

// A first-level cache holds the planes of about so many elements, or half as many where a filter
// keeps two values of each.
constexpr int kElements = 6144;

// Around one cut and two, and some other widths up to there.
std::vector<int> Widths(int elements, Random& random) {
  std::vector<int> widths;
  for (const int limit : {elements / 2, elements}) {
    for (const int beyond : {0, 1, 2, 33, 64}) widths.push_back(limit + beyond);
    widths.push_back(static_cast<int>(random.Between(limit / 2, 2 * limit)));
  }
  widths.push_back(elements * 2 + 1);
  return widths;
}

TEST(WideRows, EqualTheReference) {
  for (const Operation& operation : catalogue::All()) {
    const bool isFilter =
        operation.function.starts_with("PicConvol") && operation.parameters.size() == 2;
    if (!isFilter) continue;
    Random random(operation.signature);
    const PixelFormat format = FormatOf(operation.parameters[0].pixel);
    for (const int width : Widths(kElements / format.bytes / format.components, random)) {
      const Size size = {width, static_cast<int>(random.Between(1, 3))};
      const bool inPlace = operation.inPlace == catalogue::InPlace::kYes && random.Below(4) == 0;
      EXPECT_EQ(NumbersFailure(operation, {}, size, Content::kNoise,
                               inPlace ? Onto::kFirst : Onto::kNone),
                "");
    }
  }
}

}  // namespace
}  // namespace lx::test
