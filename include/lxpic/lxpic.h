// SPDX-License-Identifier: Apache-2.0
/// @file lxpic.h
/// The whole library.
///
/// What holds for every operation, unless its own description says otherwise:
///
/// - **Regions.** An operation reads and writes the pixels of the regions it is given, nothing else.
///   Regions may have any size, start at any address and lie at any pitch. An empty region is
///   valid: there is nothing to do. A null region, or one that is not attached to an image, sets
///   LX_ERROR_ROI_NOT_ATTACHED (1400); regions whose sizes differ set LX_ERROR_SIZE_MISMATCH
///   (1403).
/// - **In place.** Two regions over the same pixels (same address, pitch and size) are the same
///   region, whichever objects describe them. Regions that overlap in part leave unspecified pixels
///   in the destination; nothing outside it is written.
/// - **Errors.** An operation resets the error state and the trace of its thread, checks its
///   arguments in order, and stops at the first that fails, with nothing written. No exception
///   leaves it. LxGetError() tells how it went; after a failure the trace ends with the operation's
///   trace string.
/// - **Arithmetic.** Results are defined to the bit and are the same on every processor, with the
///   fast path on (LxSetMMX()) and off. Integers saturate where it is said and truncate where it is
///   said; conversion from floating point truncates toward zero, clamps what does not fit, and
///   takes NaN as 0.
/// - **Threads.** Calls on different images may run at the same time. Error state, trace and
///   overlay colour are per thread. The library starts no threads and takes no locks.
#pragma once

#include "lxpic/base/dimensional_value.h"
#include "lxpic/base/errors.h"
#include "lxpic/base/export.h"
#include "lxpic/base/image.h"
#include "lxpic/base/pixel.h"
#include "lxpic/base/plot.h"
#include "lxpic/base/roi.h"
#include "lxpic/base/settings.h"
#include "lxpic/base/vector.h"
#include "lxpic/base/vector_template.h"
#include "lxpic/colour/component.h"
#include "lxpic/colour/lookup.h"
#include "lxpic/convolution/filters.h"
#include "lxpic/convolution/kernel.h"
#include "lxpic/convolution/kernel_convolution.h"
#include "lxpic/convolution/smoothing.h"
#include "lxpic/correction/flat_field.h"
#include "lxpic/correction/normalize.h"
#include "lxpic/frequency/complex.h"
#include "lxpic/frequency/fourier.h"
#include "lxpic/frequency/gradient.h"
#include "lxpic/geometry/mirror.h"
#include "lxpic/geometry/pyramid.h"
#include "lxpic/geometry/registration.h"
#include "lxpic/geometry/resampling.h"
#include "lxpic/geometry/shrink.h"
#include "lxpic/geometry/warp.h"
#include "lxpic/histogram/analysis.h"
#include "lxpic/histogram/equalize.h"
#include "lxpic/histogram/histogram.h"
#include "lxpic/histogram/threshold_selection.h"
#include "lxpic/histogram/thresholding.h"
#include "lxpic/measure/correlogram.h"
#include "lxpic/measure/focus.h"
#include "lxpic/measure/moments.h"
#include "lxpic/measure/noise.h"
#include "lxpic/measure/projection.h"
#include "lxpic/measure/regression.h"
#include "lxpic/measure/statistics.h"
#include "lxpic/morphology/boxes.h"
#include "lxpic/morphology/counted.h"
#include "lxpic/morphology/disks.h"
#include "lxpic/morphology/distance.h"
#include "lxpic/morphology/median.h"
#include "lxpic/morphology/thinning.h"
#include "lxpic/point/arithmetic.h"
#include "lxpic/point/convert.h"
#include "lxpic/point/copy.h"
#include "lxpic/point/gain_offset.h"
#include "lxpic/point/lut.h"
#include "lxpic/point/overlay.h"
#include "lxpic/point/vector_arithmetic.h"
#include "lxpic/profile/contour.h"
#include "lxpic/profile/line_segment.h"
#include "lxpic/profile/profile.h"
#include "lxpic/profile/transitions.h"
#include "lxpic/profile/vector_filters.h"
#include "lxpic/sequence/frames.h"
#include "lxpic/sequence/moving_average.h"
#include "lxpic/sequence/recursive_average.h"
#include "lxpic/vectors/elements.h"
#include "lxpic/vectors/histogram_vector.h"
#include "lxpic/vectors/path_vectors.h"
