// SPDX-License-Identifier: Apache-2.0
/// @file moments.h
/// Geometric moments, the centre of gravity and inertia.
///
/// The moment m_pq is the sum of w * x^p * y^q over the pixels: column x and row y are counted from
/// the region's first pixel, and w is what a pixel weighs. In the binary forms pixels that are
/// `threshold` or more weigh 1 and the others nothing; in the weighted forms a pixel weighs its
/// value or, where a table of 256 weights is given, the entry of its value. Sums are exact and
/// rounded once, at the end; beyond 128 bits they keep 64 significant ones. LX_ERROR_ROI_NOT_ATTACHED: the
/// region has no pixels in memory; results are then what they were.
#pragma once

#include "lxpic/base/image.h"
#include "lxpic/base/vector.h"

/// @name Moments
/// All moments up to an order, 0 where nothing weighs. All pixels count, whatever the runs of the
/// region.
/// @{

/// Trace "PicBinaryMoments ( first order)".
LXPIC_API void PicBinaryMoments(LxROI<LxBW8>* source, unsigned threshold, float& m00, float& m10,
                                float& m01);
/// Trace "PicBinaryMoments (first order)(BW16)".
LXPIC_API void PicBinaryMoments(LxROI<LxBW16>* source, unsigned threshold, float& m00, float& m10,
                                float& m01);
/// Trace "PicBinaryMoments ( second order)".
LXPIC_API void PicBinaryMoments(LxROI<LxBW8>* source, unsigned threshold, float& m00, float& m10,
                                float& m01, float& m20, float& m11, float& m02);
/// Trace "PicBinaryMoments (second order)(BW16)".
LXPIC_API void PicBinaryMoments(LxROI<LxBW16>* source, unsigned threshold, float& m00, float& m10,
                                float& m01, float& m20, float& m11, float& m02);
/// Trace "PicWeighedMoments ( first order)".
LXPIC_API void PicWeightedMoments(LxROI<LxBW8>* source, float& m00, float& m10, float& m01);
/// Trace "PicWeighedMoments (first order)(BW16)".
LXPIC_API void PicWeightedMoments(LxROI<LxBW16>* source, float& m00, float& m10, float& m01);
/// Trace "PicWeighedMoments ( second order)".
LXPIC_API void PicWeightedMoments(LxROI<LxBW8>* source, float& m00, float& m10, float& m01,
                                  float& m20, float& m11, float& m02);
/// Trace "PicWeighedMoments (second order)(BW16)".
LXPIC_API void PicWeightedMoments(LxROI<LxBW16>* source, float& m00, float& m10, float& m01,
                                  float& m20, float& m11, float& m02);
/// Trace "PicWeighedMoments ( third order)".
LXPIC_API void PicWeightedMoments(LxROI<LxBW8>* source, float& m00, float& m10, float& m01,
                                  float& m20, float& m11, float& m02, float& m30, float& m21,
                                  float& m12, float& m03);
/// Trace "PicWeighedMoments (third order)(BW16)".
LXPIC_API void PicWeightedMoments(LxROI<LxBW16>* source, float& m00, float& m10, float& m01,
                                  float& m20, float& m11, float& m02, float& m30, float& m21,
                                  float& m12, float& m03);
/// Trace "PicWeighedMoments ( fourth order)".
LXPIC_API void PicWeightedMoments(LxROI<LxBW8>* source, float& m00, float& m10, float& m01,
                                  float& m20, float& m11, float& m02, float& m30, float& m21,
                                  float& m12, float& m03, float& m40, float& m31, float& m22,
                                  float& m13, float& m04);
/// Trace "PicWeighedMoments (fourth order)(BW16)".
LXPIC_API void PicWeightedMoments(LxROI<LxBW16>* source, float& m00, float& m10, float& m01,
                                  float& m20, float& m11, float& m02, float& m30, float& m21,
                                  float& m12, float& m03, float& m40, float& m31, float& m22,
                                  float& m13, float& m04);
/// @}

/// @name Centres and inertia
/// Those of 8-bit images are confined to the runs of the region if it has any, where a pixel weighs
/// once for each run that it lies in; LX_ERROR_INCONSISTENT_ARGUMENTS: a run does not lie in the
/// region any more. LX_ERROR_WRONG_VECTOR_SIZE: a weight table that has not 256 entries.
/// @{

/// m10 / m00 and m01 / m00 of the pixels that are `threshold` or more; 0 and 0 where there is none.
/// Trace "PicGravityCenter".
LXPIC_API void PicGravityCenter(LxROI<LxBW8>* source, unsigned threshold, float& x, float& y);
/// The same of all pixels, whatever the runs of the region. Trace "PicGravityCenter (BW16)".
LXPIC_API void PicGravityCenter(LxROI<LxBW16>* source, unsigned threshold, float& x, float& y);
/// The same of pixels that weigh their value, or the entry of their value in `weights`, which may be
/// null. Trace "PicCentroid".
LXPIC_API void PicCentroid(LxROI<LxBW8>* source, float& x, float& y, LxBW8Vector* weights);
/// Variances `ixx` and `iyy` of the columns and rows of the pixels that are `threshold` or more, and
/// their covariance `ixy`; the centre and the number of these pixels, each unless it is null.
/// Nothing is written, and no error set, where there is no such pixel. Trace "PicInertia ( binary)".
LXPIC_API void PicInertia(LxROI<LxBW8>* source, unsigned threshold, float& ixx, float& ixy,
                          float& iyy, float* centreX, float* centreY, unsigned* count);
/// The same of weighted pixels, and their total weight; `weights` may be null. Trace
/// "PicInertia ( weighed)".
LXPIC_API void PicInertia(LxROI<LxBW8>* source, float& ixx, float& ixy, float& iyy, float* centreX,
                          float* centreY, unsigned* totalWeight, LxBW8Vector* weights);
/// @}
