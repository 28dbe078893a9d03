// SPDX-License-Identifier: Apache-2.0
// One case of the sweep.
#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <sstream>

#include "support/crash_note.h"
#include "support/sweep.h"

namespace lx::test {

namespace {

bool Shares(InPlace inPlace, std::size_t source) {
  return inPlace == InPlace::kAll || (inPlace == InPlace::kFirst && source == 0) ||
         (inPlace == InPlace::kSecond && source == 1);
}

// Lays out the regions of a case, puts them into the arguments and computes what they must become.
class CaseBuilder {
 public:
  CaseBuilder(const Operation& described, const Reference& expectation, const SweepCase& chosen,
              Arguments& arguments, Random& generator)
      : operation(described),
        reference(expectation),
        sweepCase(chosen),
        call(arguments),
        random(generator) {}

  void Build() {
    const std::size_t first = operation.DestinationIndex();
    level = random.Next();
    for (std::size_t i = 0; i < operation.parameters.size(); ++i) {
      if (operation.parameters[i].written) AddDestination(i);
    }
    for (const std::size_t i : operation.SourceIndices()) AddSource(i, first);
  }

  // What the regions must hold after a call on the path that is taken now.
  void Expect() {
    std::vector<Picture> results = destinations;
    reference.rule(call, sources, results);
    for (std::size_t i = 0; i < results.size(); ++i) arenas[i]->SetExpected(results[i]);
  }

  const std::vector<std::unique_ptr<Arena>>& Arenas() const { return arenas; }

 private:
  Arena& Add(std::size_t parameter, Picture& picture) {
    const Pixel pixel = operation.parameters[parameter].pixel;
    Size size = sweepCase.size;
    if (reference.sizeOf) size = reference.sizeOf(parameter, size);
    picture = Picture(pixel, size.width, size.height);
    Fill(picture, sweepCase.content, pictures++, level, random);
    const std::size_t slot = arenas.size();
    arenas.push_back(
        std::make_unique<Arena>(slot, pixel, size.width, size.height, sweepCase.layouts[slot]));
    call.values[parameter] = arenas.back()->Region();
    return *arenas.back();
  }

  void AddDestination(std::size_t parameter) {
    destinations.emplace_back();
    Add(parameter, destinations.back()).SetBefore(destinations.back());
  }

  void AddSource(std::size_t parameter, std::size_t destination) {
    const bool sameType =
        operation.parameters[parameter].pixel == operation.parameters[destination].pixel;
    const std::size_t index = sources.size();
    sources.emplace_back();
    if (sameType && Shares(sweepCase.inPlace, index) && MayCoincide()) {
      sources.back() = destinations.front();
      const Arena& shared = *arenas.front();
      const bool other = sweepCase.alias == Alias::kOtherObject;
      call.values[parameter] = other ? shared.Twin() : shared.Region();
      if (sweepCase.alias == Alias::kNothing && reference.optionalDestination) {
        call.values[destination] = static_cast<LxGenericROI*>(nullptr);
      }
      return;
    }
    Arena& arena = Add(parameter, sources.back());
    arena.SetBefore(sources.back());
    arena.SetExpected(sources.back());
  }

  bool MayCoincide() const {
    return reference.worksInPlace ? reference.worksInPlace(call) : operation.inPlace;
  }

  const Operation& operation;
  const Reference& reference;
  const SweepCase& sweepCase;
  Arguments& call;
  Random& random;
  std::uint64_t level = 0;
  int pictures = 0;
  std::vector<Picture> sources;
  std::vector<Picture> destinations;
  std::vector<std::unique_ptr<Arena>> arenas;
};

std::string Difference(const std::vector<std::unique_ptr<Arena>>& arenas) {
  if (LxGetError() != LX_OK) return "error " + catalogue::ErrorName(LxGetError());
  if (LxGetTraceCount() != 0) return std::string("trace ") + LxGetTrace(0);
  for (std::size_t i = 0; i < arenas.size(); ++i) {
    const std::string found = arenas[i]->Difference();
    if (found.empty()) continue;
    return std::string(i == 0 ? "destination, " : "another region, ").append(found);
  }
  return {};
}

std::string CaseText(const Operation& operation, const SweepCase& sweepCase,
                     const Arguments& call) {
  static constexpr std::array kInPlace = {"", " onto source 1", " onto source 2", " onto all"};
  static constexpr std::array kAlias = {"", " through another object", " without a destination"};
  static constexpr std::array kContent = {"noise",    "ramp", "edges", "constant",
                                          "extremes", "near", "sparse"};
  std::ostringstream text;
  text
      << operation.signature << call.Text() << ", " << sweepCase.size.width << 'x'
      << sweepCase.size.height << kInPlace[static_cast<std::size_t>(sweepCase.inPlace)]
      << kAlias[sweepCase.inPlace == InPlace::kNone ? 0 : static_cast<std::size_t>(sweepCase.alias)]
      << ", " << kContent[static_cast<std::size_t>(sweepCase.content)];
  for (const Layout layout : sweepCase.layouts) text << ' ' << LayoutText(layout);
  return text.str();
}

}  // namespace

void RunCase(const Operation& operation, const Reference& reference, const SweepCase& sweepCase,
             Arguments& call, Random& random, SweepResult& result) {
  CaseBuilder builder(operation, reference, sweepCase, call, random);
  builder.Build();
  const auto& arenas = builder.Arenas();
  std::optional<bool> expectedFast;
  const auto& paths = ExecutionPaths();
  result.failures.resize(paths.size());
  for (std::size_t i = 0; i < paths.size(); ++i) {
    if (!result.failures[i].empty()) continue;
    const PathScope scope(paths[i]);
    if (!expectedFast || (reference.dependsOnPath && *expectedFast != paths[i].fast)) {
      builder.Expect();
      expectedFast = paths[i].fast;
    }
    const CrashNote note(operation.signature, paths[i].name, sweepCase.size.width,
                         sweepCase.size.height);
    for (const auto& arena : arenas) arena->Reset();
    LxSetError(LX_ERROR_INTERNAL);
    LxTraceError("before");
    operation.call(call.values);
    result.dispatched |= paths[i].fast && scope.Dispatched();
    std::string found = Difference(arenas);
    if (found.empty() && paths[i].fast && PathScope::Running() != paths[i].name) {
      found = "ran on " + PathScope::Running();
    }
    if (found.empty()) continue;
    result.failures[i] = CaseText(operation, sweepCase, call);
    result.failures[i].append(", ").append(paths[i].name).append(": ").append(found);
  }
}

}  // namespace lx::test
