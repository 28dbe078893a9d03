// SPDX-License-Identifier: Apache-2.0
#include "lxpic/colour/component.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "support/outcome_text.h"

namespace lx::test {
namespace {

TEST(ComponentArguments, AreCheckedInOrder) {
  LxImage<LxC24> colour(4, 4);
  LxImage<LxBW8> grey(4, 4);
  LxImage<LxBW8> wide(5, 4);
  LxImage<LxC24> noColour;
  struct Row {
    LxROI<LxC24>* colour;
    LxROI<LxBW8>* plane;
    unsigned index;
    std::string error;
  };
  for (const Row& row : {Row{&noColour, &wide, 3, "1400"}, Row{&colour, nullptr, 3, "1400"},
                         Row{&colour, &wide, 3, "1403"}, Row{&colour, &grey, 3, "1013"}}) {
    TintGetComponent(row.colour, row.plane, row.index, nullptr);
    EXPECT_EQ(TakeOutcome(), row.error + " TintGetComponent");
    TintSetComponent(row.plane, row.colour, row.index);
    EXPECT_EQ(TakeOutcome(), row.error + " TintSetComponent");
  }
}

struct Throwing : LxColorLookup {
  void Transform(LxC24 /*colour*/, LxC24& /*result*/) override { throw std::runtime_error("no"); }
};

TEST(ColorLookup, MayThrow) {
  LxImage<LxC24> colour(4, 4);
  LxImage<LxBW8> grey(4, 4);
  Throwing lookup;
  TintGetComponent(&colour, &grey, 0, &lookup);
  EXPECT_EQ(TakeOutcome(), "32767 TintGetComponent");
}

TEST(ColorLookup, IsTheIdentityUnlessOverridden) {
  LxColorLookup identity;
  LxC24 result{};
  identity.Transform({1, 2, 3}, result);
  EXPECT_EQ(result, (LxC24{1, 2, 3}));
}

}  // namespace
}  // namespace lx::test
