// SPDX-License-Identifier: Apache-2.0
#include "lxpic/sequence/recursive_average.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "foundation/frame.h"
#include "foundation/truncate.h"
#include "sequence/recursive_average_kernels.h"

namespace {

using namespace lx;
using namespace lx::sequence;

// The steps for differences of 0, 1, 2, ..., one call after the other.
class LinearSteps {
 public:
  explicit LinearSteps(double noiseReduction)
      : gain_(static_cast<float>(2 / (noiseReduction * noiseReduction + 1))) {}

  double operator()(int /*difference*/) {
    const float step = sum_;
    sum_ += gain_;
    return step;
  }

 private:
  float gain_;
  float sum_ = 0.5F;
};

class EdgePreservingSteps {
 public:
  EdgePreservingSteps(double noiseReduction, double width)
      : base_(std::exp(1 / (16 * width))),
        scale_(16 * width * (1 - noiseReduction * noiseReduction) /
               (1 + noiseReduction * noiseReduction)) {}

  // The largest number stands for powers beyond it: their fraction is 1 all the same.
  double operator()(int difference) {
    const double power = power_;
    power_ = static_cast<float>(std::min<double>(power * base_, FLT_MAX));
    return scale_ * ((power - 1) / (power + 1)) + difference;
  }

 private:
  double base_;
  double scale_;
  float power_ = 1;
};

template <class Steps>
void Fill(LxBW16Vector& table, Steps steps) {
  table.SetNumElements(kSteps);
  if (LxGetError() != LX_OK) return;
  for (int i = 0; i <= kLargestStep; ++i) {
    const std::int64_t step = TruncateTo(steps(i), -INT16_MAX, INT16_MAX);
    table[static_cast<unsigned>(kLargestStep + i)] = static_cast<std::uint16_t>(step);
    table[static_cast<unsigned>(kLargestStep - i)] = static_cast<std::uint16_t>(-step);
  }
}

}  // namespace

void PicSetRecursiveAverageLUT(LxBW16Vector* table, float noiseReduction, float width) {
  RunOperation("PicSetRecursiveAverageLUT", [&] {
    if (!Require(table != nullptr, LX_ERROR_VECTOR_NO_DATA) ||
        !Require(std::isfinite(noiseReduction), LX_ERROR_ARGUMENT_2_OUT_OF_RANGE) ||
        !Require(std::isfinite(width), LX_ERROR_ARGUMENT_3_OUT_OF_RANGE)) {
      return;
    }
    if (width == 0) {
      Fill(*table, LinearSteps(double{noiseReduction}));
    } else {
      Fill(*table, EdgePreservingSteps(double{noiseReduction}, double{width}));
    }
  });
}

void PicRecursiveAverage(LxROI<LxBW8>* source, LxROI<LxBW16>* state, LxROI<LxBW8>* destination,
                         LxBW16Vector* table) {
  RunOperation("PicRecursiveAverage", [&] {
    if (!Usable({source, state, destination}) ||
        !Require(table != nullptr, LX_ERROR_VECTOR_NO_DATA) ||
        !Require(table->GetNumElements() == kSteps, LX_ERROR_WRONG_VECTOR_SIZE)) {
      return;
    }
    AverageRecursively(MapOf(destination, source, state),
                       reinterpret_cast<const std::uint8_t*>(table->GetDataPtr()));
  });
}
