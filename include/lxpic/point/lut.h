// SPDX-License-Identifier: Apache-2.0
/// @file lut.h
/// Lookup tables and functions of single pixels.
#pragma once

#include "lxpic/base/image.h"
#include "lxpic/base/vector.h"

/// @name Lookup
/// `destination = table[source]`. All work in place where both types agree. A null table sets
/// LX_ERROR_ARGUMENT_3_OUT_OF_RANGE, a null vector LX_ERROR_VECTOR_NO_DATA, a vector of another
/// length LX_ERROR_WRONG_VECTOR_SIZE, in each case after the regions have been checked.
/// @{

/// 256 entries. Trace "PicLut".
LXPIC_API void PicLut(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, LxBW8Vector* table);
/// 256 entries. Sets error codes but never appends to the trace.
LXPIC_API void PicLut(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned char* table);
/// A table of 2^k entries, k at most 16, indexed by the bits `shift` to `shift + k - 1` of the
/// pixel; a `shift` of 0xFFFFFFFF takes the k most significant bits. `shift + k` above 16 sets
/// LX_ERROR_ARGUMENT_4_OUT_OF_RANGE. Trace "PicLut ( BW16 to BW8)".
LXPIC_API void PicLut(LxROI<LxBW16>* source, LxROI<LxBW8>* destination, LxBW8Vector* table,
                      unsigned shift);
/// 65536 entries. Trace "PicLut (BW16)".
LXPIC_API void PicLut(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, unsigned short* table);
/// 65536 entries. Trace "PicLut (BW16)".
LXPIC_API void PicLut(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, LxBW16Vector* table);
/// @}

/// @name Transform
/// `destination = function(source)`, in row order. Works in place. A null function sets
/// LX_ERROR_ARGUMENT_3_OUT_OF_RANGE. An exception from the function ends the operation with
/// LX_ERROR_INTERNAL.
/// @{

/// A non-zero `useTable` calls the function once for each of the values 0..255 instead of once a
/// pixel. Trace "PicTransform".
LXPIC_API void PicTransform(LxROI<LxBW8>* source, LxROI<LxBW8>* destination,
                            unsigned char (*function)(unsigned char), int useTable);
/// Calls the function once a pixel. Trace "PicTransform (BW16)".
LXPIC_API void PicTransform(LxROI<LxBW16>* source, LxROI<LxBW16>* destination,
                            unsigned short (*function)(unsigned short));
/// @}
