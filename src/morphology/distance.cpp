// SPDX-License-Identifier: Apache-2.0
#include "lxpic/morphology/distance.h"

#include <algorithm>

#include "foundation/frame.h"
#include "morphology/distance_kernels.h"

using namespace lx;
using namespace lx::morphology;

void PicDistance(LxROI<LxBW8>* source, LxImage<LxBW16>* destination, int outside) {
  RunOperation("PicDistance", [&] {
    if (!Usable({source, destination})) return;
    DistanceMap map;
    map.destination = RowsOf(destination);
    map.source = RowsOf(source);
    map.width = source->GetWidth();
    map.height = source->GetHeight();
    map.outside = static_cast<std::uint8_t>(std::clamp(outside, 0, 255));
    if (map.width == 0 || map.height == 0) return;
    const Scratch<std::uint8_t> scratch(DistanceScratch(map));
    if (scratch) MapDistances(map, scratch.get());
  });
}
