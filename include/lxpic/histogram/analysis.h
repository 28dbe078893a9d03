// SPDX-License-Identifier: Apache-2.0
/// @file analysis.h
/// Numbers from histograms.
#pragma once

#include "lxpic/base/vector.h"
#include "lxpic/vectors/histogram_vector.h"

/// What PicAnalyseHistogram() computes of the bins of a range. Bins are numbered from the first of
/// the histogram, wherever the range starts.
enum PIC_HISTOGRAM_FEATURE : unsigned {
  /// The first of the bins with the largest count; 0 when all are empty.
  PIC_HIST_MOST_FREQUENT_VALUE = 0,
  /// That count.
  PIC_HIST_MOST_FREQUENT_COUNT = 1,
  /// The first of the bins with the smallest count but 0; 0 when all are empty.
  PIC_HIST_LEAST_FREQUENT_VALUE = 2,
  /// That count; -1 when all are empty.
  PIC_HIST_LEAST_FREQUENT_COUNT = 3,
  /// The lowest bin that is not empty; the one behind the range when all are.
  PIC_HIST_LOWEST_VALUE = 4,
  /// The highest bin that is not empty; the one before the range when all are.
  PIC_HIST_HIGHEST_VALUE = 5,
  /// The sum of the counts.
  PIC_HIST_PIXEL_COUNT = 6,
  /// The mean bin of the pixels, in double precision; 0 without pixels.
  PIC_HIST_AVERAGE_VALUE = 7,
  /// The population standard deviation of the pixels' bins, `sqrt(|E[i * i] - E[i] * E[i]|)` with
  /// the sums in single precision, from the lowest bin upwards; 0 without pixels.
  PIC_HIST_STANDARD_DEVIATION = 8
};

/// @name Features
/// One feature of the bins `first` to `last`. Errors, in this order: LX_ERROR_VECTOR_NO_DATA: a
/// null vector; LX_ERROR_WRONG_VECTOR_SIZE: another number of bins;
/// LX_ERROR_ARGUMENT_3_OUT_OF_RANGE: `first` below 0; LX_ERROR_ARGUMENT_4_OUT_OF_RANGE: `last` not
/// below the number of bins; LX_ERROR_INCONSISTENT_ARGUMENTS: `first` above `last`. The result is
/// then 0, as it is for a feature that does not exist.
/// @{

/// 256 bins. A feature that does not exist appends to the trace without setting a code. Trace
/// "PicAnalyseHistogram".
LXPIC_API float PicAnalyseHistogram(LxBWHistogramVector* histogram, PIC_HISTOGRAM_FEATURE feature,
                                    int first, int last);
/// 65536 bins. Trace "PicAnalyseHistogram (BW16)".
LXPIC_API float PicAnalyseHistogramBW16(LxBWHistogramVector* histogram,
                                        PIC_HISTOGRAM_FEATURE feature, int first, int last);
/// @}

/// @name Features of untyped vectors
/// One feature of those of the first 256 entries that lie in `first`..`last`. A feature of the
/// other form, or that does not exist, leaves `result` as it was, and so do errors:
/// LX_ERROR_VECTOR_NO_DATA: a null vector, or one without data; LX_ERROR_WRONG_VECTOR_KIND: no
/// histogram (kind 2); LX_ERROR_WRONG_VECTOR_SIZE: fewer than 256 entries. Trace
/// "PicAnalyseHistogram".
/// @{

/// PIC_HIST_MOST_FREQUENT_VALUE to PIC_HIST_PIXEL_COUNT, modulo 2^32.
LXPIC_API void PicAnalyseHistogram(LxVector* histogram, int first, int last, int feature,
                                   int& result);
/// PIC_HIST_AVERAGE_VALUE and PIC_HIST_STANDARD_DEVIATION.
LXPIC_API void PicAnalyseHistogram(LxVector* histogram, int first, int last, int feature,
                                   float& result);
/// @}

/// @name Moments
/// Of those of the 256 bins that lie in `first`..`last`, in double precision.
/// LX_ERROR_VECTOR_NO_DATA: a null vector; LX_ERROR_WRONG_VECTOR_SIZE: another number of bins;
/// LX_ERROR_EMPTY_HISTOGRAM: no pixel in the range. The results are then as they were.
/// @{

/// The mean bin of the pixels. Trace "PicHistogramMoments ( 1)".
LXPIC_API void PicHistogramMoments(LxBWHistogramVector* histogram, float& mean, unsigned first,
                                   unsigned last);
/// The mean and the population variance. Trace "PicHistogramCenteredMoments ( 2)".
LXPIC_API void PicHistogramCenteredMoments(LxBWHistogramVector* histogram, float& mean,
                                           float& variance, unsigned first, unsigned last);
/// @}
