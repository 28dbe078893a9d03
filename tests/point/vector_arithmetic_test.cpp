// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "lxpic/lxpic.h"
#include "support/outcome_text.h"

namespace lx::test {
namespace {

TEST(VectorArithmetic, OperationsThatAreNotOffered) {
  LxVector source;
  LxVector destination;
  source.SetStructure(LX_DATA_SIZE_16, 4, 1, LX_DATA_SIGNED);
  for (const int operation : {10, 11, 12, 16, 17, 18, 21, 23, 28, 29, 33, 34, 36, -1}) {
    PicVect1c2(static_cast<ARITH_LOGIC_OPERATIONS>(operation), &source, 1, &destination, 0, -1);
    EXPECT_EQ(TakeOutcome(), "1003 PicVect1c2");
  }
}

TEST(VectorArithmetic, InPlaceKeepsKindAndStorage) {
  LxVector vector;
  vector.SetType(LX_VECTOR_HISTOGRAM, 0, 0);
  auto* const entries = static_cast<std::uint32_t*>(vector.GetDataPtr());
  entries[0] = 5;
  entries[255] = 4294967290U;
  PicVect1c2(ARITH_LOGIC_ADD, &vector, 7, &vector, 0, -1);
  EXPECT_EQ(LxGetError(), LX_OK);
  EXPECT_EQ(vector.GetDataPtr(), entries);
  EXPECT_EQ(vector.GetVectType(), LX_VECTOR_HISTOGRAM);
  EXPECT_EQ(entries[0], 12U);
  EXPECT_EQ(entries[1], 7U);
  EXPECT_EQ(entries[255], 4294967295U);
}

TEST(VectorArithmetic, FloatingPointFormComputesNothing) {
  LxVector source;
  LxVector destination;
  source.SetStructure(LX_DATA_SIZE_32, 4, 1, LX_DATA_FLOAT);
  PicVect1c2(ARITH_LOGIC_ADD, &source, 1.5, &destination);
  EXPECT_EQ(TakeOutcome(), "1605 PicVect1c2");
  // Four arguments never reach the form of integers.
  source.SetStructure(LX_DATA_SIZE_32, 4, 1, LX_DATA_SIGNED);
  PicVect1c2(ARITH_LOGIC_ADD, &source, 1, &destination);
  EXPECT_EQ(TakeOutcome(), "1606 PicVect1c2");
  EXPECT_EQ(destination.GetNbGroup(), 0);
}

}  // namespace
}  // namespace lx::test
