// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/chain/overloads.h"

#include <algorithm>

#include "tools/lxpic/chain/reading.h"
#include "tools/lxpic/common/failure.h"

namespace lx::tool {

namespace {

using catalogue::Operation;
using catalogue::Parameter;
using Words = std::span<const std::string>;

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

// The pixel types that the first source may have.
std::vector<std::string> SourceTypes(const Overloads& overloads) {
  std::vector<std::string> types;
  for (const Operation* overload : overloads) {
    const auto sources = overload->SourceIndices();
    if (sources.empty()) continue;
    AddOnce(types, std::string(catalogue::PixelName(overload->parameters[sources.front()].pixel)));
  }
  return types;
}

Failure WhyNoneFits(const Overloads& overloads, const Reasons& reasons,
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

}  // namespace

Pixel DestinationPixelOf(const Operation& operation) {
  const std::size_t index = operation.DestinationIndex();
  return index < operation.parameters.size() ? operation.parameters[index].pixel : Pixel::kNone;
}

Pixel Call::DestinationPixel() const { return DestinationPixelOf(*operation); }

bool IsOperand(const Parameter& parameter) {
  return parameter.role == catalogue::Role::kRead ||
         (parameter.role == catalogue::Role::kUpdated && !parameter.IsRegion());
}

bool IsResult(const Operation& operation, std::size_t index) {
  return operation.parameters[index].IsWritten() && index != operation.DestinationIndex();
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

// Real numbers whose names are the same but for one x that is a y.
bool StartsPair(const Operation& operation, std::size_t index) {
  if (index + 1 >= operation.parameters.size()) return false;
  const Parameter& x = operation.parameters[index];
  const Parameter& y = operation.parameters[index + 1];
  if (!IsOperand(x) || !IsOperand(y) || x.leftOut || y.leftOut) return false;
  const auto isCoordinate = [](const Parameter& each) {
    return each.kind == catalogue::Kind::kReal || each.meaning == catalogue::Meaning::kColumn ||
           each.meaning == catalogue::Meaning::kRow;
  };
  if (!isCoordinate(x) || !isCoordinate(y)) return false;
  const auto [inX, inY] = std::mismatch(x.name.begin(), x.name.end(), y.name.begin(), y.name.end());
  if (inX == x.name.end() || inY == y.name.end()) return false;
  return *inX == 'x' && *inY == 'y' && std::equal(inX + 1, x.name.end(), inY + 1, y.name.end());
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
