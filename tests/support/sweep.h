// SPDX-License-Identifier: Apache-2.0
// Runs one operation over contents, sizes, places in memory, arguments and instruction sets, and
// compares every byte with its reference.
#pragma once

#include <string>
#include <vector>

#include "support/arguments.h"
#include "support/content.h"
#include "support/execution_path.h"
#include "support/reference.h"
#include "support/region.h"

namespace lx::test {

/// Which sources are the destination itself.
enum class InPlace {
  kNone,
  kFirst,
  kSecond,
  kAll
};

/// What stands for the destination in place.
enum class Alias {
  kSameObject,
  kOtherObject,  ///< over the same pixels
  kNothing       ///< a null destination, where it is allowed
};

struct SweepCase {
  Size size;
  Content content = Content::kNoise;
  std::vector<Layout> layouts;  ///< of each region parameter
  InPlace inPlace = InPlace::kNone;
  Alias alias = Alias::kSameObject;
};

/// What a sweep found.
struct SweepResult {
  std::vector<std::string> failures;  ///< the first one of each path
  bool dispatched = false;            ///< the fast path dispatched a kernel at least once
};

/// Sweeps one choice of the operation (-1 when it has none).
SweepResult Sweep(const Operation& operation, const Reference& reference, int choice);

/// Runs one case on every path and appends what fails.
void RunCase(const Operation& operation, const Reference& reference, const SweepCase& sweepCase,
             Arguments& call, Random& random, SweepResult& result);

}  // namespace lx::test
