// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/value/scalars.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/common/words.h"

namespace lx::tool {

namespace {

using catalogue::Argument;
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
Argument PackedColour(const std::string& word, unsigned greenBits) {
  if (const auto number = ReadNumber(word)) return Whole(*number, 0, 65535);
  const LxC24 colour = ColourPixel(word);
  const int packed =
      (colour.c2 >> 3) << (5 + greenBits) | (colour.c1 >> (8 - greenBits)) << 5 | colour.c0 >> 3;
  return static_cast<double>(packed);
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

// The value of a choice by its name.
Argument ReadName(const Parameter& parameter, const std::string& word) {
  const auto names = AllChoiceNames();
  if (std::find(names.begin(), names.end(), word) == names.end()) {
    throw Failure(kWrongUsage, "'" + word + "' is no choice" + Suggestion(word, names));
  }
  if (const auto value = catalogue::ChoiceValue(parameter.choices, word)) {
    return static_cast<double>(*value);
  }
  throw Failure(kWrongUsage, "'" + word + "' is not offered for these operands");
}

}  // namespace

std::vector<std::string> ChoiceNames(const Parameter& parameter) {
  std::vector<std::string> names;
  for (const catalogue::Named& each : parameter.choices) names.push_back(each.name);
  return names;
}

Argument ReadConstant(const Parameter& parameter, const std::string& word) {
  switch (parameter.pixel) {
    case Pixel::kBW8:
      return Whole(Number(word), 0, 255);
    case Pixel::kBW16:
      return Whole(Number(word), 0, 65535);
    case Pixel::kBW32:
      return Whole(Number(word), 0, std::numeric_limits<std::uint32_t>::max());
    case Pixel::kC24:
      return ColourPixel(word);
    case Pixel::kC15:
      return PackedColour(word, 5);
    case Pixel::kC16:
      return PackedColour(word, 6);
    default:
      throw Failure(kWrongUsage, "a constant of this type cannot be written here");
  }
}

// A number goes to the library as it is, which judges it.
// Some names are numbers.
Argument ReadChoice(const Parameter& parameter, const std::string& word) {
  if (const auto named = catalogue::ChoiceValue(parameter.choices, word)) {
    return static_cast<double>(*named);
  }
  if (const auto number = ReadNumber(word)) return Whole(*number, -1e9, 1e9);
  return ReadName(parameter, word);
}

// A range that starts at 0 or above belongs to a number without a sign.
Argument ReadInteger(const Parameter& parameter, const std::string& word) {
  if (!parameter.choices.empty() && !ReadNumber(word)) return ReadName(parameter, word);
  const double leftOut = parameter.leftOut ? parameter.leftOut->value : 0;
  double largest =
      std::max<double>({parameter.maximum, leftOut, std::numeric_limits<std::int32_t>::max()});
  for (const catalogue::Named& each : parameter.choices) {
    largest = std::max(largest, static_cast<double>(each.value));
  }
  const bool hasSign = parameter.minimum < 0 || leftOut < 0;
  const double smallest = hasSign ? std::numeric_limits<std::int32_t>::min() : 0;
  return Whole(Number(word), smallest, largest);
}

Argument ReadReal(const Parameter& /*parameter*/, const std::string& word) { return Number(word); }

Argument ReadColour(const Parameter& /*parameter*/, const std::string& word) {
  const auto [red, green, blue] = Components(word);
  return LxColor{static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue)};
}

}  // namespace lx::tool
