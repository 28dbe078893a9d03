// SPDX-License-Identifier: Apache-2.0
#include "lxpic/point/gain_offset.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "foundation/frame.h"
#include "foundation/truncate.h"
#include "point/gain_offset_kernels.h"

namespace {

using namespace lx;
using namespace lx::point;

// Gains have five fractional bits.
std::int64_t FixedGain(float gain) { return TruncateTo32(static_cast<double>(gain) * 32.0); }

// Of a colour: clamped like the grey ones, so that no infinity meets a 0 or another infinity.
double Bounded(float value) {
  return std::isnan(value) ? 0.0 : std::clamp<double>(value, INT32_MIN, INT32_MAX);
}

ColourScale::Component Component(float gain, float offset) {
  return {Bounded(gain), Bounded(offset)};
}

}  // namespace

void PicGainOffset(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, float gain, float offset) {
  RunOperation("PicGainOffset", [&] {
    if (!Usable({source, destination})) return;
    ScaleBytes(MapOf(destination, source), FixedGain(gain), TruncateTo32(offset));
  });
}

void PicGainOffset(LxROI<LxC24>* source, LxROI<LxC24>* destination, LxColor gain, LxColor offset) {
  RunOperation("PicGainOffset", [&] {
    if (!Usable({source, destination})) return;
    // A colour's first float belongs to a pixel's last byte.
    ScaleColours(MapOf(destination, source),
                 {{Component(gain.c2, offset.c2), Component(gain.c1, offset.c1),
                   Component(gain.c0, offset.c0)}});
  });
}

void PicGainOffset(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, float gain, float offset) {
  RunOperation("PicGainOffset (BW16)", [&] {
    if (!Usable({source, destination})) return;
    ScaleWords(MapOf(destination, source), FixedGain(gain), TruncateTo32(offset));
  });
}
