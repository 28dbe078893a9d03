// SPDX-License-Identifier: Apache-2.0
// The frame of every exported operation: error state, argument checks, trace, no exceptions.
#pragma once

#include <cstdint>
#include <initializer_list>

#include "base/failure.h"
#include "lxpic/base/roi.h"

namespace lx {

// Runs the body of an operation: resets the error state, turns exceptions into error codes and
// appends `trace` after a failure. A null `trace` appends nothing.
template <class Body>
void RunOperation(const char* trace, const Body& body) noexcept {
  LxOk();
  RunGuarded(body);
  if (LxGetError() != LX_OK) LxTraceError(trace);
}

// Each check returns whether the operation may go on, and sets the error code if not.

inline bool Require(bool condition, LX_ERRORS code) {
  if (!condition) LxSetError(code);
  return condition;
}

// Every region has pixels in memory.
bool Attached(std::initializer_list<LxGenericROI*> regions);

// Every region has pixels in memory, and all have the size of the last one.
bool Usable(std::initializer_list<LxGenericROI*> regions);

// Whether two attached regions of one type lie over the same pixels: in place is decided by memory.
bool SamePixels(const LxGenericROI* a, const LxGenericROI* b);

// The source and, unless it is missing, the destination are usable. Missing means in place.
bool UsablePair(LxGenericROI* source, LxGenericROI* destination);

// Both are usable, and the destination is there and is not the source.
bool UsableApart(LxGenericROI* source, LxGenericROI* destination);

// Gives a region this size through its SetSize(), which sets the code and the trace of a failure.
// Refused when `source` lies in the memory that the region would give up.
bool Resize(LxGenericROI* region, std::uint32_t width, std::uint32_t height,
            const LxGenericROI* source = nullptr);

}  // namespace lx
