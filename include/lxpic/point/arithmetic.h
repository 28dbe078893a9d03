// SPDX-License-Identifier: Apache-2.0
/// @file arithmetic.h
/// Pixel-wise arithmetic, logic and comparison.
#pragma once

#include "lxpic/base/image.h"

/// Operations of PicOper() and PicVect1c2(). `a` and `b` are the first and second operand, `M` the
/// largest value of the pixel or component type; true is `M`, false 0. Divisions truncate.
enum ARITH_LOGIC_OPERATIONS : int {
  ARITH_LOGIC_COPY = 0,                ///< `a`; one operand
  ARITH_LOGIC_INVERT = 1,              ///< `M - a`; one operand
  ARITH_LOGIC_ADD = 2,                 ///< `min(a + b, M)`
  ARITH_LOGIC_SUBTRACT = 3,            ///< `max(a - b, 0)`
  ARITH_LOGIC_MULTIPLY = 4,            ///< `min(a * b, M)`
  ARITH_LOGIC_DIVIDE = 5,              ///< `a / b`; `M` where `b` is 0
  ARITH_LOGIC_MODULO = 6,              ///< `a mod b`; 0 where `b` is 0
  ARITH_LOGIC_SHIFT_LEFT = 7,          ///< `a << (b mod 32)`, bits beyond the pixel lost
  ARITH_LOGIC_SHIFT_RIGHT = 8,         ///< `a >> (b mod 32)`
  ARITH_LOGIC_AVERAGE = 9,             ///< `(a + b) >> 1`
  ARITH_LOGIC_HALF_DIFFERENCE = 10,    ///< `(a + (M - b)) >> 1`
  ARITH_LOGIC_SCALED_MULTIPLY = 11,    ///< `(a * b) >> 8`, 16-bit pixels `>> 16`
  ARITH_LOGIC_SCALED_DIVIDE = 12,      ///< `min((a << 8) / b, M)`; `M` where `b` is 0
  ARITH_LOGIC_BITWISE_AND = 13,        ///< bits of both
  ARITH_LOGIC_BITWISE_OR = 14,         ///< bits of either
  ARITH_LOGIC_BITWISE_XOR = 15,        ///< bits of one of both
  ARITH_LOGIC_LOGICAL_AND = 16,        ///< true where both are not 0
  ARITH_LOGIC_LOGICAL_OR = 17,         ///< true where one is not 0
  ARITH_LOGIC_LOGICAL_XOR = 18,        ///< true where exactly one is not 0
  ARITH_LOGIC_MINIMUM = 19,            ///< `min(a, b)`
  ARITH_LOGIC_MAXIMUM = 20,            ///< `max(a, b)`
  ARITH_LOGIC_SET_WHERE_ZERO = 21,     ///< `b` where `a` is 0; elsewhere the destination stays
  ARITH_LOGIC_SET_WHERE_NONZERO = 22,  ///< `b` where `a` is not 0; elsewhere the destination stays
  ARITH_LOGIC_EQUAL = 23,              ///< true where `a == b`
  ARITH_LOGIC_NOT_EQUAL = 24,          ///< true where `a != b`
  ARITH_LOGIC_GREATER_OR_EQUAL = 25,   ///< true where `a >= b`
  ARITH_LOGIC_LESS_OR_EQUAL = 26,      ///< true where `a <= b`
  ARITH_LOGIC_GREATER = 27,            ///< true where `a > b`
  ARITH_LOGIC_LESS = 28,               ///< true where `a < b`
  ARITH_LOGIC_ADD_WRAP = 29,           ///< `(a + b) mod 65536`
  ARITH_LOGIC_SUBTRACT_WRAP = 30,      ///< `(a - b) mod 65536`
  ARITH_LOGIC_VALUE_31 = 31,           ///< no operation
  ARITH_LOGIC_VALUE_32 = 32,           ///< no operation
  ARITH_LOGIC_ABSOLUTE_DIFFERENCE = 33,  ///< `abs(a - b)`
  ARITH_LOGIC_OVERLAY = 34,              ///< colour overlay, see the forms
  ARITH_LOGIC_SET = 35                   ///< the constant; PicVect1c2() only
};

/// @name Arithmetic
/// `destination = operation(operands)`, pixel by pixel; colours component by component, so that the
/// 8-bit rules apply to each. The constant stands where its operand stands: with the constant first
/// SUBTRACT gives `max(constant - pixel, 0)`.
///
/// An operation that a form does not offer sets LX_ERROR_UNSUPPORTED_OPERATION or, where only the
/// inner table lacks it, LX_ERROR_INTERNAL; either way nothing is written. The values offered stand
/// with each form. All forms work in place on any of their sources.
/// @{

/// Fills with the constant: 0. Trace "PicOper ( BW8 Const to Image)".
LXPIC_API void PicOper(ARITH_LOGIC_OPERATIONS operation, LxBW8 constant, LxROI<LxBW8>* destination);
/// Copies (0) or inverts (1). Trace "PicOper ( BW8 Image to Image)".
LXPIC_API void PicOper(ARITH_LOGIC_OPERATIONS operation, LxROI<LxBW8>* source,
                       LxROI<LxBW8>* destination);
/// Grey to colour: 0 copies the level to each component, 1 its inverse, 34 paints the overlay
/// colour where the source is not 0. Trace "PicOper ( BW8 Image to C24 Image)".
LXPIC_API void PicOper(ARITH_LOGIC_OPERATIONS operation, LxROI<LxBW8>* source,
                       LxROI<LxC24>* destination);
/// 2-6, 9-15, 19, 20, 23-28, 33. Trace "PicOper ( BW8 Const, Image to Image)".
LXPIC_API void PicOper(ARITH_LOGIC_OPERATIONS operation, LxBW8 constant, LxROI<LxBW8>* source,
                       LxROI<LxBW8>* destination);
/// 2-15, 19-28, 33. Trace "PicOper ( BW8 Image, Const to Image)".
LXPIC_API void PicOper(ARITH_LOGIC_OPERATIONS operation, LxROI<LxBW8>* source, LxBW8 constant,
                       LxROI<LxBW8>* destination);
/// 2-6, 9-28, 33. Trace "PicOper ( BW8 Image, Image to Image)".
LXPIC_API void PicOper(ARITH_LOGIC_OPERATIONS operation, LxROI<LxBW8>* source1,
                       LxROI<LxBW8>* source2, LxROI<LxBW8>* destination);

/// Fills with the colour: 0. Trace "PicOper ( C24 Const to Image)".
LXPIC_API void PicOper(ARITH_LOGIC_OPERATIONS operation, LxC24 constant, LxROI<LxC24>* destination);
/// Copies (0), inverts (1), or takes the source pixels that are not black (34). Trace
/// "PicOper ( C24 Image to Image)".
LXPIC_API void PicOper(ARITH_LOGIC_OPERATIONS operation, LxROI<LxC24>* source,
                       LxROI<LxC24>* destination);
/// 2-6, 9-15, 19, 20, 23-28, 33. Trace "PicOper ( C24 Const, Image to Image)".
LXPIC_API void PicOper(ARITH_LOGIC_OPERATIONS operation, LxC24 constant, LxROI<LxC24>* source,
                       LxROI<LxC24>* destination);
/// 2-15, 19-28, 33. Trace "PicOper ( C24 Image, Const to Image)".
LXPIC_API void PicOper(ARITH_LOGIC_OPERATIONS operation, LxROI<LxC24>* source, LxC24 constant,
                       LxROI<LxC24>* destination);
/// 2-6, 9-28, 33; 34 takes source 2 except where it is black, there source 1. Trace
/// "PicOper ( C24 Image, Image to Image)".
LXPIC_API void PicOper(ARITH_LOGIC_OPERATIONS operation, LxROI<LxC24>* source1,
                       LxROI<LxC24>* source2, LxROI<LxC24>* destination);
/// Grey with each component: 2-6, 9-28, 33 (21 and 22 take the grey level as the mask); 34 takes
/// source 2 except where it is black, there the grey level. Trace "PicOper ( BW8 Image, C24 Image
/// to C24 Image)".
LXPIC_API void PicOper(ARITH_LOGIC_OPERATIONS operation, LxROI<LxBW8>* source1,
                       LxROI<LxC24>* source2, LxROI<LxC24>* destination);
/// 34: the overlay colour where source 2 is not 0, elsewhere the grey level of source 1. Trace
/// "PicOper ( BW8 Image, BW8 Image to C24 Image)".
LXPIC_API void PicOper(ARITH_LOGIC_OPERATIONS operation, LxROI<LxBW8>* source1,
                       LxROI<LxBW8>* source2, LxROI<LxC24>* destination);
/// Each component with the grey level: 2-6, 9-28, 33; 34 paints the overlay colour where source 2
/// is not 0, elsewhere source 1. Trace "PicOper ( C24 Image, BW8 Image to C24 Image)".
LXPIC_API void PicOper(ARITH_LOGIC_OPERATIONS operation, LxROI<LxC24>* source1,
                       LxROI<LxBW8>* source2, LxROI<LxC24>* destination);

/// Widening: 2 `a + b`, 3 `max(a - b, 0)`, 4 `a * b`, 5 `a / b` (65535 where `b` is 0). Trace
/// "PicOper ( BW8 Image and BW8 Image to BW16 Image)".
LXPIC_API void PicOper(ARITH_LOGIC_OPERATIONS operation, LxROI<LxBW8>* source1,
                       LxROI<LxBW8>* source2, LxROI<LxBW16>* destination);
/// 2-5 saturating, 29 and 30 modulo 65536. Trace "PicOper ( BW16 Image and BW8 Image to BW16
/// IMage)".
LXPIC_API void PicOper(ARITH_LOGIC_OPERATIONS operation, LxROI<LxBW16>* source1,
                       LxROI<LxBW8>* source2, LxROI<LxBW16>* destination);
/// Fills with the constant: 0. Trace "PicOper ( BW16 Const to Image)".
LXPIC_API void PicOper(ARITH_LOGIC_OPERATIONS operation, LxBW16 constant,
                       LxROI<LxBW16>* destination);
/// Copies (0) or inverts (1). Trace "PicOper (BW16 Image to Image)".
LXPIC_API void PicOper(ARITH_LOGIC_OPERATIONS operation, LxROI<LxBW16>* source,
                       LxROI<LxBW16>* destination);
/// 2-6, 9-15, 19, 20, 23-28, 33. Trace "PicOper ( BW16 Const, Image to Image)".
LXPIC_API void PicOper(ARITH_LOGIC_OPERATIONS operation, LxBW16 constant, LxROI<LxBW16>* source,
                       LxROI<LxBW16>* destination);
/// 2-15, 19-28, 33. Trace "PicOper ( BW16 Image, Const to Image)".
LXPIC_API void PicOper(ARITH_LOGIC_OPERATIONS operation, LxROI<LxBW16>* source, LxBW16 constant,
                       LxROI<LxBW16>* destination);
/// 2-6, 9-28, 33. Trace "PicOper ( BW16 Image, Image to Image)".
LXPIC_API void PicOper(ARITH_LOGIC_OPERATIONS operation, LxROI<LxBW16>* source1,
                       LxROI<LxBW16>* source2, LxROI<LxBW16>* destination);
/// @}
