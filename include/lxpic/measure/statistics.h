// SPDX-License-Identifier: Apache-2.0
/// @file statistics.h
/// Numbers that describe the pixels of a region.
///
/// Sums are exact and rounded once, at the end. All pixels count, whatever the runs of the region,
/// unless it is said that runs are followed: then a pixel counts once for each run that it lies in,
/// and LX_ERROR_INCONSISTENT_ARGUMENTS tells of a run that does not lie in the region any more,
/// LX_ERROR_ALLOCATION_FAILED that there is no memory to sort runs. LX_ERROR_ROI_NOT_ATTACHED: the
/// region has no pixels in memory. Averages, variances and deviations of no pixel at all set
/// LX_ERROR_EMPTY_HISTOGRAM. After an error, results that are arguments are what they were. Counts
/// beyond their type are its largest value.
///
/// Results for colours, one for each component, begin with byte 2 of the pixel: components 0, 1 and
/// 2 are bytes 2, 1 and 0.
#pragma once

#include "lxpic/base/image.h"

/// @name Comparison
/// The number of pixels in which two regions differ; a colour counts once, however many of its
/// components differ. 0 after an error; LX_ERROR_SIZE_MISMATCH.
/// @{

/// Trace "PicPixelCompare ( BW8)".
LXPIC_API unsigned PicPixelCompare(LxROI<LxBW8>* source, LxROI<LxBW8>* other);
/// Trace "PicPixelCompare ( BW16)".
LXPIC_API unsigned PicPixelCompare(LxROI<LxBW16>* source, LxROI<LxBW16>* other);
/// Trace "PicPixelCompare ( C24)".
LXPIC_API unsigned PicPixelCompare(LxROI<LxC24>* source, LxROI<LxC24>* other);
/// @}

/// @name Extremes
/// The smallest and the largest pixel. Of no pixels at all the largest value of the type, and 0.
/// @{

/// Trace "PicPixelMin".
LXPIC_API void PicPixelMin(LxROI<LxBW8>* source, LxBW8& minimum);
/// Trace "PicPixelMin (BW16)".
LXPIC_API void PicPixelMin(LxROI<LxBW16>* source, LxBW16& minimum);
/// Trace "PicPixelMax".
LXPIC_API void PicPixelMax(LxROI<LxBW8>* source, LxBW8& maximum);
/// Trace "PicPixelMax (BW16)".
LXPIC_API void PicPixelMax(LxROI<LxBW16>* source, LxBW16& maximum);
/// Follows runs. 255 after an error. Trace "PicMinimum".
LXPIC_API unsigned PicMinimum(LxROI<LxBW8>* source);
/// Follows runs. 0 after an error. Trace "PicMaximum".
LXPIC_API unsigned PicMaximum(LxROI<LxBW8>* source);
/// @}

/// @name Counting by a function
/// The number of pixels for which `predicate` returns something else than 0. It is called once for
/// each pixel, row by row and from left to right, with the pixel of the image, which it may change;
/// a 16-bit pixel at an odd address is passed as a copy, and put back if it was changed. 0 after an
/// error. LX_ERROR_ARGUMENT_2_OUT_OF_RANGE: a null predicate. An exception of the predicate ends the
/// operation with LX_ERROR_INTERNAL, or LX_ERROR_ALLOCATION_FAILED when it is std::bad_alloc.
/// @{

/// Trace "PicCount ( BW8)".
LXPIC_API unsigned PicCount(LxROI<LxBW8>* source, int (*predicate)(LxBW8&));
/// Trace "PicCount ( BW16)".
LXPIC_API unsigned PicCount(LxROI<LxBW16>* source, int (*predicate)(LxBW16&));
/// Trace "PicCount ( C24)".
LXPIC_API unsigned PicCount(LxROI<LxC24>* source, int (*predicate)(LxC24&));
/// @}

/// @name Averages
/// The sum of the pixels over their number.
/// @{

/// Trace "PicPixelAverage ( BW8)".
LXPIC_API void PicPixelAverage(LxROI<LxBW8>* source, float& average);
/// Trace "PicPixelAverage ( BW16)".
LXPIC_API void PicPixelAverage(LxROI<LxBW16>* source, float& average);
/// Trace "PicPixelAverage ( C24)".
LXPIC_API void PicPixelAverage(LxROI<LxC24>* source, float& average0, float& average1,
                               float& average2);
/// Follows runs. Also tells how many pixels count, unless `count` is null. 0 after an error. Trace
/// "PicAverage".
LXPIC_API float PicAverage(LxROI<LxBW8>* source, unsigned* count);
/// @}

/// @name Variances
/// The average of the squares minus the square of the average, over the number of pixels. Of a
/// constant region it is 0.
/// @{

/// Trace "PicPixelVariance ( BW8)".
LXPIC_API void PicPixelVariance(LxROI<LxBW8>* source, float& variance, float& average);
/// Trace "PicPixelVariance ( BW16)".
LXPIC_API void PicPixelVariance(LxROI<LxBW16>* source, float& variance, float& average);
/// The variances of the components, their covariances, which are averages of products minus products
/// of averages, and their averages. Trace "PicPixelVariance ( C24)".
LXPIC_API void PicPixelVariance(LxROI<LxC24>* source, float& variance0, float& variance1,
                                float& variance2, float& covariance01, float& covariance12,
                                float& covariance20, float& average0, float& average1,
                                float& average2);
/// From the histogram, whose refusals keep their traces: "PicHistogram",
/// "PicHistogramCenteredMoments ( 2)". Follows runs. The average is also told truncated to an
/// integer; a null is not written to. 0 after an error. No trace of its own.
LXPIC_API float PicVariance(LxROI<LxBW8>* source, float* average, unsigned* truncatedAverage);
/// @}

/// @name Standard deviations
/// Roots of what PicPixelVariance() computes, whose trace stands before that of the operation,
/// "PicPixelStdDev".
/// @{
LXPIC_API void PicPixelStdDev(LxROI<LxBW8>* source, float& deviation, float& average);
LXPIC_API void PicPixelStdDev(LxROI<LxBW16>* source, float& deviation, float& average);
/// Covariances become correlation coefficients: they are divided by both deviations. 0 where one of
/// these is 0.
LXPIC_API void PicPixelStdDev(LxROI<LxC24>* source, float& deviation0, float& deviation1,
                              float& deviation2, float& correlation01, float& correlation12,
                              float& correlation20, float& average0, float& average1,
                              float& average2);
/// @}

/// @name Minimum, maximum and average at once
/// @{

/// Trace "PicPixelStat".
LXPIC_API void PicPixelStat(LxROI<LxBW8>* source, LxBW8& minimum, LxBW8& maximum, float& average);
/// Trace "PicPixelStat (BW16)".
LXPIC_API void PicPixelStat(LxROI<LxBW16>* source, LxBW16& minimum, LxBW16& maximum,
                            float& average);
/// @}

/// @name Counting by level
/// @{

/// `below` counts the pixels below `low`, `above` those of the others that are `high` or more, and
/// `between` the rest: none when `low` is above `high`. Trace "PicPixelCount".
LXPIC_API void PicPixelCount(LxROI<LxBW8>* source, LxBW8 low, LxBW8 high, int& below, int& between,
                             int& above);
/// Trace "PicPixelCount (BW16)".
LXPIC_API void PicPixelCount(LxROI<LxBW16>* source, LxBW16 low, LxBW16 high, int& below,
                             int& between, int& above);
/// Counts the pixels that are `threshold` or more. The trace of PicPixelCount() stands before its
/// own, "PicArea".
LXPIC_API void PicArea(LxROI<LxBW8>* source, LxBW8 threshold, int& area);
/// Trace "PicArea (BW16)", likewise.
LXPIC_API void PicArea(LxROI<LxBW16>* source, LxBW16 threshold, int& area);
/// Counts the pixels that are `low` or more and below `high`. The trace of PicPixelCount() stands
/// before its own, "PicAreaDoubleThreshold".
LXPIC_API void PicAreaDoubleThreshold(LxROI<LxBW8>* source, LxBW8 low, LxBW8 high, int& area);
/// Trace "PicAreaDoubleThreshold (BW16)", likewise.
LXPIC_API void PicAreaDoubleThreshold(LxROI<LxBW16>* source, LxBW16 low, LxBW16 high, int& area);
/// Counts all pixels. Follows runs. 0 after an error. Trace "PicArea ( all pixels)".
LXPIC_API unsigned PicArea(LxROI<LxBW8>* source);
/// Counts the pixels above the threshold: one that equals it does not count, as it does for the
/// forms with a pixel as threshold. Follows runs. 0 after an error. Trace "PicArea ( binarized)".
LXPIC_API unsigned PicArea(LxROI<LxBW8>* source, unsigned threshold);
/// @}
