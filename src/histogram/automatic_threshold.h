// SPDX-License-Identifier: Apache-2.0
// Thresholds that are chosen from the histogram of an image.
#pragma once

#include "lxpic/histogram/histogram.h"
#include "lxpic/histogram/threshold_selection.h"

namespace lx::histogram {

// The largest value of a pixel type: larger thresholds are modes.
template <class T>
inline constexpr unsigned kLargest = static_cast<decltype(T::value)>(-1);

inline void CountLevels(LxROI<LxBW8>* source, LxBWHistogramVector* histogram) {
  PicHistogram(source, histogram);
}

inline void CountLevels(LxROI<LxBW16>* source, LxBWHistogramVector* histogram) {
  PicHistogram(source, histogram, 15, 16, 1);
}

template <class T>
inline constexpr auto kSelect = &PicHistogramThreshold;
template <>
inline constexpr auto kSelect<LxBW16> = &PicHistogramThresholdBW16;

// Makes a mode the threshold that it selects. A selection that fails leaves its error set and the
// mode as it was; a region without pixels in memory has a histogram without bins, from which
// nothing can be selected. Returns false, with the error set, where the region's pixels could not
// be counted.
template <class T>
bool Resolve(LxROI<T>* source, unsigned& threshold, float relative) {
  if (threshold <= kLargest<T>) return true;
  LxBWHistogramVector histogram(kLargest<T> + 1);
  if (LxGetError() != LX_OK) return false;
  CountLevels(source, &histogram);
  if (LxGetError() != LX_OK && LxGetError() != LX_ERROR_ROI_NOT_ATTACHED) return false;
  float below = 0;
  float above = 0;
  kSelect<T>(&histogram, threshold, below, above, relative, 0, kLargest<T>);
  return true;
}

}  // namespace lx::histogram
