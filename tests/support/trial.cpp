// SPDX-License-Identifier: Apache-2.0
#include "support/trial.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "support/trial/content.h"

namespace lx::test {

namespace {

std::string Text(const std::vector<std::string>& trace) {
  std::string text = "trace";
  for (const std::string& name : trace) text += " < " + name;
  return text;
}

std::string NumberDifference(double expected, double seen, double tolerance) {
  const bool equal = seen == expected || (std::isnan(seen) && std::isnan(expected)) ||
                     std::abs(seen - expected) <= tolerance * std::abs(expected);
  if (equal) return {};
  char text[80];
  std::snprintf(text, sizeof(text), "expected %.17g, got %.17g", expected, seen);
  return text;
}

Arguments UsualArguments(const Operation& operation, int choice) {
  Arguments usual(operation);
  usual.SetChoice(choice);
  return usual;
}

}  // namespace

std::vector<std::string> TraceNow() {
  std::vector<std::string> names;
  for (int i = 0; i < LxGetTraceCount(); ++i) names.emplace_back(LxGetTrace(i));
  return names;
}

Size Fitting(const Operation& operation, Size size) {
  if (!operation.powersOfTwo) return size;
  const auto cut = [](int side) {
    return static_cast<int>(std::bit_floor(static_cast<unsigned>(side)));
  };
  return {cut(size.width), cut(size.height)};
}

Trial::Trial(const Operation& described, Arguments arguments)
    : call(std::move(arguments)),
      operation(described),
      before(described.parameters.size()),
      arenas(described.parameters.size()) {
  for (std::size_t i = 0; i < before.size(); ++i) {
    const Parameter& parameter = described.parameters[i];
    if (parameter.IsRegion()) {
      regions.push_back(i);
    } else if (call.Content(i) != nullptr) {
      before[i] = *call.Content(i);
    } else if (std::holds_alternative<double>(call.values[i])) {
      before[i] = call.NumberBefore(i);
    }
  }
}

Trial::Trial(const Operation& described, Arguments arguments, Size size)
    : Trial(described, std::move(arguments)) {
  Random random(described.signature);
  for (const std::size_t i : regions) {
    const Parameter& parameter = described.parameters[i];
    const int more = parameter.size == catalogue::SizeRule::kFree ? 5 : 0;
    const Size own = SizeOf(i, Fitting(described, size));
    Picture picture(parameter.pixel, own.width + more, own.height + more);
    if (!FillWithCoordinates(i, picture, false, random)) {
      Fill(picture, Content::kNoise, 0, 0, random);
    }
    Place(i, picture, {Pitch::kOdd, static_cast<int>(i)});
  }
}

Trial::Trial(const Operation& described, int choice, Size size)
    : Trial(described, UsualArguments(described, choice), size) {}

Size Trial::SizeOf(std::size_t index, Size agreed) const {
  const catalogue::SizeRule rule = operation.parameters[index].size;
  if (rule == catalogue::SizeRule::kFixed) {
    const catalogue::Extent fixed = operation.parameters[index].fixed;
    return {fixed.width, fixed.height};
  }
  if (rule != catalogue::SizeRule::kFollows && rule != catalogue::SizeRule::kPart) return agreed;
  const catalogue::Extent extent = rule == catalogue::SizeRule::kFollows
                                       ? operation.follows(call.values)
                                       : operation.part(call.values, {agreed.width, agreed.height});
  return {extent.width, extent.height};
}

bool Trial::FillWithCoordinates(std::size_t index, Picture& picture, bool strays,
                                Random& random) const {
  const catalogue::Meaning meaning = operation.parameters[index].meaning;
  if (meaning == catalogue::Meaning::kLevels) return false;
  const auto& source = std::get<Picture>(before[operation.SourceIndices().front()]);
  FillCoordinates(picture, meaning, source.width, source.height, strays, random);
  return true;
}

void Trial::Place(std::size_t index, const Picture& picture, Layout layout, bool absoluteRuns) {
  arenas[index] =
      std::make_shared<Arena>(index, picture.pixel, picture.width, picture.height, layout);
  arenas[index]->SetBefore(picture);
  arenas[index]->SetExpected(picture);
  if (!picture.runs.empty()) arenas[index]->SetRuns(picture.runs, absoluteRuns);
  call.values[index] = arenas[index]->Region();
  before[index] = picture;
  if (index == regions.front()) call.FitRegion(picture.width, picture.height);
  if (operation.parameters[index].IsWritten()) call.FitColumns(picture.width);
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (call.Content(i) != nullptr) before[i] = *call.Content(i);
  }
}

void Trial::SetVector(std::size_t index, const Elements& content) {
  call.SetVector(index, content);
  before[index] = content;
}

void Trial::Share(std::size_t index, std::size_t destination, Alias alias) {
  arenas[index] = arenas[destination];
  before[index] = before[destination];
  const bool other = alias == Alias::kOtherObject;
  call.values[index] = other ? arenas[destination]->Twin() : arenas[destination]->Region();
  if (alias == Alias::kNull) call.values[destination] = static_cast<LxGenericROI*>(nullptr);
}

void Trial::Resize(std::size_t index, Size size) {
  others.push_back(MakeImage(operation.parameters[index].pixel, size.width, size.height));
  call.values[index] = others.back().get();
}

void Trial::Detach(std::size_t index) {
  others.push_back(MakeUnattached(operation.parameters[index].pixel));
  call.values[index] = others.back().get();
}

const Outcome& Trial::Expect(const Reference& reference) {
  expected = {};
  expected.values = before;
  reference.rule(call, expected);
  if (expected.error != LX_OK && operation.Traces(expected.error)) {
    expected.trace.push_back(operation.trace);
  }
  std::erase(expected.trace, "");
  tolerance = reference.tolerance;
  for (const std::size_t i : regions) {
    // In place, the destination tells what the pixels must become.
    if (operation.parameters[i].IsWritten()) {
      arenas[i]->SetExpected(std::get<Picture>(expected.values[i]));
    }
  }
  return expected;
}

void Trial::Prepare() {
  call.Reset();
  for (const std::size_t i : regions) arenas[i]->Reset();
  LxSetError(LX_ERROR_INTERNAL);
  LxTraceError("before");
}

std::string Trial::Difference() const {
  if (LxGetError() != expected.error) return "error " + catalogue::ErrorName(LxGetError());
  if (expected.error != LX_OK && !operation.Refuses(expected.error)) return "a code not listed";
  if (TraceNow() != expected.trace) return Text(TraceNow());
  for (std::size_t i = 0; i < before.size(); ++i) {
    const std::string found =
        arenas[i] != nullptr ? arenas[i]->Difference() : ValueDifference(i, expected.values[i]);
    if (!found.empty()) return operation.parameters[i].name + ", " + found;
  }
  return {};
}

std::string Trial::ValueDifference(std::size_t index, const Plain& wanted) const {
  if (const auto* const number = std::get_if<double>(&wanted)) {
    if (!operation.parameters[index].IsWritten()) return {};
    return NumberDifference(*number, call.Number(index), tolerance);
  }
  if (const auto* const content = std::get_if<Elements>(&wanted)) {
    if (call.Content(index) == nullptr) return {};  // made null since
    const Elements seen = ReadVector(operation.parameters[index].kind, call.values[index]);
    return ElementsDifference(*content, seen, tolerance);
  }
  return {};
}

std::string Trial::Refusal(LX_ERRORS code) const {
  if (LxGetError() != code) return catalogue::ErrorName(LxGetError());
  if (!operation.Refuses(code)) return "a code not listed";
  const catalogue::Refusal* const known = operation.FindRefusal(code);
  if (known != nullptr && !known->leaves.empty()) return TraceFault();
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (operation.parameters[i].IsReturned()) continue;
    if (arenas[i] != nullptr ? !arenas[i]->IsUntouched() : !ValueDifference(i, before[i]).empty()) {
      return operation.parameters[i].name + " was written";
    }
  }
  return TraceFault();
}

std::string Trial::TraceFault() const {
  std::vector<std::string> own;
  if (!operation.trace.empty() && operation.Traces(LxGetError())) own.push_back(operation.trace);
  const auto seen = TraceNow();
  if (seen == own) return {};
  for (std::vector<std::string> inner : operation.innerTraces) {
    inner.insert(inner.end(), own.begin(), own.end());
    if (seen == inner) return {};
  }
  return Text(seen);
}

}  // namespace lx::test
