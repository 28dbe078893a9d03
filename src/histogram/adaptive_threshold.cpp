// SPDX-License-Identifier: Apache-2.0
// Thresholds that follow the image: those of tiles, and what lies between them.
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "foundation/frame.h"
#include "lxpic/geometry/resampling.h"
#include "lxpic/histogram/histogram.h"
#include "lxpic/histogram/thresholding.h"

namespace {

using namespace lx;

// The tiles along one side of an image: `count` + 1 nodes from end to end, each in the middle of a
// tile that is cut at the ends.
class TileAxis {
 public:
  TileAxis(unsigned size, int tile)
      : size_(size),
        half_(tile / 2),
        count_(static_cast<std::int64_t>(
            std::ceil(static_cast<float>(size) / static_cast<float>(tile)))) {}

  // An image too large for its nodes to be counted has none.
  int Nodes() const { return static_cast<int>(count_ < INT32_MAX ? count_ + 1 : -1); }
  int First(int node) const {
    return static_cast<int>(std::max(std::int64_t{0}, CentreOf(node) - half_));
  }
  int Length(int node) const {
    return static_cast<int>(std::min(size_, CentreOf(node) + half_)) - First(node);
  }
  float Step() const { return static_cast<float>(size_) / static_cast<float>(count_); }

 private:
  std::int64_t CentreOf(int node) const { return node * size_ / count_; }

  std::int64_t size_;
  std::int64_t half_;
  std::int64_t count_;
};

bool IsMode(unsigned mode) {
  return mode >= PIC_THRESHOLD_MIN_SQUARED_DEVIATION && mode <= PIC_THRESHOLD_RELATIVE;
}

// Modes that split the levels into two filled classes select 0, and nothing else does, when there is
// only one level.
bool NeedsTwoLevels(unsigned mode) {
  return mode >= PIC_THRESHOLD_ISODATA && mode <= PIC_THRESHOLD_MIN_RESIDUE;
}

std::uint8_t ThresholdOf(LxROI<LxBW8>& tile, unsigned mode, LxBWHistogramVector& histogram) {
  unsigned threshold = mode;
  float below = 0;
  float above = 0;
  PicHistogram(&tile, &histogram);
  PicHistogramThreshold(&histogram, threshold, below, above, 0.5F, 0, 255);
  if (threshold == 0 && NeedsTwoLevels(mode)) threshold = PicIsodataThreshold(&histogram, 0, 255);
  return static_cast<std::uint8_t>(std::min(threshold, 255U));
}

void FillGrid(LxROI<LxBW8>* source, unsigned mode, const TileAxis& across, const TileAxis& down,
              LxImage<LxBW8>& grid) {
  LxBWHistogramVector histogram(256);
  if (LxGetError() != LX_OK) return;
  LxROI<LxBW8> tile(source, 0, 0, 0, 0);
  for (int j = 0; j < down.Nodes(); ++j) {
    for (int i = 0; i < across.Nodes(); ++i) {
      tile.SetPlacement(across.First(i), down.First(j), across.Length(i), down.Length(j));
      grid.SetPixel(ThresholdOf(tile, mode, histogram), i, j);
    }
  }
}

}  // namespace

void PicAutoAdaptiveThreshold(LxROI<LxBW8>* source, LxROI<LxBW8>* destination,
                              PIC_THRESHOLD_MODES mode, int tileWidth, int tileHeight) {
  RunOperation("PicAutoAdaptiveThreshold", [&] {
    if (!Usable({source, destination}) ||
        !Require(IsMode(mode), LX_ERROR_ARGUMENT_2_OUT_OF_RANGE) ||
        !Require(tileWidth > 0, LX_ERROR_ARGUMENT_4_OUT_OF_RANGE) ||
        !Require(tileHeight >= 0, LX_ERROR_ARGUMENT_5_OUT_OF_RANGE)) {
      return;
    }
    if (source->GetWidth() == 0 || source->GetHeight() == 0) return;
    const TileAxis across(source->GetWidth(), tileWidth);
    const TileAxis down(source->GetHeight(), tileHeight == 0 ? tileWidth : tileHeight);
    LxImage<LxBW8> grid(across.Nodes(), down.Nodes());
    if (LxGetError() == LX_OK) FillGrid(source, mode, across, down, grid);
    if (LxGetError() != LX_OK) return;
    PicScaleRotate(&grid, 0, 0, 0, 0, across.Step(), down.Step(), 0, destination, 8);
  });
}
