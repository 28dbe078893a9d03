// SPDX-License-Identifier: Apache-2.0
/// @file pyramid.h
/// Images of successively halved size.
#pragma once

#include <cstdint>

#include "lxpic/base/roi.h"

/// Pixel types of images.
enum LX_IMAGE_TYPES : int {
  LX_IMAGE_NONE = -1,      ///< no image
  LX_IMAGE_BW8 = 1,        ///< LxBW8
  LX_IMAGE_BW16 = 2,       ///< LxBW16
  LX_IMAGE_BW32 = 3,       ///< LxBW32
  LX_IMAGE_C24 = 6,        ///< LxC24
  LX_IMAGE_GRADIENT32 = 8  ///< LxBW32 that holds two signed 16-bit components, the low half first
};

/// A pyramid: level 0 is an image, each further level has half the size of the one before it. Only
/// levels of 8-bit grey and of gradients can be built.
///
/// Give it levels with SetNumLevels(), then Build() it from a source, or fill level 0 and call
/// Build() without one. Every member resets the error state.
class LXPIC_API LxPyramid {
 public:
  /// No levels, halving mode 1.
  LxPyramid();
  /// Leaves the error state alone.
  ~LxPyramid();
  LxPyramid(const LxPyramid&) = delete;
  LxPyramid& operator=(const LxPyramid&) = delete;

  /// Replaces the levels by `count` empty images of the type; nothing happens when count and type
  /// are what they were. Without levels the type is LX_IMAGE_NONE. Errors, each changing nothing:
  /// LX_ERROR_ALLOCATION_FAILED, LX_ERROR_UNSUPPORTED_IMAGE_TYPE. Trace "LxPyramid::SetNumLevels".
  void SetNumLevels(unsigned int count, LX_IMAGE_TYPES type);
  unsigned int GetNumLevels();
  /// The image of a level, which the pyramid owns: an LxImage of the pixel type. Null, with
  /// LX_ERROR_ARGUMENT_1_OUT_OF_RANGE, when there is none. Trace "LxPyramid::GetImage".
  LxGenericROI* GetImage(unsigned int level);

  /// What Build() passes to Halve() as `dropOdd`.
  int GetHalvingMode();
  void SetHalvingMode(int dropOdd);

  /// Halves level after level. A type other than 8-bit grey and gradient sets
  /// LX_ERROR_UNSUPPORTED_IMAGE_TYPE, a level 0 without pixels in memory LX_ERROR_ROI_NOT_ATTACHED.
  /// Levels below one pixel are empty. Trace "LxBW8Pyramid::Build".
  void Build();
  /// Makes level 0 a copy of the source, which may be level 0 itself, and builds the others. A
  /// pyramid of another type than 8-bit grey sets LX_ERROR_WRONG_IMAGE_TYPE. A source that lies in
  /// the memory that level 0 would have to give up sets LX_ERROR_DESTINATION_IS_SOURCE. Trace
  /// "LxBW8Pyramid::Build".
  void Build(LxROI<LxBW8>* source);

  /// Halves an image as PicHalve() does, except that a destination that cannot take the size sets
  /// LX_ERROR_HALVE_SIZE. Trace "LxBW8Pyramid::Halve ( BW8)".
  void Halve(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, int dropOdd);
  /// The same for gradients, each component by itself, with arithmetic shifts. Trace
  /// "LxBW8Pyramid::Halve ( GRADIENT32)".
  void Halve(LxROI<LxBW32>* source, LxROI<LxBW32>* destination, int dropOdd);

 private:
  LXPIC_PRIVATE void Release();

  LX_IMAGE_TYPES m_n32ImageType = LX_IMAGE_NONE;
  std::uint32_t m_un32NumLevels = 0;
  LxGenericROI** m_ppLevels = nullptr;
  std::int32_t m_n32HalvingMode = 1;
};
