// SPDX-License-Identifier: Apache-2.0
#include "lxpic/frequency/fourier.h"

#include <bit>
#include <cmath>

#include "foundation/frame.h"
#include "frequency/fast_transform_kernels.h"
#include "frequency/slow_transform_kernels.h"

namespace {

using namespace lx;
using namespace lx::frequency;

Transform TransformOf(const LxROI<LxBW8>* source, const LxROI<LxComplex64>* destination,
                      float factor) {
  const std::size_t width = source->GetWidth();
  const std::size_t height = source->GetHeight();
  const double root = std::sqrt(static_cast<double>(width) * static_cast<double>(height));
  return {RowsOf(source), RowsOf(destination), width, height,
          static_cast<float>(static_cast<double>(factor) / root)};
}

}  // namespace

void PicSlowDFT(LxROI<LxBW8>* source, LxROI<LxComplex64>* destination, float factor) {
  RunOperation("PicSlowDFT", [&] {
    if (!Usable({source, destination})) return;
    if (source->GetWidth() == 0 || source->GetHeight() == 0) return;
    TransformSlowly(TransformOf(source, destination, factor));
  });
}

void PicFastDFT(LxROI<LxBW8>* source, LxROI<LxComplex64>* destination, float factor) {
  RunOperation("PicFastDFT", [&] {
    if (!Usable({source, destination})) return;
    if (!Require(std::has_single_bit(source->GetWidth()), LX_ERROR_NOT_POWER_OF_TWO)) return;
    if (!Require(std::has_single_bit(source->GetHeight()), LX_ERROR_NOT_POWER_OF_TWO)) return;
    TransformFast(TransformOf(source, destination, factor));
  });
}
