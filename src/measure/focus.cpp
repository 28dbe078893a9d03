// SPDX-License-Identifier: Apache-2.0
#include "lxpic/measure/focus.h"

#include <cmath>

#include "foundation/frame.h"
#include "measure/differences_kernels.h"

namespace {

using namespace lx;
using namespace lx::measure;

// The region without its last row and column, beside itself moved left and moved up.
template <class T>
PixelMap NeighboursOf(const LxROI<T>* region) {
  constexpr std::size_t kComponents = sizeof(T) == 3 ? 3 : 1;
  PixelMap map;
  if (region->GetWidth() < 2 || region->GetHeight() < 2) return map;
  const Rows rows = RowsOf(region);
  map.sources = {rows, {rows.data + sizeof(T), rows.pitch}, {rows.data + rows.pitch, rows.pitch}};
  map.width = (region->GetWidth() - 1) * kComponents;
  map.height = region->GetHeight() - 1;
  return map;
}

template <class T>
float ScoreFocus(const char* trace, LxROI<T>* source) {
  float score = 0.0F;
  RunOperation(trace, [&] {
    if (!Attached({source})) return;
    const auto components = static_cast<double>(sizeof(T) == 3 ? 3 : 1);
    const double count = components * source->GetWidth() * source->GetHeight();
    if (!Require(count != 0, LX_ERROR_EMPTY_HISTOGRAM)) return;
    const auto sum = (sizeof(T) == 2 ? GradientOfWords : GradientOfBytes)(NeighboursOf(source));
    score = static_cast<float>(std::sqrt(static_cast<double>(sum) / count));
  });
  return score;
}

}  // namespace

float PicFocusing(LxROI<LxBW8>* source) { return ScoreFocus("PicFocusing ( BW8)", source); }

float PicFocusing(LxROI<LxBW16>* source) { return ScoreFocus("PicFocusing ( BW16)", source); }

float PicFocusing(LxROI<LxC24>* source) { return ScoreFocus("PicFocusing ( C24)", source); }
