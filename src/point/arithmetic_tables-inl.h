// SPDX-License-Identifier: Apache-2.0
// Which rule serves which operation, for images with images and images with constants. Included
// once for each instruction set.

#if defined(LXPIC_POINT_ARITHMETIC_TABLES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_POINT_ARITHMETIC_TABLES_INL_H_
#undef LXPIC_POINT_ARITHMETIC_TABLES_INL_H_
#else
#define LXPIC_POINT_ARITHMETIC_TABLES_INL_H_
#endif

#include "foundation/pixel_map-inl.h"
#include "lxpic/point/arithmetic.h"
#include "point/arithmetic_rules-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::point::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

using Kernel = void (*)(const PixelMap&);

// destination = rule(source 1, source 2)
template <typename T, class Rule>
struct OnImages {
  static void Run(const PixelMap& map) { MapTwo<T>(map, Rule{}); }
};

// destination = rule(source, constant)
template <typename T, class Rule>
struct OnConstant {
  static void Run(const PixelMap& map) { MapConstant<T>(map, Rule{}); }
};

struct KernelRow {
  ARITH_LOGIC_OPERATIONS operation;
  Kernel kernel;
};

template <std::size_t kRows>
bool RunRow(const KernelRow (&rows)[kRows], ARITH_LOGIC_OPERATIONS operation, const PixelMap& map) {
  for (const KernelRow& row : rows) {
    if (row.operation != operation) continue;
    row.kernel(map);
    return true;
  }
  return false;
}

// The element type is part of every name here: tables of the same name in two files would become
// one.

// Runs `Apply<T, Rule>::Run(map)` for the rule of the operation, over the operations of two images.
template <template <typename, class> class Apply, typename T>
bool RunImages(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map) {
  static constexpr KernelRow kRows[] = {
      {ARITH_LOGIC_ADD, &Apply<T, Add>::Run},
      {ARITH_LOGIC_SUBTRACT, &Apply<T, Subtract>::Run},
      {ARITH_LOGIC_MULTIPLY, &Apply<T, Multiply>::Run},
      {ARITH_LOGIC_DIVIDE, &Apply<T, Divide>::Run},
      {ARITH_LOGIC_MODULO, &Apply<T, Modulo>::Run},
      {ARITH_LOGIC_AVERAGE, &Apply<T, Average>::Run},
      {ARITH_LOGIC_HALF_DIFFERENCE, &Apply<T, HalfDifference>::Run},
      {ARITH_LOGIC_SCALED_MULTIPLY, &Apply<T, ScaledMultiply>::Run},
      {ARITH_LOGIC_SCALED_DIVIDE, &Apply<T, ScaledDivide>::Run},
      {ARITH_LOGIC_BITWISE_AND, &Apply<T, BitwiseAnd>::Run},
      {ARITH_LOGIC_BITWISE_OR, &Apply<T, BitwiseOr>::Run},
      {ARITH_LOGIC_BITWISE_XOR, &Apply<T, BitwiseXor>::Run},
      {ARITH_LOGIC_LOGICAL_AND, &Apply<T, LogicalAnd>::Run},
      {ARITH_LOGIC_LOGICAL_OR, &Apply<T, LogicalOr>::Run},
      {ARITH_LOGIC_LOGICAL_XOR, &Apply<T, LogicalXor>::Run},
      {ARITH_LOGIC_MINIMUM, &Apply<T, Minimum>::Run},
      {ARITH_LOGIC_MAXIMUM, &Apply<T, Maximum>::Run},
      {ARITH_LOGIC_SET_WHERE_ZERO, &Apply<T, SetWhereZero>::Run},
      {ARITH_LOGIC_SET_WHERE_NONZERO, &Apply<T, SetWhereNonzero>::Run},
      {ARITH_LOGIC_EQUAL, &Apply<T, Equal>::Run},
      {ARITH_LOGIC_NOT_EQUAL, &Apply<T, NotEqual>::Run},
      {ARITH_LOGIC_GREATER_OR_EQUAL, &Apply<T, GreaterOrEqual>::Run},
      {ARITH_LOGIC_LESS_OR_EQUAL, &Apply<T, LessOrEqual>::Run},
      {ARITH_LOGIC_GREATER, &Apply<T, Greater>::Run},
      {ARITH_LOGIC_LESS, &Apply<T, Less>::Run},
      {ARITH_LOGIC_ABSOLUTE_DIFFERENCE, &Apply<T, AbsoluteDifference>::Run},
  };
  return RunRow(kRows, operation, map);
}

// Image with constant; shifts take powers of two for their counts.
template <template <typename, class> class Apply, typename T>
bool RunWithConstant(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map) {
  static constexpr KernelRow kRows[] = {
      {ARITH_LOGIC_ADD, &Apply<T, Add>::Run},
      {ARITH_LOGIC_SUBTRACT, &Apply<T, Subtract>::Run},
      {ARITH_LOGIC_MULTIPLY, &Apply<T, Multiply>::Run},
      {ARITH_LOGIC_DIVIDE, &Apply<T, Divide>::Run},
      {ARITH_LOGIC_MODULO, &Apply<T, Modulo>::Run},
      {ARITH_LOGIC_SHIFT_LEFT, &Apply<T, ShiftLeft>::Run},
      {ARITH_LOGIC_SHIFT_RIGHT, &Apply<T, ShiftRight>::Run},
      {ARITH_LOGIC_AVERAGE, &Apply<T, Average>::Run},
      {ARITH_LOGIC_HALF_DIFFERENCE, &Apply<T, HalfDifference>::Run},
      {ARITH_LOGIC_SCALED_MULTIPLY, &Apply<T, ScaledMultiply>::Run},
      {ARITH_LOGIC_SCALED_DIVIDE, &Apply<T, ScaledDivide>::Run},
      {ARITH_LOGIC_BITWISE_AND, &Apply<T, BitwiseAnd>::Run},
      {ARITH_LOGIC_BITWISE_OR, &Apply<T, BitwiseOr>::Run},
      {ARITH_LOGIC_BITWISE_XOR, &Apply<T, BitwiseXor>::Run},
      {ARITH_LOGIC_MINIMUM, &Apply<T, Minimum>::Run},
      {ARITH_LOGIC_MAXIMUM, &Apply<T, Maximum>::Run},
      {ARITH_LOGIC_SET_WHERE_ZERO, &Apply<T, SetWhereZero>::Run},
      {ARITH_LOGIC_SET_WHERE_NONZERO, &Apply<T, SetWhereNonzero>::Run},
      {ARITH_LOGIC_EQUAL, &Apply<T, Equal>::Run},
      {ARITH_LOGIC_NOT_EQUAL, &Apply<T, NotEqual>::Run},
      {ARITH_LOGIC_GREATER_OR_EQUAL, &Apply<T, GreaterOrEqual>::Run},
      {ARITH_LOGIC_LESS_OR_EQUAL, &Apply<T, LessOrEqual>::Run},
      {ARITH_LOGIC_GREATER, &Apply<T, Greater>::Run},
      {ARITH_LOGIC_LESS, &Apply<T, Less>::Run},
      {ARITH_LOGIC_ABSOLUTE_DIFFERENCE, &Apply<T, AbsoluteDifference>::Run},
  };
  return RunRow(kRows, operation, map);
}

// Constant with image: the rules that mind the order are swapped, comparisons turned round, and the
// rest is commutative.
template <template <typename, class> class Apply, typename T>
bool RunConstantWith(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map) {
  static constexpr KernelRow kRows[] = {
      {ARITH_LOGIC_SUBTRACT, &Apply<T, Swapped<Subtract>>::Run},
      {ARITH_LOGIC_DIVIDE, &Apply<T, Swapped<Divide>>::Run},
      {ARITH_LOGIC_MODULO, &Apply<T, Swapped<Modulo>>::Run},
      {ARITH_LOGIC_HALF_DIFFERENCE, &Apply<T, Swapped<HalfDifference>>::Run},
      {ARITH_LOGIC_SCALED_DIVIDE, &Apply<T, Swapped<ScaledDivide>>::Run},
      {ARITH_LOGIC_GREATER_OR_EQUAL, &Apply<T, LessOrEqual>::Run},
      {ARITH_LOGIC_LESS_OR_EQUAL, &Apply<T, GreaterOrEqual>::Run},
      {ARITH_LOGIC_GREATER, &Apply<T, Less>::Run},
      {ARITH_LOGIC_LESS, &Apply<T, Greater>::Run},
  };
  return RunRow(kRows, operation, map) || RunWithConstant<Apply, T>(operation, map);
}

}  // namespace lx::point::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_POINT_ARITHMETIC_TABLES_INL_H_
