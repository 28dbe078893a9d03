// SPDX-License-Identifier: Apache-2.0
#include "lxpic/morphology/median.h"

#include "foundation/frame.h"
#include "morphology/median_kernels.h"
#include "morphology/outside.h"

namespace {

using namespace lx;
using namespace lx::morphology;

// The edge is replicated unless pixels outside have a value.
template <class T, class... Outside>
void Run(const char* trace, LxROI<T>* source, LxROI<T>* destination, Outside... outside) {
  RunOperation(trace, [&] {
    if (!Usable({source, destination})) return;
    Neighbourhood map = NeighbourhoodOf(destination, source);
    if (map.elements == 0 || map.height == 0) return;
    (SetOutside(map, outside), ...);
    constexpr std::size_t kElementBytes = sizeof(T) == 2 ? 2 : 1;
    const Scratch<std::uint8_t> scratch(MedianScratch(map, kElementBytes));
    if (scratch) (kElementBytes == 2 ? MedianWords : MedianBytes)(map, scratch.get());
  });
}

}  // namespace

void PicMedian(LxROI<LxBW8>* source, LxROI<LxBW8>* destination) {
  Run("PicMedian", source, destination);
}

void PicMedian(LxROI<LxBW16>* source, LxROI<LxBW16>* destination) {
  Run("PicMedian (BW16)", source, destination);
}

void PicMedian(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, int outside) {
  Run("PicMedian", source, destination, outside);
}

void PicMedian(LxROI<LxC24>* source, LxROI<LxC24>* destination, LxC24 outside) {
  Run("PicMedian ( C24)", source, destination, outside);
}
