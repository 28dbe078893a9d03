// SPDX-License-Identifier: Apache-2.0
#include "support/fault.h"

#include <algorithm>
#include <new>
#include <set>
#include <type_traits>

#include "support/trial/kernels.h"

namespace lx::test {

namespace {

constexpr Size kSize = {19, 3};

template <class Value>
bool IsNull(const Value& value) {
  if constexpr (std::is_pointer_v<Value>) {
    return value == nullptr;
  } else {
    return true;
  }
}

// The code that is named for the argument.
LX_ERRORS OutOfRange(std::size_t index) {
  return static_cast<LX_ERRORS>(LX_ERROR_ARGUMENT_1_OUT_OF_RANGE + static_cast<int>(index));
}

Arguments Spoilt(const Operation& operation, int choice, const std::vector<const Fault*>& faults) {
  Arguments call(operation);
  call.SetChoice(choice);
  for (const Fault* const fault : faults) fault->spoil(call);
  return call;
}

template <class Thrown, class Pixel>
Pixel ThrowPixel(Pixel /*pixel*/) {
  throw Thrown();
}

template <class Thrown, class Pixel>
int ThrowOn(Pixel& /*pixel*/) {
  throw Thrown();
}

template <class Thrown>
struct ThrowingLookup : LxColorLookup {
  void Transform(LxC24 /*colour*/, LxC24& /*result*/) override { throw Thrown(); }
};

// A function of the application that throws.
template <class Thrown>
Argument ThrowingArgument(Kind kind) {
  static ThrowingLookup<Thrown> lookup;
  switch (kind) {
    case Kind::kByteFunction:
      return &ThrowPixel<Thrown, unsigned char>;
    case Kind::kWordFunction:
      return &ThrowPixel<Thrown, unsigned short>;
    case Kind::kBytePredicate:
      return &ThrowOn<Thrown, LxBW8>;
    case Kind::kWordPredicate:
      return &ThrowOn<Thrown, LxBW16>;
    case Kind::kColourPredicate:
      return &ThrowOn<Thrown, LxC24>;
    case Kind::kColourLookup:
      return &lookup;
    default:
      return catalogue::NullOf(kind);
  }
}

class Collector {
 public:
  Collector(const Operation& described, int selected) : operation(described), choice(selected) {}

  std::vector<Fault> Collect() {
    for (std::size_t i = 0; i < operation.parameters.size(); ++i) {
      const Parameter& parameter = operation.parameters[i];
      if (parameter.IsReturned()) continue;
      if (parameter.IsRegion()) {
        AddRegionFaults(i);
      } else if (catalogue::IsPointer(parameter.kind)) {
        AddPointerFaults(i);
      } else if (catalogue::IsNumber(parameter.kind)) {
        for (const double number : parameter.trials) AddNumber(i, number);
        AddNumber(i, parameter.minimum - 1);
        AddNumber(i, parameter.maximum + 1);
      } else if (parameter.kind == Kind::kChoice) {
        AddChoices(i);
      }
    }
    return std::move(faults);
  }

 private:
  Fault& Add(const std::string& name, std::size_t index, LX_ERRORS code) {
    faults.push_back({operation.parameters[index].name + " " + name, index, code});
    return faults.back();
  }

  // What a call refuses with is found out, and must be listed like all else.
  void AddFound(const std::string& name, std::size_t index, std::function<void(Arguments&)> spoil) {
    Fault found{operation.parameters[index].name + " " + name, index, LX_OK, std::move(spoil)};
    const FaultyCall call(operation, choice, {&found});
    found.code = LxGetError();
    // What is found half-way depends on all arguments.
    const catalogue::Refusal* const known = operation.FindRefusal(found.code);
    found.relates = known != nullptr && !known->leaves.empty();
    if (found.code != LX_OK) faults.push_back(std::move(found));
  }

  void AddNumber(std::size_t index, double number) {
    const Parameter& parameter = operation.parameters[index];
    if (number < parameter.lowest || number > parameter.highest) return;
    AddFound(std::to_string(number), index,
             [index, number](Arguments& call) { call.SetNumber(index, number); });
  }

  // One value for each code: refusals by name, and values without a case.
  void AddChoices(std::size_t index) {
    const auto& offered = operation.parameters[index].choices;
    std::set<LX_ERRORS> seen;
    for (int value = -1; value < 40; ++value) {
      const auto same = [value](const auto& each) { return each.value == value; };
      if (std::any_of(offered.begin(), offered.end(), same)) continue;
      const std::size_t before = faults.size();
      AddFound(std::to_string(value), index,
               [index, value](Arguments& call) { call.SetNumber(index, value); });
      const bool refused = faults.size() != before;
      if (refused && !seen.insert(faults.back().code).second) faults.pop_back();
    }
  }

  void AddRegionFaults(std::size_t index) {
    const Parameter& parameter = operation.parameters[index];
    const bool follows = parameter.size == catalogue::SizeRule::kFollows;
    if (!follows) {
      Add("unattached", index, operation.unattached).misplace = [index](Trial& trial) {
        trial.Detach(index);
      };
    }
    const bool apart = parameter.IsWritten() && operation.Refuses(LX_ERROR_DESTINATION_IS_SOURCE);
    const Trial usual(operation, choice);
    if (!parameter.whenNull || !operation.WorksInPlace(usual.call.values)) {
      Fault& null =
          Add("null", index, apart ? LX_ERROR_DESTINATION_IS_SOURCE : operation.unattached);
      null.misplace = [index](Trial& trial) {
        trial.call.values[index] = static_cast<LxGenericROI*>(nullptr);
      };
      null.relates = apart;
    }
    if (parameter.size == catalogue::SizeRule::kFixed) {
      AddOtherSizes(index, usual.SizeOf(index, kSize), OutOfRange(index));
    } else if (follows || parameter.size == catalogue::SizeRule::kPart) {
      AddOtherSizes(index, usual.SizeOf(index, kSize), LX_ERROR_SIZE_MISMATCH);
    } else if (MustAgree(index)) {
      AddSizes(index);
    }
    if (operation.followsRuns && !parameter.IsWritten()) AddStaleRuns(index);
    if (!apart || operation.WorksInPlace(usual.call.values)) return;
    for (const std::size_t source : operation.SourceIndices()) {
      if (operation.parameters[source].pixel == parameter.pixel) AddSource(index, source);
    }
  }

  // Whether a region must have the size of another one.
  bool MustAgree(std::size_t index) const {
    const auto agrees = [](const Parameter& each) {
      return each.IsRegion() && each.size == catalogue::SizeRule::kEqual;
    };
    const auto& all = operation.parameters;
    return agrees(all[index]) && std::count_if(all.begin(), all.end(), agrees) > 1;
  }

  // Views of memory, which keep their size.
  void AddOtherSizes(std::size_t index, Size right, LX_ERRORS code) {
    const Pixel pixel = operation.parameters[index].pixel;
    for (const Size size :
         {Size{right.width + 1, right.height}, Size{right.width, right.height + 1}, Size{0, 0}}) {
      Fault& fault = Add(std::to_string(size.width) + " wide", index, code);
      fault.misplace = [=](Trial& trial) {
        trial.Place(index, Picture(pixel, size.width, size.height), {});
      };
      fault.relates = true;
    }
  }

  void AddSizes(std::size_t index) {
    for (const Size size :
         {Size{kSize.width + 1, kSize.height}, Size{kSize.width - 1, kSize.height},
          Size{kSize.width, kSize.height + 1}, Size{kSize.height, kSize.width}, Size{0, 0}}) {
      Fault& fault = Add(std::to_string(size.width) + " wide", index, LX_ERROR_SIZE_MISMATCH);
      fault.misplace = [index, size](Trial& trial) { trial.Resize(index, size); };
      fault.relates = true;
    }
  }

  // In place is decided by memory: another region object over the same pixels is the same region.
  void AddSource(std::size_t index, std::size_t source) {
    for (const bool twin : {false, true}) {
      Fault& fault =
          Add(twin ? "a source's twin" : "a source", index, LX_ERROR_DESTINATION_IS_SOURCE);
      fault.misplace = [=](Trial& trial) {
        if (trial.IsPlaced(source) && trial.IsPlaced(index)) {
          trial.call.values[source] = twin ? trial.Twin(index) : trial.call.values[index];
        }
      };
      fault.relates = true;
    }
  }

  // Runs that lay in the region when they were set.
  void AddStaleRuns(std::size_t index) {
    const Pixel pixel = operation.parameters[index].pixel;
    const auto add = [&](const char* name, bool absolute, const auto& spoil) {
      Add(name, index, LX_ERROR_INCONSISTENT_ARGUMENTS).misplace = [=](Trial& trial) {
        if (!trial.IsPlaced(index)) return;
        auto* const region = std::get<LxGenericROI*>(trial.call.values[index]);
        SetRuns(pixel, region, {{2, kSize.height - 1, 5}}, absolute);
        VisitPixel(pixel, [&](auto tag) {
          spoil(*static_cast<LxImage<typename decltype(tag)::Type>*>(region));
        });
      };
    };
    for (const bool absolute : {false, true}) {
      add("with a run that was changed", absolute,
          [](auto& image) { image.GetRuns()[0].end += 100; });
      add("with runs of another pitch", absolute, [](auto& image) {
        image.Attach(image.GetPixelPtr(0, 0), kSize.width, kSize.height, image.GetPitch() - 1);
      });
      if (SizesMustAgree(operation) && Trial(operation, choice).Regions().size() > 1) continue;
      add("with runs of another place", absolute, [](auto& image) {
        image.Attach(image.GetPixelPtr(0, 1), kSize.width, kSize.height - 1, image.GetPitch());
      });
    }
  }

  void AddPointerFaults(std::size_t index) {
    const Parameter& parameter = operation.parameters[index];
    const bool vector = catalogue::IsVector(parameter.kind);
    if (!parameter.whenNull) {
      const LX_ERRORS code = parameter.kind == Kind::kKernel ? LX_ERROR_KERNEL_NO_DATA
                             : vector                        ? LX_ERROR_VECTOR_NO_DATA
                                                             : OutOfRange(index);
      Fault& null = Add("null", index, code);
      null.spoil = [index](Arguments& call) { call.SetNull(index); };
      null.isNull = true;
    }
    if (parameter.kind == Kind::kKernel) AddKernels(index);
    AddThrowing<int>(index, LX_ERROR_INTERNAL);
    AddThrowing<std::bad_alloc>(index, LX_ERROR_ALLOCATION_FAILED);
    if (vector && parameter.role != catalogue::Role::kWritten) AddVectors(index);
  }

  template <class Thrown>
  void AddThrowing(std::size_t index, LX_ERRORS code) {
    const Argument throwing = ThrowingArgument<Thrown>(operation.parameters[index].kind);
    if (std::visit([](const auto& value) { return IsNull(value); }, throwing)) return;
    Add("that throws", index, code).spoil = [=](Arguments& call) { call.values[index] = throwing; };
  }

  void AddKernels(std::size_t index) {
    const auto add = [&](const char* name, const std::shared_ptr<LxKernel>& kernel) {
      AddFound(name, index, [=](Arguments& call) { call.SetKernel(index, kernel); });
    };
    add("without storage", std::make_shared<LxKernel>());
    add("of another size", MakeKernel(4, std::vector<float>(16, 1.0F)));
    const auto flat = StandardKernel();
    flat->SetRectifier(RECTIFIER_NONE);
    add("without a rectifier", flat);
    const auto empty = StandardKernel();
    empty->SetSizeX(-5);
    add("of a negative size", empty);
  }

  void AddVectors(std::size_t index) {
    const Parameter& parameter = operation.parameters[index];
    if (parameter.kind == Kind::kVector) {
      AddFound("without a layout", index,
               [index](Arguments& call) { call.SetVector(index, Elements()); });
      for (const int kind : {LX_VECTOR_NONE, LX_VECTOR_HISTOGRAM, LX_VECTOR_TABLE}) {
        for (const int count : {0, 255}) {
          Elements content{std::vector<double>(static_cast<std::size_t>(count), 1), kind};
          const bool bytes = kind == LX_VECTOR_TABLE;
          content.dataSize = bytes ? LX_DATA_SIZE_8 : LX_DATA_SIZE_32;
          content.dataType = kind == LX_VECTOR_NONE ? LX_DATA_FLOAT : LX_DATA_UNSIGNED;
          content.groupLength = std::max(count, 1);
          AddFound("of kind " + std::to_string(kind), index,
                   [=](Arguments& call) { call.SetVector(index, content); });
        }
      }
    } else if (parameter.perColumn) {
      for (const int count : {0, kSize.width - 1, kSize.width + 1}) {
        Elements content;
        content.values.assign(static_cast<std::size_t>(count) * FieldsOf(parameter.kind), 1);
        Add("of length " + std::to_string(count), index, LX_ERROR_WRONG_VECTOR_SIZE).misplace =
            [=](Trial& trial) { trial.SetVector(index, content); };
      }
    } else if (parameter.counted) {
      const std::size_t right = operation.count(Arguments(operation).values);
      for (const std::size_t count : {right - 1, right + 1}) {
        Fault& fault = Add("of length " + std::to_string(count), index, LX_ERROR_WRONG_VECTOR_SIZE);
        fault.misplace = [=, fields = FieldsOf(parameter.kind)](Trial& trial) {
          trial.SetVector(index, {std::vector<double>(count * fields, 1)});
        };
        fault.relates = true;
      }
    } else if (!parameter.counts.empty()) {
      const unsigned last = parameter.counts.back();
      for (const unsigned count : {0U, last - 1, last + 1}) {
        Add("of length " + std::to_string(count), index, LX_ERROR_WRONG_VECTOR_SIZE).spoil =
            [=](Arguments& call) { call.SetVector(index, {std::vector<double>(count, 1)}); };
      }
    }
  }

  const Operation& operation;
  int choice;
  std::vector<Fault> faults;
};

}  // namespace

bool SizesMustAgree(const Operation& operation) {
  return std::all_of(
      operation.parameters.begin(), operation.parameters.end(),
      [](const Parameter& each) { return each.size == catalogue::SizeRule::kEqual; });
}

std::vector<Fault> FaultsOf(const Operation& operation, int choice) {
  return Collector(operation, choice).Collect();
}

FaultyCall::FaultyCall(const Operation& operation, int choice,
                       const std::vector<const Fault*>& faults)
    : trial(operation, Spoilt(operation, choice, faults), kSize) {
  for (const Fault* const fault : faults) fault->misplace(trial);
  trial.Run();
}

}  // namespace lx::test
