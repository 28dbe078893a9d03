// SPDX-License-Identifier: Apache-2.0
/// @file threshold_selection.h
/// Thresholds chosen from histograms.
///
/// A threshold T splits the bins `first` to `last` of a histogram into a dark class, up to T - 1,
/// and a bright class from T on, unless it is said otherwise. N is the number of pixels of a class,
/// S the sum of their bins, and L the sum of `h * ln h` over its counts h. Criteria are computed in
/// extended precision; what is rounded to single precision (double precision in the 65536-bin
/// forms) decides, and is stated.
#pragma once

#include "lxpic/base/vector.h"
#include "lxpic/vectors/histogram_vector.h"

/// How a threshold is chosen: values of a threshold argument that are not thresholds. Each
/// criterion, and the sums L, counts h and N before a logarithm, and S before it is squared, are
/// rounded to single precision. On equal criteria the lowest threshold wins where the least value
/// is sought over two filled classes, the highest where deviations are.
enum PIC_THRESHOLD_MODES : unsigned {
  /// Least sum of squared distances of dark pixels from black and of bright ones from white, the
  /// highest level. The threshold is the last bin of the dark class.
  PIC_THRESHOLD_MIN_SQUARED_DEVIATION = 0xFFFFFFF8,
  /// The same with absolute distances.
  PIC_THRESHOLD_MIN_ABSOLUTE_DEVIATION = 0xFFFFFFF9,
  /// Closest to the midpoint of the two class means.
  PIC_THRESHOLD_ISODATA = 0xFFFFFFFA,
  /// Largest sum of the class entropies, `ln N - L / N` each (J. N. Kapur, P. K. Sahoo,
  /// A. K. C. Wong, 1985).
  PIC_THRESHOLD_MAX_ENTROPY = 0xFFFFFFFB,
  /// Least variance within the classes, as the largest sum of `S * S / N` (N. Otsu, 1979).
  PIC_THRESHOLD_MIN_RESIDUE = 0xFFFFFFFC,
  /// The highest bin below which lie at most `relative` of the pixels, as a truncated number.
  PIC_THRESHOLD_RELATIVE = 0xFFFFFFFD
};

/// @name Selection
/// `threshold` is a value or one of PIC_THRESHOLD_MODES, and becomes the chosen threshold: 0 when a
/// mode that needs two filled classes finds none, both classes then counting as empty; `last` + 1
/// when PIC_THRESHOLD_RELATIVE leaves the bright class empty. `averageBelow` and `averageAbove`
/// become the mean bins of the classes, `first` and `last` + 1 for empty ones. `relative` is read
/// by PIC_THRESHOLD_RELATIVE only.
///
/// Errors, in this order, with nothing changed: LX_ERROR_VECTOR_NO_DATA: a null vector;
/// LX_ERROR_WRONG_VECTOR_SIZE: another number of bins; LX_ERROR_ARGUMENT_5_OUT_OF_RANGE,
/// LX_ERROR_ARGUMENT_6_OUT_OF_RANGE: `first`, `last` not below it; LX_ERROR_INCONSISTENT_ARGUMENTS:
/// `first` not below `last`; LX_ERROR_ARGUMENT_5_OUT_OF_RANGE: `relative` is read and not in 0..1;
/// LX_ERROR_ARGUMENT_2_OUT_OF_RANGE: `threshold` is neither a mode nor in `first`..`last`.
/// @{

/// 256 bins. Trace "PicHistogramThreshold".
LXPIC_API void PicHistogramThreshold(LxBWHistogramVector* histogram, unsigned& threshold,
                                     float& averageBelow, float& averageAbove, float relative,
                                     unsigned first, unsigned last);
/// 65536 bins; double precision. Trace "PicHistogramThreshold (BW16)".
LXPIC_API void PicHistogramThresholdBW16(LxBWHistogramVector* histogram, unsigned& threshold,
                                         float& averageBelow, float& averageAbove, float relative,
                                         unsigned first, unsigned last);
/// @}

/// @name Iterated isodata
/// The threshold that is the midpoint of the means of its classes, the dark one including it:
/// starting in the middle of the range, it moves to the midpoint until it stays, sixteen times at
/// most (T. W. Ridler, S. Calvard, 1978). All in integers, rounded down; an empty class has the
/// middle of its bins as its mean. Errors, with 0 returned: LX_ERROR_ARGUMENT_2_OUT_OF_RANGE,
/// LX_ERROR_ARGUMENT_3_OUT_OF_RANGE: `first`, `last` not below the number of bins;
/// LX_ERROR_INCONSISTENT_ARGUMENTS: `first` not below `last`.
/// @{

/// 256 bins. Before the range: LX_ERROR_VECTOR_NO_DATA: a null vector; LX_ERROR_WRONG_VECTOR_SIZE.
/// Trace "PicIsodataThreshold ( LxBWHistogramVector)".
LXPIC_API unsigned PicIsodataThreshold(LxBWHistogramVector* histogram, unsigned first,
                                       unsigned last);
/// The first 256 entries of an untyped vector. After the range: LX_ERROR_VECTOR_CONTENT: no
/// histogram (kind 2); LX_ERROR_VECTOR_NO_DATA: a null vector, or one without data;
/// LX_ERROR_WRONG_VECTOR_SIZE: fewer than 256 entries. Trace "PicIsodataThreshold ( LxVector)".
LXPIC_API unsigned PicIsodataThreshold(LxVector* histogram, unsigned first, unsigned last);
/// 65536 bins. Errors and trace as with 256 bins.
LXPIC_API unsigned PicIsodataThresholdBW16(LxBWHistogramVector* histogram, unsigned first,
                                           unsigned last);
/// @}

/// @name Splits that beat the whole
/// The lowest best split of 256 bins into two filled classes, and the means of these, if it is
/// better than no split at all; otherwise 0, and the means as they were. LX_ERROR_VECTOR_NO_DATA: a
/// null vector; LX_ERROR_WRONG_VECTOR_SIZE; 0 is returned.
/// @{

/// The largest sum of `S * S / N`, rounded to single precision. Trace "PicMinResidueThreshold".
LXPIC_API unsigned char PicMinResidueThreshold(LxBWHistogramVector* histogram, float& averageBelow,
                                               float& averageAbove);
/// The largest sum of `ln N - L / N`, with L, and counts before a logarithm, in single precision.
/// Trace "PicMaxEntropyThreshold".
LXPIC_API unsigned char PicMaxEntropyThreshold(LxBWHistogramVector* histogram, float& averageBelow,
                                               float& averageAbove);
/// @}
