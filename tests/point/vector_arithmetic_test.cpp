// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <vector>

#include "lxpic/lxpic.h"

namespace lx::test {
namespace {

// The code and the trace of a call, innermost first.
void ExpectRefusal(LX_ERRORS code, const std::vector<std::string>& trace) {
  EXPECT_EQ(LxGetError(), code);
  ASSERT_EQ(LxGetTraceCount(), static_cast<int>(trace.size()));
  for (int i = 0; i < LxGetTraceCount(); ++i) {
    EXPECT_EQ(LxGetTrace(i), trace[static_cast<std::size_t>(i)]);
  }
}

TEST(VectorArithmetic, RefusalsInOrder) {
  LxVector source;
  LxVector destination;
  source.SetStructure(LX_DATA_SIZE_16, 4, 1, LX_DATA_SIGNED);
  for (const auto& [first, last] : {std::pair{4, 5}, std::pair{-1, 2}, std::pair{0, 4}}) {
    PicVect1c2(ARITH_LOGIC_LOGICAL_AND, &source, 1, &destination, first, last);
    ExpectRefusal(LX_ERROR_VECTOR_EMPTY, {"CheckGroups", "PicVect1c2"});
  }
  PicVect1c2(ARITH_LOGIC_LOGICAL_AND, &source, 1, &destination, 3, 2);
  ExpectRefusal(LX_ERROR_RANGE_END_BEFORE_START, {"CheckGroups", "PicVect1c2"});
  for (const int operation : {10, 11, 12, 16, 17, 18, 21, 23, 28, 29, 33, 34, 36, -1}) {
    PicVect1c2(static_cast<ARITH_LOGIC_OPERATIONS>(operation), &source, 1, &destination, 0, -1);
    ExpectRefusal(LX_ERROR_UNSUPPORTED_OPERATION, {"PicVect1c2"});
  }
  source.SetStructure(LX_DATA_SIZE_16, 0, 1, LX_DATA_SIGNED);
  PicVect1c2(ARITH_LOGIC_ADD, &source, 1, &destination, 0, -1);
  ExpectRefusal(LX_ERROR_VECTOR_EMPTY, {"CheckGroups", "PicVect1c2"});
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
  ExpectRefusal(LX_ERROR_UNSUPPORTED_DATA_SIZE, {"PicVect1c2"});
  // Four arguments never reach the form of integers.
  source.SetStructure(LX_DATA_SIZE_32, 4, 1, LX_DATA_SIGNED);
  PicVect1c2(ARITH_LOGIC_ADD, &source, 1, &destination);
  ExpectRefusal(LX_ERROR_UNSUPPORTED_DATA_TYPE, {"PicVect1c2"});
  EXPECT_EQ(destination.GetNbGroup(), 0);
}

}  // namespace
}  // namespace lx::test
