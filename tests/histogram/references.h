// SPDX-License-Identifier: Apache-2.0
// Threshold selection by its definition, and what references of histograms share.
#pragma once

#include <ostream>
#include <vector>

#include "lxpic/histogram/threshold_selection.h"
#include "support/reference.h"

namespace lx::test {

/// The bins first..last of a histogram whose bin 0 is at `counts`.
struct BinRange {
  const unsigned* counts;
  unsigned first;
  unsigned last;
};

struct ExpectedThreshold {
  unsigned threshold;
  float below;
  float above;

  bool operator==(const ExpectedThreshold&) const = default;
};
std::ostream& operator<<(std::ostream& stream, const ExpectedThreshold& each);

/// What PicHistogramThreshold() makes of valid arguments; `bins` are 256 or 65536.
ExpectedThreshold ExpectedOf(const BinRange& range, unsigned bins, unsigned mode, float relative);

/// What PicIsodataThreshold() returns.
unsigned ExpectedIsodata(const BinRange& range);

/// What the two forms that compare with no split at all make of 256 counts. Without a gain, `below`
/// and `above` are what they were.
ExpectedThreshold ExpectedGain(const unsigned* counts, unsigned mode, float below, float above);

/// The histogram of a picture's values.
std::vector<double> CountPixels(const Picture& picture, std::size_t bins, bool followRuns);

/// The counts of the histogram that is the first argument.
inline std::vector<unsigned> CountsOf(const Outcome& outcome) {
  const auto& values = std::get<Elements>(outcome.values[0]).values;
  return {values.begin(), values.end()};
}

/// Whether the untyped vector that comes first is a histogram; refuses it otherwise.
inline bool IsHistogram(Outcome& outcome, LX_ERRORS wrongKind) {
  const Elements& vector = outcome.Vector(0);
  if (vector.kind != LX_VECTOR_HISTOGRAM) {
    outcome.Refuse(wrongKind);
  } else if (vector.values.size() < 256) {
    outcome.Refuse(LX_ERROR_WRONG_VECTOR_SIZE);
  }
  return outcome.error == LX_OK;
}

}  // namespace lx::test
