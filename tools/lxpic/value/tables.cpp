// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/value/tables.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>

#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/common/words.h"
#include "tools/lxpic/file/input_file.h"

namespace lx::tool {

namespace {

using catalogue::Meaning;

constexpr std::size_t kMaxEntries = 65536;

// Entry of a named table from `in`, its index as a part of 1.
using Curve = double (*)(double in, double argument);

struct NamedTable {
  std::string_view name;
  bool hasArgument;
  Curve curve;
};

constexpr std::array kTables = {
    NamedTable{"identity", false, [](double in, double) { return in; }},
    NamedTable{"invert", false, [](double in, double) { return 1 - in; }},
    NamedTable{"gamma", true, [](double in, double gamma) { return std::pow(in, 1 / gamma); }},
    NamedTable{"threshold", true, [](double in, double level) { return in >= level ? 1.0 : 0.0; }}};

std::vector<unsigned> MakeTable(const NamedTable& table, double argument, std::size_t size,
                                unsigned maximum) {
  const auto last = static_cast<double>(size - 1);
  if (table.name == "threshold") argument /= last;
  std::vector<unsigned> entries(size);
  for (std::size_t i = 0; i < size; ++i) {
    const double part = table.curve(static_cast<double>(i) / last, argument);
    entries[i] = static_cast<unsigned>(std::lround(std::clamp(part, 0.0, 1.0) * maximum));
  }
  return entries;
}

std::vector<unsigned> EntriesOf(const std::string& path, std::string text, unsigned maximum) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
  std::replace(text.begin(), text.end(), ',', ' ');
  std::vector<unsigned> entries;
  for (std::size_t start = text.find_first_not_of(' '); start != std::string::npos;) {
    const std::size_t end = std::min(text.find(' ', start), text.size());
    const auto entry = ReadNumber(std::string_view(text).substr(start, end - start));
    const bool valid = entry && *entry >= 0 && *entry <= maximum && *entry == std::floor(*entry);
    if (!valid || entries.size() == kMaxEntries) {
      throw Failure(kFileFailed, path + ": not a table of at most " + std::to_string(kMaxEntries) +
                                     " whole numbers of 0.." + std::to_string(maximum));
    }
    entries.push_back(static_cast<unsigned>(*entry));
    start = text.find_first_not_of(' ', end);
  }
  return entries;
}

struct ElementType {
  std::string_view name;
  int dataSize;
  int dataType;
  double minimum;
  double maximum;
  void (*store)(void* data, std::size_t index, double value);
  double (*load)(const void* data, std::size_t index);
};

template <class T>
constexpr ElementType MakeElementType(std::string_view name, int dataType) {
  return {name,
          static_cast<int>(2 * sizeof(T)),
          dataType,
          static_cast<double>(std::numeric_limits<T>::lowest()),
          static_cast<double>(std::numeric_limits<T>::max()),
          [](void* data, std::size_t index, double value) {
            static_cast<T*>(data)[index] = static_cast<T>(value);
          },
          [](const void* data, std::size_t index) {
            return static_cast<double>(static_cast<const T*>(data)[index]);
          }};
}

constexpr std::array kElementTypes = {MakeElementType<std::int32_t>("s32", LX_DATA_SIGNED),
                                      MakeElementType<std::uint32_t>("u32", LX_DATA_UNSIGNED),
                                      MakeElementType<std::int16_t>("s16", LX_DATA_SIGNED),
                                      MakeElementType<std::uint16_t>("u16", LX_DATA_UNSIGNED),
                                      MakeElementType<std::int8_t>("s8", LX_DATA_SIGNED),
                                      MakeElementType<std::uint8_t>("u8", LX_DATA_UNSIGNED),
                                      MakeElementType<float>("f32", LX_DATA_FLOAT)};

// Lays a vector out for elements that stand for something.
void LayOut(LxVector& vector, const ElementType& type, int count, Meaning meaning) {
  LxOk();
  if (meaning == Meaning::kSegment) {
    constexpr int kPixelsUse = 5;
    if (type.name != "s32" || count % 3 != 0) {
      throw Failure(kWrongUsage, "a line is level,column,row of each pixel");
    }
    vector.SetType(LX_VECTOR_SEGMENT, count / 3, 3);
    vector.SetUse(kPixelsUse);
    return;
  }
  const bool isSignal =
      meaning == Meaning::kGroup || meaning == Meaning::kSigned || meaning == Meaning::kUnsigned;
  vector.SetStructure(type.dataSize, isSignal ? 1 : count, isSignal ? count : 1, type.dataType);
}

}  // namespace

std::string ReadTableText(const std::string& path) {
  // Room for the largest table with all its digits and blanks.
  constexpr std::size_t kMostBytes = 16 * kMaxEntries;
  try {
    return ReadText(path, kMostBytes);
  } catch (const Failure& failure) {
    throw Failure(kFileFailed, std::string(failure.what()) + "; a table is " + kTableForms);
  }
}

std::vector<unsigned> ReadTable(const std::string& word, std::size_t size, unsigned maximum,
                                const ReadFileText& readText) {
  const std::size_t colon = word.find(':');
  const auto* const found =
      std::find_if(kTables.begin(), kTables.end(), [&](const NamedTable& each) {
        return each.name == word.substr(0, colon) &&
               each.hasArgument == (colon != std::string::npos);
      });
  if (found == kTables.end()) return EntriesOf(word, readText(word), maximum);
  if (!found->hasArgument) return MakeTable(*found, 0, size, maximum);
  const auto argument = ReadNumber(std::string_view(word).substr(colon + 1));
  if (!argument || !(*argument > 0)) {
    throw Failure(kWrongUsage, "'" + word + "' needs a number above 0 behind the colon");
  }
  return MakeTable(*found, *argument, size, maximum);
}

std::shared_ptr<LxVector> ReadVector(const std::string& word, Meaning meaning) {
  const std::size_t colon = word.find(':');
  const char* const usual = meaning == Meaning::kUnsigned ? "u32" : "s32";
  const std::string typeName = colon == std::string::npos ? usual : word.substr(0, colon);
  const auto* const type = std::find_if(kElementTypes.begin(), kElementTypes.end(),
                                        [&](const auto& each) { return each.name == typeName; });
  const auto numbers =
      ReadNumbers(std::string_view(word).substr(colon == std::string::npos ? 0 : colon + 1));
  if (type == kElementTypes.end() || !numbers) {
    throw Failure(kWrongUsage, "'" + word + "' is not a vector like 1,2,3 or u8:1,2,3");
  }
  auto vector = std::make_shared<LxVector>();
  LayOut(*vector, *type, static_cast<int>(numbers->size()), meaning);
  if (LxGetError() != LX_OK) throw Failure(kOperationFailed, "no memory for a vector");
  for (std::size_t i = 0; i < numbers->size(); ++i) {
    const double number = (*numbers)[i];
    if (!(number >= type->minimum && number <= type->maximum)) {
      throw Failure(kWrongUsage, NumberText(number) + " does not fit " + typeName);
    }
    type->store(vector->GetDataPtr(), i, number);
  }
  return vector;
}

Numbers VectorNumbers(const LxVector& vector) {
  Numbers numbers{true, Numbers::Drawing::kLine, {""}, {}};
  const auto* const type =
      std::find_if(kElementTypes.begin(), kElementTypes.end(), [&](const auto& each) {
        return each.dataSize == vector.GetDataSize() && each.dataType == vector.GetDataType();
      });
  if (type == kElementTypes.end() || vector.GetDataPtr() == nullptr) return numbers;
  const int count = vector.GetNbGroup() * vector.GetGroupLength();
  for (int i = 0; i < count; ++i) {
    numbers.values.push_back(type->load(vector.GetDataPtr(), static_cast<std::size_t>(i)));
  }
  // These are one group with many entries; groups of others are elements with fields.
  const bool isHistogram = vector.IsSameVectType(LX_VECTOR_HISTOGRAM) != 0;
  if (isHistogram) numbers.drawing = Numbers::Drawing::kBars;
  if (isHistogram || vector.IsSameVectType(LX_VECTOR_TABLE) != 0) return numbers;
  const bool isSignal =
      vector.GetVectType() == LX_VECTOR_NONE && vector.GetUse() == 0 && vector.GetNbGroup() == 1;
  if (isSignal || vector.GetGroupLength() == 1) return numbers;
  numbers.fields.clear();
  for (int i = 1; i <= vector.GetGroupLength(); ++i) numbers.fields.push_back(std::to_string(i));
  return numbers;
}

}  // namespace lx::tool
