// SPDX-License-Identifier: Apache-2.0
#include "foundation/spans.h"

#include <algorithm>

#include "base/runs.h"
#include "foundation/frame.h"

namespace lx {

namespace {

RunGround GroundOf(const LxGenericROI& region, std::size_t pixelSize, bool absolute) {
  const auto* const origin = static_cast<const std::uint8_t*>(region.GetPixelPtr(0, 0));
  return {absolute ? origin : nullptr, region.GetPitch(), region.GetWidth(), region.GetHeight(),
          pixelSize};
}

}  // namespace

bool HoldsItsRuns(const LxGenericROI& region, std::size_t pixelSize,
                  const LxVectorTemplate<LxRun>& runs, bool absolute) {
  const RunGround ground = GroundOf(region, pixelSize, absolute);
  return Require(std::all_of(runs.begin(), runs.end(),
                             [&](const LxRun& run) { return HoldsRun(ground, run); }),
                 LX_ERROR_INCONSISTENT_ARGUMENTS);
}

void Spans::MergeRuns(const LxVectorTemplate<LxRun>& runs, bool absolute,
                      const LxGenericROI& region) {
  good_ = HoldsItsRuns(region, pixelSize_, runs, absolute);
  if (!good_) return;

  const auto* const origin = static_cast<const std::uint8_t*>(region.GetPixelPtr(0, 0));
  const RunGround ground = GroundOf(region, pixelSize_, absolute);
  runs_.reserve(runs.GetNumElements());
  for (const LxRun& run : runs) {
    const auto* const begin = origin + (run.start - reinterpret_cast<std::uintptr_t>(ground.base));
    runs_.push_back({begin, begin + (run.end - run.start)});
  }
  std::sort(runs_.begin(), runs_.end(),
            [](const Span& a, const Span& b) { return a.begin < b.begin; });
  // Runs that touch become one; where they overlap, pixels are visited once for each.
  std::size_t last = 0;
  for (std::size_t i = 1; i < runs_.size(); ++i) {
    if (runs_[i].begin == runs_[last].end) {
      runs_[last].end = runs_[i].end;
    } else {
      runs_[++last] = runs_[i];
    }
  }
  runs_.resize(last + 1);
}

}  // namespace lx
