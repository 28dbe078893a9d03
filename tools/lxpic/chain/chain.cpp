// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/chain/chain.h"

#include <algorithm>
#include <span>
#include <utility>

#include "tools/lxpic/chain/execute.h"
#include "tools/lxpic/chain/overloads.h"
#include "tools/lxpic/common/failure.h"

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

Chain::Chain(std::vector<std::string> steps, int runs, std::shared_ptr<OperandFiles> operandFiles)
    : words(std::move(steps)), repeat(runs), files(std::move(operandFiles)) {}

ChainResult Chain::Run(const ImageValue& input, const Observer& observe) {
  const OverlayColourScope scope;
  State state{input, input, {}, true, {}};
  for (std::size_t i = 0; i < words.size();) {
    try {
      i += RunStep(i, state, observe);
    } catch (const Failure& failure) {
      throw failure.Of(words[i]);
    }
  }
  ChainResult result{state.current, state.store.AllNumbers(), ""};
  for (const auto& [name, numbers] : result.numbers) {
    const auto& last = state.leftNames;
    const bool isLast = std::find(last.begin(), last.end(), name) != last.end();
    if (isLast && numbers.drawing != Numbers::Drawing::kNone) result.lastVector = name;
  }
  return result;
}

std::size_t Chain::RunStep(std::size_t first, State& state, const Observer& observe) {
  if (words[first] != kStoreStep) return RunOperation(first, state, observe);
  if (first + 1 == words.size()) throw Failure(kWrongUsage, "a name is missing");
  RunStore(words[first + 1], state);
  return 2;
}

// The image, where the step before left one. Other results get the name in place of their own, or
// before it where there are several.
void Chain::RunStore(const std::string& name, State& state) {
  if (state.leftImage || state.leftNames.empty()) {
    if (!state.current) throw Failure(kWrongUsage, "there is no image yet");
    state.store.Keep(name, state.current);
    return;
  }
  const bool several = state.leftNames.size() > 1;
  for (std::string& each : state.leftNames) {
    std::string to = name;
    if (several) to.append(".").append(each);
    state.store.Rename(each, to);
    each = to;
  }
}

std::size_t Chain::RunOperation(std::size_t first, State& state, const Observer& observe) {
  const std::string& name = words[first];
  if (!IsOperation(name)) {
    throw Failure(kWrongUsage, "there is no such operation" + Suggestion(name, OperationNames()));
  }
  StepContext context;
  context.current = state.current;
  context.findImage = [&](const std::string& word) { return FindImage(word, state); };
  context.findValue = [&](const std::string& word) { return state.store.ValueOf(word); };
  context.startsStep = StartsStep;
  context.readText = [&](const std::string& path) { return files->TableText(path); };
  const Call call = ChooseOverload(name, std::span(words).subspan(first + 1), context);

  const Outcome outcome = Execute(call, state.current, repeat);
  if (outcome.image) state.current = outcome.image;
  state.leftImage = static_cast<bool>(outcome.image);
  state.leftNames.clear();
  for (const auto& [key, kept] : outcome.results) {
    state.store.Keep(key, kept);
    state.leftNames.push_back(key);
  }
  const std::size_t count = call.wordCount + 1;
  if (observe) {
    const auto step = std::span(words).subspan(first, count);
    observe({Join({step.begin(), step.end()}, " "), state.current, outcome.milliseconds});
  }
  return count;
}

ImageValue Chain::FindImage(const std::string& word, const State& state) {
  if (word == "@" && state.input) return state.input;
  if (word.starts_with('@')) return state.store.ImageOf(word);
  return files->Image(word);
}

}  // namespace lx::tool
