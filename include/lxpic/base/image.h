// SPDX-License-Identifier: Apache-2.0
/// @file image.h
/// Images: regions that own their pixels, or view memory of the caller's.
#pragma once

#include "lxpic/base/roi.h"

/// An image of pixels of type `T`, which is its own full-size region. An image that has been given
/// a size is attached, even when the size is 0; a default-constructed one is not.
template <class T>
class LXPIC_API LxImage : public LxROI<T> {
 public:
  /// An image without a size, not attached.
  LxImage();
  /// An image of the given size; pixels are not initialised. Errors as SetSize(int, int), with
  /// trace "LxImage::LxImage".
  LxImage(int width, int height);
  ~LxImage() override;

  /// Gives the image memory of its own of this size. Rows start at multiples of 64 bytes, at a
  /// pitch that does not alias in the cache. Pixels are not initialised; an image that already has
  /// the size and owns its memory keeps both. A negative size, or one that cannot be represented or
  /// allocated, sets LX_ERROR_ALLOCATION_FAILED and changes nothing. Trace "LxImage::SetSize".
  void SetSize(int width, int height);
  /// SetSize() to the size of `model`. A view of the caller's memory is not replaced: it only
  /// checks that the size agrees (LX_ERROR_SIZE_MISMATCH). A null model sets
  /// LX_ERROR_ROI_NOT_ATTACHED.
  void SetSize(LxGenericROI* model) override;

  /// Makes the image a view of `width` × `height` pixels at `pixels`, rows `pitch` bytes apart,
  /// without copying. The memory stays the caller's and must outlive the view. A negative pitch
  /// describes a bottom-up image whose top row is at `pixels`. Errors, each changing nothing: null
  /// `pixels`, or the memory that the image owns itself, 1011, negative width 1012, negative height
  /// 1013, a pitch smaller than a row, or too large for all rows to be addressed, 1014. Trace
  /// "LxImage::Attach".
  void Attach(void* pixels, int width, int height, std::ptrdiff_t pitch);

 protected:
  typename LxROI<T>::Origin Locate() const override;

 private:
  LXPIC_PRIVATE bool Allocate(int width, int height);
  LXPIC_PRIVATE void Adopt(std::uint8_t* pixels, int width, int height, std::ptrdiff_t pitch,
                           bool owner);
  LXPIC_PRIVATE void Release();
  LXPIC_PRIVATE bool Owns(const void* address) const;

  std::uint8_t* m_pPixels = nullptr;
  std::ptrdiff_t m_nPitch = 0;
  bool m_bOwner = false;
};

extern template class LxImage<LxBW8>;
extern template class LxImage<LxBW16>;
extern template class LxImage<LxBW32>;
extern template class LxImage<LxC24>;
extern template class LxImage<LxC15>;
extern template class LxImage<LxC16>;
extern template class LxImage<LxC24A>;
extern template class LxImage<LxComplex64>;
extern template class LxImage<int>;
