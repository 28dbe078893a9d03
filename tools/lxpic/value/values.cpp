// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/value/values.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/common/words.h"
#include "tools/lxpic/value/kernels.h"
#include "tools/lxpic/value/scalars.h"
#include "tools/lxpic/value/tables.h"
#include "tools/lxpic/value/vectors.h"

namespace lx::tool {

namespace {

using catalogue::Argument;
using catalogue::Kind;
using catalogue::Parameter;
using catalogue::Pixel;

template <Argument (*read)(const Parameter&, const std::string&)>
Value ReadScalar(const Parameter& parameter, const std::string& word,
                 const ReadFileText& /*readText*/) {
  return ScalarValue(read(parameter, word));
}

Value ReadTableValue(const Parameter& parameter, const std::string& word,
                     const ReadFileText& readText) {
  const TableKind& table = *FindTableKind(parameter.kind);
  const auto& counts = parameter.counts;
  const bool fits =
      counts.empty() || std::find(counts.begin(), counts.end(), table.size) != counts.end();
  const std::size_t size = fits ? table.size : *std::max_element(counts.begin(), counts.end());
  return table.make(ReadTable(word, size, table.maximum, readText));
}

Value ReadUntypedVector(const Parameter& parameter, const std::string& word,
                        const ReadFileText& /*readText*/) {
  auto vector = ReadVector(word, parameter.meaning);
  return {vector.get(), vector, [vector] { return VectorNumbers(*vector); }};
}

Value ReadKernelValue(const Parameter& /*parameter*/, const std::string& word,
                      const ReadFileText& /*readText*/) {
  auto kernel = ReadKernel(word);
  return {kernel.get(), kernel, {}};
}

// A plain function cannot carry a colour, so the one that is passed looks here, as those with a
// table do.
LxC24& WantedColour() {
  thread_local LxC24 colour;
  return colour;
}

int IsWantedColour(LxC24& pixel) { return pixel == WantedColour() ? 1 : 0; }

Value ReadColourPredicate(const Parameter& parameter, const std::string& word,
                          const ReadFileText& /*readText*/) {
  Parameter colour = parameter;
  colour.kind = Kind::kConstant;
  colour.pixel = Pixel::kC24;
  WantedColour() = std::get<LxC24>(ReadConstant(colour, word));
  return {&IsWantedColour, {}, {}};
}

struct KindReader {
  Kind kind;
  Value (*read)(const Parameter&, const std::string&, const ReadFileText&);
  const char* forms;
};

constexpr const char* kMarkForms = "a table that marks levels: threshold:N, or a file of numbers";
constexpr const char* kPathForms =
    "a path, as @NAME or a file of numbers: column, row and level of each point";

constexpr std::array kReaders = {
    KindReader{Kind::kConstant, ReadScalar<ReadConstant>, ""},
    KindReader{Kind::kChoice, ReadScalar<ReadChoice>, ""},
    KindReader{Kind::kInteger, ReadScalar<ReadInteger>, "a whole number"},
    KindReader{Kind::kReal, ReadScalar<ReadReal>, "a number"},
    KindReader{Kind::kColour, ReadScalar<ReadColour>, "r,g,b, or one number for all three"},
    KindReader{Kind::kByteTable, ReadTableValue, kTableForms},
    KindReader{Kind::kWordTable, ReadTableValue, kTableForms},
    KindReader{Kind::kByteVector, ReadTableValue, kTableForms},
    KindReader{Kind::kWordVector, ReadTableValue, kTableForms},
    KindReader{Kind::kColourVector, ReadTableValue, "a file of numbers, three for each element"},
    KindReader{Kind::kHistogramVector, ReadTableValue, "a file of counts, or @NAME"},
    KindReader{Kind::kBytePathVector, ReadTableValue, kPathForms},
    KindReader{Kind::kWordPathVector, ReadTableValue, kPathForms},
    KindReader{Kind::kColourPathVector, ReadTableValue, kPathForms},
    KindReader{Kind::kVector, ReadUntypedVector, "numbers like 1,2,3 or u8:1,2,3"},
    KindReader{Kind::kKernel, ReadKernelValue, kKernelForms},
    KindReader{Kind::kByteFunction, ReadTableValue, kTableForms},
    KindReader{Kind::kWordFunction, ReadTableValue, kTableForms},
    KindReader{Kind::kBytePredicate, ReadTableValue, kMarkForms},
    KindReader{Kind::kWordPredicate, ReadTableValue, kMarkForms},
    KindReader{Kind::kColourPredicate, ReadColourPredicate, "the colour that counts: r,g,b"}};

// Null for a kind that has no words yet.
const KindReader* FindReader(const Parameter& parameter) {
  const auto* const found =
      std::find_if(kReaders.begin(), kReaders.end(),
                   [&](const KindReader& each) { return each.kind == parameter.kind; });
  return found == kReaders.end() ? nullptr : found;
}

constexpr const char* kNoWords = "cannot be written on the command line";

// The word that stands for the same number or colour.
std::string WordOf(const Numbers& numbers) {
  std::vector<std::string> words;
  for (const double value : numbers.values) words.push_back(NumberText(value));
  return Join(words, ",");
}

Value TableOf(const TableKind& table, const Numbers& numbers) {
  std::vector<unsigned> entries;
  for (const double value : numbers.values) {
    if (!(value >= 0 && value <= table.maximum && value == std::floor(value))) {
      throw Failure(kWrongUsage, "its entry " + NumberText(value) +
                                     " is not a whole number of 0.." + NumberText(table.maximum));
    }
    entries.push_back(static_cast<unsigned>(value));
  }
  return table.make(entries);
}

}  // namespace

Value ReadValue(const Parameter& parameter, const std::string& word, const ReadFileText& readText) {
  try {
    if (parameter.whenNull && word == kNullWord) return {catalogue::NullOf(parameter.kind), {}, {}};
    const KindReader* const reader = FindReader(parameter);
    if (reader == nullptr) throw Failure(kWrongUsage, kNoWords);
    return reader->read(parameter, word, readText);
  } catch (const Failure& failure) {
    throw failure.Of(parameter.name);
  }
}

Value FitValue(const Parameter& parameter, const Value& value) {
  const Numbers numbers = value.read();
  if (!numbers.isVector) return ReadValue(parameter, WordOf(numbers));
  if (value.argument.index() == MakeEmptyVector(parameter.kind).argument.index()) return value;
  const TableKind* const table = FindTableKind(parameter.kind);
  if (table == nullptr) throw Failure(kWrongUsage, parameter.name + ": a vector does not fit here");
  try {
    return TableOf(*table, numbers);
  } catch (const Failure& failure) {
    throw failure.Of(parameter.name);
  }
}

Value LeftOutValue(const Parameter& parameter) {
  const double value = parameter.leftOut->value;
  if (catalogue::IsPointer(parameter.kind)) return {catalogue::NullOf(parameter.kind), {}, {}};
  // A number may be one that stands for something, outside the range of those that are written.
  if (catalogue::IsNumber(parameter.kind)) return ScalarValue(value);
  return ReadValue(parameter, NumberText(value));
}

Value MakeResult(const Parameter& parameter) {
  Value made = MakeEmptyVector(parameter.kind);
  if (parameter.meaning == catalogue::Meaning::kEnergy) {
    std::get<LxVector*>(made.argument)->SetType(LX_VECTOR_DISC_ENERGY, 0, 0);
  }
  if (made.owner) return made;
  if (parameter.kind == Kind::kColour) return ScalarValue(LxColor{});
  const bool isColour = parameter.kind == Kind::kConstant && parameter.pixel == Pixel::kC24;
  return ScalarValue(isColour ? Argument(LxC24{}) : Argument(0.0));
}

Value ScalarValue(const Argument& argument) {
  Numbers numbers;
  if (const auto* const number = std::get_if<double>(&argument)) {
    numbers.values = {*number};
  } else if (const auto* const pixel = std::get_if<LxC24>(&argument)) {
    numbers.fields = {"red", "green", "blue"};
    numbers.values = {1.0 * pixel->c2, 1.0 * pixel->c1, 1.0 * pixel->c0};
  } else {
    const auto& colour = std::get<LxColor>(argument);
    numbers.fields = {"red", "green", "blue"};
    numbers.values = {colour.c0, colour.c1, colour.c2};
  }
  return {argument, {}, [numbers] { return numbers; }};
}

std::string ValueForms(const Parameter& parameter) {
  const std::string names = Join(ChoiceNames(parameter), ", ");
  if (parameter.kind == Kind::kChoice) return "one of " + names;
  if (parameter.kind == Kind::kInteger && !names.empty())
    return "a whole number, or one of " + names;
  if (parameter.kind != Kind::kConstant) {
    const KindReader* const reader = FindReader(parameter);
    return reader == nullptr ? kNoWords : reader->forms;
  }
  switch (parameter.pixel) {
    case Pixel::kBW8:
      return "0..255";
    case Pixel::kBW16:
      return "0..65535";
    case Pixel::kC24:
      return "r,g,b, or one number for all three";
    case Pixel::kC15:
    case Pixel::kC16:
      return "r,g,b, or the pixel as one number";
    default:
      return "a pixel value";
  }
}

}  // namespace lx::tool
