// SPDX-License-Identifier: Apache-2.0
/// @file thinning.h
/// Thinning and thickening of binary images by a 3 × 3 hit-or-miss pattern.
///
/// A pixel is set when it is not 0. `pattern` is a 3 × 3 kernel of -1 (any pixel), 0 (a pixel that is
/// not set) and 1 (a pixel that is set), such as the presets KERNEL_THIN and KERNEL_THICK; a pixel
/// matches when its neighbourhood has all that the pattern asks for. Neighbours outside of the region
/// are not set when the kernel's outside value is 0; otherwise each has what the pattern asks for.
///
/// Every pass decides all pixels from the image before it. Thinning makes matching pixels 0,
/// thickening makes them the largest value; the result is binary: 0 and that value.
///
/// `count` holds the most iterations on entry, 0 for the width of the region, and those made on
/// return. Without rotation an iteration is a pass, and a pass that changes nothing is the last one;
/// the first pass has changed something unless every pixel matches and has the result's value
/// already. With rotation the pattern turns by a cell after each pass, an iteration is the eight
/// passes of a full turn, and the last pass is the eighth of a turn that changes nothing.
///
/// Works in place; the destination must be given all the same. Colours are taken component by
/// component: what the first returns in `count` is the limit of the second, and so on. What a
/// component refuses traces the name of the 8-bit form before the operation's own, and nothing is
/// written.
///
/// Errors, in this order: LX_ERROR_ROI_NOT_ATTACHED, LX_ERROR_SIZE_MISMATCH; LX_ERROR_KERNEL_NO_DATA
/// without a kernel, LX_ERROR_UNSUPPORTED_KERNEL_SIZE, LX_ERROR_KERNEL_NO_DATA without coefficients,
/// LX_ERROR_KERNEL_UNSUITABLE for one that is not -1, 0 or 1; then, with `count` set to 0,
/// LX_ERROR_ARGUMENT_4_OUT_OF_RANGE for a rotation that is none, LX_ERROR_ARGUMENT_5_OUT_OF_RANGE for
/// a count below 0 or above 1023, and LX_ERROR_NOT_ENOUGH_MEMORY.
#pragma once

#include "lxpic/base/image.h"
#include "lxpic/convolution/kernel.h"

/// Trace "PicThin".
LXPIC_API void PicThin(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, LxKernel* pattern,
                       KERNEL_ROTATION rotation, int& count);
/// Trace "PicThin (BW16)".
LXPIC_API void PicThin(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, LxKernel* pattern,
                       KERNEL_ROTATION rotation, int& count);
/// Trace "PicThin ( C24)".
LXPIC_API void PicThin(LxROI<LxC24>* source, LxROI<LxC24>* destination, LxKernel* pattern,
                       KERNEL_ROTATION rotation, int& count);

/// Trace "PicThick".
LXPIC_API void PicThick(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, LxKernel* pattern,
                        KERNEL_ROTATION rotation, int& count);
/// Trace "PicThick (BW16)".
LXPIC_API void PicThick(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, LxKernel* pattern,
                        KERNEL_ROTATION rotation, int& count);
/// Trace "PicThick ( C24)".
LXPIC_API void PicThick(LxROI<LxC24>* source, LxROI<LxC24>* destination, LxKernel* pattern,
                        KERNEL_ROTATION rotation, int& count);
