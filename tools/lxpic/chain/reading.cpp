// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/chain/reading.h"

#include <utility>

namespace lx::tool {

using catalogue::Kind;
using catalogue::Operation;
using catalogue::Parameter;

Reading::Reading(const Operation& overload, std::span<const std::string> stepWords,
                 const StepContext& stepContext)
    : operation(overload), words(stepWords), context(stepContext) {
  call.operation = &overload;
  currentIsNamed = NamesCurrent();
}

Call Reading::Run() {
  for (std::size_t i = 0; i < operation.parameters.size(); ++i) {
    call.values.push_back(ReadParameter(i));
  }
  if (next < words.size() && !context.startsStep(words[next])) {
    if (unreadable) throw Failure(*unreadable);
    throw Failure(kWrongUsage, "'" + words[next] + "' is one word too many" +
                                   Suggestion(words[next], OperationNames()));
  }
  if (!call.size && context.current) {
    call.size = Size{context.current.Width(), context.current.Height()};
  }
  call.wordCount = next;
  call.imageFirst = ImageFirst();
  return call;
}

// Looks for `_` up to the next step. The first word may be a choice that is named like one.
bool Reading::NamesCurrent() const {
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (i > 0 && context.startsStep(words[i])) break;
    if (words[i] == kCurrentWord) return true;
  }
  return false;
}

bool Reading::ImageFirst() const {
  const auto sources = operation.SourceIndices();
  for (std::size_t i = 0; i < operation.parameters.size(); ++i) {
    if (operation.parameters[i].kind == Kind::kConstant) {
      return !sources.empty() && sources.front() < i;
    }
  }
  return true;
}

Value Reading::ReadParameter(std::size_t index) {
  const Parameter& parameter = operation.parameters[index];
  if (parameter.IsRegion()) return parameter.IsWritten() ? Value{} : TakeSource(parameter);
  if (!IsOperand(parameter)) return MakeResult(parameter);
  return parameter.leftOut ? TakeOption(parameter) : TakeOperand(index);
}

const std::string& Reading::TakeWord(const Parameter& parameter) {
  if (Finished()) throw Failure(kWrongUsage, parameter.name + " is missing");
  return words[next];
}

Value Reading::TakeSource(const Parameter& parameter) {
  if (context.current && !currentIsNamed && !call.readsCurrent) return TakeCurrent(parameter);
  const std::string& word = TakeWord(parameter);
  if (word == kCurrentWord) {
    Value value = TakeCurrent(parameter);
    ++next;
    return value;
  }
  if (context.startsStep(word)) throw Failure(kWrongUsage, parameter.name + " is missing");
  if (word == kOntoWord) {
    throw Failure(kWrongUsage, "'onto' must stand directly behind the name of the operation");
  }
  if (ReadNumbers(word)) {
    throw Failure(kWrongUsage, parameter.name + ": '" + word + "' is not an image");
  }
  const ImageValue image = context.findImage(word);
  CheckType(image, parameter, word);
  ++next;
  return SourceFrom(image, parameter);
}

Value Reading::TakeCurrent(const Parameter& parameter) {
  if (!context.current) throw Failure(kWrongUsage, "there is no image yet");
  currentFits = context.current.PixelType() == parameter.pixel;
  CheckType(context.current, parameter, "the current image");
  call.readsCurrent = true;
  return SourceFrom(context.current, parameter);
}

void Reading::CheckType(const ImageValue& image, const Parameter& parameter,
                        const std::string& name) const {
  if (image.PixelType() == parameter.pixel) return;
  throw Failure(kWrongUsage, parameter.name + ": " + name + " is " + image.TypeName() + ", not " +
                                 std::string(catalogue::PixelName(parameter.pixel)));
}

Value Reading::SourceFrom(const ImageValue& image, const Parameter& parameter) {
  const bool agrees = parameter.size == catalogue::SizeRule::kEqual;
  if (!call.size || (agrees && !sizeAgrees)) call.size = Size{image.Width(), image.Height()};
  sizeAgrees = sizeAgrees || agrees;
  return {image.Region(), image.Owner(), {}};
}

std::size_t Reading::Nearness() const {
  if (!currentFits) return 0;
  const std::size_t parameter = call.values.size();
  const bool wantsImage =
      parameter < operation.parameters.size() && operation.parameters[parameter].IsRegion();
  const bool hasImage =
      next < words.size() &&
      (words[next].starts_with('@') || words[next].find_first_of("./") != std::string::npos);
  return 1 + 2 * next + (wantsImage && hasImage ? 1 : 0);
}

Value Reading::ReadWord(const Parameter& parameter, const std::string& word) const {
  if (!word.starts_with('@')) return ReadValue(parameter, word, context.readText);
  try {
    return FitValue(parameter, context.findValue(word));
  } catch (const Failure& failure) {
    throw failure.Of(word);
  }
}

Value Reading::TakeOperand(std::size_t index) {
  const Parameter& parameter = operation.parameters[index];
  if (pairRest) return ReadWord(parameter, *std::exchange(pairRest, std::nullopt));
  const std::string& word = TakeWord(parameter);
  try {
    const std::size_t comma = StartsPair(operation, index) ? word.find(',') : std::string::npos;
    Value value = ReadWord(parameter, word.substr(0, comma));
    if (comma != std::string::npos) pairRest = word.substr(comma + 1);
    ++next;
    return value;
  } catch (const Failure&) {
    if (context.startsStep(word) && parameter.choices.empty()) {
      throw Failure(kWrongUsage, parameter.name + " is missing");
    }
    throw;
  }
}

Value Reading::TakeOption(const Parameter& parameter) {
  if (!Finished() && !unreadable && !context.startsStep(words[next])) {
    try {
      Value value = ReadWord(parameter, words[next]);
      ++next;
      return value;
    } catch (const Failure& failure) {
      unreadable = failure;
    }
  }
  return LeftOutValue(parameter);
}

}  // namespace lx::tool
