// SPDX-License-Identifier: Apache-2.0
// Runs one operation over contents, sizes, places in memory, run lists, arguments and instruction
// sets, and compares every byte and every number with its reference.
#pragma once

#include <array>
#include <set>
#include <string>
#include <vector>

#include "support/execution_path.h"
#include "support/reference.h"
#include "support/trial.h"
#include "support/trial/content.h"

namespace lx::test {

/// Which sources are the destination itself.
enum class Onto {
  kNone,
  kFirst,
  kSecond,
  kAll
};

struct SweepCase {
  Size size{0, 0};
  Content content = Content::kNoise;
  std::vector<Layout> layouts;  ///< of each region parameter
  Onto onto = Onto::kNone;
  Alias alias = Alias::kSameObject;
  bool runs = false;          ///< sources have run lists
  bool absoluteRuns = false;  ///< of addresses
};

/// What a sweep found.
struct SweepResult {
  std::vector<std::string> failures;   ///< the first one of each path
  std::set<std::string> instructions;  ///< the instruction sets that kernels were dispatched to
  int cases = 0;
  int refused = 0;  ///< cases that the reference expects to be refused
};

/// Sweeps one choice of the operation (-1 when it has none).
SweepResult Sweep(const Operation& operation, const Reference& reference, int choice);

/// Runs one case on every path and appends what fails.
void RunCase(const Operation& operation, const Reference& reference, const SweepCase& sweepCase,
             const Arguments& call, Random& random, SweepResult& result);

}  // namespace lx::test
