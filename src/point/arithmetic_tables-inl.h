// SPDX-License-Identifier: Apache-2.0
// Which rule serves which operation. Included once for each instruction set.

#if defined(LXPIC_POINT_ARITHMETIC_TABLES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_POINT_ARITHMETIC_TABLES_INL_H_
#undef LXPIC_POINT_ARITHMETIC_TABLES_INL_H_
#else
#define LXPIC_POINT_ARITHMETIC_TABLES_INL_H_
#endif

#include "foundation/pixel_map-inl.h"
#include "point/arithmetic_kernels.h"
#include "point/arithmetic_rules-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::point::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

struct KernelRow {
  ARITH_LOGIC_OPERATIONS operation;
  MapKernel kernel;
};

template <std::size_t kRows>
MapKernel Find(const KernelRow (&rows)[kRows], ARITH_LOGIC_OPERATIONS operation) {
  for (const KernelRow& row : rows) {
    if (row.operation == operation) return row.kernel;
  }
  return nullptr;
}

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

// `Apply<T, Rule>::Run` for the rule of the operation, over the operations of two images.
template <template <typename, class> class Apply, typename T>
MapKernel FindImages(ARITH_LOGIC_OPERATIONS operation) {
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
  return Find(kRows, operation);
}

// Shifts, which only constants have: they take powers of two for their counts.
template <typename T>
MapKernel FindShift(ARITH_LOGIC_OPERATIONS operation) {
  static constexpr KernelRow kRows[] = {
      {ARITH_LOGIC_SHIFT_LEFT, &OnConstant<T, ShiftLeft>::Run},
      {ARITH_LOGIC_SHIFT_RIGHT, &OnConstant<T, ShiftRight>::Run},
  };
  return Find(kRows, operation);
}

// The rules that mind the order, for operands that come in the other one: turned round or swapped.
// The rest is commutative.
template <template <typename, class> class Apply, typename T>
MapKernel FindTurned(ARITH_LOGIC_OPERATIONS operation) {
  static constexpr KernelRow kRows[] = {
      {ARITH_LOGIC_SUBTRACT, &Apply<T, Swapped<Subtract>>::Run},
      {ARITH_LOGIC_DIVIDE, &Apply<T, Swapped<Divide>>::Run},
      {ARITH_LOGIC_MODULO, &Apply<T, Swapped<Modulo>>::Run},
      {ARITH_LOGIC_HALF_DIFFERENCE, &Apply<T, Swapped<HalfDifference>>::Run},
      {ARITH_LOGIC_SCALED_DIVIDE, &Apply<T, Swapped<ScaledDivide>>::Run},
      {ARITH_LOGIC_SET_WHERE_ZERO, &Apply<T, Swapped<SetWhereZero>>::Run},
      {ARITH_LOGIC_SET_WHERE_NONZERO, &Apply<T, Swapped<SetWhereNonzero>>::Run},
      {ARITH_LOGIC_GREATER_OR_EQUAL, &Apply<T, LessOrEqual>::Run},
      {ARITH_LOGIC_LESS_OR_EQUAL, &Apply<T, GreaterOrEqual>::Run},
      {ARITH_LOGIC_GREATER, &Apply<T, Less>::Run},
      {ARITH_LOGIC_LESS, &Apply<T, Greater>::Run},
  };
  const MapKernel kernel = Find(kRows, operation);
  return kernel != nullptr ? kernel : FindImages<Apply, T>(operation);
}

template <typename T>
MapKernel FindWithConstant(ARITH_LOGIC_OPERATIONS operation) {
  const MapKernel shift = FindShift<T>(operation);
  return shift != nullptr ? shift : FindImages<OnConstant, T>(operation);
}

// The forms that both element types have.
template <typename T>
MapKernel FindCommon(Operands operands, ARITH_LOGIC_OPERATIONS operation) {
  switch (operands) {
    case Operands::kImages:
      return FindImages<OnImages, T>(operation);
    case Operands::kImageWithConstant:
      return FindWithConstant<T>(operation);
    case Operands::kConstantWithImage:
      return FindTurned<OnConstant, T>(operation);
    default:
      return nullptr;
  }
}

}  // namespace lx::point::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_POINT_ARITHMETIC_TABLES_INL_H_
