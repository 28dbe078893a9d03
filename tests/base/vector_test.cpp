// SPDX-License-Identifier: Apache-2.0
#include "lxpic/base/vector.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <climits>
#include <string>

#include "support/allocation_failure.h"
#include "support/outcome_text.h"

namespace {

using lx::test::TakeOutcome;

/// Width code, type code, groups in use, groups allocated, group length, kind, use.
using Layout = std::array<int, 7>;

Layout Shape(const LxVector& vector) {
  return {vector.GetDataSize(),   vector.GetDataType(),    vector.GetNbGroup(),
          vector.GetNbMaxGroup(), vector.GetGroupLength(), vector.GetVectType(),
          vector.GetUse()};
}

bool AllZero(const LxVector& vector) {
  const auto* const bytes = static_cast<const unsigned char*>(vector.GetDataPtr());
  return std::all_of(bytes, bytes + vector.GetAllocatedSize(), [](int byte) { return byte == 0; });
}

class Vector : public testing::Test {
 protected:
  Vector() { LxOk(); }

  /// That `change` gives `outcome` and nothing else.
  template <class Change>
  void ExpectRefused(Change change, const std::string& outcome) {
    const Layout shape = Shape(vector);
    const void* const data = vector.GetDataPtr();
    change();
    EXPECT_EQ(TakeOutcome(), outcome);
    EXPECT_EQ(Shape(vector), shape);
    EXPECT_EQ(vector.GetDataPtr(), data);
  }

  LxVector vector;
};

TEST_F(Vector, StartsWithoutALayout) {
  EXPECT_EQ(Shape(vector), (Layout{}));
  EXPECT_EQ(vector.GetDataPtr(), nullptr);
  EXPECT_EQ(vector.GetAllocatedSize(), 0U);
  vector.Reallocate(100);
  EXPECT_EQ(TakeOutcome(), "1601 LxVector::Reallocate");
  vector.SetNbGroup(1);
  EXPECT_EQ(TakeOutcome(), "1011 LxVector::SetNbGroup");
}

TEST_F(Vector, IsLaidOutByHand) {
  vector.SetType(LX_VECTOR_SEGMENT, 1, 3);
  vector.SetUse(9);
  for (const int dataSize : {2, 4, 8}) {
    for (const int dataType : {1, 2}) {
      vector.SetStructure(dataSize, 5, 3, dataType);
      EXPECT_EQ(Shape(vector), (Layout{dataSize, dataType, 5, 5, 3, 0, 9}));
      EXPECT_EQ(vector.GetAllocatedSize(), static_cast<std::size_t>(5 * 3 * dataSize / 2));
      EXPECT_TRUE(AllZero(vector));
    }
  }
  vector.SetStructure(8, 2, 1, 4);
  EXPECT_EQ(Shape(vector), (Layout{8, 4, 2, 2, 1, 0, 9}));
  vector.SetStructure(2, 0, 7, 1);
  EXPECT_EQ(Shape(vector), (Layout{2, 1, 0, 0, 7, 0, 9}));
  EXPECT_EQ(vector.GetDataPtr(), nullptr);
  EXPECT_EQ(TakeOutcome(), "0");
}

TEST_F(Vector, RefusesLayoutsThatCannotBe) {
  vector.SetType(LX_VECTOR_SEGMENT, 4, 3);
  struct Row {
    int dataSize, groups, length, dataType;
    const char* outcome;
  };
  for (const Row& row :
       {Row{0, -1, 0, 0, "1605"}, Row{16, 1, 1, 1, "1605"}, Row{2, -1, 0, 3, "1606"},
        Row{4, 1, 1, 4, "1606"}, Row{2, -1, 0, 1, "1012"}, Row{2, 1, 0, 1, "1013"},
        Row{8, INT_MAX, INT_MAX, 1, "1303"}, Row{2, INT_MAX, INT_MAX, 1, "1303"}}) {
    ExpectRefused([&] { vector.SetStructure(row.dataSize, row.groups, row.length, row.dataType); },
                  std::string(row.outcome) + " LxVector::SetStructure");
  }
}

TEST_F(Vector, TakesEveryKind) {
  struct Row {
    int kind, a, b;
    Layout shape;
  };
  for (const Row& row :
       {Row{1, 2000, 0, {8, 2, 0, 2000, 3, 1, 0}}, Row{2, 0, 0, {8, 1, 1, 1, 256, 2, 0}},
        Row{2, 1, 37, {8, 1, 1, 1, 37, 2, 0}}, Row{2, 1, 0, {8, 1, 0, 0, 1, 2, 0}},
        Row{3, 1, 256, {2, 1, 1, 1, 256, 3, 0}}, Row{4, 12, 0, {8, 2, 12, 12, 3, 4, 0}},
        Row{4, 2, 5, {8, 2, 2, 2, 5, 4, 0}}, Row{7, 9, 0, {8, 4, 9, 9, 1, 7, 0}},
        Row{5, 0, 0, {8, 2, 0, 2048, 3, 5, 6}}}) {
    vector.SetType(row.kind, row.a, row.b);
    EXPECT_EQ(Shape(vector), row.shape) << row.kind;
    EXPECT_TRUE(AllZero(vector));
    for (int kind = -1; kind < 9; ++kind) {
      EXPECT_EQ(vector.IsSameVectType(kind) != 0, kind == row.kind);
    }
  }
  EXPECT_EQ(TakeOutcome(), "0");
  struct Bad {
    int kind, a, b;
    const char* outcome;
  };
  for (const Bad& row :
       {Bad{0, -1, -1, "1011"}, Bad{6, 1, 1, "1011"}, Bad{-1, 1, 1, "1011"}, Bad{1, -1, -1, "1012"},
        Bad{2, 0, -1, "1013"}, Bad{4, INT_MAX, INT_MAX, "1303"}}) {
    ExpectRefused([&] { vector.SetType(row.kind, row.a, row.b); },
                  std::string(row.outcome) + " LxVector::SetType");
  }
}

TEST_F(Vector, GrowsByWholeGroupsAtLeastAndKeepsItsContent) {
  vector.SetType(LX_VECTOR_CONTOUR, 2, 0);
  vector.SetNbGroup(2);
  for (const int count : {3, -1}) {
    ExpectRefused([&] { vector.SetNbGroup(count); }, "1011 LxVector::SetNbGroup");
  }
  for (int i = 0; i < 6; ++i) static_cast<int*>(vector.GetDataPtr())[i] = i + 1;
  const void* const data = vector.GetDataPtr();
  for (const int smaller : {0, 23, 24}) vector.Reallocate(smaller);
  EXPECT_EQ(vector.GetDataPtr(), data);
  EXPECT_EQ(vector.GetNbMaxGroup(), 2);
  vector.Reallocate(24 + 24576 - 11);
  EXPECT_EQ(Shape(vector), (Layout{8, 2, 2, 2 + 2048, 3, LX_VECTOR_CONTOUR, 0}));
  for (int i = 0; i < 9; ++i) {
    EXPECT_EQ(static_cast<int*>(vector.GetDataPtr())[i], i < 6 ? i + 1 : 0);
  }
  EXPECT_EQ(TakeOutcome(), "0");
  vector.Reallocate(-1);
  EXPECT_EQ(TakeOutcome(), "1011 LxVector::Reallocate");
}

TEST_F(Vector, SurvivesEveryAllocationFailure) {
  vector.SetType(LX_VECTOR_SEGMENT, 3, 3);
  const auto live = lx::test::LiveAllocations();
  const auto check = [&](auto change, const char* outcome) {
    const auto failing = [&] {
      const lx::test::FailAllocation guard(0);
      change();
    };
    ExpectRefused(failing, outcome);
  };
  check([&] { vector.SetStructure(2, 1, 1, 1); }, "1303 LxVector::SetStructure");
  check([&] { vector.SetType(5, 0, 0); }, "1303 LxVector::SetType");
  check([&] { vector.Reallocate(1000); }, "1303 LxVector::Reallocate");
  EXPECT_EQ(lx::test::LiveAllocations(), live);
  vector.SetStructure(2, 0, 1, 1);
  EXPECT_EQ(lx::test::LiveAllocations(), live - 1);
}

template <class V>
class PixelVector : public testing::Test {};
using PixelVectors = testing::Types<LxBW8Vector, LxBW16Vector, LxBW32Vector, LxC24Vector>;
TYPED_TEST_SUITE(PixelVector, PixelVectors);

TYPED_TEST(PixelVector, HasItsCountAndMayBeZeroed) {
  LxOk();
  TypeParam plain(7, 0);
  EXPECT_EQ(plain.GetNumElements(), 7U);
  EXPECT_EQ(plain.GetMaxElements(), 7U);
  TypeParam zeroed(300, 1);
  const auto* const bytes = reinterpret_cast<const unsigned char*>(zeroed.GetDataPtr());
  const std::size_t size = 300 * sizeof(zeroed[0]);
  EXPECT_TRUE(std::all_of(bytes, bytes + size, [](int byte) { return byte == 0; }));
  EXPECT_EQ(TypeParam(0, 1).GetNumElements() + TypeParam().GetNumElements(), 0U);
  EXPECT_EQ(TakeOutcome(), "0");
  const lx::test::FailAllocation guard(0);
  EXPECT_EQ(TypeParam(5, 1).GetNumElements(), 0U);
  EXPECT_EQ(LxGetError(), LX_ERROR_ALLOCATION_FAILED);
}

}  // namespace
