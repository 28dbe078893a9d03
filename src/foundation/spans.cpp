// SPDX-License-Identifier: Apache-2.0
#include "foundation/spans.h"

#include <algorithm>

#include "base/runs.h"
#include "foundation/frame.h"

namespace lx {

void Spans::MergeRuns(const LxVectorTemplate<LxRun>& runs, bool absolute,
                      const LxGenericROI& region) {
  const auto* const origin = static_cast<const std::uint8_t*>(region.GetPixelPtr(0, 0));
  const RunGround ground = {absolute ? origin : nullptr, region.GetPitch(), region.GetWidth(),
                            region.GetHeight(), pixelSize_};
  good_ = Require(std::all_of(runs.begin(), runs.end(),
                              [&](const LxRun& run) { return HoldsRun(ground, run); }),
                  LX_ERROR_INCONSISTENT_ARGUMENTS);
  if (!good_) return;
  runs_.emplace(runs.GetNumElements());
  good_ = static_cast<bool>(*runs_);
  if (!good_) return;

  Span* const first = runs_->get();
  Span* last = first;
  for (const LxRun& run : runs) {
    const auto* const begin = origin + (run.start - reinterpret_cast<std::uintptr_t>(ground.base));
    *last++ = {begin, begin + (run.end - run.start)};
  }
  std::sort(first, last, [](const Span& a, const Span& b) { return a.begin < b.begin; });
  for (const Span* span = first; span != last; ++span) {
    // Runs that touch or overlap become one.
    if (runCount_ != 0 && span->begin <= first[runCount_ - 1].end) {
      first[runCount_ - 1].end = std::max(first[runCount_ - 1].end, span->end);
    } else {
      first[runCount_++] = *span;
    }
  }
}

}  // namespace lx
