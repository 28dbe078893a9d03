// SPDX-License-Identifier: Apache-2.0
#include "lxpic/geometry/mirror.h"

#include "foundation/frame.h"
#include "geometry/mirror_kernels.h"

namespace {

using namespace lx;
using namespace lx::geometry;

template <class T>
void Run(const char* trace, LxROI<T>* region, void (*mirror)(const RowsInPlace&)) {
  RunOperation(trace, [&] {
    if (!Attached({region})) return;
    mirror({RowsOf(region), region->GetWidth(), region->GetHeight(), sizeof(T)});
  });
}

}  // namespace

void PicVerticalMirror(LxROI<LxBW8>* region) {
  Run("PicVerticalMirror ( gray-level)", region, SwapTopAndBottom);
}

void PicVerticalMirror(LxROI<LxBW16>* region) {
  Run("PicVerticalMirror ( BW16)", region, SwapTopAndBottom);
}

void PicVerticalMirror(LxROI<LxC24>* region) {
  Run("PicVerticalMirror ( color)", region, SwapTopAndBottom);
}

void PicHorizontalMirror(LxROI<LxBW8>* region) {
  Run("PicHorizontalMirror ( gray-level)", region, SwapLeftAndRight);
}

void PicHorizontalMirror(LxROI<LxBW16>* region) {
  Run("PicHorizontalMirror ( BW16)", region, SwapLeftAndRight);
}

void PicHorizontalMirror(LxROI<LxC24>* region) {
  Run("PicHorizontalMirror ( color)", region, SwapLeftAndRight);
}
