// SPDX-License-Identifier: Apache-2.0
#include "lxpic/measure/regression.h"

#include <cmath>

#include "foundation/frame.h"
#include "measure/regression_kernels.h"

namespace {

using namespace lx;
using namespace lx::measure;

struct Fit {
  double slope;
  double offset;
  double correlation;
};

// False when the levels a do not vary.
bool FitLine(const PairSums& sums, Fit& fit) {
  const auto mean = [&sums](std::uint64_t sum) {
    return static_cast<double>(sum) / static_cast<double>(sums.count);
  };
  const double a = mean(sums.a);
  const double b = mean(sums.b);
  const double aa = mean(sums.aa) - a * a;
  const double ab = mean(sums.ab) - a * b;
  const double bb = mean(sums.bb) - b * b;
  fit = {0, b, 0};
  if (aa == 0) return false;
  fit.slope = ab / aa;
  fit.offset = b - fit.slope * a;
  if (aa * bb > 0) fit.correlation = ab / std::sqrt(aa * bb);
  return true;
}

}  // namespace

void PicLinearRegression(LxROI<LxBW8>* first, LxROI<LxBW8>* second, float& slope, float& offset,
                         float& correlation, int excludeSaturated) {
  RunOperation("PicLinearRegression", [&] {
    if (!Usable({first, second})) return;
    const PairSums sums = SumPairs(MapOfPair(first, second), excludeSaturated != 0);
    if (!Require(sums.count != 0, LX_ERROR_EMPTY_HISTOGRAM)) return;
    Fit fit{};
    Require(FitLine(sums, fit), LX_ERROR_EMPTY_HISTOGRAM);
    slope = static_cast<float>(fit.slope);
    offset = static_cast<float>(fit.offset);
    correlation = static_cast<float>(fit.correlation);
  });
}
