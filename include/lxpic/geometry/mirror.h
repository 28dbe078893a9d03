// SPDX-License-Identifier: Apache-2.0
/// @file mirror.h
/// Mirror images, in place. LX_ERROR_ROI_NOT_ATTACHED when the region is missing or has no pixels
/// in memory.
#pragma once

#include "lxpic/base/roi.h"

/// Exchanges row y with row height - 1 - y: top and bottom change places. Trace
/// "PicVerticalMirror ( gray-level)".
LXPIC_API void PicVerticalMirror(LxROI<LxBW8>* region);
/// Trace "PicVerticalMirror ( BW16)".
LXPIC_API void PicVerticalMirror(LxROI<LxBW16>* region);
/// Trace "PicVerticalMirror ( color)".
LXPIC_API void PicVerticalMirror(LxROI<LxC24>* region);

/// Exchanges the pixels at x and width - 1 - x of every row: left and right change places. Trace
/// "PicHorizontalMirror ( gray-level)".
LXPIC_API void PicHorizontalMirror(LxROI<LxBW8>* region);
/// Trace "PicHorizontalMirror ( BW16)".
LXPIC_API void PicHorizontalMirror(LxROI<LxBW16>* region);
/// Trace "PicHorizontalMirror ( color)".
LXPIC_API void PicHorizontalMirror(LxROI<LxC24>* region);
