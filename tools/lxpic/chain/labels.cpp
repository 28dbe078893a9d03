// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/chain/labels.h"

#include <algorithm>
#include <array>

#include "tools/lxpic/chain/overloads.h"

namespace lx::tool {

namespace {

using catalogue::Kind;
using catalogue::Operation;
using catalogue::Parameter;

bool IsPixelName(const std::string& word) {
  for (auto number = static_cast<int>(Pixel::kBW8); number <= static_cast<int>(Pixel::kBinary);
       ++number) {
    if (catalogue::PixelName(static_cast<Pixel>(number)) == word) return true;
  }
  return false;
}

// How values of a kind are told: the holder of a table, and the type of its elements.
struct KindLabels {
  Kind kind;
  const char* holder;
  Pixel pixel;
};
constexpr std::array kKindLabels = {KindLabels{Kind::kByteTable, "array", Pixel::kNone},
                                    KindLabels{Kind::kWordTable, "array", Pixel::kNone},
                                    KindLabels{Kind::kByteVector, "vector", Pixel::kBW8},
                                    KindLabels{Kind::kWordVector, "vector", Pixel::kBW16},
                                    KindLabels{Kind::kDoubleWordVector, "vector", Pixel::kBW32},
                                    KindLabels{Kind::kColourVector, "vector", Pixel::kC24},
                                    KindLabels{Kind::kHistogramVector, "vector", Pixel::kNone},
                                    KindLabels{Kind::kPathVector, "points", Pixel::kNone},
                                    KindLabels{Kind::kBytePathVector, "levels", Pixel::kBW8},
                                    KindLabels{Kind::kWordPathVector, "levels", Pixel::kBW16},
                                    KindLabels{Kind::kColourPathVector, "levels", Pixel::kC24},
                                    KindLabels{Kind::kPeaksVector, "vector", Pixel::kNone},
                                    KindLabels{Kind::kVector, "untyped", Pixel::kNone},
                                    KindLabels{Kind::kByteFunction, "function", Pixel::kNone},
                                    KindLabels{Kind::kWordFunction, "function", Pixel::kNone}};

void AddPixel(std::vector<std::string>& labels, Pixel pixel) {
  if (pixel != Pixel::kNone) AddOnce(labels, std::string(catalogue::PixelName(pixel)));
}

void AddLabels(std::vector<std::string>& labels, const Parameter& parameter, bool writesImage) {
  const auto* const found =
      std::find_if(kKindLabels.begin(), kKindLabels.end(),
                   [&](const KindLabels& each) { return each.kind == parameter.kind; });
  if (found != kKindLabels.end()) AddOnce(labels, found->holder);
  if (parameter.meaning == catalogue::Meaning::kSigned) AddOnce(labels, "signed");
  if (parameter.meaning == catalogue::Meaning::kUnsigned) AddOnce(labels, "unsigned");
  if (writesImage || parameter.IsRegion()) return;
  if (parameter.kind == Kind::kReal) AddOnce(labels, "real");
  AddPixel(labels, parameter.pixel);
  if (found != kKindLabels.end()) AddPixel(labels, found->pixel);
}

// All that may be labels, told apart by them or not.
std::vector<std::string> AllLabelsOf(const Operation& operation) {
  std::vector<std::string> labels;
  const Pixel written = DestinationPixelOf(operation);
  AddPixel(labels, written);
  if (written != Pixel::kNone && operation.SourceIndices().empty() &&
      operation.parameters[operation.DestinationIndex()].role == catalogue::Role::kUpdated) {
    AddOnce(labels, "in-place");
  }
  for (std::size_t i = 0; i < operation.parameters.size(); ++i) {
    const Parameter& parameter = operation.parameters[i];
    if (IsResult(operation, i)) AddOnce(labels, parameter.name);
    AddLabels(labels, parameter, written != Pixel::kNone);
  }
  return labels;
}

}  // namespace

Overloads OverloadsOf(const std::string& name) {
  Overloads overloads;
  for (const Operation& each : catalogue::All()) {
    if (each.name == name) overloads.push_back(&each);
  }
  return overloads;
}

bool HasLabel(const Operation& operation, const std::string& word) {
  const auto labels = AllLabelsOf(operation);
  return std::find(labels.begin(), labels.end(), word) != labels.end();
}

std::vector<std::string> LabelsOf(const Operation& operation) {
  auto labels = AllLabelsOf(operation);
  const auto sisters = OverloadsOf(operation.name);
  std::erase_if(labels, [&](const std::string& label) {
    return std::all_of(sisters.begin(), sisters.end(),
                       [&](const Operation* each) { return HasLabel(*each, label); });
  });
  return labels;
}

bool IsLabel(const std::string& word, const Overloads& overloads) {
  if (IsPixelName(word)) return true;
  const auto count = std::count_if(overloads.begin(), overloads.end(),
                                   [&](const Operation* each) { return HasLabel(*each, word); });
  return count > 0 && static_cast<std::size_t>(count) < overloads.size();
}

}  // namespace lx::tool
