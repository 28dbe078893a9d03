// SPDX-License-Identifier: Apache-2.0
/// @file disks.h
/// Grey morphology with disks, which are octagons.
///
/// The disk of a radius holds the pixels up to `radius` columns and rows away whose columns and rows
/// add up to no more than `2 * floor(radius / 2) + ceil(radius / 2)`: 5 pixels for radius 1, 21 for
/// 2, 37 for 3, 69 for 4; radius 0 is the pixel itself. It is what floor(radius / 2) squares of 3 by
/// 3 and ceil(radius / 2) crosses of five pixels give together. The radius has no limit: pixels
/// outside of the region are those of its edge, so that what a disk holds beyond the region changes
/// nothing. Colours are taken component by component. The cost hardly grows with the radius.
///
/// Works in place, and a missing destination means that. Errors: LX_ERROR_ROI_NOT_ATTACHED,
/// LX_ERROR_SIZE_MISMATCH, LX_ERROR_ALLOCATION_FAILED.
#pragma once

#include "lxpic/base/image.h"

/// @name Erosion
/// The minimum of the disk.
/// @{

/// Trace "PicErodeDisk".
LXPIC_API void PicErodeDisk(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned radius);
/// Trace "PicErodeDisk (BW16)".
LXPIC_API void PicErodeDisk(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, unsigned radius);
/// Trace "PicErodeDisk ( C24)".
LXPIC_API void PicErodeDisk(LxROI<LxC24>* source, LxROI<LxC24>* destination, unsigned radius);
/// @}

/// @name Dilation
/// The maximum of the disk.
/// @{

/// Trace "PicDilateDisk".
LXPIC_API void PicDilateDisk(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned radius);
/// Trace "PicDilateDisk (BW16)".
LXPIC_API void PicDilateDisk(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, unsigned radius);
/// Trace "PicDilateDisk ( C24)".
LXPIC_API void PicDilateDisk(LxROI<LxC24>* source, LxROI<LxC24>* destination, unsigned radius);
/// @}

/// @name Opening
/// Erosion, then dilation: takes away what is brighter than its surroundings and does not hold the
/// disk.
/// @{

/// Trace "PicOpenDisk ", which ends with a blank.
LXPIC_API void PicOpenDisk(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned radius);
/// Trace "PicOpenDisk (BW16)".
LXPIC_API void PicOpenDisk(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, unsigned radius);
/// Trace "PicOpenDisk ( C24)".
LXPIC_API void PicOpenDisk(LxROI<LxC24>* source, LxROI<LxC24>* destination, unsigned radius);
/// @}

/// @name Closing
/// Dilation, then erosion: takes away what is darker than its surroundings and does not hold the
/// disk.
/// @{

/// Trace "PicCloseDisk".
LXPIC_API void PicCloseDisk(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned radius);
/// Trace "PicCloseDisk (BW16)".
LXPIC_API void PicCloseDisk(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, unsigned radius);
/// Trace "PicCloseDisk ( C24)".
LXPIC_API void PicCloseDisk(LxROI<LxC24>* source, LxROI<LxC24>* destination, unsigned radius);
/// @}

/// @name White top-hat
/// The source less its opening: what is bright and does not hold the disk.
/// @{

/// Trace "PicWhiteTopHatDisk (BW8)".
LXPIC_API void PicWhiteTopHatDisk(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned radius);
/// Trace "PicWhiteTopHatDisk (BW16)".
LXPIC_API void PicWhiteTopHatDisk(LxROI<LxBW16>* source, LxROI<LxBW16>* destination,
                                  unsigned radius);
/// Trace "PicWhiteTopHatDisk ( C24)".
LXPIC_API void PicWhiteTopHatDisk(LxROI<LxC24>* source, LxROI<LxC24>* destination, unsigned radius);
/// @}

/// @name Black top-hat
/// The closing less the source: what is dark and does not hold the disk.
/// @{

/// Trace "PicBlackTopHatDisk (BW8)".
LXPIC_API void PicBlackTopHatDisk(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned radius);
/// Trace "PicBlackTopHatDisk (BW16)".
LXPIC_API void PicBlackTopHatDisk(LxROI<LxBW16>* source, LxROI<LxBW16>* destination,
                                  unsigned radius);
/// Trace "PicBlackTopHatDisk ( C24)".
LXPIC_API void PicBlackTopHatDisk(LxROI<LxC24>* source, LxROI<LxC24>* destination, unsigned radius);
/// @}

/// @name Morphological gradient
/// Dilation less erosion: edges, as high as they are steep within the disk.
/// @{

/// Trace "PicMorphoGradientDisk".
LXPIC_API void PicMorphoGradientDisk(LxROI<LxBW8>* source, LxROI<LxBW8>* destination,
                                     unsigned radius);
/// Trace "PicMorphoGradientDisk (BW16)".
LXPIC_API void PicMorphoGradientDisk(LxROI<LxBW16>* source, LxROI<LxBW16>* destination,
                                     unsigned radius);
/// Trace "PicMorphoGradientDisk ( C24)".
LXPIC_API void PicMorphoGradientDisk(LxROI<LxC24>* source, LxROI<LxC24>* destination,
                                     unsigned radius);
/// @}
