// SPDX-License-Identifier: Apache-2.0
/// @file vector_filters.h
/// Convolution, runs beyond limits and shifts of untyped vectors.
#pragma once

#include "lxpic/base/vector.h"
#include "lxpic/convolution/kernel.h"

/// Filters the groups `first`..`last` (-1: the last one) of `source`, each by itself, with a kernel
/// of one row of three, and lays `result` out as the filtered groups. Elements are 8, 16 or 32 bits
/// wide, signed or unsigned.
///
/// The coefficients weigh the left neighbour, the element and the right neighbour; where there is
/// none the kernel's outside value stands. They are multiplied by the gain, which is divided by
/// their sum unless that is 0; a gain of 0 leaves them as they are. The weighted sum has double
/// precision, is truncated (0 when it is not a number), rectified, moved by the kernel's offset as a
/// signed number, and clamped to the element's range.
///
/// Errors, in this order: LX_ERROR_VECTOR_NO_DATA: a null vector; LX_ERROR_DESTINATION_IS_SOURCE;
/// LX_ERROR_INVALID_GROUP_RANGE: `first` or `last` outside the source, or `first` above `last`;
/// LX_ERROR_UNSUPPORTED_DATA_SIZE; LX_ERROR_UNSUPPORTED_DATA_TYPE: not integers;
/// LX_ERROR_ALLOCATION_FAILED, after "LxVector::SetStructure"; and, with the result laid out and 0,
/// LX_ERROR_KERNEL_NO_DATA: a null kernel; LX_ERROR_UNSUPPORTED_KERNEL_SIZE;
/// LX_ERROR_KERNEL_NO_DATA: no coefficients. Trace "PicConvolVect".
LXPIC_API void PicConvolVect(LxVector* source, LxVector* result, LxKernel* kernel, int first,
                             int last);

/// @name Runs beyond limits
/// Finds runs of large and of small elements in the first group of `source`. A high run starts with
/// an element above both limits and lasts while elements are above `high`; a low run starts with one
/// below both and lasts while they are below `low`, so that limits that overlap are a hysteresis. The
/// element that ends a run starts none.
///
/// `result` gets a record of three signed 32-bit integers for each run: the index of its centre,
/// rounded down, its length, and its area, which is the sum of the differences to `high` or `low`,
/// modulo 2^32. It is of kind 5 (LX_VECTOR_EXTREMES) and use code 6, grows by 2,048 records when it
/// is full, and keeps its storage when it is of that kind already.
///
/// Errors, in this order: LX_ERROR_VECTOR_NO_DATA: a null vector; LX_ERROR_DESTINATION_IS_SOURCE;
/// LX_ERROR_VECTOR_EMPTY: no group; LX_ERROR_UNSUPPORTED_DATA_SIZE: not of 8, 16 or 32 bits;
/// LX_ERROR_UNSUPPORTED_DATA_TYPE: not of the form's sign; LX_ERROR_ALLOCATION_FAILED, after
/// "LxVector::SetType", or after "LxVector::Reallocate" with the records that fitted. Trace
/// "PicGetVectExtremes".
/// @{

/// Of signed integers.
LXPIC_API void PicGetVectExtremes(LxVector* source, LxVector* result, int low, int high);
/// Of unsigned integers.
LXPIC_API void PicGetVectExtremes(LxVector* source, LxVector* result, unsigned int low,
                                  unsigned int high);
/// @}

/// Shifts the elements of the groups `first`..`last` in place; 0 and 0 stand for all groups. Elements
/// are shifted right by `shift` bits, signed ones with their sign, or left by `-shift` bits, which
/// loses what leaves the element. The number of bits is taken modulo 32; as many as the element has
/// leave 0, or the sign.
///
/// Errors, in this order: LX_ERROR_VECTOR_NO_DATA: a null vector; LX_ERROR_VECTOR_EMPTY: `first` or
/// `last` outside the vector, or `first` above `last`; LX_ERROR_VECTOR_NO_DATA: no storage;
/// LX_ERROR_UNSUPPORTED_DATA_SIZE; LX_ERROR_UNSUPPORTED_DATA_TYPE: not integers. Trace
/// "PicVectDataShift".
LXPIC_API void PicVectDataShift(LxVector* vector, int shift, int first, int last);
