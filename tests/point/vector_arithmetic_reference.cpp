// SPDX-License-Identifier: Apache-2.0
// Arithmetic of untyped vectors, element by element.
#include <algorithm>
#include <cmath>

#include "support/reference.h"

namespace lx::test {

namespace {

// The width and the range of the elements.
struct Element {
  int bits;
  Value lowest;
  Value highest;

  explicit Element(const Elements& vector) : bits(4 * vector.dataSize) {
    const bool isSigned = vector.dataType == LX_DATA_SIGNED;
    lowest = isSigned ? -(Value{1} << (bits - 1)) : 0;
    highest = (Value{1} << (isSigned ? bits - 1 : bits)) - 1;
  }
  Value AllOnes() const { return lowest < 0 ? -1 : highest; }
};

Value Clamped(long double value, const Element& e) {
  return static_cast<Value>(std::clamp<long double>(value, static_cast<long double>(e.lowest),
                                                    static_cast<long double>(e.highest)));
}

Value Shifted(int operation, Value v, int count, const Element& e) {
  const bool tooFar = count < 0 || count > e.bits;
  if (operation == 7 && tooFar) return v == 0 ? 0 : e.AllOnes();
  if (tooFar) return 0;
  const long double factor = std::pow(2.0L, count);
  const auto value = static_cast<long double>(v);
  return operation == 7 ? Clamped(value * factor, e)
                        : static_cast<Value>(std::floor(value / factor));
}

// The constant as an element holds it.
Value Converted(int constant, const Element& e) {
  const Value modulus = Value{1} << e.bits;
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

bool SameLayout(const Elements& a, const Elements& b) {
  return a.dataSize == b.dataSize && a.dataType == b.dataType && a.groupLength == b.groupLength &&
         a.values.size() == b.values.size();
}

// The groups first..last of the source; all other elements of the result are 0.
void Combine(const Arguments& call, Outcome& outcome) {
  const Elements& source = outcome.Vector(1);
  Elements& destination = outcome.Vector(3);
  if (source.dataSize == 0) return outcome.Refuse(LX_ERROR_UNSUPPORTED_DATA_SIZE);
  if (source.dataType == LX_DATA_FLOAT) return outcome.Refuse(LX_ERROR_UNSUPPORTED_DATA_TYPE);
  const int groups = static_cast<int>(source.values.size()) / source.groupLength;
  const int first = static_cast<int>(call.Number(4));
  const int last = call.Number(5) == -1 ? groups - 1 : static_cast<int>(call.Number(5));
  if (first < 0 || first >= groups || last >= groups) {
    return outcome.Refuse(LX_ERROR_VECTOR_EMPTY, {"CheckGroups"});
  }
  if (first > last) return outcome.Refuse(LX_ERROR_RANGE_END_BEFORE_START, {"CheckGroups"});
  const int kind = SameLayout(source, destination) ? destination.kind : LX_VECTOR_NONE;
  const int use = destination.use;
  destination = source;
  destination.kind = kind;
  destination.use = use;
  const Element element(source);
  const int operation = static_cast<int>(call.Number(0));
  const int constant = static_cast<int>(call.Number(2));
  for (std::size_t i = 0; i < source.values.size(); ++i) {
    const int group = static_cast<int>(i) / source.groupLength;
    const bool inside = group >= first && group <= last;
    const auto value = static_cast<Value>(source.values[i]);
    destination.values[i] =
        inside ? static_cast<double>(Expected(operation, value, constant, element)) : 0;
  }
  const bool divides = operation == ARITH_LOGIC_DIVIDE || operation == ARITH_LOGIC_MODULO;
  if (divides && Converted(constant, element) == 0) outcome.Refuse(LX_ERROR_DIVISION_BY_ZERO);
}

}  // namespace

std::vector<Reference> VectorArithmeticReferences() {
  return {
      Measured("PicVect1c2(ARITH_LOGIC_OPERATIONS, LxVector*, int, LxVector*, int, int)", Combine)};
}

}  // namespace lx::test
