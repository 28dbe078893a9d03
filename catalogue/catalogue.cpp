// SPDX-License-Identifier: Apache-2.0
#include "catalogue/catalogue.h"

#include <cxxabi.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>

#include "catalogue/images.h"
#include "catalogue/row.h"

namespace lx::catalogue {

bool Operation::Has(SizeRule rule) const {
  return std::any_of(parameters.begin(), parameters.end(),
                     [rule](const Parameter& each) { return each.size == rule; });
}

std::size_t Operation::DestinationIndex() const {
  const auto found = std::find_if(parameters.begin(), parameters.end(), [](const Parameter& each) {
    return each.IsRegion() && each.IsWritten();
  });
  return static_cast<std::size_t>(found - parameters.begin());
}

std::vector<std::size_t> Operation::SourceIndices() const {
  std::vector<std::size_t> indices;
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    if (parameters[i].IsRegion() && !parameters[i].IsWritten()) indices.push_back(i);
  }
  return indices;
}

std::vector<std::size_t> Operation::ResultIndices() const {
  std::vector<std::size_t> indices;
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    if (!parameters[i].IsRegion() && parameters[i].IsWritten()) indices.push_back(i);
  }
  return indices;
}

std::size_t Operation::IndexOf(std::string_view parameter) const {
  const auto found =
      std::find_if(parameters.begin(), parameters.end(),
                   [parameter](const Parameter& each) { return each.name == parameter; });
  return static_cast<std::size_t>(found - parameters.begin());
}

bool Operation::WorksInPlace(const Arguments& arguments) const {
  return inPlace == InPlace::kSometimes ? worksInPlace(arguments) : inPlace == InPlace::kYes;
}

const Refusal* Operation::FindRefusal(LX_ERRORS code) const {
  const auto found = std::find_if(refusals.begin(), refusals.end(),
                                  [code](const Refusal& each) { return each.code == code; });
  return found == refusals.end() ? nullptr : &*found;
}

bool Operation::Refuses(LX_ERRORS code) const {
  return std::find(checks.begin(), checks.end(), code) != checks.end();
}

bool Operation::Traces(LX_ERRORS code) const {
  const Refusal* const known = FindRefusal(code);
  return known == nullptr || known->traced;
}

const std::vector<Operation>& All() {
  static const std::vector<Operation> operations = [] {
    std::vector<Operation> all;
    for (const auto family :
         {ColourOperations, ArithmeticOperations, PointOperations, ConvolutionOperations,
          MorphologyOperations, NonlinearOperations, HistogramOperations, ThresholdingOperations,
          ResamplingOperations, GeometryOperations, StatisticsOperations, MeasureOperations,
          CorrectionOperations, SequenceOperations, ProfileOperations, ContourOperations,
          SegmentVectorOperations, FrequencyOperations, GradientImageOperations}) {
      for (Operation& each : family()) all.push_back(std::move(each));
    }
    return all;
  }();
  return operations;
}

const std::vector<Object>& Objects() {
  static const std::vector<Object> objects = [] {
    std::vector<Object> all = {KernelObject(), PyramidObject(), MovingAverageObject()};
    for (Object& each : VectorObjects()) all.push_back(std::move(each));
    return all;
  }();
  return objects;
}

const Operation* Find(std::string_view trace, std::string_view signaturePart) {
  const auto& all = All();
  const auto found = std::find_if(all.begin(), all.end(), [&](const Operation& each) {
    return each.trace == trace && each.signature.find(signaturePart) != std::string::npos;
  });
  return found == all.end() ? nullptr : &*found;
}

std::string KebabName(std::string_view function) {
  if (const std::size_t scope = function.rfind(':'); scope != std::string_view::npos) {
    function.remove_prefix(scope + 1);
  }
  constexpr std::string_view kPrefix = "Pic";
  if (function.starts_with(kPrefix)) function.remove_prefix(kPrefix.size());
  std::string name;
  const auto is = [function](int (*test)(int), std::size_t i) {
    return i < function.size() && test(static_cast<unsigned char>(function[i])) != 0;
  };
  for (std::size_t i = 0; i < function.size(); ++i) {
    // The capitals of an abbreviation stay together: "BW16", but "ARow".
    const bool startsWord =
        is(std::isupper, i) && (!is(std::isupper, i - 1) || is(std::islower, i + 1));
    if (startsWord && i > 0) name += '-';
    name += static_cast<char>(std::tolower(static_cast<unsigned char>(function[i])));
  }
  return name;
}

std::string ChoiceName(const Parameter& parameter, double value) {
  const auto number = static_cast<std::int64_t>(value);
  const auto& all = NamesOf(parameter.enumeration);
  // Values of the upper half are held as negative ones, too.
  const auto found = std::find_if(all.begin(), all.end(), [number](const Named& each) {
    return static_cast<std::int32_t>(each.value) == static_cast<std::int32_t>(number);
  });
  return found == all.end() ? std::to_string(number) : found->name;
}

std::optional<std::int64_t> ChoiceValue(const std::vector<Named>& choices, std::string_view name) {
  const auto found = std::find_if(choices.begin(), choices.end(),
                                  [name](const Named& each) { return each.name == name; });
  if (found == choices.end()) return std::nullopt;
  return found->value;
}

std::unique_ptr<LxGenericROI> MakeImage(Pixel pixel, int width, int height) {
  return VisitPixel(pixel, [&](auto tag) -> std::unique_ptr<LxGenericROI> {
    return std::make_unique<LxImage<typename decltype(tag)::Type>>(width, height);
  });
}

bool IsPointer(Kind kind) {
  const Argument null = NullOf(kind);
  return !std::holds_alternative<double>(null) && !std::holds_alternative<std::nullptr_t>(null);
}

Argument NullOf(Kind kind) {
  switch (kind) {
#define LX_NULL(name, type) \
  case Kind::name:          \
    return static_cast<type>(nullptr);
    LX_POINTER_KINDS(LX_NULL)
#undef LX_NULL
    case Kind::kRegion:
      return static_cast<LxGenericROI*>(nullptr);
    case Kind::kInteger:
    case Kind::kReal:
      return nullptr;
    default:
      return 0.0;
  }
}

std::string_view PixelName(Pixel pixel) {
  constexpr std::array<std::string_view, 10> kNames = {"none", "bw8", "bw16", "bw32",      "c24",
                                                       "c15",  "c16", "c24a", "complex64", "bw1"};
  return kNames[static_cast<std::size_t>(pixel)];
}

std::string ErrorName(LX_ERRORS code) {
  return std::string(LxGetErrorText(code)) + " (" + std::to_string(static_cast<int>(code)) + ")";
}

std::string ParameterList(const std::type_info& functionType) {
  char* text = abi::__cxa_demangle(functionType.name(), nullptr, nullptr, nullptr);
  std::string list = text != nullptr ? text : "";
  std::free(text);
  const std::size_t open = list.find('(');
  return open == std::string::npos ? list : list.substr(open);
}

}  // namespace lx::catalogue
