// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/chain/chain.h"

#include <filesystem>
#include <span>
#include <utility>

#include "tools/lxpic/chain/execute.h"
#include "tools/lxpic/chain/overloads.h"
#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/file/files.h"

namespace lx::tool {

namespace {

// A colour that a chain sets holds for the rest of that chain only.
class OverlayColourScope {
 public:
  OverlayColourScope() : colour(PicGetOverlayColor()) {}
  ~OverlayColourScope() { PicSetOverlayColor(colour); }
  OverlayColourScope(const OverlayColourScope&) = delete;
  OverlayColourScope& operator=(const OverlayColourScope&) = delete;

 private:
  LxC24 colour;
};

}  // namespace

bool StartsStep(const std::string& word) { return word == kStoreStep || IsOperation(word); }

Chain::Chain(std::vector<std::string> steps, int runs, std::string operandFolder)
    : words(std::move(steps)), repeat(runs), folder(std::move(operandFolder)) {}

ImageValue Chain::Run(const ImageValue& input, const Observer& observe) {
  const OverlayColourScope scope;
  State state{input, input, {}};
  for (std::size_t i = 0; i < words.size();) {
    try {
      i += RunStep(i, state, observe);
    } catch (const Failure& failure) {
      throw failure.Of(words[i]);
    }
  }
  return state.current;
}

std::size_t Chain::RunStep(std::size_t first, State& state, const Observer& observe) {
  if (words[first] != kStoreStep) return RunOperation(first, state, observe);
  if (first + 1 == words.size()) throw Failure(kWrongUsage, "a name is missing");
  if (!state.current) throw Failure(kWrongUsage, "there is no image yet");
  state.stored[words[first + 1]] = state.current;
  return 2;
}

std::size_t Chain::RunOperation(std::size_t first, State& state, const Observer& observe) {
  const std::string& name = words[first];
  if (!IsOperation(name)) {
    throw Failure(kWrongUsage, "there is no such operation" + Suggestion(name, OperationNames()));
  }
  StepContext context;
  context.current = state.current;
  context.findImage = [&](const std::string& word) { return FindImage(word, state); };
  context.startsStep = StartsStep;
  const Call call = ChooseOverload(name, std::span(words).subspan(first + 1), context);

  Outcome outcome = Execute(call, state.current, repeat);
  if (outcome.image) state.current = outcome.image;
  for (const auto& [key, image] : outcome.stored) state.stored[key] = image;
  const std::size_t count = call.wordCount + 1;
  if (observe) {
    const auto step = std::span(words).subspan(first, count);
    observe({Join({step.begin(), step.end()}, " "), state.current, outcome.results,
             outcome.milliseconds});
  }
  return count;
}

ImageValue Chain::FindImage(const std::string& word, const State& state) {
  if (word == "@" && state.input) return state.input;
  if (word.starts_with('@')) {
    const auto found = state.stored.find(word.substr(1));
    if (found != state.stored.end()) return found->second;
    throw Failure(kWrongUsage, "no image is stored as '" + word + "'");
  }
  const auto found = files.find(word);
  if (found != files.end()) return found->second;
  return files[word] = ReadImage((std::filesystem::path(folder) / word).string());
}

}  // namespace lx::tool
