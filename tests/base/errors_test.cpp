// SPDX-License-Identifier: Apache-2.0
#include "lxpic/base/errors.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <thread>

#include "support/outcome_text.h"

namespace {

using lx::test::TakeOutcome;

class Errors : public testing::Test {
 protected:
  Errors() { LxOk(); }
};

TEST_F(Errors, StateAndTraceLastUntilCleared) {
  LxSetError(LX_ERROR_SIZE_MISMATCH);
  LxTraceError("inner");
  LxTraceError(nullptr);
  LxTraceError("outer");
  for (const int missing : {-1, 2}) EXPECT_STREQ(LxGetTrace(missing), "");
  EXPECT_EQ(TakeOutcome(), "1403 inner < outer");
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_STREQ(LxGetTrace(0), "");
}

TEST_F(Errors, TraceCopiesAndIsBounded) {
  std::string name(95, 'x');
  LxTraceError(name.c_str());
  LxTraceError((name + "cut").c_str());
  name.assign(95, 'y');
  EXPECT_EQ(LxGetTrace(0), std::string(95, 'x'));
  EXPECT_EQ(LxGetTrace(1), std::string(95, 'x'));
  for (int i = 2; i < 40; ++i) LxTraceError(std::to_string(i).c_str());
  EXPECT_EQ(LxGetTraceCount(), 32);
  EXPECT_STREQ(LxGetTrace(31), "31");
}

TEST_F(Errors, BelongToTheThread) {
  LxSetError(LX_ERROR_INTERNAL);
  LxTraceError("mine");
  std::thread([] {
    EXPECT_EQ(TakeOutcome(), "0");
    LxSetError(LX_ERROR_VECTOR_EMPTY);
    LxTraceError("theirs");
  }).join();
  EXPECT_EQ(TakeOutcome(), "32767 mine");
}

TEST_F(Errors, EveryCodeHasATextOfItsOwn) {
  std::set<std::string> texts;
  for (const int code :
       {0,    106,  1003, 1007, 1009, 1010, 1011, 1012, 1013, 1014, 1015, 1016, 1024,
        1050, 1051, 1102, 1103, 1104, 1105, 1106, 1301, 1303, 1400, 1403, 1405, 1411,
        1413, 1414, 1419, 1500, 1501, 1502, 1504, 1601, 1602, 1603, 1604, 1605, 1606,
        1607, 1608, 1609, 1611, 1613, 1700, 1701, 1702, 1703, 1704, 2200, 2600, 32767}) {
    const char* const text = LxGetErrorText(static_cast<LX_ERRORS>(code));
    EXPECT_STRNE(text, "unknown error") << code;
    EXPECT_TRUE(texts.insert(text).second) << code;
  }
  for (const int code : {-1, 1, 1004, 32766}) {
    EXPECT_STREQ(LxGetErrorText(static_cast<LX_ERRORS>(code)), "unknown error") << code;
  }
}

}  // namespace
