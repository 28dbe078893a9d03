// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/value/values.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/common/words.h"
#include "tools/lxpic/value/kernels.h"
#include "tools/lxpic/value/tables.h"

namespace lx::tool {

namespace {

using catalogue::Argument;
using catalogue::Kind;
using catalogue::Parameter;
using catalogue::Pixel;

// A number of `word`, whole and within the bounds.
double Whole(double number, double minimum, double maximum) {
  if (number >= minimum && number <= maximum && number == std::floor(number)) return number;
  throw Failure(kWrongUsage, NumberText(number) + " is not a whole number of " +
                                 NumberText(minimum) + ".." + NumberText(maximum));
}

double Number(const std::string& word) {
  if (const auto number = ReadNumber(word)) return *number;
  throw Failure(kWrongUsage, "'" + word + "' is not a number");
}

// "r,g,b", or one number for all three.
std::array<double, 3> Components(const std::string& word) {
  const auto numbers = ReadNumbers(word);
  if (numbers && numbers->size() == 3) return {(*numbers)[0], (*numbers)[1], (*numbers)[2]};
  if (numbers && numbers->size() == 1) return {(*numbers)[0], (*numbers)[0], (*numbers)[0]};
  throw Failure(kWrongUsage, "'" + word + "' is not a colour like 255,128,0");
}

// Red, green and blue as the three bytes of a pixel, which has blue first.
LxC24 ColourPixel(const std::string& word) {
  std::array<std::uint8_t, 3> bytes{};
  const auto components = Components(word);
  for (std::size_t k = 0; k < 3; ++k) {
    bytes[k] = static_cast<std::uint8_t>(Whole(components[k], 0, 255));
  }
  return {bytes[2], bytes[1], bytes[0]};
}

// A packed colour: its word as one number, or red, green and blue.
Value PackedColour(const std::string& word, unsigned greenBits) {
  if (const auto number = ReadNumber(word)) return {Whole(*number, 0, 65535), {}, {}};
  const LxC24 colour = ColourPixel(word);
  const int packed =
      (colour.c2 >> 3) << (5 + greenBits) | (colour.c1 >> (8 - greenBits)) << 5 | colour.c0 >> 3;
  return {static_cast<double>(packed), {}, {}};
}

Value ReadConstant(const Parameter& parameter, const std::string& word) {
  switch (parameter.pixel) {
    case Pixel::kBW8:
      return {Whole(Number(word), 0, 255), {}, {}};
    case Pixel::kBW16:
      return {Whole(Number(word), 0, 65535), {}, {}};
    case Pixel::kBW32:
      return {Whole(Number(word), 0, std::numeric_limits<std::uint32_t>::max()), {}, {}};
    case Pixel::kC24:
      return {ColourPixel(word), {}, {}};
    case Pixel::kC15:
      return PackedColour(word, 5);
    case Pixel::kC16:
      return PackedColour(word, 6);
    default:
      throw Failure(kWrongUsage, "a constant of this type cannot be written here");
  }
}

std::vector<std::string> ChoiceNames(const Parameter& parameter) {
  std::vector<std::string> names;
  for (const int value : parameter.choices) names.push_back(catalogue::ChoiceName(value));
  return names;
}

// Of every form, so that a slip of the pen is told from a choice that one form lacks.
std::vector<std::string> AllChoiceNames() {
  std::vector<std::string> names;
  for (const auto& operation : catalogue::All()) {
    for (const Parameter& parameter : operation.parameters) {
      for (std::string& name : ChoiceNames(parameter)) names.push_back(std::move(name));
    }
  }
  return names;
}

constexpr int kUnknownChoice = -1;

// A number goes to the library as it is, which judges it.
Value ReadChoice(const Parameter& parameter, const std::string& word) {
  if (const auto number = ReadNumber(word)) return {Whole(*number, -1e9, 1e9), {}, {}};
  const int value = catalogue::ChoiceValue(word);
  if (value == kUnknownChoice) {
    throw Failure(kWrongUsage, "'" + word + "' is no choice" + Suggestion(word, AllChoiceNames()));
  }
  if (std::find(parameter.choices.begin(), parameter.choices.end(), value) ==
      parameter.choices.end()) {
    throw Failure(kWrongUsage, "'" + word + "' is not offered for these operands");
  }
  return {static_cast<double>(value), {}, {}};
}

// A range that starts at 0 or above belongs to a number without a sign.
Value ReadInteger(const Parameter& parameter, const std::string& word) {
  const double largest = std::max({parameter.maximum, parameter.standard,
                                   static_cast<double>(std::numeric_limits<std::int32_t>::max())});
  const double smallest =
      parameter.minimum >= 0 ? 0 : static_cast<double>(std::numeric_limits<std::int32_t>::min());
  return {Whole(Number(word), smallest, largest), {}, {}};
}

Value ReadReal(const Parameter& /*parameter*/, const std::string& word) {
  return {Number(word), {}, {}};
}

Value ReadColour(const Parameter& /*parameter*/, const std::string& word) {
  const auto [red, green, blue] = Components(word);
  return {LxColor{static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue)},
          {},
          {}};
}

template <class Element>
constexpr std::size_t kEntries = std::size_t{std::numeric_limits<Element>::max()} + 1;

// `Element` is the unsigned integer type of the table's index and entries.
template <class Element>
std::vector<unsigned> FullTable(const std::string& word) {
  auto entries = ReadTable(word, kEntries<Element>, std::numeric_limits<Element>::max());
  if (entries.size() == kEntries<Element>) return entries;
  throw Failure(kWrongUsage, word + ": the table must have " + std::to_string(kEntries<Element>) +
                                 " entries, not " + std::to_string(entries.size()));
}

template <class Element>
Value ReadRawTable(const Parameter& /*parameter*/, const std::string& word) {
  const auto entries = FullTable<Element>(word);
  auto table = std::make_shared<std::vector<Element>>();
  for (const unsigned entry : entries) table->push_back(static_cast<Element>(entry));
  return {table->data(), table, {}};
}

template <class Vector, class Element>
Value ReadTypedVector(const Parameter& /*parameter*/, const std::string& word) {
  const auto entries = ReadTable(word, kEntries<Element>, std::numeric_limits<Element>::max());
  auto vector = std::make_shared<Vector>();
  for (const unsigned entry : entries) vector->AddElement(static_cast<Element>(entry));
  return {vector.get(), vector, {}};
}

Value ReadUntypedVector(const Parameter& /*parameter*/, const std::string& word) {
  auto vector = ReadVector(word);
  return {vector.get(), vector, {}};
}

Value ReadKernelValue(const Parameter& /*parameter*/, const std::string& word) {
  auto kernel = ReadKernel(word);
  return {kernel.get(), kernel, {}};
}

// A plain function cannot carry a table, so the one that is passed looks here. It serves one step
// at a time: a step runs before the words of the next are read.
template <class Element>
std::vector<Element> functionTable;

template <class Element>
Element LookUp(Element in) {
  return functionTable<Element>[in];
}

template <class Element>
Value ReadFunction(const Parameter& /*parameter*/, const std::string& word) {
  const auto entries = FullTable<Element>(word);
  functionTable<Element>.clear();
  for (const unsigned entry : entries) {
    functionTable<Element>.push_back(static_cast<Element>(entry));
  }
  return {&LookUp<Element>, {}, {}};
}

struct KindReader {
  Kind kind;
  Value (*read)(const Parameter&, const std::string&);
  const char* forms;
};

constexpr std::array kReaders = {
    KindReader{Kind::kConstant, ReadConstant, ""},
    KindReader{Kind::kChoice, ReadChoice, ""},
    KindReader{Kind::kInteger, ReadInteger, "a whole number"},
    KindReader{Kind::kReal, ReadReal, "a number"},
    KindReader{Kind::kColour, ReadColour, "r,g,b, or one number for all three"},
    KindReader{Kind::kByteTable, ReadRawTable<unsigned char>, kTableForms},
    KindReader{Kind::kWordTable, ReadRawTable<unsigned short>, kTableForms},
    KindReader{Kind::kByteVector, ReadTypedVector<LxBW8Vector, unsigned char>, kTableForms},
    KindReader{Kind::kWordVector, ReadTypedVector<LxBW16Vector, unsigned short>, kTableForms},
    KindReader{Kind::kVector, ReadUntypedVector, "numbers like 1,2,3 or u8:1,2,3"},
    KindReader{Kind::kKernel, ReadKernelValue, kKernelForms},
    KindReader{Kind::kByteFunction, ReadFunction<unsigned char>, kTableForms},
    KindReader{Kind::kWordFunction, ReadFunction<unsigned short>, kTableForms}};

// Null for a kind that has no words yet.
const KindReader* FindReader(const Parameter& parameter) {
  const auto* const found =
      std::find_if(kReaders.begin(), kReaders.end(),
                   [&](const KindReader& each) { return each.kind == parameter.kind; });
  return found == kReaders.end() ? nullptr : found;
}

constexpr const char* kNoWords = "cannot be written on the command line";

template <class Vector>
Value MakeTypedResult() {
  auto vector = std::make_shared<Vector>();
  return {vector.get(), vector, [vector] {
            std::vector<std::string> elements;
            for (const auto element : *vector) elements.push_back(std::to_string(element));
            return Join(elements, ",");
          }};
}

}  // namespace

Value ReadValue(const Parameter& parameter, const std::string& word) {
  try {
    const KindReader* const reader = FindReader(parameter);
    if (reader == nullptr) throw Failure(kWrongUsage, kNoWords);
    return reader->read(parameter, word);
  } catch (const Failure& failure) {
    throw failure.Of(parameter.name);
  }
}

Value StandardValue(const Parameter& parameter) {
  return ReadValue(parameter, NumberText(parameter.standard));
}

Value MakeResult(const Parameter& parameter) {
  switch (parameter.kind) {
    case Kind::kByteVector:
      return MakeTypedResult<LxBW8Vector>();
    case Kind::kWordVector:
      return MakeTypedResult<LxBW16Vector>();
    case Kind::kVector: {
      auto vector = std::make_shared<LxVector>();
      return {vector.get(), vector, [vector] { return VectorText(*vector); }};
    }
    default:
      throw Failure(kWrongUsage, parameter.name + " " + kNoWords);
  }
}

std::string ValueForms(const Parameter& parameter) {
  if (parameter.kind == Kind::kChoice) return "one of " + Join(ChoiceNames(parameter), ", ");
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
