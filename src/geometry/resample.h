// SPDX-License-Identifier: Apache-2.0
// Which kernel resamples what.
#pragma once

#include "foundation/frame.h"
#include "geometry/resampling_kernels.h"

namespace lx::geometry {

// Fills the destination from the source, whose pixels may be the destination's own. Sets
// LX_ERROR_ALLOCATION_FAILED when there is no memory, and has then written nothing.
void Resample(Resampling job, bool isInPlace);

template <class T>
void Resample(const FixedAffine& inverse, int bits, LxROI<T>* source, LxROI<T>* destination) {
  Resampling job;
  job.destination = RowsOf(destination);
  job.width = static_cast<std::int64_t>(destination->GetWidth());
  job.height = static_cast<std::int64_t>(destination->GetHeight());
  job.source = RowsOf(source);
  job.sourceWidth = static_cast<std::int64_t>(source->GetWidth());
  job.sourceHeight = static_cast<std::int64_t>(source->GetHeight());
  job.pixelBytes = sizeof(T);
  job.inverse = inverse;
  job.bits = bits;
  Resample(job, SamePixels(source, destination));
}

}  // namespace lx::geometry
