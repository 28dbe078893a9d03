// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "lxpic/lxpic.h"
#include "support/random.h"

namespace lx::test {
namespace {

using Value = std::int64_t;

constexpr std::array kOffered = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 13, 14, 15, 19, 20, 22, 35};
constexpr int kGroups = 37;
constexpr int kLength = 3;

// The layout and the range of the elements.
struct Element {
  int size;
  int type;
  Value lowest;
  Value highest;

  int Bits() const { return size * 4; }
  Value AllOnes() const { return lowest < 0 ? -1 : highest; }
};

constexpr std::array kElements = {
    Element{LX_DATA_SIZE_8, LX_DATA_UNSIGNED, 0, 255},
    Element{LX_DATA_SIZE_8, LX_DATA_SIGNED, -128, 127},
    Element{LX_DATA_SIZE_16, LX_DATA_UNSIGNED, 0, 65535},
    Element{LX_DATA_SIZE_16, LX_DATA_SIGNED, -32768, 32767},
    Element{LX_DATA_SIZE_32, LX_DATA_UNSIGNED, 0, 4294967295},
    Element{LX_DATA_SIZE_32, LX_DATA_SIGNED, -2147483648LL, 2147483647}};

Value ReadElement(const LxVector& vector, int index, const Element& element) {
  const int bytes = element.size / 2;
  std::uint32_t bits = 0;
  std::memcpy(&bits, static_cast<const char*>(vector.GetDataPtr()) + index * bytes,
              static_cast<std::size_t>(bytes));
  return bits > element.highest ? static_cast<Value>(bits) - (Value{1} << element.Bits()) : bits;
}

void WriteElement(LxVector& vector, int index, const Element& element, Value value) {
  const int bytes = element.size / 2;
  std::memcpy(static_cast<char*>(vector.GetDataPtr()) + index * bytes, &value,
              static_cast<std::size_t>(bytes));
}

Value Clamped(long double value, const Element& e) {
  return static_cast<Value>(std::clamp<long double>(value, static_cast<long double>(e.lowest),
                                                    static_cast<long double>(e.highest)));
}

Value Shifted(int operation, Value v, int count, const Element& e) {
  const bool tooFar = count < 0 || count > e.Bits();
  if (operation == 7 && tooFar) return v == 0 ? 0 : e.AllOnes();
  if (tooFar) return 0;
  const long double factor = std::pow(2.0L, count);
  const auto value = static_cast<long double>(v);
  return operation == 7 ? Clamped(value * factor, e)
                        : static_cast<Value>(std::floor(value / factor));
}

// The constant as an element holds it.
Value Converted(int constant, const Element& e) {
  const Value modulus = Value{1} << e.Bits();
  const Value rest = ((constant % modulus) + modulus) % modulus;
  return rest > e.highest ? rest - modulus : rest;
}

Value Expected(int operation, Value v, int given, const Element& e) {
  const Value c = Converted(given, e);
  const auto value = static_cast<long double>(v);
  const auto constant = static_cast<long double>(c);
  switch (operation) {
    case 0:
      return v;
    case 1:
      return e.lowest < 0 ? -1 - v : e.highest - v;
    case 2:
      return Clamped(value + constant, e);
    case 3:
      return Clamped(value - constant, e);
    case 4:
      return Clamped(value * constant, e);
    case 5:
      return c == 0 ? e.highest : Clamped(std::trunc(value / constant), e);
    case 6:
      return c == 0 ? e.highest : v % c;
    case 7:
    case 8:
      return Shifted(operation, v, given, e);
    case 9:
      return static_cast<Value>(std::floor((value + constant) / 2));
    case 13:
      return v & c;
    case 14:
      return v | c;
    case 15:
      return v ^ c;
    case 19:
      return std::min(v, c);
    case 20:
      return std::max(v, c);
    case 22:
      return v != 0 ? c : 0;
    default:
      return c;
  }
}

std::vector<Value> FillWithEdges(LxVector& vector, const Element& e, Random& random) {
  vector.SetStructure(e.size, kGroups, kLength, e.type);
  const std::array edges = {Value{0},     Value{1},      e.lowest,      e.highest,
                            e.lowest + 1, e.highest - 1, e.highest / 2, e.AllOnes()};
  std::vector<Value> values;
  for (int i = 0; i < kGroups * kLength; ++i) {
    const bool edge = random.Below(2) == 0;
    values.push_back(edge ? random.Pick(edges) : random.Between(e.lowest, e.highest));
    WriteElement(vector, i, e, values.back());
  }
  return values;
}

void ExpectOne(int operation, int constant, const Element& e, bool inPlace, Random& random) {
  LxVector source;
  LxVector other;
  LxVector& destination = inPlace ? source : other;
  const std::vector<Value> values = FillWithEdges(source, e, random);
  const int first = static_cast<int>(random.Below(4));
  const int last = random.Below(2) == 0 ? -1 : first + static_cast<int>(random.Below(20));
  PicVect1c2(static_cast<ARITH_LOGIC_OPERATIONS>(operation), &source, constant, &destination, first,
             last);
  const bool byZero = (operation == 5 || operation == 6) && Converted(constant, e) == 0;
  ASSERT_EQ(LxGetError(), byZero ? LX_ERROR_DIVISION_BY_ZERO : LX_OK);
  ASSERT_EQ(destination.GetNbGroup(), kGroups);
  ASSERT_EQ(destination.GetGroupLength(), kLength);
  ASSERT_EQ(destination.GetDataSize(), e.size);
  ASSERT_EQ(destination.GetDataType(), e.type);
  const int end = last < 0 ? kGroups : last + 1;
  for (int i = 0; i < kGroups * kLength; ++i) {
    const bool processed = i / kLength >= first && i / kLength < end;
    const Value v = values[static_cast<std::size_t>(i)];
    ASSERT_EQ(ReadElement(destination, i, e), processed ? Expected(operation, v, constant, e) : 0)
        << "element " << i << " holds " << v << ", groups " << first << ".." << last;
  }
}

// Up to the first failure.
void ExpectEveryConstant(int operation, const Element& e, Random& random) {
  constexpr int kHighest = std::numeric_limits<int>::max();
  for (const int constant : {0,
                             1,
                             2,
                             3,
                             7,
                             8,
                             9,
                             15,
                             16,
                             17,
                             31,
                             32,
                             33,
                             100,
                             127,
                             128,
                             255,
                             256,
                             257,
                             -1,
                             -2,
                             -128,
                             32767,
                             32768,
                             65535,
                             65536,
                             -32768,
                             kHighest,
                             -kHighest - 1,
                             static_cast<int>(random.Next())}) {
    for (const bool inPlace : {false, true}) {
      SCOPED_TRACE("operation " + std::to_string(operation) + " constant " +
                   std::to_string(constant) + " width " + std::to_string(e.Bits()) +
                   (e.lowest < 0 ? " signed" : " unsigned") + (inPlace ? " in place" : ""));
      ExpectOne(operation, constant, e, inPlace, random);
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

class VectorOperation : public testing::TestWithParam<int> {};

TEST_P(VectorOperation, EveryElementType) {
  Random random("vectors");
  for (const Element& e : kElements) ExpectEveryConstant(GetParam(), e, random);
}

INSTANTIATE_TEST_SUITE_P(Offered, VectorOperation, testing::ValuesIn(kOffered));

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
  PicVect1c2(ARITH_LOGIC_ADD, nullptr, 1, &destination);
  ExpectRefusal(LX_ERROR_VECTOR_NO_DATA, {"PicVect1c2"});
  PicVect1c2(ARITH_LOGIC_ADD, &source, 1, static_cast<LxVector*>(nullptr));
  ExpectRefusal(LX_ERROR_VECTOR_NO_DATA, {"PicVect1c2"});
  PicVect1c2(ARITH_LOGIC_ADD, &source, 1, &destination);
  ExpectRefusal(LX_ERROR_UNSUPPORTED_DATA_SIZE, {"PicVect1c2"});
  source.SetStructure(LX_DATA_SIZE_32, 4, 1, LX_DATA_FLOAT);
  PicVect1c2(ARITH_LOGIC_ADD, &source, 1, &destination, 9, 9);
  ExpectRefusal(LX_ERROR_UNSUPPORTED_DATA_TYPE, {"PicVect1c2"});
  source.SetStructure(LX_DATA_SIZE_16, 4, 1, LX_DATA_SIGNED);
  for (const auto& [first, last] : {std::pair{4, 5}, std::pair{-1, 2}, std::pair{0, 4}}) {
    PicVect1c2(ARITH_LOGIC_LOGICAL_AND, &source, 1, &destination, first, last);
    ExpectRefusal(LX_ERROR_VECTOR_EMPTY, {"CheckGroups", "PicVect1c2"});
  }
  PicVect1c2(ARITH_LOGIC_LOGICAL_AND, &source, 1, &destination, 3, 2);
  ExpectRefusal(LX_ERROR_RANGE_END_BEFORE_START, {"CheckGroups", "PicVect1c2"});
  for (const int operation : {10, 11, 12, 16, 17, 18, 21, 23, 28, 29, 33, 34, 36, -1}) {
    PicVect1c2(static_cast<ARITH_LOGIC_OPERATIONS>(operation), &source, 1, &destination);
    ExpectRefusal(LX_ERROR_UNSUPPORTED_OPERATION, {"PicVect1c2"});
  }
  source.SetStructure(LX_DATA_SIZE_16, 0, 1, LX_DATA_SIGNED);
  PicVect1c2(ARITH_LOGIC_ADD, &source, 1, &destination);
  ExpectRefusal(LX_ERROR_VECTOR_EMPTY, {"CheckGroups", "PicVect1c2"});
}

TEST(VectorArithmetic, FloatingPointFormComputesNothing) {
  LxVector source;
  LxVector destination;
  source.SetStructure(LX_DATA_SIZE_32, 4, 1, LX_DATA_FLOAT);
  PicVect1c2(ARITH_LOGIC_ADD, &source, 1.5, &destination);
  ExpectRefusal(LX_ERROR_UNSUPPORTED_DATA_SIZE, {"PicVect1c2"});
  source.SetStructure(LX_DATA_SIZE_32, 4, 1, LX_DATA_SIGNED);
  PicVect1c2(ARITH_LOGIC_ADD, &source, 1.5, &destination);
  ExpectRefusal(LX_ERROR_UNSUPPORTED_DATA_TYPE, {"PicVect1c2"});
  EXPECT_EQ(destination.GetNbGroup(), 0);
}

}  // namespace
}  // namespace lx::test
