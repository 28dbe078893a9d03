// SPDX-License-Identifier: Apache-2.0
/// @file histogram_vector.h
/// Histograms: vectors of counts.
#pragma once

#include "lxpic/base/plot.h"
#include "lxpic/vectors/elements.h"

/// Counts of pixels, one element for each bin of grey levels.
class LXPIC_API LxBWHistogramVector : public LxVectorTemplate<unsigned int> {
 public:
  /// Empty, with room for `capacity` bins; LX_ERROR_ALLOCATION_FAILED leaves no room.
  explicit LxBWHistogramVector(unsigned capacity);

  /// Sets the counts of all bins to 0.
  void Clear();

  /// Draws a bar for each bin above axes labelled "Value" (0 to the last bin) and "Count" (0 to the
  /// largest count), in a rectangle of `width` × `height` device pixels at (x, y), each truncated
  /// and clamped to 32 bits. A bar is a row of vertical lines, one at least. Without bins the axes
  /// go from 0 to 1; a null target draws nothing. It reports nothing but what the target throws.
  void Draw(HDC target, float x, float y, float width, float height);

  /// Shannon entropy, in bits, of the bins `first` to `last`; 0xFFFFFFFF is the last bin of all.
  /// `(ln N - S / N) / ln 2` with N the sum of the counts h and S the sum of `h * ln h`, counts and
  /// sum in single precision, the rest in extended; 0 when there is nothing to measure or after an
  /// error. LX_ERROR_ARGUMENT_1_OUT_OF_RANGE, LX_ERROR_ARGUMENT_2_OUT_OF_RANGE: not below the
  /// number of bins. Trace "LxBWHistogramVector::Entropy".
  float Entropy(unsigned first, unsigned last) const;

 private:
  LxPlot m_Plot;
};
