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
namespace lx::HWY_NAMESPACE {

using Kernel = void (*)(const PixelMap&);

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

// Runs `Apply<Rule>::Run(map)` for the rule of the operation, over the operations of two images.
template <template <class> class Apply>
bool RunImages(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map) {
  static constexpr KernelRow kRows[] = {
      {ARITH_LOGIC_ADD, &Apply<Add>::Run},
      {ARITH_LOGIC_SUBTRACT, &Apply<Subtract>::Run},
      {ARITH_LOGIC_MULTIPLY, &Apply<Multiply>::Run},
      {ARITH_LOGIC_DIVIDE, &Apply<Divide>::Run},
      {ARITH_LOGIC_MODULO, &Apply<Modulo>::Run},
      {ARITH_LOGIC_AVERAGE, &Apply<Average>::Run},
      {ARITH_LOGIC_HALF_DIFFERENCE, &Apply<HalfDifference>::Run},
      {ARITH_LOGIC_SCALED_MULTIPLY, &Apply<ScaledMultiply>::Run},
      {ARITH_LOGIC_SCALED_DIVIDE, &Apply<ScaledDivide>::Run},
      {ARITH_LOGIC_BITWISE_AND, &Apply<BitwiseAnd>::Run},
      {ARITH_LOGIC_BITWISE_OR, &Apply<BitwiseOr>::Run},
      {ARITH_LOGIC_BITWISE_XOR, &Apply<BitwiseXor>::Run},
      {ARITH_LOGIC_LOGICAL_AND, &Apply<LogicalAnd>::Run},
      {ARITH_LOGIC_LOGICAL_OR, &Apply<LogicalOr>::Run},
      {ARITH_LOGIC_LOGICAL_XOR, &Apply<LogicalXor>::Run},
      {ARITH_LOGIC_MINIMUM, &Apply<Minimum>::Run},
      {ARITH_LOGIC_MAXIMUM, &Apply<Maximum>::Run},
      {ARITH_LOGIC_SET_WHERE_ZERO, &Apply<SetWhereZero>::Run},
      {ARITH_LOGIC_SET_WHERE_NONZERO, &Apply<SetWhereNonzero>::Run},
      {ARITH_LOGIC_EQUAL, &Apply<Equal>::Run},
      {ARITH_LOGIC_NOT_EQUAL, &Apply<NotEqual>::Run},
      {ARITH_LOGIC_GREATER_OR_EQUAL, &Apply<GreaterOrEqual>::Run},
      {ARITH_LOGIC_LESS_OR_EQUAL, &Apply<LessOrEqual>::Run},
      {ARITH_LOGIC_GREATER, &Apply<Greater>::Run},
      {ARITH_LOGIC_LESS, &Apply<Less>::Run},
      {ARITH_LOGIC_ABSOLUTE_DIFFERENCE, &Apply<AbsoluteDifference>::Run},
  };
  return RunRow(kRows, operation, map);
}

// Image with constant; shifts take powers of two for their counts.
template <template <class> class Apply>
bool RunWithConstant(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map) {
  static constexpr KernelRow kRows[] = {
      {ARITH_LOGIC_ADD, &Apply<Add>::Run},
      {ARITH_LOGIC_SUBTRACT, &Apply<Subtract>::Run},
      {ARITH_LOGIC_MULTIPLY, &Apply<Multiply>::Run},
      {ARITH_LOGIC_DIVIDE, &Apply<Divide>::Run},
      {ARITH_LOGIC_MODULO, &Apply<Modulo>::Run},
      {ARITH_LOGIC_SHIFT_LEFT, &Apply<ShiftLeft>::Run},
      {ARITH_LOGIC_SHIFT_RIGHT, &Apply<ShiftRight>::Run},
      {ARITH_LOGIC_AVERAGE, &Apply<Average>::Run},
      {ARITH_LOGIC_HALF_DIFFERENCE, &Apply<HalfDifference>::Run},
      {ARITH_LOGIC_SCALED_MULTIPLY, &Apply<ScaledMultiply>::Run},
      {ARITH_LOGIC_SCALED_DIVIDE, &Apply<ScaledDivide>::Run},
      {ARITH_LOGIC_BITWISE_AND, &Apply<BitwiseAnd>::Run},
      {ARITH_LOGIC_BITWISE_OR, &Apply<BitwiseOr>::Run},
      {ARITH_LOGIC_BITWISE_XOR, &Apply<BitwiseXor>::Run},
      {ARITH_LOGIC_MINIMUM, &Apply<Minimum>::Run},
      {ARITH_LOGIC_MAXIMUM, &Apply<Maximum>::Run},
      {ARITH_LOGIC_SET_WHERE_ZERO, &Apply<SetWhereZero>::Run},
      {ARITH_LOGIC_SET_WHERE_NONZERO, &Apply<SetWhereNonzero>::Run},
      {ARITH_LOGIC_EQUAL, &Apply<Equal>::Run},
      {ARITH_LOGIC_NOT_EQUAL, &Apply<NotEqual>::Run},
      {ARITH_LOGIC_GREATER_OR_EQUAL, &Apply<GreaterOrEqual>::Run},
      {ARITH_LOGIC_LESS_OR_EQUAL, &Apply<LessOrEqual>::Run},
      {ARITH_LOGIC_GREATER, &Apply<Greater>::Run},
      {ARITH_LOGIC_LESS, &Apply<Less>::Run},
      {ARITH_LOGIC_ABSOLUTE_DIFFERENCE, &Apply<AbsoluteDifference>::Run},
  };
  return RunRow(kRows, operation, map);
}

// Constant with image: the rules that mind the order are swapped, comparisons turned round, and the
// rest is commutative.
template <template <class> class Apply>
bool RunConstantWith(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map) {
  static constexpr KernelRow kRows[] = {
      {ARITH_LOGIC_SUBTRACT, &Apply<Swapped<Subtract>>::Run},
      {ARITH_LOGIC_DIVIDE, &Apply<Swapped<Divide>>::Run},
      {ARITH_LOGIC_MODULO, &Apply<Swapped<Modulo>>::Run},
      {ARITH_LOGIC_HALF_DIFFERENCE, &Apply<Swapped<HalfDifference>>::Run},
      {ARITH_LOGIC_SCALED_DIVIDE, &Apply<Swapped<ScaledDivide>>::Run},
      {ARITH_LOGIC_GREATER_OR_EQUAL, &Apply<LessOrEqual>::Run},
      {ARITH_LOGIC_LESS_OR_EQUAL, &Apply<GreaterOrEqual>::Run},
      {ARITH_LOGIC_GREATER, &Apply<Less>::Run},
      {ARITH_LOGIC_LESS, &Apply<Greater>::Run},
  };
  return RunRow(kRows, operation, map) || RunWithConstant<Apply>(operation, map);
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_POINT_ARITHMETIC_TABLES_INL_H_
