// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstdint>
#include <span>

#include "foundation/rows.h"
#include "lxpic/profile/transitions.h"
#include "profile/segment.h"

namespace {

using namespace lx;
using namespace lx::profile;
using lx::vectors::Line;
using lx::vectors::Point;

std::span<const SegmentGroup> GroupsOf(const LxVector& vector) {
  return {static_cast<const SegmentGroup*>(vector.GetDataPtr()),
          static_cast<std::size_t>(vector.GetNbGroup())};
}

Point PointOf(const SegmentGroup& group) { return {group[1], group[2]}; }

std::uint8_t LevelOf(const SegmentGroup& group) {
  return static_cast<std::uint8_t>(std::clamp(group[0], 0, 255));
}

std::uint8_t& PixelAt(const Rows& rows, Point point) {
  return rows.Row<std::uint8_t>(static_cast<std::size_t>(point.y))[point.x];
}

bool AllLieIn(const LxGenericROI& region, std::span<const SegmentGroup> groups) {
  return std::all_of(groups.begin(), groups.end(), [&](const SegmentGroup& group) {
    // Negative coordinates are large unsigned ones.
    return static_cast<std::uint32_t>(group[1]) < region.GetWidth() &&
           static_cast<std::uint32_t>(group[2]) < region.GetHeight();
  });
}

}  // namespace

void PicLineSegToVect(LxROI<LxBW8>* region, LxVector* vector, int x0, int y0, int x1, int y1) {
  RunOperation("PicLineSegToVect", [&] {
    const Point from{x0, y0};
    const Point to{x1, y1};
    if (!Attached({region}) || !HasPoints(*region, from, to, LX_ERROR_ARGUMENT_3_OUT_OF_RANGE) ||
        !Require(vector != nullptr, LX_ERROR_VECTOR_NO_DATA)) {
      return;
    }
    const Line line(from, to);
    const auto count = static_cast<int>(line.Count());
    SegmentGroup* group = MakeSegment(*vector, count);
    if (group == nullptr) return;
    line.ForEachPoint([&group, rows = RowsOf(region)](Point point) {
      *group++ = {PixelAt(rows, point), point.x, point.y};
    });
    vector->SetNbGroup(count);
    vector->SetUse(kPixelsUse);
  });
}

void PicVectToLineSeg(LxVector* vector, LxROI<LxBW8>* region) {
  RunOperation("PicVectToLineSeg", [&] {
    if (!Attached({region}) || !Require(vector != nullptr, LX_ERROR_VECTOR_NO_DATA)) return;
    const auto groups = GroupsOf(*vector);
    const bool hasPixels = IsSegment(*vector) && vector->GetUse() == kPixelsUse && !groups.empty();
    if (!Require(hasPixels, LX_ERROR_WRONG_VECTOR_KIND) ||
        !Require(AllLieIn(*region, groups), LX_ERROR_INCONSISTENT_ARGUMENTS)) {
      return;
    }
    const Rows rows = RowsOf(region);
    for (const SegmentGroup& group : groups) PixelAt(rows, PointOf(group)) = LevelOf(group);
  });
}

void PicVectToLineSeg(LxVector* vector, int x0, int y0, int x1, int y1, LxROI<LxBW8>* region) {
  RunOperation("PicVectToLineSeg", [&] {
    const Point from{x0, y0};
    const Point to{x1, y1};
    if (!Attached({region}) || !HasPoints(*region, from, to, LX_ERROR_ARGUMENT_2_OUT_OF_RANGE) ||
        !Require(vector != nullptr, LX_ERROR_VECTOR_NO_DATA)) {
      return;
    }
    const Line line(from, to);
    const auto groups = GroupsOf(*vector);
    const bool isLongEnough = IsSegment(*vector) && groups.size() >= line.Count();
    if (!Require(isLongEnough, LX_ERROR_WRONG_VECTOR_KIND)) return;
    const Rows rows = RowsOf(region);
    const SegmentGroup* group = groups.data();
    line.ForEachOffset(1, rows.pitch, [&group, pixels = rows.data](std::ptrdiff_t offset) {
      pixels[offset] = LevelOf(*group++);
    });
  });
}
