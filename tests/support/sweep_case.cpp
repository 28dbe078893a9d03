// SPDX-License-Identifier: Apache-2.0
// One case of the sweep.
#include <algorithm>
#include <array>
#include <optional>
#include <sstream>

#include "support/crash_note.h"
#include "support/sweep.h"

namespace lx::test {

namespace {

bool Shares(Onto onto, std::size_t source) {
  return onto == Onto::kAll || (onto == Onto::kFirst && source == 0) ||
         (onto == Onto::kSecond && source == 1);
}

// Lays out the regions of a case.
class CaseBuilder {
 public:
  CaseBuilder(const SweepCase& chosen, Trial& prepared, Random& generator)
      : sweepCase(chosen), trial(prepared), random(generator), level(generator.Next()) {}

  void Build() {
    const Operation& operation = trial.Described();
    const std::size_t destination = operation.DestinationIndex();
    const auto place = [&](bool follows) {
      for (const std::size_t i : trial.Regions()) {
        const Parameter& parameter = operation.parameters[i];
        const bool isOne = (parameter.size == catalogue::SizeRule::kFollows) == follows;
        if (parameter.IsWritten() && isOne) Place(i);
      }
    };
    place(false);
    std::size_t source = 0;
    for (const std::size_t i : operation.SourceIndices()) {
      if (MayShare(i, source++, destination)) {
        trial.Share(i, destination, AliasFor(operation.parameters[destination]));
      } else {
        Place(i);
      }
    }
    place(true);
  }

 private:
  void Place(std::size_t index) {
    const Parameter& parameter = trial.Described().parameters[index];
    Size size = trial.SizeOf(index, sweepCase.size);
    if (parameter.size == catalogue::SizeRule::kFree) {
      size.width += static_cast<int>(random.Between(0, 9));
      size.height += static_cast<int>(random.Between(0, 3));
    }
    Picture picture(parameter.pixel, size.width, size.height);
    if (!trial.FillWithCoordinates(index, picture, random.Below(3) == 0, random)) {
      Fill(picture, sweepCase.content, slot, level, random);
    }
    const bool runs = sweepCase.runs && !parameter.IsWritten() && parameter.pixel != Pixel::kBinary;
    if (runs) picture.runs = DrawRuns(picture, random);
    trial.Place(index, picture, sweepCase.layouts[static_cast<std::size_t>(slot++)],
                sweepCase.absoluteRuns);
  }

  bool MayShare(std::size_t index, std::size_t source, std::size_t destination) const {
    const auto& parameters = trial.Described().parameters;
    return destination < parameters.size() && Shares(sweepCase.onto, source) &&
           parameters[index].pixel == parameters[destination].pixel &&
           parameters[index].size != catalogue::SizeRule::kFixed &&
           !trial.Described().Has(catalogue::SizeRule::kPart) &&
           trial.Described().WorksInPlace(trial.call.values);
  }

  Alias AliasFor(const Parameter& destination) const {
    const bool null = sweepCase.alias == Alias::kNull && !destination.whenNull;
    return null ? Alias::kSameObject : sweepCase.alias;
  }

  const SweepCase& sweepCase;
  Trial& trial;
  Random& random;
  std::uint64_t level;
  int slot = 0;
};

std::string CaseText(const Trial& trial, const SweepCase& sweepCase) {
  static constexpr std::array kOnto = {"", " onto source 1", " onto source 2", " onto all"};
  static constexpr std::array kAlias = {"", " through another object", " without a destination"};
  static constexpr std::array kContent = {"noise",    "ramp", "edges", "constant",
                                          "extremes", "near", "sparse"};
  std::ostringstream text;
  text << trial.Described().signature << trial.call.Text();
  if (trial.Regions().empty()) return text.str();
  text << ", " << sweepCase.size.width << 'x' << sweepCase.size.height
       << kOnto[static_cast<std::size_t>(sweepCase.onto)]
       << kAlias[sweepCase.onto == Onto::kNone ? 0 : static_cast<std::size_t>(sweepCase.alias)]
       << ", " << kContent[static_cast<std::size_t>(sweepCase.content)]
       << (sweepCase.runs ? sweepCase.absoluteRuns ? ", absolute runs" : ", runs" : "");
  for (const Layout layout : sweepCase.layouts) text << ' ' << LayoutText(layout);
  return text.str();
}

// Before anything was computed.
bool IsRefused(const Operation& operation, LX_ERRORS error) {
  const catalogue::Refusal* const known = operation.FindRefusal(error);
  return error != LX_OK && (known == nullptr || known->leaves.empty());
}

}  // namespace

void RunCase(const Operation& operation, const Reference& reference, const SweepCase& sweepCase,
             const Arguments& call, Random& random, SweepResult& result) {
  Trial trial(operation, call);
  CaseBuilder(sweepCase, trial, random).Build();
  std::optional<bool> expectedFast;
  const auto& paths = ExecutionPaths();
  result.failures.resize(paths.size());
  ++result.cases;
  for (std::size_t i = 0; i < paths.size(); ++i) {
    if (!result.failures[i].empty()) continue;
    const PathScope scope(paths[i]);
    if (!expectedFast || (!operation.pathsDiffer.empty() && *expectedFast != paths[i].fast)) {
      const bool refuses = IsRefused(operation, trial.Expect(reference).error);
      if (!expectedFast && refuses) ++result.refused;
      expectedFast = paths[i].fast;
    }
    const CrashNote note(operation.signature, paths[i].name, sweepCase.size.width,
                         sweepCase.size.height);
    trial.Run();
    if (paths[i].fast && scope.Dispatched()) result.instructions.insert(paths[i].name);
    std::string found = trial.Difference();
    if (found.empty() && paths[i].fast && PathScope::Running() != paths[i].name) {
      found = "ran on " + PathScope::Running();
    }
    if (found.empty()) continue;
    result.failures[i] = CaseText(trial, sweepCase);
    result.failures[i].append(", ").append(paths[i].name).append(": ").append(found);
  }
}

}  // namespace lx::test
