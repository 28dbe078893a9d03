// SPDX-License-Identifier: Apache-2.0
#include "foundation/scratch.h"
#include "geometry/resampling_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "geometry/aligned_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "geometry/aligned_rows-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::geometry::HWY_NAMESPACE {

namespace {

// Every row of the destination comes from one row of the source, by the same columns. Rows that
// come from the same one are copies.
template <std::size_t kBytes>
void AlignedNearest(const Resampling& job, const AlignedPlan& plan, std::uint8_t* scratch) {
  auto* const offsets = reinterpret_cast<std::int32_t*>(scratch);
  const bool isShift = job.inverse.x.column == kOnePixel;
  if (!isShift) plan.MakeOffsets(job, offsets);
  const std::uint8_t* last = nullptr;
  const std::uint8_t* lastRow = nullptr;
  ForEachAlignedRow(job, plan, [&](std::int64_t at, std::uint8_t* to) {
    const auto* const row = job.source.Row<const std::uint8_t>(static_cast<std::size_t>(at >> 16)) +
                            plan.first * static_cast<std::int64_t>(kBytes);
    if (last != nullptr && row == lastRow) {
      std::memmove(to, last, plan.Count() * kBytes);
    } else if (isShift) {
      std::memmove(to, row, plan.Count() * kBytes);
    } else {
      PixelsAt<kBytes>(row, offsets, plan.Count(), to);
    }
    lastRow = row;
    last = to;
  });
}

void NearestByteRows(const Resampling& job, const AlignedPlan& plan, std::uint8_t* scratch) {
  AlignedNearest<1>(job, plan, scratch);
}
void NearestWordRows(const Resampling& job, const AlignedPlan& plan, std::uint8_t* scratch) {
  AlignedNearest<2>(job, plan, scratch);
}
void NearestColourRows(const Resampling& job, const AlignedPlan& plan, std::uint8_t* scratch) {
  AlignedNearest<3>(job, plan, scratch);
}

#if LX_HAS_PAIR_PRODUCTS

// Rows are mixed from left to right once, and from top to bottom whenever they are needed: the last
// two stay.
template <class Rule>
void AlignedBilinear(const Resampling& job, const AlignedPlan& plan, std::uint8_t* scratch) {
  using Sum = typename Rule::Sum;
  const AlignedLayout layout(plan, job.pixelBytes);
  const AlignedColumns columns = MakeColumns<Rule>(job, plan, layout, scratch);
  auto* const line = scratch + layout.Line();
  Sum* const rows[2] = {reinterpret_cast<Sum*>(scratch + layout.Row(0)),
                        reinterpret_cast<Sum*>(scratch + layout.Row(1))};
  std::int64_t held[2] = {-1, -1};
  const auto mixed = [&](std::int64_t y) HWY_ATTR {
    const auto row = std::clamp<std::int64_t>(y, 0, job.sourceHeight - 1);
    const std::size_t slot = static_cast<std::size_t>(row & 1);
    if (held[slot] != row) {
      LoadLine(job, plan, row, line);
      Rule::Across(columns, line, rows[slot]);
      held[slot] = row;
    }
    return static_cast<const Sum*>(rows[slot]);
  };
  ForEachAlignedRow(job, plan, [&](std::int64_t at, std::uint8_t* to) HWY_ATTR {
    const std::int64_t y = at >> 16;
    const Sum* const above = mixed(y - 1);
    const Sum* const below = mixed(y);
    Rule::Down(above, below, Fraction(at, FractionMask(job)), plan.Count(), to);
  });
}

void ByteRows(const Resampling& job, const AlignedPlan& plan, std::uint8_t* scratch) {
  AlignedBilinear<ByteRule>(job, plan, scratch);
}
void WordRows(const Resampling& job, const AlignedPlan& plan, std::uint8_t* scratch) {
  AlignedBilinear<WordRule>(job, plan, scratch);
}
void ColourRows(const Resampling& job, const AlignedPlan& plan, std::uint8_t* scratch) {
  AlignedBilinear<ColourRule>(job, plan, scratch);
}

#else

void ByteRows(const Resampling& job, const AlignedPlan& /*plan*/, std::uint8_t* /*scratch*/) {
  SampleAll(job, BilinearPoint<std::uint8_t, 1>{job});
}
void WordRows(const Resampling& job, const AlignedPlan& /*plan*/, std::uint8_t* /*scratch*/) {
  SampleAll(job, BilinearPoint<std::uint16_t, 1>{job});
}
void ColourRows(const Resampling& job, const AlignedPlan& /*plan*/, std::uint8_t* /*scratch*/) {
  SampleAll(job, BilinearPoint<std::uint8_t, 3>{job});
}

#endif

}  // namespace
}  // namespace lx::geometry::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::geometry {

HWY_EXPORT(NearestByteRows);
HWY_EXPORT(NearestWordRows);
HWY_EXPORT(NearestColourRows);
HWY_EXPORT(ByteRows);
HWY_EXPORT(WordRows);
HWY_EXPORT(ColourRows);

namespace {

using Kernel = void (*)(const Resampling& job, const AlignedPlan& plan, std::uint8_t* scratch);

Kernel NearestKernel(const Resampling& job) {
  if (job.pixelBytes == 1) return LX_KERNEL(job.path, NearestByteRows);
  if (job.pixelBytes == 2) return LX_KERNEL(job.path, NearestWordRows);
  return LX_KERNEL(job.path, NearestColourRows);
}

Kernel BilinearKernel(const Resampling& job) {
  if (job.pixelBytes == 1) return LX_KERNEL(job.path, ByteRows);
  if (job.pixelBytes == 2) return LX_KERNEL(job.path, WordRows);
  return LX_KERNEL(job.path, ColourRows);
}

}  // namespace

void ResampleAligned(const Resampling& job) {
  const AlignedPlan plan(job);
  const Scratch<std::uint8_t> scratch(AlignedLayout(plan, job.pixelBytes).Bytes());
  if (!scratch) return;
  const Kernel kernel = job.bits == 0 ? NearestKernel(job) : BilinearKernel(job);
  kernel(job, plan, scratch.get());
}

}  // namespace lx::geometry
#endif
