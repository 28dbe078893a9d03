// SPDX-License-Identifier: Apache-2.0
/// @file vector_arithmetic.h
/// Arithmetic of an untyped vector and a constant.
#pragma once

#include "lxpic/base/vector.h"
#include "lxpic/point/arithmetic.h"

/// Combines the groups `first`..`last` (-1: the last one) of `source` with `constant` into the same
/// groups of `destination`, which takes the source's layout; its other groups become 0. Elements
/// are 8, 16 or 32 bits wide, signed or unsigned, and saturate at the bounds of their type. Works
/// in place. All six arguments are given: four call the form below.
///
/// Operations 0-9, 13-15, 19, 20, 22 (`constant` where the element is not 0, else 0) and 35. The
/// constant is taken modulo the element type. A shift of more bits than the element has (a negative
/// one too) gives all ones for every element but 0 (left) or 0 (right). Division and modulo by 0
/// set LX_ERROR_DIVISION_BY_ZERO and fill the groups with the largest value.
///
/// Errors, in this order: LX_ERROR_VECTOR_NO_DATA (a null vector), LX_ERROR_UNSUPPORTED_DATA_SIZE,
/// LX_ERROR_UNSUPPORTED_DATA_TYPE, LX_ERROR_VECTOR_EMPTY (`first` or `last` outside the source),
/// LX_ERROR_RANGE_END_BEFORE_START, LX_ERROR_ALLOCATION_FAILED, LX_ERROR_ROI_NOT_ATTACHED (no
/// storage), LX_ERROR_UNSUPPORTED_OPERATION. Trace "PicVect1c2", after "CheckGroups" for a bad
/// range.
LXPIC_API void PicVect1c2(ARITH_LOGIC_OPERATIONS operation, LxVector* source, int constant,
                          LxVector* destination, int first, int last);

/// Reserved for floating-point vectors: computes nothing and always sets
/// LX_ERROR_UNSUPPORTED_DATA_SIZE (for a floating-point source) or LX_ERROR_UNSUPPORTED_DATA_TYPE
/// (for any other). Trace "PicVect1c2".
LXPIC_API void PicVect1c2(ARITH_LOGIC_OPERATIONS operation, LxVector* source, double constant,
                          LxVector* destination);
