// SPDX-License-Identifier: Apache-2.0
// Regions of any pixel type, and the guarded memory that they lie in.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/images.h"
#include "support/trial/guarded_buffer.h"
#include "support/trial/picture.h"

namespace lx::test {

using catalogue::MakeImage;
using catalogue::VisitPixel;

/// An image that was never given a size.
std::unique_ptr<LxGenericROI> MakeUnattached(Pixel pixel);
/// An image that views memory of the caller's.
std::unique_ptr<LxGenericROI> MakeView(Pixel pixel, int width, int height, const Placement& place);
/// A child region of `parent`, which has the same pixel type.
std::unique_ptr<LxGenericROI> MakeChild(Pixel pixel, LxGenericROI* parent, int x, int y, int width,
                                        int height);

/// Gives a region its run list, in offsets or addresses.
void SetRuns(Pixel pixel, LxGenericROI* region, const std::vector<Run>& runs, bool absolute);

enum class Pitch {
  kTight,
  kPadded,
  kOdd,
  kNegative,
  kChild  ///< the region is a child of a larger image
};
inline constexpr std::array kPitches = {Pitch::kTight, Pitch::kPadded, Pitch::kOdd,
                                        Pitch::kNegative, Pitch::kChild};

/// Offsets that put the last byte before, or the first byte behind an inaccessible page.
inline constexpr int kGuardBehind = -1;
inline constexpr int kGuardBefore = -2;

/// How a region lies in memory.
struct Layout {
  Pitch pitch = Pitch::kTight;
  /// Address of the first byte modulo 64, or one of the above. Rows of a binary child start at any
  /// bit, which it chooses, too.
  int offset = kGuardBehind;
};
std::string LayoutText(Layout layout);

/// The memory of one region under test: its pixels, and foreign bytes around and between its rows
/// that nobody may touch.
class Arena {
 public:
  /// `slot` tells the memories of regions apart that are in use at the same time.
  Arena(std::size_t slot, Pixel pixel, int width, int height, Layout layout);

  /// What the region holds before a call, and what it must hold afterwards.
  void SetBefore(const Picture& picture) { Paint(picture, before); }
  void SetExpected(const Picture& picture) { Paint(picture, expected); }
  /// Confines both region objects to the runs.
  void SetRuns(const std::vector<Run>& runs, bool absolute);
  /// Restores the memory to what it holds before a call.
  void Reset();
  /// Where and how the memory differs from what is expected; "" when it does not.
  std::string Difference() const;
  /// Whether the memory is as before the call.
  bool IsUntouched() const;

  LxGenericROI* Region() const { return region.get(); }
  /// Another region object over the same pixels.
  LxGenericROI* Twin() const { return twin.get(); }

 private:
  std::unique_ptr<LxGenericROI> MakeRegion(std::unique_ptr<LxGenericROI>& whole) const;
  void Paint(const Picture& picture, std::vector<std::uint8_t>& bytes) const;
  std::string Locate(std::ptrdiff_t byte) const;

  Pixel pixel;
  int width;
  int height;
  bool child;
  int left;  // pixels of the parent beside a child
  std::ptrdiff_t pitch = 0;
  std::ptrdiff_t origin = 0;  ///< of the region's pixel (0, 0) in the memory
  int firstBit = 0;
  std::uint8_t* memory = nullptr;
  std::size_t size = 0;
  std::vector<std::uint8_t> before;
  std::vector<std::uint8_t> expected;
  std::unique_ptr<LxGenericROI> parent;
  std::unique_ptr<LxGenericROI> twinParent;
  std::unique_ptr<LxGenericROI> region;
  std::unique_ptr<LxGenericROI> twin;
};

}  // namespace lx::test
