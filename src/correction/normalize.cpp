// SPDX-License-Identifier: Apache-2.0
#include "lxpic/correction/normalize.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "correction/normalize_kernels.h"
#include "foundation/frame.h"
#include "foundation/truncate.h"
#include "lxpic/measure/statistics.h"
#include "lxpic/point/lut.h"

namespace {

using namespace lx;
using namespace lx::correction;

// NaN counts as 0, and infinities as the largest numbers.
double Bounded(float value) {
  if (std::isnan(value)) return 0;
  return std::clamp(value, std::numeric_limits<float>::lowest(), std::numeric_limits<float>::max());
}

// The line from the mean and deviation that the source has to those that are asked for; nothing to
// draw it for in an empty region. False after an error.
template <class T>
bool FindLine(LxROI<T>* source, LxROI<T>* destination, float average, float deviation, Line& line) {
  if (!Usable({source, destination})) return false;
  if (source->GetWidth() == 0 || source->GetHeight() == 0) return false;
  float sigma = 0;
  float mean = 0;
  PicPixelStdDev(source, sigma, mean);
  if (LxGetError() != LX_OK) return false;
  const double gain = sigma == 0 ? 0 : Bounded(deviation) / sigma;
  line = {gain, Bounded(average), gain * mean};
  return true;
}

}  // namespace

void PicNormalize(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, float average, float deviation) {
  RunOperation("PicNormalize", [&] {
    Line line{};
    if (!FindLine(source, destination, average, deviation, line)) return;
    unsigned char table[256];
    for (int v = 0; v < 256; ++v) {
      table[v] = static_cast<unsigned char>(TruncateTo(line.At(v), 0, 255));
    }
    PicLut(source, destination, table);
  });
}

void PicNormalize(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, float average,
                  float deviation) {
  RunOperation("PicNormalize (BW16)", [&] {
    Line line{};
    if (FindLine(source, destination, average, deviation, line)) {
      MapWords(MapOf(destination, source), line);
    }
  });
}
