// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/chain/execute.h"

#include <algorithm>
#include <chrono>
#include <cstring>

#include "common/median.h"
#include "tools/lxpic/common/failure.h"

namespace lx::tool {

namespace {

using catalogue::Argument;
using catalogue::Arguments;
using catalogue::Operation;

struct Destination {
  std::size_t index;
  ImageValue start;
  ImageValue image;
};

Size SizeOfDestinations(const Call& call) {
  if (call.modifiers.onto) return {call.modifiers.onto.Width(), call.modifiers.onto.Height()};
  if (call.modifiers.size) return *call.modifiers.size;
  if (call.size) return *call.size;
  throw Failure(kWrongUsage,
                "there is no image yet: write the size behind the name, for instance '" +
                    call.operation->name + " 640x480'");
}

ImageValue StartOf(Pixel pixel, const Size& size, const ImageValue& model) {
  const bool agrees = model && model.PixelType() == pixel && model.Width() == size.width &&
                      model.Height() == size.height;
  if (agrees) return model.Clone();
  ImageValue zeros(pixel, size.width, size.height);
  zeros.Clear();
  return zeros;
}

std::vector<Destination> MakeDestinations(const Call& call, const ImageValue& current,
                                          const Arguments& arguments) {
  std::vector<Destination> made;
  const Operation& operation = *call.operation;
  for (std::size_t i = 0; i < operation.parameters.size(); ++i) {
    const auto& parameter = operation.parameters[i];
    if (!parameter.IsRegion() || !parameter.IsWritten()) continue;
    if (parameter.size == catalogue::SizeRule::kFollows) {
      const auto [width, height] = operation.follows(arguments);
      const ImageValue start = StartOf(parameter.pixel, {width, height}, {});
      made.push_back({i, start, start.Clone()});
      continue;
    }
    Size size = SizeOfDestinations(call);
    if (parameter.size == catalogue::SizeRule::kPart) {
      const auto [width, height] = operation.part(arguments, {size.width, size.height});
      size = {width, height};
    }
    const ImageValue& model = call.modifiers.onto && made.empty() ? call.modifiers.onto : current;
    const ImageValue start = StartOf(parameter.pixel, size, model);
    made.push_back({i, start, start.Clone()});
  }
  return made;
}

void CheckErrors() {
  if (LxGetError() == LX_OK && LxGetTraceCount() == 0) return;
  std::vector<std::string> trace;
  for (int i = 0; i < LxGetTraceCount(); ++i) trace.emplace_back(LxGetTrace(i));
  std::string message =
      LxGetError() == LX_OK ? "nothing was done" : catalogue::ErrorName(LxGetError());
  if (!trace.empty()) message += "; trace: " + Join(trace, " < ");
  throw Failure(kOperationFailed, message);
}

double RunOnce(const Operation& operation, Arguments& arguments) {
  using Clock = std::chrono::steady_clock;
  LxOk();
  const auto start = Clock::now();
  operation.call(arguments);
  const std::chrono::duration<double, std::milli> time = Clock::now() - start;
  CheckErrors();
  return time.count();
}

void Restart(const Destination& destination) {
  if (destination.image.Width() == 0) return;
  for (int y = 0; y < destination.image.Height(); ++y) {
    std::memcpy(destination.image.Row(y), destination.start.Row(y), destination.image.RowBytes());
  }
}

// What a call left in place of `value`: the vector, or the number or colour that is there now.
Value ResultOf(const Value& value, const Argument& argument) {
  return value.owner ? value : ScalarValue(argument);
}

}  // namespace

Outcome Execute(const Call& call, const ImageValue& current, int repeat) {
  Arguments start;
  for (const Value& value : call.values) start.push_back(value.argument);
  const auto destinations = MakeDestinations(call, current, start);
  for (const Destination& each : destinations) start[each.index] = each.image.Region();

  Arguments arguments;
  std::vector<double> times;
  for (int run = 0; run < repeat; ++run) {
    std::for_each(destinations.begin(), destinations.end(), Restart);
    arguments = start;
    times.push_back(RunOnce(*call.operation, arguments));
  }

  Outcome outcome;
  outcome.milliseconds = Median(times);
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (!IsResult(*call.operation, i)) continue;
    const auto region = std::find_if(destinations.begin(), destinations.end(),
                                     [=](const Destination& each) { return each.index == i; });
    const std::string& name = call.operation->parameters[i].name;
    if (region != destinations.end()) {
      outcome.results.push_back({name, region->image});
    } else {
      outcome.results.push_back({name, ResultOf(call.values[i], arguments[i])});
    }
  }
  if (DestinationPixelOf(*call.operation) != Pixel::kNone) {
    outcome.image = destinations.front().image;
  }
  return outcome;
}

}  // namespace lx::tool
