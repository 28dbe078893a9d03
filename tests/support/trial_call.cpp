// SPDX-License-Identifier: Apache-2.0
#include "support/trial_call.h"

#include <algorithm>

#include "support/content.h"

namespace lx::test {

TrialCall::TrialCall(const Operation& described, int choice, Size wanted)
    : call(described), size(wanted), operation(described) {
  if (choice >= 0) call.SetChoice(choice);
  const Reference* const reference = FindReference(described.signature);
  Random random(described.signature);
  std::vector<Picture> sources;
  std::vector<Picture> destinations;
  for (std::size_t i = 0; i < described.parameters.size(); ++i) {
    const Parameter& parameter = described.parameters[i];
    if (parameter.kind != Kind::kRegion) continue;
    const bool resized = reference != nullptr && reference->sizeOf;
    const Size own = resized ? reference->sizeOf(i, size) : size;
    Picture picture(parameter.pixel, own.width, own.height);
    Fill(picture, Content::kNoise, 0, 0, random);
    const std::size_t slot = regions.size();
    regions.push_back(i);
    arenas.push_back(std::make_unique<Arena>(slot, parameter.pixel, own.width, own.height,
                                             Layout{Pitch::kOdd, static_cast<int>(slot)}));
    arenas.back()->SetBefore(picture);
    arenas.back()->SetExpected(picture);
    call.values[i] = arenas.back()->Region();
    (parameter.written ? destinations : sources).push_back(std::move(picture));
  }
  if (reference == nullptr || destinations.empty()) return;
  reference->rule(call, sources, destinations);
  auto next = destinations.begin();
  for (std::size_t k = 0; k < regions.size(); ++k) {
    if (described.parameters[regions[k]].written) arenas[k]->SetExpected(*next++);
  }
}

void TrialCall::Resize(std::size_t index, Size other) {
  others.push_back(MakeImage(operation.parameters[index].pixel, other.width, other.height));
  call.values[index] = others.back().get();
}

LxGenericROI* TrialCall::Twin(std::size_t index) const {
  const auto found = std::find(regions.begin(), regions.end(), index);
  return arenas[static_cast<std::size_t>(found - regions.begin())]->Twin();
}

void TrialCall::Run() {
  for (const auto& arena : arenas) arena->Reset();
  operation.call(call.values);
}

std::string TrialCall::Failure() const {
  if (LxGetError() != LX_OK) return catalogue::ErrorName(LxGetError());
  if (LxGetTraceCount() != 0) return std::string("trace ") + LxGetTrace(0);
  for (const auto& arena : arenas) {
    if (std::string found = arena->Difference(); !found.empty()) return found;
  }
  return {};
}

std::string TrialCall::Refusal(LX_ERRORS code) const {
  if (LxGetError() != code) return catalogue::ErrorName(LxGetError());
  const bool untouched = std::all_of(arenas.begin(), arenas.end(),
                                     [](const auto& arena) { return arena->IsUntouched(); });
  return untouched ? TraceFault() : "a region was written";
}

std::string TrialCall::TraceFault() const {
  const int names = operation.trace.empty() ? 0 : 1;
  if (LxGetTraceCount() != names) return std::to_string(LxGetTraceCount()) + " names traced";
  if (names == 1 && LxGetTrace(0) != operation.trace) return std::string("trace ") + LxGetTrace(0);
  return {};
}

}  // namespace lx::test
