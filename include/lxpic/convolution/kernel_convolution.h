// SPDX-License-Identifier: Apache-2.0
/// @file kernel_convolution.h
/// Convolution with any kernel.
#pragma once

#include "lxpic/base/image.h"
#include "lxpic/convolution/kernel.h"

/// @name Kernel convolution
/// Applies the kernel as a correlation: coefficient (i, j) multiplies the pixel at
/// (x + i - sizeX / 2, y + j - sizeY / 2). With the sum `S` of the coefficients and `A` of their
/// magnitudes, the gain is the kernel's, divided by `S` when `|S| > A * 0.00001`: a kernel that
/// does not cancel out is normalised first. The way depends on size and rectifier:
///
/// - 3 × 3, rectifier 2: coefficients `trunc(256 * gain * k)` cut to 16 bits, the sum `>> 8`,
/// saturated.
///   Edge replication. The offset is not used. Works in place, also with a missing destination.
/// - 3 × 3 with another rectifier but 0, 5 × 5 and 7 × 7: coefficients `trunc(32768 * gain * k)`,
/// the sum
///   plus `32768 * offset` in 32 bits (64 for LxBW16), `>> 15`. Edge replication. Rectifier 2
///   saturates; 1 negates gain and offset and then saturates; 3 takes the magnitude; any other
///   value writes nothing.
/// - rectifier 0 or any other size: single precision in row order, pixels outside being the
/// kernel's
///   outside value; truncated, rectified, moved by the offset and clipped. Cells of a kernel so large
///   that they meet the region from no pixel are added first.
///
/// Errors, in this order: regions; LX_ERROR_KERNEL_NO_DATA (a null kernel too);
/// LX_ERROR_UNSUPPORTED_KERNEL_SIZE (a size below 1); LX_ERROR_DESTINATION_IS_SOURCE, except on the
/// first way; LX_ERROR_ALLOCATION_FAILED.
/// @{

/// Trace "PicConvolKernel BW8".
LXPIC_API void PicConvolKernel(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, LxKernel* kernel);
/// Trace "PicConvolKernel BW16".
LXPIC_API void PicConvolKernel(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, LxKernel* kernel);
/// Each component; never in place. Trace "PicConvolKernel ( C24)", after that of the 8-bit form.
LXPIC_API void PicConvolKernel(LxROI<LxC24>* source, LxROI<LxC24>* destination, LxKernel* kernel);
/// @}

/// @name Symmetric kernel convolution
/// The second way above for kernels that are symmetric about both axes and both diagonals, from the
/// coefficients of one octant: those with x >= y in the top left quadrant. The others are ignored.
/// Never in place.
///
/// Errors, in this order: LX_ERROR_KERNEL_NO_DATA for a null kernel; LX_ERROR_KERNEL_RECTIFIER for
/// rectifier 0; LX_ERROR_UNSUPPORTED_KERNEL_SIZE for any size but 3 × 3, 5 × 5 and 7 × 7;
/// LX_ERROR_KERNEL_NO_DATA for one without storage; regions; LX_ERROR_DESTINATION_IS_SOURCE;
/// LX_ERROR_ALLOCATION_FAILED. The colour form checks regions and destination first.
/// @{

/// Trace "PicConvolSymmetricKernel".
LXPIC_API void PicConvolSymmetricKernel(LxROI<LxBW8>* source, LxROI<LxBW8>* destination,
                                        LxKernel* kernel);
/// Trace "PicConvolSymmetricKernel BW16".
LXPIC_API void PicConvolSymmetricKernel(LxROI<LxBW16>* source, LxROI<LxBW16>* destination,
                                        LxKernel* kernel);
/// Trace "PicConvolSymmetricKernel ( C24)", after that of the 8-bit form.
LXPIC_API void PicConvolSymmetricKernel(LxROI<LxC24>* source, LxROI<LxC24>* destination,
                                        LxKernel* kernel);
/// @}
