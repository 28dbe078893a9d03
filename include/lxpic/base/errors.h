// SPDX-License-Identifier: Apache-2.0
/// @file errors.h
/// Error state and trace, both kept per thread.
///
/// No operation throws or returns an error code. After a call, LxGetError() gives the code of its
/// first failure, or LX_OK; the trace names the operations that the failure passed through,
/// innermost first.
#pragma once

#include "lxpic/base/export.h"

/// Error codes. The numbers are fixed; LxGetErrorText() gives the meaning of each.
enum LX_ERRORS : int {
  LX_OK = 0,                              ///< no error
  LX_ERROR_POINT_OUTSIDE_IMAGE = 106,     ///< a point lies outside the region
  LX_ERROR_UNSUPPORTED_OPERATION = 1003,  ///< the operation value is not offered for these operands
  LX_ERROR_INCONSISTENT_ARGUMENTS = 1007,   ///< two arguments contradict each other
  LX_ERROR_UNKNOWN_MODE = 1009,             ///< unknown mode
  LX_ERROR_RANGE_END_BEFORE_START = 1010,   ///< the range ends before it starts
  LX_ERROR_ARGUMENT_1_OUT_OF_RANGE = 1011,  ///< argument 1 is out of range
  LX_ERROR_ARGUMENT_2_OUT_OF_RANGE = 1012,  ///< argument 2 is out of range
  LX_ERROR_ARGUMENT_3_OUT_OF_RANGE = 1013,  ///< argument 3 is out of range
  LX_ERROR_ARGUMENT_4_OUT_OF_RANGE = 1014,  ///< argument 4 is out of range
  LX_ERROR_ARGUMENT_5_OUT_OF_RANGE = 1015,  ///< argument 5 is out of range
  LX_ERROR_ARGUMENT_6_OUT_OF_RANGE = 1016,  ///< argument 6 is out of range
  LX_ERROR_WRONG_IMAGE_TYPE = 1024,         ///< the image has the wrong pixel type
  LX_ERROR_SINGULAR_SYSTEM = 1050,          ///< the system of equations is singular
  LX_ERROR_EMPTY_HISTOGRAM = 1051,          ///< there is no pixel or count to measure
  LX_ERROR_FILE_OPEN_FAILED = 1102,         ///< the file cannot be opened
  LX_ERROR_FILE_READ_FAILED = 1103,         ///< the file ends too early or cannot be read
  LX_ERROR_FILE_WRITE_FAILED = 1104,        ///< the file cannot be written
  LX_ERROR_BAD_FILE_SIGNATURE = 1105,       ///< the file holds something else, or is damaged
  LX_ERROR_FILE_CLOSE_FAILED = 1106,        ///< the file cannot be closed
  LX_ERROR_NOT_ENOUGH_MEMORY = 1301,        ///< not enough memory for the operation
  LX_ERROR_ALLOCATION_FAILED = 1303,        ///< storage cannot be allocated
  LX_ERROR_ROI_NOT_ATTACHED = 1400,         ///< a region is missing or not attached to an image
  LX_ERROR_SIZE_MISMATCH = 1403,            ///< the sizes of the regions differ
  LX_ERROR_WARP_TABLE = 1405,               ///< the warp table points outside the source
  LX_ERROR_DIVISION_BY_ZERO = 1411,         ///< division by zero
  LX_ERROR_DESTINATION_IS_SOURCE =
      1413,  ///< the operation cannot run in place: the destination is missing or is the source
  LX_ERROR_HALVE_SIZE = 1414,                   ///< the destination is not half the source's size
  LX_ERROR_UNSUPPORTED_IMAGE_TYPE = 1419,       ///< the pixel type is not supported
  LX_ERROR_CONTOUR_START = 1500,                ///< the contour's start point is not on an object
  LX_ERROR_CONTOUR_START_INSIDE_OBJECT = 1501,  ///< the contour's start point lies inside an object
  LX_ERROR_CONTOUR_START_ISOLATED = 1502,       ///< the contour's start point is isolated
  LX_ERROR_CONTOUR_OVERFLOW = 1504,             ///< the contour has too many points
  LX_ERROR_VECTOR_NO_DATA = 1601,               ///< the vector has no data
  LX_ERROR_WRONG_VECTOR_KIND = 1602,            ///< the vector is of the wrong kind
  LX_ERROR_EQUALIZE_SETUP = 1603,               ///< the histogram vector is of the wrong kind
  LX_ERROR_VECTOR_EMPTY = 1604,             ///< the vector is empty, or the range lies outside it
  LX_ERROR_UNSUPPORTED_DATA_SIZE = 1605,    ///< the vector's element width is not supported
  LX_ERROR_UNSUPPORTED_DATA_TYPE = 1606,    ///< the vector's element type is not supported
  LX_ERROR_VECTOR_CONTENT = 1607,           ///< the vector's content is of the wrong kind
  LX_ERROR_TOO_MANY_TRANSITIONS = 1608,     ///< there are more transitions than the result can hold
  LX_ERROR_INVALID_GROUP_RANGE = 1609,      ///< the group range is invalid
  LX_ERROR_DISC_ENERGY = 1611,              ///< the result vector's groups must have one element
  LX_ERROR_WRONG_VECTOR_SIZE = 1613,        ///< the vector has the wrong number of elements
  LX_ERROR_KERNEL_NO_DATA = 1700,           ///< the kernel is missing or has no coefficients
  LX_ERROR_KERNEL_UNSUITABLE = 1701,        ///< the kernel has a coefficient that is not -1, 0 or 1
  LX_ERROR_KERNEL_RECTIFIER = 1702,         ///< the kernel's rectifier setting is not supported
  LX_ERROR_UNSUPPORTED_KERNEL_SIZE = 1703,  ///< the kernel's size is not supported
  LX_ERROR_KERNEL_NOT_ALLOCATED = 1704,     ///< the kernel has no storage
  LX_ERROR_WARP_RANGE = 2200,               ///< the warp table is smaller than the destination
  LX_ERROR_NOT_POWER_OF_TWO = 2600,         ///< width and height must be powers of two
  LX_ERROR_INTERNAL = 32767,                ///< internal error: no case for this value
};

/// Clears the error state and the trace of the calling thread.
LXPIC_API void LxOk();

/// Sets the error state of the calling thread.
LXPIC_API void LxSetError(LX_ERRORS code);

/// The error state of the calling thread.
LXPIC_API LX_ERRORS LxGetError();

/// Appends a copy of `name` to the trace. A null name is ignored; names beyond the 32nd are dropped
/// and characters beyond the 95th cut.
LXPIC_API void LxTraceError(const char* name);

/// Number of names in the trace.
LXPIC_API int LxGetTraceCount();

/// Name number `index` of the trace, 0 being the innermost; "" when there is none. Valid until the
/// calling thread's next LxOk() or LxTraceError().
LXPIC_API const char* LxGetTrace(int index);

/// English text of a code; "unknown error" for a number that is no code. Never null.
LXPIC_API const char* LxGetErrorText(LX_ERRORS code);
