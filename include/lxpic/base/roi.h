// SPDX-License-Identifier: Apache-2.0
/// @file roi.h
/// Regions: rectangles of pixels inside an image, rows a pitch apart. A member that succeeds leaves
/// the error state as it was.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lxpic/base/export.h"
#include "lxpic/base/pixel.h"
#include "lxpic/base/vector_template.h"

/// Untyped base of every region. Sizes are in pixels, distances in bytes.
class LXPIC_API LxGenericROI {
 public:
  unsigned GetWidth() const { return m_un32Width; }
  unsigned GetHeight() const { return m_un32Height; }

  /// A value that tells images apart: the address of the pixels that the region's image holds;
  /// 0 when the region is not attached.
  virtual std::uintptr_t GetIdentity() const = 0;
  /// Bytes of one pixel; 0 for a binary region.
  virtual unsigned GetPixelSize() const = 0;
  /// Sets LX_ERROR_SIZE_MISMATCH when `other` has another width or height,
  /// LX_ERROR_ROI_NOT_ATTACHED when it is null; otherwise leaves the error state as it is.
  virtual void CheckSize(LxGenericROI* other) const = 0;
  /// Gives an owning image the size of `model`. A region that owns no pixels only checks that the
  /// size agrees: LX_ERROR_SIZE_MISMATCH if not.
  virtual void SetSize(LxGenericROI* model) = 0;
  /// Address of pixel (x, y), or null when the region is not attached. Coordinates are not checked:
  /// (width, 0) is just past the first row. In a binary region, the byte that holds the pixel.
  virtual void* GetPixelPtr(int x, int y) const = 0;
  /// Distance between the first pixels of consecutive rows; negative in a bottom-up image.
  virtual std::ptrdiff_t GetPitch() const = 0;
  /// Bit of pixel (x, y) in its byte, 0 being the most significant; 0 unless the region is binary.
  virtual int GetBitPosition(int x, int y) const = 0;
  /// Sets LX_ERROR_ROI_NOT_ATTACHED when the region has no pixels in memory.
  virtual void Check() const = 0;
  /// Distance from just past the last byte of a row to the first byte of the next.
  virtual std::ptrdiff_t GetRowSkip() const = 0;

  virtual ~LxGenericROI();
  LxGenericROI(const LxGenericROI&) = delete;
  LxGenericROI& operator=(const LxGenericROI&) = delete;

 protected:
  LxGenericROI() = default;

  std::uint32_t m_un32Width = 0;
  std::uint32_t m_un32Height = 0;
};

/// A region over pixels of type `T`: one of the pixel types, or `int` for binary images of one bit
/// a pixel. A region refers to its parent and must not outlive it. When the parent shrinks so that
/// the placement leaves it, the region counts as not attached until it fits again.
template <class T>
class LXPIC_API LxROI : public LxGenericROI {
 public:
  /// A region without a parent: 0 × 0, not attached.
  LxROI();
  /// The child of `parent` at (x, y). A placement that leaves the parent, and the region itself as
  /// parent, sets LX_ERROR_INCONSISTENT_ARGUMENTS, a null parent LX_ERROR_ROI_NOT_ATTACHED; the
  /// region is then 0 × 0 and not attached. Trace "LxROI::LxROI".
  LxROI(LxROI* parent, int x, int y, int width, int height);
  ~LxROI() override;

  /// Moves and resizes the region inside its parent. A placement that leaves the parent, or a
  /// region without one, sets LX_ERROR_INCONSISTENT_ARGUMENTS and changes nothing. Trace
  /// "LxROI::SetPlacement".
  void SetPlacement(int x, int y, int width, int height);

  std::uintptr_t GetIdentity() const override;
  unsigned GetPixelSize() const override;
  void CheckSize(LxGenericROI* other) const override;
  void SetSize(LxGenericROI* model) override;
  void* GetPixelPtr(int x, int y) const override;
  std::ptrdiff_t GetPitch() const override;
  int GetBitPosition(int x, int y) const override;
  void Check() const override;
  std::ptrdiff_t GetRowSkip() const override;

  /// Pixel (x, y); all zero outside the region or when it is not attached.
  T GetPixel(int x, int y) const;
  /// Writes pixel (x, y). Outside the region nothing is written. An LxC15 pixel keeps its bit 15;
  /// in a binary region any value but 0 sets the bit.
  void SetPixel(T value, int x, int y);

  /// The runs to which statistics are confined; empty means the whole region.
  const LxVectorTemplate<LxRun>& GetRuns() const { return m_Runs; }
  /// Replaces the runs. `absolute` says that start and end are addresses, not byte offsets from
  /// pixel (0, 0). A run outside the region, or whose position disagrees with its bytes, sets
  /// LX_ERROR_INCONSISTENT_ARGUMENTS and nothing changes; so does any run in a binary region. Trace
  /// "LxROI::SetRuns". Operations that follow runs check them again.
  void SetRuns(const LxVectorTemplate<LxRun>& runs, bool absolute);
  /// Appends the run of `length` pixels that starts at (x, y), neither beyond 32,767. A run outside
  /// the region sets LX_ERROR_INCONSISTENT_ARGUMENTS. Trace "LxROI::AddRun".
  void AddRun(int x, int y, int length);
  /// Whether the runs hold addresses rather than byte offsets.
  bool RunsAreAbsolute() const { return m_bRunsAbsolute; }

 protected:
  /// Where the pixels of a row begin: a byte and, in binary images, a bit of it.
  struct Origin {
    std::uint8_t* base;
    std::ptrdiff_t pitch;
    std::ptrdiff_t firstBit;
  };
  /// The pixel (0, 0) of this region; a null base when it is not attached.
  virtual Origin Locate() const;

 private:
  LXPIC_PRIVATE bool Place(int x, int y, int width, int height);
  LXPIC_PRIVATE bool HoldsRun(const LxRun& run, bool absolute) const;

  LxROI* m_pParent = nullptr;
  int m_n32X = 0;
  int m_n32Y = 0;
  LxVectorTemplate<LxRun> m_Runs;
  bool m_bRunsAbsolute = false;
};

extern template class LxROI<LxBW8>;
extern template class LxROI<LxBW16>;
extern template class LxROI<LxBW32>;
extern template class LxROI<LxC24>;
extern template class LxROI<LxC15>;
extern template class LxROI<LxC16>;
extern template class LxROI<LxC24A>;
extern template class LxROI<LxComplex64>;
extern template class LxROI<int>;
