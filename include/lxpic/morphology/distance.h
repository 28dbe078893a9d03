// SPDX-License-Identifier: Apache-2.0
/// @file distance.h
/// The distance map.
#pragma once

#include "lxpic/base/image.h"

/// How far every pixel lies from the nearest dark one, in chessboard steps: a pixel of the result is
/// the least sum of a source pixel and the number of steps, in any of the eight directions, from
/// there. A pixel of 0 is a seed, and no distance exceeds its own pixel, so that 255 is as far as
/// distances go. Pixels outside of the region are `outside`, clamped to 0..65535, and a step away
/// like any other. Time does not depend on the content.
///
/// Errors: LX_ERROR_ROI_NOT_ATTACHED, LX_ERROR_SIZE_MISMATCH, LX_ERROR_ALLOCATION_FAILED. Trace
/// "PicDistance".
LXPIC_API void PicDistance(LxROI<LxBW8>* source, LxImage<LxBW16>* destination, int outside);
