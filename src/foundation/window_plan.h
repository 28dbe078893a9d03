// SPDX-License-Identifier: Apache-2.0
// How the extreme of a window is found in a number of steps that hardly grows with its length: each
// step joins windows of the step before, which may overlap.
#pragma once

#include <cstddef>

namespace lx {

struct WindowPlan {
  static constexpr std::size_t kMostTaps = 7;
  static constexpr std::size_t kMostSteps = 17;

  struct Step {
    std::size_t taps;           // windows that are joined
    std::size_t at[kMostTaps];  // where they start
    std::size_t length;         // of the window that they make
  };

  // A window of `length` elements, up to 2^32, from windows of `had` elements.
  explicit WindowPlan(std::size_t length, std::size_t had = 1) {
    while (had * kMostTaps < length) had = Add(had, 4 * had);
    Add(had, length);
  }

  const Step& Last() const { return steps[count - 1]; }

  Step steps[kMostSteps];
  std::size_t count = 0;

 private:
  // Windows of `had` elements to one of `length`; returns the length.
  std::size_t Add(std::size_t had, std::size_t length) {
    Step& step = steps[count++];
    step.taps = (length + had - 1) / had;
    for (std::size_t k = 0; k < step.taps; ++k) {
      step.at[k] = k + 1 < step.taps ? k * had : length - had;
    }
    step.length = length;
    return length;
  }
};

}  // namespace lx
