// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/command/listing.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <sstream>

#include "tools/lxpic/chain/overloads.h"
#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/file/files.h"

namespace lx::tool {

namespace {

using catalogue::Kind;
using catalogue::Operation;
using catalogue::Parameter;

constexpr std::size_t kColumns = 100;
constexpr std::size_t kIndent = 15;

std::string Padded(std::string text, std::size_t width) {
  text.resize(std::max(text.size() + 1, width), ' ');
  return text;
}

// `label` and behind it `text`, broken at blanks and indented below itself.
std::string Entry(const std::string& label, const std::string& text) {
  std::string entry = Padded("   " + label, kIndent);
  std::size_t column = entry.size();
  std::istringstream words(text);
  bool first = true;
  for (std::string word; words >> word;) {
    if (!first && column + 1 + word.size() > kColumns) {
      entry += "\n" + std::string(kIndent, ' ');
      column = kIndent;
    } else if (!first) {
      entry += ' ';
      ++column;
    }
    entry += word;
    column += word.size();
    first = false;
  }
  return entry + "\n";
}

std::string TypeText(const Parameter& parameter) {
  switch (parameter.kind) {
    case Kind::kRegion:
      return std::string(catalogue::PixelName(parameter.pixel));
    case Kind::kConstant:
      return "constant";
    case Kind::kHistogramVector:
      return "histogram";
    case Kind::kVector:
      return "vector";
    default:
      return "";
  }
}

// "bw8, constant -> bw8".
std::string FormText(const Operation& operation) {
  std::vector<std::string> read;
  std::vector<std::string> written;
  for (std::size_t i = 0; i < operation.parameters.size(); ++i) {
    const Parameter& parameter = operation.parameters[i];
    const bool isResult = IsResult(operation, i);
    const std::string type = isResult ? parameter.name : TypeText(parameter);
    if (type.empty() || (!isResult && parameter.leftOut)) continue;
    (parameter.IsWritten() ? written : read).push_back(type);
  }
  const std::string result = written.empty() ? "" : "-> " + Join(written, ", ");
  return read.empty() ? result : Join(read, ", ") + (result.empty() ? "" : " " + result);
}

std::string Capitals(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return text;
}

// The words of a step: the operands that must be given, and in brackets those that may be left out.
std::string UsageText(const Operation& operation) {
  const auto sources = operation.SourceIndices();
  std::string usage = operation.name;
  std::string closing;
  bool constantBefore = false;
  for (std::size_t i = 0; i < operation.parameters.size(); ++i) {
    const Parameter& parameter = operation.parameters[i];
    if (!IsOperand(parameter)) continue;
    const std::string name = Capitals(parameter.name);
    constantBefore = constantBefore || parameter.kind == Kind::kConstant;
    if (parameter.IsRegion() && i == sources.front()) {
      if (constantBefore) usage += std::string(" ") + kCurrentWord;
    } else if (StartsPair(operation, i)) {
      usage += " " + name + "," + Capitals(operation.parameters[++i].name);
    } else if (!parameter.leftOut) {
      usage += " " + name;
    } else {
      usage += " [" + name;
      closing += "]";
    }
  }
  return usage + closing;
}

std::string LeftOutText(const Parameter& parameter) {
  const auto& [value, words] = *parameter.leftOut;
  return words.empty() ? NumberText(value) : words;
}

std::string ParameterText(const Operation& operation, std::size_t index) {
  const Parameter& parameter = operation.parameters[index];
  std::string text = ValueForms(parameter);
  if (parameter.whenNull) text += std::string(", or ") + kNullWord + ": " + *parameter.whenNull;
  if (parameter.leftOut) text += "; " + LeftOutText(parameter) + " if left out";
  return text;
}

std::string ErrorsText(const Operation& operation) {
  std::vector<std::string> errors;
  const bool hasRegion = std::any_of(operation.parameters.begin(), operation.parameters.end(),
                                     [](const Parameter& each) { return each.IsRegion(); });
  if (hasRegion && operation.unattached == LX_ERROR_ROI_NOT_ATTACHED) {
    errors.push_back(catalogue::ErrorName(LX_ERROR_ROI_NOT_ATTACHED));
    errors.push_back(catalogue::ErrorName(LX_ERROR_SIZE_MISMATCH));
  }
  for (const catalogue::Refusal& each : operation.refusals) {
    const std::string leaves = each.leaves.empty() ? "" : " leaves " + each.leaves;
    errors.push_back(catalogue::ErrorName(each.code) + leaves);
  }
  return Join(errors, "; ");
}

// By InPlace.
constexpr std::array kInPlaceTexts = {"", "yes", "refused", "yes or refused, as the operands say"};

// What is kept under names.
std::string ResultsText(const Operation& operation) {
  std::vector<std::string> results;
  for (std::size_t i = 0; i < operation.parameters.size(); ++i) {
    const Parameter& parameter = operation.parameters[i];
    if (!IsResult(operation, i)) continue;
    results.push_back("@" + parameter.name +
                      (parameter.IsRegion() ? ", an image, " + TypeText(parameter) : ""));
  }
  return Join(results, "; ");
}

std::string OverloadText(const Operation& operation) {
  std::string text = FormText(operation) + "\n";
  text += Entry("", operation.summary);
  text += Entry("words", UsageText(operation));
  if (const auto labels = LabelsOf(operation); !labels.empty()) {
    text += Entry("this form", Join(labels, ", "));
  }
  for (std::size_t i = 0; i < operation.parameters.size(); ++i) {
    const Parameter& parameter = operation.parameters[i];
    if (!IsOperand(parameter)) continue;
    if (parameter.IsRegion()) {
      const bool current = i == operation.SourceIndices().front();
      text += Entry(parameter.name, std::string(current ? "the current image, " : "an image, ") +
                                        TypeText(parameter));
    } else {
      text += Entry(parameter.name, ParameterText(operation, i));
    }
  }
  if (const std::string results = ResultsText(operation); !results.empty()) {
    text += Entry("leaves", results);
  }
  const auto inPlace = static_cast<std::size_t>(operation.inPlace);
  if (*kInPlaceTexts[inPlace] != '\0') text += Entry("in place", kInPlaceTexts[inPlace]);
  if (const std::string errors = ErrorsText(operation); !errors.empty()) {
    text += Entry("errors", errors);
  }
  if (!operation.trace.empty()) text += Entry("trace", operation.trace);
  return text + Entry("function", operation.signature);
}

struct Statistics {
  unsigned smallest = ~0U;
  unsigned largest = 0;
  double sum = 0;

  void Add(unsigned value) {
    smallest = std::min(smallest, value);
    largest = std::max(largest, value);
    sum += value;
  }
};

unsigned SampleOf(const unsigned char* row, std::size_t index, Pixel pixel) {
  if (pixel == Pixel::kBW16) return reinterpret_cast<const std::uint16_t*>(row)[index];
  return row[index];
}

// The values of every `count`th sample from `first` on.
Statistics Measure(const ImageValue& image, std::size_t first, std::size_t count) {
  Statistics statistics;
  const auto samples = static_cast<std::size_t>(image.Width()) * count;
  for (int y = 0; y < image.Height(); ++y) {
    for (std::size_t i = first; i < samples; i += count) {
      statistics.Add(SampleOf(image.Row(y), i, image.PixelType()));
    }
  }
  return statistics;
}

std::string StatisticsText(const char* name, const Statistics& statistics, double pixelCount) {
  std::array<char, 96> line{};
  std::snprintf(line.data(), line.size(), "  %-6s %u..%u, mean %.2f\n", name, statistics.smallest,
                statistics.largest, statistics.sum / pixelCount);
  return line.data();
}

// The forms of an operation that belong to a family, below its name; nothing when there are none.
std::string FormsText(const std::string& name, const std::string& family) {
  std::string text;
  std::string last;
  for (const Operation* each : OverloadsOf(name)) {
    if (each->family != family) continue;
    std::string line = "    ";
    line = Padded(line.append(FormText(*each)), 30);
    line.append(each->summary).append("\n");
    // Forms that differ in how a table is passed look the same here.
    if (line != last) text += line;
    last = line;
  }
  return text.empty() ? "" : "  " + name + "\n" + text;
}

}  // namespace

std::string ListText(const std::string& part) {
  std::vector<std::string> families;
  for (const Operation& each : catalogue::All()) AddOnce(families, each.family);
  std::string text;
  for (const std::string& family : families) {
    std::string operations;
    for (const std::string& name : OperationNames()) {
      if (name.find(part) != std::string::npos) operations += FormsText(name, family);
    }
    if (!operations.empty()) text += Capitals(family) + "\n" + operations;
  }
  if (!text.empty()) return text;
  throw Failure(kWrongUsage,
                "no operation has '" + part + "' in its name" + Suggestion(part, OperationNames()));
}

std::string HelpText(const std::string& name) {
  const auto overloads = OverloadsOf(name);
  if (overloads.empty()) {
    throw Failure(kWrongUsage,
                  "there is no operation '" + name + "'" + Suggestion(name, OperationNames()));
  }
  std::string text = name + ", " + overloads.front()->function + "\n";
  for (std::size_t i = 0; i < overloads.size(); ++i) {
    text += '\n';
    text += std::to_string(i + 1) + ". " + OverloadText(*overloads[i]);
  }
  return text;
}

std::string InfoText(const std::string& path) {
  const auto [image, format] = ReadFile(path);
  std::string text =
      path + ": " + format + ", " + image.SizeText() + ", " + image.TypeName() + "\n";
  const double pixelCount = static_cast<double>(image.Width()) * image.Height();
  if (image.PixelType() != Pixel::kC24) {
    return text + StatisticsText("grey", Measure(image, 0, 1), pixelCount);
  }
  constexpr std::array<const char*, 3> kNames = {"blue", "green", "red"};
  for (std::size_t k = 3; k-- > 0;) {
    text += StatisticsText(kNames[k], Measure(image, k, 3), pixelCount);
  }
  return text;
}

}  // namespace lx::tool
