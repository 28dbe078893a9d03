// SPDX-License-Identifier: Apache-2.0
/// @file median.h
/// The median filter: the middle one of the nine pixels of a 3 × 3 neighbourhood, which removes
/// single outliers and keeps straight edges.
///
/// Works in place; the destination must be given all the same. Colours are taken component by
/// component. Errors: LX_ERROR_ROI_NOT_ATTACHED, LX_ERROR_SIZE_MISMATCH,
/// LX_ERROR_ALLOCATION_FAILED.
#pragma once

#include "lxpic/base/image.h"

/// Pixels outside of the region are those of its edge. Trace "PicMedian".
LXPIC_API void PicMedian(LxROI<LxBW8>* source, LxROI<LxBW8>* destination);
/// Pixels outside of the region are those of its edge. Trace "PicMedian (BW16)".
LXPIC_API void PicMedian(LxROI<LxBW16>* source, LxROI<LxBW16>* destination);
/// Pixels outside of the region are `outside`, clamped to 0..255. Trace "PicMedian".
LXPIC_API void PicMedian(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, int outside);
/// Pixels outside of the region are `outside`. Trace "PicMedian ( C24)".
LXPIC_API void PicMedian(LxROI<LxC24>* source, LxROI<LxC24>* destination, LxC24 outside);
