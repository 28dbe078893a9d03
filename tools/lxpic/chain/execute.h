// SPDX-License-Identifier: Apache-2.0
// Calling an operation.
#pragma once

#include <vector>

#include "tools/lxpic/chain/overloads.h"
#include "tools/lxpic/chain/store.h"

namespace lx::tool {

struct Outcome {
  /// The first written region; none when the operation writes no image.
  ImageValue image;
  /// Everything else that it left, under the names of the parameters.
  std::vector<NamedKept> results;
  /// Median time of a run.
  double milliseconds = 0;
};

/// Runs `call` `repeat` times, each time from the same start. A destination starts as the image
/// behind `onto`, as a copy of `current` when that has its type and size, or as zeros. Throws
/// Failure with the text of the error and its trace.
Outcome Execute(const Call& call, const ImageValue& current, int repeat);

}  // namespace lx::tool
