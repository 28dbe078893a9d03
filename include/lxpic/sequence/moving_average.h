// SPDX-License-Identifier: Apache-2.0
/// @file moving_average.h
/// The average of the last images of a sequence.
#pragma once

#include <cstdint>

#include "lxpic/base/image.h"

/// The average of the last `period` images of 8 bits, rounded down, for every new image. It keeps
/// the images and their sum, so that the cost of an image does not grow with the period. Before as
/// many have come, the missing ones count as images like the first.
///
/// Images come in one of two ways: the caller passes each to Average(), which copies it; or fills
/// the buffer that GetSrcImage() returns, and then calls Average() with the destination alone.
///
/// Every member resets the error state. An object belongs to one thread at a time.
class LXPIC_API LxMovingAverage {
 public:
  /// Empty: period 0, no images.
  LxMovingAverage();
  /// SetSize().
  LxMovingAverage(unsigned int period, int width, int height, int sourceInBuffer);
  /// Leaves the error state alone.
  ~LxMovingAverage();
  LxMovingAverage(const LxMovingAverage&) = delete;
  LxMovingAverage& operator=(const LxMovingAverage&) = delete;

  /// Prepares for images of a size; `sourceInBuffer` other than 0 means that the caller fills the
  /// buffers. A period of 0 or above 257, of which sums would not fit 16 bits, sets
  /// LX_ERROR_ARGUMENT_1_OUT_OF_RANGE, a size that is negative or for which there is no memory
  /// LX_ERROR_ALLOCATION_FAILED; the object is then empty. Trace "LxMovingAverage::SetSize".
  void SetSize(unsigned int period, int width, int height, int sourceInBuffer);
  /// All are 0 for an empty object.
  void GetSize(unsigned int& period, int& width, int& height, int& sourceInBuffer);
  /// The next image is the first one again.
  void Reset();

  /// The buffer for the next image, which the object owns; null for an empty object, and, with
  /// LX_ERROR_UNSUPPORTED_OPERATION, when the caller passes the images. Trace
  /// "LxMovingAverage::GetSrcImage".
  LxImage<LxBW8>* GetSrcImage();

  /// Takes the next image and gives the average; the destination may be the source. In the other
  /// mode, or empty, LX_ERROR_UNSUPPORTED_OPERATION; then regions are checked, which must have the
  /// size given to SetSize(). After a refusal the image has not come. Trace
  /// "LxMovingAverage::Average".
  void Average(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
  /// The same with the image in the buffer.
  void Average(LxROI<LxBW8>* destination);

 private:
  LXPIC_PRIVATE void Release();
  LXPIC_PRIVATE bool Allocate(int width, int height);
  LXPIC_PRIVATE LxImage<LxBW8>* Current() const;
  LXPIC_PRIVATE LxImage<LxBW8>* Outgoing() const;
  LXPIC_PRIVATE void Take(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);

  std::uint32_t m_un32Period = 0;
  std::int32_t m_n32Counter = 0;  // below 0 until the ring of images is full
  std::int32_t m_n32Slots = 0;
  std::int32_t m_n32SourceInBuffer = 0;
  LxImage<LxBW8>** m_ppFrames = nullptr;
  LxImage<LxBW16>* m_pSum = nullptr;
};
