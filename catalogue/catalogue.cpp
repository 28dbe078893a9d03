// SPDX-License-Identifier: Apache-2.0
#include "catalogue/catalogue.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include "catalogue/entry.h"

namespace lx::catalogue {

namespace {

constexpr std::array<std::string_view, 36> kChoiceNames = {"copy",
                                                           "invert",
                                                           "add",
                                                           "subtract",
                                                           "multiply",
                                                           "divide",
                                                           "modulo",
                                                           "shift-left",
                                                           "shift-right",
                                                           "average",
                                                           "half-difference",
                                                           "scaled-multiply",
                                                           "scaled-divide",
                                                           "bitwise-and",
                                                           "bitwise-or",
                                                           "bitwise-xor",
                                                           "logical-and",
                                                           "logical-or",
                                                           "logical-xor",
                                                           "minimum",
                                                           "maximum",
                                                           "set-where-zero",
                                                           "set-where-nonzero",
                                                           "equal",
                                                           "not-equal",
                                                           "greater-or-equal",
                                                           "less-or-equal",
                                                           "greater",
                                                           "less",
                                                           "add-wrap",
                                                           "subtract-wrap",
                                                           "value-31",
                                                           "value-32",
                                                           "absolute-difference",
                                                           "overlay",
                                                           "set"};

// "2-6,9" to the list of its values.
std::vector<int> ParseChoices(const std::string& text) {
  std::vector<int> values;
  std::istringstream items(text);
  for (std::string item; std::getline(items, item, ',');) {
    const std::size_t dash = item.find('-');
    const int first = std::stoi(item);
    const int last = dash == std::string::npos ? first : std::stoi(item.substr(dash + 1));
    for (int value = first; value <= last; ++value) values.push_back(value);
  }
  return values;
}

void DescribeOne(Parameter& parameter, std::string text) {
  if (text.front() == '>') {
    parameter.written = true;
    text.erase(0, 1);
  }
  if (const std::size_t brace = text.find('{'); brace != std::string::npos) {
    parameter.choices = ParseChoices(text.substr(brace + 1, text.size() - brace - 2));
    parameter.standard = parameter.choices.front();
    text.erase(brace);
  }
  if (const std::size_t colon = text.find(':'); colon != std::string::npos) {
    const std::string range = text.substr(colon + 1);
    parameter.minimum = std::stod(range);
    parameter.maximum = std::stod(range.substr(range.find("..") + 2));
    text.erase(colon);
  }
  if (const std::size_t equals = text.find('='); equals != std::string::npos) {
    parameter.standard = std::stod(text.substr(equals + 1));
    parameter.optional = true;
    text.erase(equals);
  }
  parameter.name = text;
}

}  // namespace

void Describe(Operation& operation, std::string_view parameters) {
  std::istringstream words{std::string(parameters)};
  const std::vector<std::string> texts{std::istream_iterator<std::string>(words), {}};
  if (texts.size() != operation.parameters.size()) {
    throw std::logic_error("catalogue: " + operation.signature + " is described wrongly");
  }
  for (std::size_t i = 0; i < texts.size(); ++i) DescribeOne(operation.parameters[i], texts[i]);
}

std::size_t Operation::DestinationIndex() const {
  const auto found = std::find_if(parameters.begin(), parameters.end(), [](const Parameter& each) {
    return each.kind == Kind::kRegion && each.written;
  });
  return static_cast<std::size_t>(found - parameters.begin());
}

std::vector<std::size_t> Operation::SourceIndices() const {
  std::vector<std::size_t> indices;
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    if (parameters[i].kind == Kind::kRegion && !parameters[i].written) indices.push_back(i);
  }
  return indices;
}

const std::vector<Operation>& All() {
  static const std::vector<Operation> operations = [] {
    std::vector<Operation> all = PointOperations();
    for (Operation& each : ConvolutionOperations()) all.push_back(std::move(each));
    return all;
  }();
  return operations;
}

const Operation* Find(std::string_view trace, std::string_view signaturePart) {
  const auto& all = All();
  const auto found = std::find_if(all.begin(), all.end(), [&](const Operation& each) {
    return each.trace == trace && each.signature.find(signaturePart) != std::string::npos;
  });
  return found == all.end() ? nullptr : &*found;
}

std::string KebabName(std::string_view function) {
  constexpr std::string_view kPrefix = "Pic";
  if (function.substr(0, kPrefix.size()) == kPrefix) function.remove_prefix(kPrefix.size());
  std::string name;
  for (const char c : function) {
    const bool upper = std::isupper(static_cast<unsigned char>(c)) != 0;
    if (upper && !name.empty()) name += '-';
    name += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  return name;
}

std::string ChoiceName(int value) {
  if (value < 0 || static_cast<std::size_t>(value) >= kChoiceNames.size()) {
    return std::to_string(value);
  }
  return std::string(kChoiceNames[static_cast<std::size_t>(value)]);
}

int ChoiceValue(std::string_view name) {
  const auto* const found = std::find(kChoiceNames.begin(), kChoiceNames.end(), name);
  return found == kChoiceNames.end() ? -1 : static_cast<int>(found - kChoiceNames.begin());
}

std::string_view PixelName(Pixel pixel) {
  constexpr std::array<std::string_view, 10> kNames = {"none", "bw8", "bw16", "bw32",      "c24",
                                                       "c15",  "c16", "c24a", "complex64", "bw1"};
  return kNames[static_cast<std::size_t>(pixel)];
}

std::string ErrorName(LX_ERRORS code) {
  return std::string(LxGetErrorText(code)) + " (" + std::to_string(static_cast<int>(code)) + ")";
}

}  // namespace lx::catalogue
