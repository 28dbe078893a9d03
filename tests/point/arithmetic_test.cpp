// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <thread>
#include <vector>

#include "support/outcome_text.h"
#include "support/trial.h"

namespace lx::test {
namespace {

constexpr int kUnsupported = LX_ERROR_UNSUPPORTED_OPERATION;
constexpr int kInternal = LX_ERROR_INTERNAL;

// What a form refuses by name; of the other values it offers its choices, and the rest has no case.
struct Refusals {
  const char* trace;
  std::vector<int> named;
  bool namesAllOthers;  ///< everything that is not offered is refused by name
};

const std::vector<Refusals> kRefusals = {
    {"PicOper ( BW8 Const to Image)", {}, true},
    {"PicOper ( BW8 Image to Image)", {}, true},
    {"PicOper ( BW8 Image to C24 Image)", {}, true},
    {"PicOper ( BW8 Const, Image to Image)", {7, 8, 16, 17, 18, 21, 22}, false},
    {"PicOper ( BW8 Image, Const to Image)", {16, 17, 18}, false},
    {"PicOper ( BW8 Image, Image to Image)", {7, 8, 34}, false},
    {"PicOper ( C24 Const to Image)", {}, true},
    {"PicOper ( C24 Image to Image)", {}, true},
    {"PicOper ( C24 Const, Image to Image)", {7, 8, 16, 17, 18, 21, 22}, false},
    {"PicOper ( C24 Image, Const to Image)", {16, 17, 18}, false},
    {"PicOper ( C24 Image, Image to Image)", {7, 8}, false},
    {"PicOper ( BW8 Image, C24 Image to C24 Image)", {7, 8}, false},
    {"PicOper ( BW8 Image, BW8 Image to C24 Image)", {}, true},
    {"PicOper ( C24 Image, BW8 Image to C24 Image)", {7, 8}, false},
    {"PicOper ( BW8 Image and BW8 Image to BW16 Image)", {}, true},
    {"PicOper ( BW16 Image and BW8 Image to BW16 IMage)", {}, true},
    {"PicOper ( BW16 Const to Image)", {}, true},
    {"PicOper (BW16 Image to Image)", {}, true},
    {"PicOper ( BW16 Const, Image to Image)", {7, 8, 16, 17, 18, 21, 22}, false},
    {"PicOper ( BW16 Image, Const to Image)", {16, 17, 18}, false},
    {"PicOper ( BW16 Image, Image to Image)", {7, 8}, false}};

bool Holds(const std::vector<int>& values, int value) {
  return std::find(values.begin(), values.end(), value) != values.end();
}

int ExpectedCode(const Refusals& form, const std::vector<int>& offered, int value) {
  if (Holds(offered, value)) return LX_OK;
  return form.namesAllOthers || Holds(form.named, value) ? kUnsupported : kInternal;
}

TEST(Arithmetic, ValuesThatAFormDoesNotOffer) {
  std::size_t forms = 0;
  for (const Operation& each : catalogue::All()) forms += each.function == "PicOper" ? 1 : 0;
  EXPECT_EQ(forms, kRefusals.size());
  for (const Refusals& form : kRefusals) {
    const Operation* const operation = catalogue::Find(form.trace);
    ASSERT_NE(operation, nullptr) << form.trace;
    for (const int value : {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12,      13,
                            14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26,      27,
                            28, 29, 30, 31, 32, 33, 34, 35, 36, 37, 99, -1, 256 + 2, 0x7FFFFFFF}) {
      SCOPED_TRACE(std::string(form.trace) + " " + std::to_string(value));
      const int code = ExpectedCode(form, ChoicesOf(*operation), value);
      if (code == LX_OK) continue;
      Trial trial(*operation, ChoicesOf(*operation).front());
      trial.call.SetChoice(value);
      trial.Run();
      EXPECT_EQ(trial.Refusal(static_cast<LX_ERRORS>(code)), "");
    }
  }
}

// The reference itself is held to results worked out by hand.
struct Example {
  int operation;
  int a;
  int b;
  int result;
};

template <class T>
void ExpectExamples(const std::vector<Example>& examples) {
  for (const Example& each : examples) {
    LxImage<T> a(1, 1);
    LxImage<T> b(1, 1);
    LxImage<T> result(1, 1);
    a.SetPixel(static_cast<decltype(T::value)>(each.a), 0, 0);
    b.SetPixel(static_cast<decltype(T::value)>(each.b), 0, 0);
    result.SetPixel(77, 0, 0);
    PicOper(static_cast<ARITH_LOGIC_OPERATIONS>(each.operation), &a, &b, &result);
    EXPECT_EQ(LxGetError(), LX_OK);
    EXPECT_EQ(result.GetPixel(0, 0).value, each.result)
        << each.operation << ": " << each.a << ", " << each.b;
  }
}

TEST(Arithmetic, WorkedExamples) {
  ExpectExamples<LxBW8>({{2, 200, 100, 255},
                         {3, 10, 20, 0},
                         {5, 9, 0, 255},
                         {6, 9, 0, 0},
                         {12, 9, 0, 255},
                         {12, 1, 2, 128},
                         {10, 0, 255, 0},
                         {10, 255, 0, 255},
                         {10, 90, 90, 127},
                         {11, 255, 255, 254},
                         {9, 255, 254, 254},
                         {21, 3, 9, 77},
                         {22, 0, 9, 77},
                         {22, 3, 9, 9},
                         {25, 8, 8, 255},
                         {28, 7, 8, 255},
                         {18, 4, 8, 0},
                         {18, 4, 0, 255},
                         {33, 4, 250, 246}});
  ExpectExamples<LxBW16>({{11, 65535, 65535, 65534},
                          {12, 255, 1, 65280},
                          {12, 256, 1, 65535},
                          {4, 256, 256, 65535},
                          {10, 7, 7, 32767}});
  LxImage<LxBW8> grey(1, 1);
  const auto shifted = [&grey](std::uint8_t constant) {
    grey.SetPixel(3, 0, 0);
    PicOper(ARITH_LOGIC_SHIFT_LEFT, &grey, LxBW8(constant), &grey);
    return grey.GetPixel(0, 0).value;
  };
  EXPECT_EQ(shifted(7), 128);
  EXPECT_EQ(shifted(9), 0);
  EXPECT_EQ(shifted(33), 6);
}

TEST(Arithmetic, OverlayColourIsRedUntilSet) {
  std::thread([] { EXPECT_EQ(PicGetOverlayColor(), (LxC24{0, 0, 255})); }).join();
  PicSetOverlayColor({11, 22, 33});
  LxImage<LxBW8> mask(2, 1);
  LxImage<LxC24> colour(2, 1);
  mask.SetPixel(0, 0, 0);
  mask.SetPixel(1, 1, 0);
  colour.SetPixel({1, 2, 3}, 0, 0);
  PicOper(ARITH_LOGIC_OVERLAY, &mask, &colour);
  EXPECT_EQ(colour.GetPixel(0, 0), (LxC24{1, 2, 3}));
  EXPECT_EQ(colour.GetPixel(1, 0), (LxC24{11, 22, 33}));
}

// Rows of no pixels are not walked, however many there are.
TEST(EmptyRows, CostNothing) {
  LxImage<LxBW8> none(0, INT_MAX);
  LxImage<LxBW8> other(0, INT_MAX);
  const auto start = std::chrono::steady_clock::now();
  PicCopy(&none, &other);
  PicOper(ARITH_LOGIC_ADD, &none, &none, &other);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
}

}  // namespace
}  // namespace lx::test
