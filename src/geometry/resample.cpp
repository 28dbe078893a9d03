// SPDX-License-Identifier: Apache-2.0
#include "geometry/resample.h"

#include <cstring>

#include "foundation/scratch.h"

namespace lx::geometry {

namespace {

void Run(const Resampling& job) {
  // Tables hold 32-bit offsets within a row.
  const bool fits = Int128{job.sourceWidth} * static_cast<int>(job.pixelBytes) <= INT32_MAX;
  if (job.inverse.IsAligned() && fits) {
    ResampleAligned(job);
  } else if (job.bits == 0) {
    ResampleNearest(job);
  } else if (job.pixelBytes == 3) {
    ResampleColours(job);
  } else {
    ResampleGrey(job);
  }
}

void Clear(const Resampling& job) {
  const std::size_t bytes = static_cast<std::size_t>(job.width) * job.pixelBytes;
  for (std::size_t y = 0; y < static_cast<std::size_t>(job.height); ++y) {
    std::memset(job.destination.Row<std::uint8_t>(y), 0, bytes);
  }
}

void RunOnCopy(Resampling job) {
  const std::size_t bytes = static_cast<std::size_t>(job.sourceWidth) * job.pixelBytes;
  const auto height = static_cast<std::size_t>(job.sourceHeight);
  const Scratch<std::uint8_t> copy(bytes * height);
  if (!copy) return;
  const Rows rows = {copy.get(), static_cast<std::ptrdiff_t>(bytes)};
  for (std::size_t y = 0; y < height; ++y) {
    std::memcpy(rows.Row<std::uint8_t>(y), job.source.Row<std::uint8_t>(y), bytes);
  }
  job.source = rows;
  Run(job);
}

}  // namespace

void Resample(Resampling job, bool isInPlace) {
  if (job.width == 0 || job.height == 0) return;
  if (job.inverse.isNowhere || job.sourceWidth == 0 || job.sourceHeight == 0) return Clear(job);
  isInPlace ? RunOnCopy(job) : Run(job);
}

}  // namespace lx::geometry
