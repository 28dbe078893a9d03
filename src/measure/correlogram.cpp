// SPDX-License-Identifier: Apache-2.0
#include "lxpic/measure/correlogram.h"

#include <algorithm>
#include <cstring>

#include "foundation/frame.h"
#include "foundation/scratch.h"
#include "measure/correlogram_kernels.h"

namespace {

using namespace lx;
using namespace lx::measure;

// There is a result, and it is neither source. One of other pixels is missing like any region.
bool UsableResult(const LxROI<LxBW8>* first, const LxROI<LxBW8>* second,
                  const LxImage<LxBW8>* result) {
  return Require(result != nullptr && !SamePixels(first, result) && !SamePixels(second, result),
                 LX_ERROR_DESTINATION_IS_SOURCE);
}

bool UsableResult(const LxROI<LxBW8>* /*first*/, const LxROI<LxBW8>* /*second*/,
                  const LxImage<LxBW16>* result) {
  return Require(result != nullptr, LX_ERROR_ROI_NOT_ATTACHED);
}

// Level 0 of the second region is the bottom row.
template <typename Count>
void Draw(const Count* counts, const Rows& image) {
  for (std::size_t level = 0; level < kLevels; ++level) {
    std::memcpy(image.Row<std::uint8_t>(kLevels - 1 - level), counts + kLevels * level,
                kLevels * sizeof(Count));
  }
}

// All is counted before the result is touched: the sources may lie in it.
template <class Count>
void Correlate(const char* trace, LxROI<LxBW8>* first, LxROI<LxBW8>* second,
               LxImage<Count>* result) {
  RunOperation(trace, [&] {
    if (!Attached({first, second}) || !UsableResult(first, second, result)) return;
    if (!Usable({first, second})) return;
    const Scratch<decltype(Count::value)> counts(kPairPlaces);
    if (!counts) return;
    std::fill_n(counts.get(), kPairPlaces, decltype(Count::value){0});
    CountPairs(MapOfPair(first, second), counts.get());
    if (Resize(result, kLevels, kLevels)) Draw(counts.get(), RowsOf(result));
  });
}

}  // namespace

void PicCorrelogram(LxROI<LxBW8>* first, LxROI<LxBW8>* second, LxImage<LxBW8>* correlogram) {
  Correlate("PicCorrelogram ( BW8)", first, second, correlogram);
}

void PicCorrelogram(LxROI<LxBW8>* first, LxROI<LxBW8>* second, LxImage<LxBW16>* correlogram) {
  Correlate("PicCorrelogram ( BW16)", first, second, correlogram);
}
