// SPDX-License-Identifier: Apache-2.0
// The pixels of a region that a measure visits, as rows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "foundation/path.h"
#include "foundation/pixel_map.h"
#include "lxpic/base/roi.h"

namespace lx {

// Whether a measure is confined to the runs of a region that has any.
enum class RunLists {
  kFollow,
  kIgnore
};

// Whether all runs of an attached region lie in it; sets the error if not.
bool HoldsItsRuns(const LxGenericROI& region, std::size_t pixelSize,
                  const LxVectorTemplate<LxRun>& runs, bool absolute);

// Pixels that follow each other in memory, at any address.
struct Span {
  const std::uint8_t* begin;
  const std::uint8_t* end;
};

// All pixels of an attached region, as its rows or as one long row where there are no gaps; or the
// pixels of its runs, run by run in the order of their addresses.
class Spans {
 public:
  // False, with the error set, when a run does not lie in the region any more. Nothing is allocated
  // when there are no runs.
  template <class T>
  Spans(const LxROI<T>* region, RunLists lists) : pixelSize_(sizeof(T)) {
    if (lists == RunLists::kFollow && region->GetRuns().GetNumElements() != 0) {
      MergeRuns(region->GetRuns(), region->RunsAreAbsolute(), *region);
      return;
    }
    const PixelMap map = MapOf(region);
    rows_ = map.destination;
    width_ = map.width;
    height_ = map.height;
  }
  explicit operator bool() const { return good_; }

  Path GetPath() const { return path_; }

  // How many pixels there are, each once for every run that it lies in.
  std::uint64_t CountPixels() const {
    std::uint64_t pixels = std::uint64_t{width_} * height_;
    for (const Span& span : runs_) {
      pixels += static_cast<std::size_t>(span.end - span.begin) / pixelSize_;
    }
    return pixels;
  }

  // Calls step(pixels, count) for each row of `count` pixels.
  template <class Step>
  void ForEach(const Step& step) const {
    for (std::size_t y = 0; y < height_; ++y) step(rows_.Row<const std::uint8_t>(y), width_);
    for (const Span& span : runs_) {
      step(span.begin, static_cast<std::size_t>(span.end - span.begin) / pixelSize_);
    }
  }

 private:
  void MergeRuns(const LxVectorTemplate<LxRun>& runs, bool absolute, const LxGenericROI& region);

  Path path_ = CurrentPath();
  Rows rows_;
  std::size_t width_ = 0;
  std::size_t height_ = 0;
  std::size_t pixelSize_;
  std::vector<Span> runs_;
  bool good_ = true;
};

}  // namespace lx
