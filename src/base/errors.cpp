// SPDX-License-Identifier: Apache-2.0
#include "lxpic/base/errors.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

namespace {

constexpr std::size_t kTraceDepth = 32;
constexpr std::size_t kNameBytes = 96;

// Plain arrays, so that reporting a failure can never fail itself.
struct ErrorRecord {
  LX_ERRORS code;
  int traceCount;
  std::array<std::array<char, kNameBytes>, kTraceDepth> trace;
};

thread_local ErrorRecord record{};

struct ErrorText {
  LX_ERRORS code;
  const char* text;
};

constexpr std::array kTexts = {
    ErrorText{LX_OK, "no error"},
    ErrorText{LX_ERROR_POINT_OUTSIDE_IMAGE, "a point lies outside the region"},
    ErrorText{LX_ERROR_UNSUPPORTED_OPERATION,
              "the operation value is not offered for these operands"},
    ErrorText{LX_ERROR_INCONSISTENT_ARGUMENTS, "two arguments contradict each other"},
    ErrorText{LX_ERROR_UNKNOWN_MODE, "unknown mode"},
    ErrorText{LX_ERROR_RANGE_END_BEFORE_START, "the range ends before it starts"},
    ErrorText{LX_ERROR_ARGUMENT_1_OUT_OF_RANGE, "argument 1 is out of range"},
    ErrorText{LX_ERROR_ARGUMENT_2_OUT_OF_RANGE, "argument 2 is out of range"},
    ErrorText{LX_ERROR_ARGUMENT_3_OUT_OF_RANGE, "argument 3 is out of range"},
    ErrorText{LX_ERROR_ARGUMENT_4_OUT_OF_RANGE, "argument 4 is out of range"},
    ErrorText{LX_ERROR_ARGUMENT_5_OUT_OF_RANGE, "argument 5 is out of range"},
    ErrorText{LX_ERROR_ARGUMENT_6_OUT_OF_RANGE, "argument 6 is out of range"},
    ErrorText{LX_ERROR_WRONG_IMAGE_TYPE, "the image has the wrong pixel type"},
    ErrorText{LX_ERROR_SINGULAR_SYSTEM, "the system of equations is singular"},
    ErrorText{LX_ERROR_EMPTY_HISTOGRAM, "there is no pixel or count to measure"},
    ErrorText{LX_ERROR_FILE_OPEN_FAILED, "the file cannot be opened"},
    ErrorText{LX_ERROR_FILE_READ_FAILED, "the file ends too early or cannot be read"},
    ErrorText{LX_ERROR_FILE_WRITE_FAILED, "the file cannot be written"},
    ErrorText{LX_ERROR_BAD_FILE_SIGNATURE, "the file holds something else, or is damaged"},
    ErrorText{LX_ERROR_FILE_CLOSE_FAILED, "the file cannot be closed"},
    ErrorText{LX_ERROR_NOT_ENOUGH_MEMORY, "not enough memory for the operation"},
    ErrorText{LX_ERROR_ALLOCATION_FAILED, "storage cannot be allocated"},
    ErrorText{LX_ERROR_ROI_NOT_ATTACHED, "a region is missing or not attached to an image"},
    ErrorText{LX_ERROR_SIZE_MISMATCH, "the sizes of the regions differ"},
    ErrorText{LX_ERROR_WARP_TABLE, "the warp table points outside the source"},
    ErrorText{LX_ERROR_DIVISION_BY_ZERO, "division by zero"},
    ErrorText{LX_ERROR_DESTINATION_IS_SOURCE,
              "the operation cannot run in place: the destination is missing or is the source"},
    ErrorText{LX_ERROR_HALVE_SIZE, "the destination is not half the source's size"},
    ErrorText{LX_ERROR_UNSUPPORTED_IMAGE_TYPE, "the pixel type is not supported"},
    ErrorText{LX_ERROR_CONTOUR_START, "the contour's start point is not on an object"},
    ErrorText{LX_ERROR_CONTOUR_START_INSIDE_OBJECT,
              "the contour's start point lies inside an object"},
    ErrorText{LX_ERROR_CONTOUR_START_ISOLATED, "the contour's start point is isolated"},
    ErrorText{LX_ERROR_CONTOUR_OVERFLOW, "the contour has too many points"},
    ErrorText{LX_ERROR_VECTOR_NO_DATA, "the vector has no data"},
    ErrorText{LX_ERROR_WRONG_VECTOR_KIND, "the vector is of the wrong kind"},
    ErrorText{LX_ERROR_EQUALIZE_SETUP, "the histogram vector is of the wrong kind"},
    ErrorText{LX_ERROR_VECTOR_EMPTY, "the vector is empty, or the range lies outside it"},
    ErrorText{LX_ERROR_UNSUPPORTED_DATA_SIZE, "the vector's element width is not supported"},
    ErrorText{LX_ERROR_UNSUPPORTED_DATA_TYPE, "the vector's element type is not supported"},
    ErrorText{LX_ERROR_VECTOR_CONTENT, "the vector's content is of the wrong kind"},
    ErrorText{LX_ERROR_TOO_MANY_TRANSITIONS, "there are more transitions than the result can hold"},
    ErrorText{LX_ERROR_INVALID_GROUP_RANGE, "the group range is invalid"},
    ErrorText{LX_ERROR_DISC_ENERGY, "the result vector's groups must have one element"},
    ErrorText{LX_ERROR_WRONG_VECTOR_SIZE, "the vector has the wrong number of elements"},
    ErrorText{LX_ERROR_KERNEL_NO_DATA, "the kernel is missing or has no coefficients"},
    ErrorText{LX_ERROR_KERNEL_UNSUITABLE, "the kernel has a coefficient that is not -1, 0 or 1"},
    ErrorText{LX_ERROR_KERNEL_RECTIFIER, "the kernel's rectifier setting is not supported"},
    ErrorText{LX_ERROR_UNSUPPORTED_KERNEL_SIZE, "the kernel's size is not supported"},
    ErrorText{LX_ERROR_KERNEL_NOT_ALLOCATED, "the kernel has no storage"},
    ErrorText{LX_ERROR_WARP_RANGE, "the warp table is smaller than the destination"},
    ErrorText{LX_ERROR_NOT_POWER_OF_TWO, "width and height must be powers of two"},
    ErrorText{LX_ERROR_INTERNAL, "internal error: no case for this value"},
};

}  // namespace

void LxOk() {
  record.code = LX_OK;
  record.traceCount = 0;
}

void LxSetError(LX_ERRORS code) { record.code = code; }

LX_ERRORS LxGetError() { return record.code; }

void LxTraceError(const char* name) {
  const auto used = static_cast<std::size_t>(record.traceCount);
  if (name == nullptr || used == kTraceDepth) return;
  auto& slot = record.trace[used];
  const std::size_t length = std::min(std::strlen(name), kNameBytes - 1);
  std::memcpy(slot.data(), name, length);
  slot[length] = '\0';
  ++record.traceCount;
}

int LxGetTraceCount() { return record.traceCount; }

const char* LxGetTrace(int index) {
  if (index < 0 || index >= record.traceCount) return "";
  return record.trace[static_cast<std::size_t>(index)].data();
}

const char* LxGetErrorText(LX_ERRORS code) {
  const auto* const found = std::find_if(kTexts.begin(), kTexts.end(),
                                         [code](const ErrorText& row) { return row.code == code; });
  return found == kTexts.end() ? "unknown error" : found->text;
}
