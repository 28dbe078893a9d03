// SPDX-License-Identifier: Apache-2.0
#include "geometry/resampling_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "geometry/nearest_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "geometry/sampling-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::geometry::HWY_NAMESPACE {

namespace {

#if LX_HAS_LANES

constexpr std::int64_t kStrip = 1024;
template <std::size_t kBytes>
void Nearest(const Resampling& job) {
  if (!FitsWords(job, kStrip)) return SampleAll(job, NearestPoint<kBytes>{job});
  constexpr auto kWide = static_cast<std::int64_t>(kBytes);
  ForEachTile(job, kStrip, [&](const Band& band, Span columns) HWY_ATTR {
    HWY_ALIGN std::int32_t offsets[kStrip];
    for (std::int64_t y = band.first; y < band.end; ++y) {
      const Span span = band.InRow(y, columns);
      if (span.Length() <= 0) continue;
      const auto count = static_cast<std::size_t>(span.Length());
      const Point start = PointOf(job, span.from, y);
      MakeOffsets<kBytes>(job, start, count, offsets);
      const auto* const row =
          job.source.Row<const std::uint8_t>(static_cast<std::size_t>(start.y >> 16));
      auto* const to = job.destination.Row<std::uint8_t>(static_cast<std::size_t>(y));
      PixelsAt<kBytes>(row + (start.x >> 16) * kWide, offsets, count, to + span.from * kWide);
    }
  });
}

#else

template <std::size_t kBytes>
void Nearest(const Resampling& job) {
  SampleAll(job, NearestPoint<kBytes>{job});
}

#endif

void NearestBytes(const Resampling& job) { Nearest<1>(job); }
void NearestWords(const Resampling& job) { Nearest<2>(job); }
void NearestColours(const Resampling& job) { Nearest<3>(job); }

}  // namespace
}  // namespace lx::geometry::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::geometry {

HWY_EXPORT(NearestBytes);
HWY_EXPORT(NearestWords);
HWY_EXPORT(NearestColours);

void ResampleNearest(const Resampling& job) {
  const auto kernel = job.pixelBytes == 1   ? LX_KERNEL(job.path, NearestBytes)
                      : job.pixelBytes == 2 ? LX_KERNEL(job.path, NearestWords)
                                            : LX_KERNEL(job.path, NearestColours);
  kernel(job);
}

}  // namespace lx::geometry
#endif
