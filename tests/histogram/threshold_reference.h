// SPDX-License-Identifier: Apache-2.0
// Threshold selection by its definition.
#pragma once

#include "lxpic/histogram/threshold_selection.h"

namespace lx::test {

struct ExpectedThreshold {
  unsigned threshold;
  float below;
  float above;
};

/// What PicHistogramThreshold() makes of valid arguments; `bins` are 256 or 65536.
ExpectedThreshold ExpectedOf(const unsigned* counts, unsigned bins, unsigned mode, float relative,
                             unsigned first, unsigned last);

/// What PicIsodataThreshold() returns.
unsigned ExpectedIsodata(const unsigned* counts, unsigned first, unsigned last);

/// What the two forms that compare with no split at all make of 256 counts. Without a gain, `below`
/// and `above` are what they were.
ExpectedThreshold ExpectedGain(const unsigned* counts, unsigned mode, float below, float above);

}  // namespace lx::test
