// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/chain/overloads.h"

#include <algorithm>

#include "tools/lxpic/chain/reading.h"
#include "tools/lxpic/common/failure.h"

namespace lx::tool {

namespace {

using catalogue::Kind;
using catalogue::Operation;
using catalogue::Parameter;
using Words = std::span<const std::string>;

using Overloads = std::vector<const Operation*>;

bool IsPixelName(const std::string& word) {
  for (auto number = static_cast<int>(Pixel::kBW8); number <= static_cast<int>(Pixel::kBinary);
       ++number) {
    if (catalogue::PixelName(static_cast<Pixel>(number)) == word) return true;
  }
  return false;
}

bool HasLabel(const Operation& operation, const std::string& label) {
  const auto labels = LabelsOf(operation);
  return std::find(labels.begin(), labels.end(), label) != labels.end();
}

// Types are labels everywhere; the name of a result only where it tells overloads apart.
bool IsLabel(const std::string& word, const Overloads& overloads) {
  if (IsPixelName(word)) return true;
  const auto count = std::count_if(overloads.begin(), overloads.end(),
                                   [&](const Operation* each) { return HasLabel(*each, word); });
  return count > 0 && static_cast<std::size_t>(count) < overloads.size();
}

struct ReadModifiers {
  Modifiers modifiers;
  std::size_t wordCount;
};

ReadModifiers TakeModifiers(Words words, const Overloads& overloads, const StepContext& context) {
  Modifiers modifiers;
  std::size_t i = 0;
  for (; i < words.size(); ++i) {
    if (IsLabel(words[i], overloads)) {
      modifiers.labels.push_back(words[i]);
    } else if (const auto size = ReadSize(words[i])) {
      modifiers.size = size;
    } else if (words[i] == kOntoWord && i + 1 < words.size()) {
      modifiers.onto = context.findImage(words[++i]);
      modifiers.labels.push_back(modifiers.onto.TypeName());
    } else {
      break;
    }
  }
  return {modifiers, i};
}

// The reason of the overload that came nearest.
class Reasons {
 public:
  void Add(const Failure& failure, const Reading& reading) {
    anyWordFitted = anyWordFitted || reading.AnyWordFits();
    if (best && reading.Nearness() <= nearness) return;
    best = failure;
    nearness = reading.Nearness();
  }
  const std::optional<Failure>& Best() const { return best; }
  bool AnyWordFitted() const { return anyWordFitted; }

 private:
  std::optional<Failure> best;
  std::size_t nearness = 0;
  bool anyWordFitted = false;
};

void AddOnce(std::vector<std::string>& names, const std::string& name) {
  if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
}

// The pixel types that the first source may have.
std::vector<std::string> SourceTypes(const std::vector<const Operation*>& overloads) {
  std::vector<std::string> types;
  for (const Operation* overload : overloads) {
    const auto sources = overload->SourceIndices();
    if (sources.empty()) continue;
    AddOnce(types, std::string(catalogue::PixelName(overload->parameters[sources.front()].pixel)));
  }
  return types;
}

Failure WhyNoneFits(const std::vector<const Operation*>& overloads, const Reasons& reasons,
                    const StepContext& context) {
  if (!reasons.Best()) return {kWrongUsage, "it has no such form"};
  const auto types = SourceTypes(overloads);
  const bool typeFits =
      !context.current || types.empty() ||
      std::find(types.begin(), types.end(), context.current.TypeName()) != types.end();
  if (typeFits || reasons.AnyWordFitted()) return *reasons.Best();
  return {kWrongUsage,
          "takes " + Join(types, ", ") + " images, and this one is " + context.current.TypeName()};
}

// Keeps the calls for which `wanted` holds, if there are any.
template <class Predicate>
void Prefer(std::vector<Call>& calls, Predicate wanted) {
  if (std::any_of(calls.begin(), calls.end(), wanted)) {
    std::erase_if(calls, [&](const Call& each) { return !wanted(each); });
  }
}

std::size_t ResultCount(const Operation& operation) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < operation.parameters.size(); ++i) {
    count += IsResult(operation, i) ? 1 : 0;
  }
  return count;
}

Call Best(std::vector<Call> calls, const StepContext& context) {
  Prefer(calls, [](const Call& each) { return each.readsCurrent; });
  if (context.current) {
    Prefer(calls, [&](const Call& each) {
      return each.DestinationPixel() == context.current.PixelType();
    });
  }
  std::vector<std::string> types;
  for (const Call& each : calls) {
    AddOnce(types, std::string(catalogue::PixelName(each.DestinationPixel())));
  }
  if (types.size() > 1) {
    throw Failure(kWrongUsage, "the result may be " + Join(types, ", ") +
                                   ": write the type behind the name, for instance '" +
                                   calls.front().operation->name + " " + types.front() + "'");
  }
  Prefer(calls, [](const Call& each) { return each.imageFirst; });
  return *std::min_element(calls.begin(), calls.end(), [](const Call& one, const Call& other) {
    return ResultCount(*one.operation) < ResultCount(*other.operation);
  });
}

// The pixel type of a constant, or of the elements of a vector that is written.
Pixel PixelOf(const Parameter& parameter) {
  if (!parameter.written) return parameter.pixel;
  if (parameter.kind == Kind::kByteVector) return Pixel::kBW8;
  return parameter.kind == Kind::kWordVector ? Pixel::kBW16 : parameter.pixel;
}

}  // namespace

Pixel DestinationPixelOf(const Operation& operation) {
  const std::size_t index = operation.DestinationIndex();
  return index < operation.parameters.size() ? operation.parameters[index].pixel : Pixel::kNone;
}

Pixel Call::DestinationPixel() const { return DestinationPixelOf(*operation); }

bool IsResult(const Operation& operation, std::size_t index) {
  return operation.parameters[index].written && index != operation.DestinationIndex();
}

std::vector<std::string> LabelsOf(const Operation& operation) {
  std::vector<std::string> labels;
  const Pixel written = DestinationPixelOf(operation);
  if (written != Pixel::kNone) labels.emplace_back(catalogue::PixelName(written));
  for (std::size_t i = 0; i < operation.parameters.size(); ++i) {
    const Parameter& parameter = operation.parameters[i];
    if (IsResult(operation, i)) labels.push_back(parameter.name);
    const Pixel pixel = parameter.kind == Kind::kRegion ? Pixel::kNone : PixelOf(parameter);
    if (written == Pixel::kNone && pixel != Pixel::kNone) {
      labels.emplace_back(catalogue::PixelName(pixel));
    }
  }
  return labels;
}

bool MustBeGiven(const Operation& operation, std::size_t index) {
  const auto& parameters = operation.parameters;
  const auto firstWritten = std::find_if(parameters.begin(), parameters.end(),
                                         [](const Parameter& each) { return each.written; });
  return index < static_cast<std::size_t>(firstWritten - parameters.begin()) ||
         !parameters[index].optional;
}

bool IsOperation(const std::string& name) {
  const auto& all = catalogue::All();
  return std::any_of(all.begin(), all.end(),
                     [&](const Operation& each) { return each.name == name; });
}

std::vector<std::string> OperationNames() {
  std::vector<std::string> names;
  for (const Operation& each : catalogue::All()) AddOnce(names, each.name);
  return names;
}

std::vector<const Operation*> OverloadsOf(const std::string& name) {
  std::vector<const Operation*> overloads;
  for (const Operation& each : catalogue::All()) {
    if (each.name == name) overloads.push_back(&each);
  }
  return overloads;
}

Call ChooseOverload(const std::string& name, Words words, const StepContext& context) {
  auto overloads = OverloadsOf(name);
  const auto [modifiers, skipped] = TakeModifiers(words, overloads, context);
  for (const std::string& label : modifiers.labels) {
    std::erase_if(overloads, [&](const Operation* each) { return !HasLabel(*each, label); });
  }
  std::vector<Call> calls;
  Reasons reasons;
  for (const Operation* overload : overloads) {
    Reading reading(*overload, words.subspan(skipped), context);
    try {
      calls.push_back(reading.Run());
    } catch (const Failure& failure) {
      reasons.Add(failure, reading);
    }
  }
  if (calls.empty()) throw WhyNoneFits(overloads, reasons, context);
  Call call = Best(std::move(calls), context);
  call.modifiers = modifiers;
  call.wordCount += skipped;
  return call;
}

}  // namespace lx::tool
