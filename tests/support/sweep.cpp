// SPDX-License-Identifier: Apache-2.0
#include "support/sweep.h"

#include <algorithm>

namespace lx::test {

namespace {

constexpr int kWidths = 300;  // past two vectors of the widest pixels on every instruction set
#ifdef __SANITIZE_ADDRESS__
constexpr bool kInstrumented = true;
#else
constexpr bool kInstrumented = false;
#endif
// Cases of an operation that takes no region, and of one with vectors of 65536 elements.
constexpr int kWithoutRegions = 600;
constexpr int kLargeVectors = 40;
constexpr std::array kOntos = {Onto::kNone, Onto::kNone, Onto::kFirst, Onto::kSecond, Onto::kAll};
constexpr std::array kAliases = {Alias::kSameObject, Alias::kOtherObject, Alias::kNull};
// What no round of widths holds: nothing at all, single columns, and a region of many rows.
constexpr std::array kOddSizes = {Size{0, 0},  Size{0, 7},   Size{7, 0},   Size{1, 1},
                                  Size{1, 70}, Size{3, 129}, Size{1031, 2}};
// With ramps it holds every pair of 8-bit values and every 16-bit value.
constexpr Size kEveryValue = {256, 256};

std::size_t RegionCount(const Operation& operation) {
  std::size_t count = 0;
  for (const Parameter& each : operation.parameters) count += each.IsRegion() ? 1 : 0;
  return count;
}

bool HasLargeVectors(const Operation& operation) {
  return std::any_of(
      operation.parameters.begin(), operation.parameters.end(),
      [](const Parameter& each) { return !each.counts.empty() && each.counts.front() > 1000; });
}

class Sweeper {
 public:
  Sweeper(const Operation& described, const Reference& expectation, int selected)
      : operation(described),
        reference(expectation),
        choice(selected),
        random(described.signature + std::to_string(selected)) {}

  SweepResult Run() {
    if (RegionCount(operation) == 0) {
      const int cases = HasLargeVectors(operation) ? kLargeVectors : kWithoutRegions;
      for (int i = 0; i < cases; ++i) Run(SweepCase{});
      return std::move(result);
    }
    for (int round = 0; round < Rounds(); ++round) {
      for (int width = 1; width <= kWidths; ++width) {
        // However few the rounds, they hold every height.
        const int height = width < 12 || width % 16 == round ? 5 : 1 + (width + round) % 8;
        RunRandom({width, height});
      }
      for (const Size size : kOddSizes) RunRandom(size);
      RunEveryValue();
    }
    return std::move(result);
  }

 private:
  // Choices of one operation share its loops, and instrumented code takes ten times as long.
  int Rounds() const {
    int rounds = reference.rounds;
    if (ChoicesOf(operation).size() > 8) rounds = (rounds + 1) / 2;
    return kInstrumented ? (rounds + 3) / 4 : rounds;
  }

  // The small axes are drawn anew for each case: some two thousand cases a choice meet every pair
  // of their values.
  void RunRandom(Size size) {
    // What must be refused is drawn, too.
    if (operation.powersOfTwo && random.Below(8) != 0) size = Fitting(operation, size);
    SweepCase drawn{size, random.Pick(kContents), {}, random.Pick(kOntos), random.Pick(kAliases)};
    for (std::size_t i = 0; i < RegionCount(operation); ++i) {
      const bool guarded = random.Below(2) == 0;
      const auto offset =
          guarded ? random.Between(kGuardBefore, kGuardBehind) : random.Between(0, 63);
      drawn.layouts.push_back({random.Pick(kPitches), static_cast<int>(offset)});
    }
    // Now and then where they must be ignored, too.
    drawn.runs = random.Below(operation.followsRuns ? 2 : 16) == 0;
    drawn.absoluteRuns = random.Below(2) == 0;
    Run(drawn);
  }

  void RunEveryValue() {
    SweepCase whole{kEveryValue, Content::kRamp, {}, Onto::kNone};
    whole.layouts.resize(RegionCount(operation));
    Run(whole);
  }

  void Run(const SweepCase& sweepCase) {
    Arguments call(operation, random);
    call.SetChoice(choice);
    RunCase(operation, reference, sweepCase, call, random, result);
  }

  const Operation& operation;
  const Reference& reference;
  int choice;
  Random random;
  SweepResult result;
};

}  // namespace

SweepResult Sweep(const Operation& operation, const Reference& reference, int choice) {
  return Sweeper(operation, reference, choice).Run();
}

}  // namespace lx::test
