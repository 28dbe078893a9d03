// SPDX-License-Identifier: Apache-2.0
#include "lxpic/morphology/counted.h"

#include "foundation/frame.h"
#include "lxpic/point/arithmetic.h"
#include "morphology/outside.h"
#include "morphology/passes_kernels.h"

namespace {

using namespace lx;
using namespace lx::morphology;

// Passes of one kind, and what is outside of them.
template <class Outside>
struct Step {
  Extreme extreme;
  Outside outside;
};

template <class Outside>
using Steps = std::initializer_list<Step<Outside>>;

template <class T, class Outside>
void RunSteps(LxROI<T>* source, LxROI<T>* destination, int count, Steps<Outside> steps) {
  if (!Usable({source, destination})) return;
  // A pass reaches one pixel further than the one before.
  const std::size_t largest = std::max(source->GetWidth(), source->GetHeight());
  const std::size_t passes = count < 0 ? 0 : std::min(largest, static_cast<std::size_t>(count));
  auto map = PlaneOf(destination, source);
  if (passes == 0 || map.elements == 0 || map.height == 0) return;
  const Scratch<std::uint8_t> scratch(PassScratch(map, std::min(passes, kMostPasses)));
  if (!scratch) return;
  for (const Step<Outside>& step : steps) {
    SetOutside(map, step.outside);
    RunInBatches(map, passes, [&](std::size_t batch) {
      RunPasses(step.extreme, Pass::kSquare, map, batch, scratch.get());
    });
  }
}

template <class T, class Outside>
bool ErodeDilate(LxROI<T>* source, LxROI<T>* destination, int count, Steps<Outside> steps) {
  RunSteps(source, destination, count, steps);
  if (LxGetError() == LX_OK) return true;
  LxTraceError("PicErodeDilate");
  return false;
}

template <class T, class Outside>
void Run(const char* trace, LxROI<T>* source, LxROI<T>* destination, int count,
         Steps<Outside> steps) {
  RunOperation(trace, [&] { ErodeDilate(source, destination, count, steps); });
}

// The difference of the source and what the steps make of it, the larger one first.
template <class T, class Outside>
void RunTopHat(const char* trace, LxROI<T>* source, LxROI<T>* destination, int count,
               Steps<Outside> steps) {
  RunOperation(trace, [&] {
    if (!UsableApart(source, destination)) return;
    if (!ErodeDilate(source, destination, count, steps)) return;
    LxROI<T>* const made = count > 0 ? destination : source;
    if (steps.begin()->extreme == Extreme::kMinimum) {
      PicOper(ARITH_LOGIC_SUBTRACT, source, made, destination);
    } else {
      PicOper(ARITH_LOGIC_SUBTRACT, made, source, destination);
    }
  });
}

}  // namespace

#define LX_DEFINE_ONE_STEP(function, first, pixel, outside, trace)                           \
  void function(LxROI<pixel>* source, LxROI<pixel>* destination, int count, outside value) { \
    Run<pixel, outside>(trace, source, destination, count, {{Extreme::first, value}});       \
  }
#define LX_DEFINE_TWO_STEPS(function, isTopHat, first, second, pixel, outside, trace)              \
  void function(LxROI<pixel>* source, LxROI<pixel>* destination, int count, outside outside1,      \
                outside outside2) {                                                                \
    ((isTopHat) ? RunTopHat<pixel, outside>                                                        \
                : Run<pixel, outside>)(trace, source, destination, count,                          \
                                       {{Extreme::first, outside1}, {Extreme::second, outside2}}); \
  }
#define LX_DEFINE_COUNTED(pixel, outside, suffix)                                             \
  LX_DEFINE_ONE_STEP(PicErode, kMinimum, pixel, outside, "PicErode" suffix)                   \
  LX_DEFINE_ONE_STEP(PicDilate, kMaximum, pixel, outside, "PicDilate" suffix)                 \
  LX_DEFINE_TWO_STEPS(PicOpen, false, kMinimum, kMaximum, pixel, outside, "PicOpen" suffix)   \
  LX_DEFINE_TWO_STEPS(PicClose, false, kMaximum, kMinimum, pixel, outside, "PicClose" suffix) \
  LX_DEFINE_TWO_STEPS(PicWhiteTopHat, true, kMinimum, kMaximum, pixel, outside,               \
                      "PicWhiteTopHat" suffix)                                                \
  LX_DEFINE_TWO_STEPS(PicBlackTopHat, true, kMaximum, kMinimum, pixel, outside,               \
                      "PicBlackTopHat" suffix)

LX_DEFINE_COUNTED(LxBW8, int, "")
LX_DEFINE_COUNTED(LxC24, LxC24, " ( C24)")

#undef LX_DEFINE_COUNTED
#undef LX_DEFINE_TWO_STEPS
#undef LX_DEFINE_ONE_STEP
