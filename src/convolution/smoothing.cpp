// SPDX-License-Identifier: Apache-2.0
#include "lxpic/convolution/smoothing.h"

#include <cstring>

#include "convolution/apply_filter.h"
#include "convolution/box.h"
#include "convolution/fixed_smoothing_kernels.h"
#include "foundation/frame.h"
#include "foundation/scratch.h"
#include "lxpic/point/arithmetic.h"

namespace {

using namespace lx;
using namespace lx::convolution;

constexpr unsigned kSameAsX = 0xFFFFFFFF;

// What an operation's steps are called when they fail inside it; null where they go unnamed.
template <class T>
struct StepTraces;

template <>
struct StepTraces<LxBW8> {
  static constexpr const char* kUniformX = "PicConvolUniformX (BW8)";
  static constexpr const char* kUniformY = "ConvolUniformY (BW8)";
  static constexpr const char* kUniform = "PicConvolUniform3x3 (BW8)";
  static constexpr const char* kGaussianX = "PicConvolGaussianX (BW8)";
  static constexpr const char* kGaussianY = "PicConvolGaussianY (BW8)";
  static constexpr const char* kGaussian = "PicConvolGaussian3x3 (BW8)";
};

template <>
struct StepTraces<LxBW16> {
  static constexpr const char* kUniformX = "PicConvolUniformX (BW16)";
  static constexpr const char* kUniformY = "ConvolUniformY (BW16)";
  static constexpr const char* kUniform = "PicConvolUniform3x3 (BW16)";
  static constexpr const char* kGaussianX = "PicConvolGaussianX (BW16)";
  static constexpr const char* kGaussianY = "PicConvolGaussianY (BW16)";
  static constexpr const char* kGaussian = "PicConvolGaussian3x3 (BW16)";
};

template <>
struct StepTraces<LxC24> : StepTraces<LxBW8> {};

// Traces the name of a step that failed.
void TraceStep(const char* trace) {
  if (LxGetError() != LX_OK) LxTraceError(trace);
}

template <class T>
void Step(Filter filter, const char* trace, LxROI<T>* source, LxROI<T>* destination) {
  ApplyFilter(filter, CurrentPath(), source, destination);
  TraceStep(trace);
}

// Box mean

bool Box(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned halfX, unsigned halfY) {
  return BoxMeanBytes(WindowOf(destination, source, halfX, halfY));
}

bool Box(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, unsigned halfX, unsigned halfY) {
  return BoxMeanWords(WindowOf(destination, source, halfX, halfY));
}

bool Box(LxROI<LxC24>* source, LxROI<LxC24>* destination, unsigned halfX, unsigned halfY) {
  return BoxMeanBytes(WindowOf(destination, source, halfX, halfY));
}

template <class T>
bool IsEmpty(const LxROI<T>* region) {
  return region->GetWidth() == 0 || region->GetHeight() == 0;
}

template <class T>
void RunUniform(const char* trace, LxROI<T>* source, LxROI<T>* destination, unsigned halfX,
                unsigned halfY) {
  RunOperation(trace, [&] {
    if (!UsablePair(source, destination)) return;
    if (halfY == kSameAsX) halfY = halfX;
    LxROI<T>* const to = destination == nullptr ? source : destination;
    using Traces = StepTraces<T>;
    if (halfX == 0 && halfY == 0) {
      PicOper(ARITH_LOGIC_COPY, source, to);
    } else if (halfX == 1 && halfY == 0) {
      Step(Filter::kUniformX, Traces::kUniformX, source, to);
    } else if (halfX == 0 && halfY == 1) {
      Step(Filter::kUniformY, Traces::kUniformY, source, to);
    } else if (halfX == 1 && halfY == 1) {
      Step(Filter::kUniform, Traces::kUniform, source, to);
    } else if (sizeof(T) == 3 || UsableApart(source, destination)) {
      if (!IsEmpty(source)) Box(source, to, halfX, halfY);
    }
  });
}

// Gaussian smoothing

// Repeats filters between two regions that are not empty, in memory that is taken before anything is
// written.
template <class T>
class Repeater {
 public:
  Repeater(const LxROI<T>* source, const LxROI<T>* destination, std::size_t passes)
      : map_(NeighbourhoodOf(destination, source)),
        rowBytes_(std::size_t{source->GetWidth()} * sizeof(T)),
        scratch_(std::min(passes, kMostPasses) * FilterScratch(map_, Kernel::kElementBytes)),
        before_(passes > kBetweenLooks ? rowBytes_ * map_.height : 0) {}

  explicit operator bool() const { return scratch_ && before_; }

  // `passes` passes, the first of all from the source and the others on the destination. Looks now
  // and then whether a pass still changes something, as there may be billions to come.
  void Run(Filter filter, std::size_t passes) {
    while (passes > 0) {
      const std::size_t untilLook = std::min(passes, kBetweenLooks);
      Pass(filter, untilLook);
      passes -= untilLook;
      if (passes == 0 || IsSettled(filter)) break;
      --passes;
    }
  }

 private:
  using Kernel = FilterKernel<T>;
  static constexpr std::size_t kBetweenLooks = 64;

  void Pass(Filter filter, std::size_t passes) {
    RunInBatches(map_, passes,
                 [&](std::size_t batch) { Kernel::kRun(filter, map_, batch, scratch_.get()); });
  }

  // Whether one more pass leaves every pixel as it is.
  bool IsSettled(Filter filter) {
    const Rows rows = map_.destination;
    for (std::size_t y = 0; y < map_.height; ++y) {
      std::memcpy(before_.get() + y * rowBytes_, rows.Row<std::uint8_t>(y), rowBytes_);
    }
    Pass(filter, 1);
    for (std::size_t y = 0; y < map_.height; ++y) {
      const auto* const row = rows.Row<std::uint8_t>(y);
      if (std::memcmp(before_.get() + y * rowBytes_, row, rowBytes_) != 0) return false;
    }
    return true;
  }

  Neighbourhood map_;
  std::size_t rowBytes_;
  Scratch<std::uint8_t> scratch_;
  Scratch<std::uint8_t> before_;
};

template <class T>
void RunGaussian(const char* trace, LxROI<T>* source, LxROI<T>* destination, unsigned halfX,
                 unsigned halfY) {
  RunOperation(trace, [&] {
    if (!UsablePair(source, destination)) return;
    if (halfY == kSameAsX) halfY = halfX;
    LxROI<T>* const to = destination == nullptr ? source : destination;
    if (IsEmpty(source)) return;
    if (halfX == 0 && halfY == 0) return PicOper(ARITH_LOGIC_COPY, source, to);
    using Traces = StepTraces<T>;
    const unsigned both = std::min(halfX, halfY);
    Repeater<T> repeater(source, to, std::max(halfX, halfY));
    if (!repeater) {
      // Named by the step that wanted it first.
      return TraceStep(both > 0    ? Traces::kGaussian
                       : halfX > 0 ? Traces::kGaussianX
                                   : Traces::kGaussianY);
    }
    repeater.Run(Filter::kGaussian, both);
    repeater.Run(Filter::kGaussianX, halfX - both);
    repeater.Run(Filter::kGaussianY, halfY - both);
  });
}

template <class T>
void RunDeviation(const char* trace, bool (*deviation)(const Window&), LxROI<T>* source,
                  LxROI<T>* destination, unsigned halfX, unsigned halfY) {
  RunOperation(trace, [&] {
    if (!UsableApart(source, destination) || IsEmpty(source)) return;
    deviation(WindowOf(destination, source, halfX, halfY == kSameAsX ? halfX : halfY));
  });
}

void RunFixed(const char* trace, FixedSmoothing smoothing, LxROI<LxBW8>* source,
              LxROI<LxBW8>* destination) {
  RunOperation(trace, [&] {
    if (!UsableApart(source, destination) || IsEmpty(source)) return;
    const Neighbourhood map = NeighbourhoodOf(destination, source);
    const Scratch<std::uint8_t> scratch(FixedSmoothingScratch(map));
    if (scratch) SmoothBytes(smoothing, map, scratch.get());
  });
}

// A window of that size whatever the size of the region.
void RunFixedBox(const char* trace, std::size_t half, LxROI<LxBW8>* source,
                 LxROI<LxBW8>* destination) {
  RunOperation(trace, [&] {
    if (!UsableApart(source, destination) || IsEmpty(source)) return;
    Window window = WindowOf(destination, source, 0, 0);
    window.halfX = half;
    window.halfY = half;
    BoxMeanBytes(window);
  });
}

void RunInPlace(const char* trace, Filter filter, LxROI<LxBW8>* source, LxROI<LxBW8>* destination) {
  RunOperation(trace, [&] {
    if (!UsablePair(source, destination)) return;
    ApplyFilter(filter, CurrentPath(), source, destination == nullptr ? source : destination);
  });
}

}  // namespace

void PicConvolUniform3x3(LxROI<LxBW8>* source, LxROI<LxBW8>* destination) {
  RunInPlace("PicConvolUniform3x3 (BW8)", Filter::kUniform, source, destination);
}

void PicConvolGaussian3x3(LxROI<LxBW8>* source, LxROI<LxBW8>* destination) {
  RunInPlace("PicConvolGaussian3x3 (BW8)", Filter::kGaussian, source, destination);
}

void PicConvolUniform5x5(LxROI<LxBW8>* source, LxROI<LxBW8>* destination) {
  RunFixedBox("ConvolUniform5x5", 2, source, destination);
}

void PicConvolUniform7x7(LxROI<LxBW8>* source, LxROI<LxBW8>* destination) {
  RunFixedBox("PicConvolUniform7x7", 3, source, destination);
}

void PicConvolGaussian5x5(LxROI<LxBW8>* source, LxROI<LxBW8>* destination) {
  RunFixed("ConvolGaussian5x5", FixedSmoothing::kGaussian5, source, destination);
}

void PicConvolGaussian7x7(LxROI<LxBW8>* source, LxROI<LxBW8>* destination) {
  RunFixed("PicConvolGaussian7x7", FixedSmoothing::kGaussian7, source, destination);
}

#define LX_DEFINE_SIZED(function, run, type, trace)                                              \
  void function(LxROI<type>* source, LxROI<type>* destination, unsigned halfX, unsigned halfY) { \
    run(trace, source, destination, halfX, halfY);                                               \
  }

LX_DEFINE_SIZED(PicConvolUniform, RunUniform, LxBW8, "PicConvolUniform")
LX_DEFINE_SIZED(PicConvolUniform, RunUniform, LxBW16, "PicConvolUniform (BW16)")
LX_DEFINE_SIZED(PicConvolUniform, RunUniform, LxC24, "PicConvolUniform ( C24)")
LX_DEFINE_SIZED(PicLocalAverage, RunUniform, LxBW8, "PicLocalAverage")
LX_DEFINE_SIZED(PicLocalAverage, RunUniform, LxBW16, "PicLocalAverage (BW16)")
LX_DEFINE_SIZED(PicConvolGaussian, RunGaussian, LxBW8, "PicConvolGaussian")
LX_DEFINE_SIZED(PicConvolGaussian, RunGaussian, LxBW16, "PicConvolGaussian (BW16)")
LX_DEFINE_SIZED(PicConvolGaussian, RunGaussian, LxC24, "PicConvolGaussian ( C24)")

#undef LX_DEFINE_SIZED

void PicLocalDeviation(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned halfX,
                       unsigned halfY) {
  RunDeviation("PicLocalDeviation", &BoxDeviationBytes, source, destination, halfX, halfY);
}

void PicLocalDeviation(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, unsigned halfX,
                       unsigned halfY) {
  RunDeviation("PicLocalDeviation (BW16)", &BoxDeviationWords, source, destination, halfX, halfY);
}
