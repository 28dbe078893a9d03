// SPDX-License-Identifier: Apache-2.0
#include "support/trial/arguments.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "support/trial/kernels.h"

namespace lx::test {

namespace {

unsigned char MirrorByte(unsigned char value) { return static_cast<unsigned char>(255 - value); }
unsigned char SquareByte(unsigned char value) {
  return static_cast<unsigned char>(value * value / 255);
}
unsigned short MirrorWord(unsigned short value) {
  return static_cast<unsigned short>(65535 - value);
}
unsigned short SwapWord(unsigned short value) {
  return static_cast<unsigned short>((value >> 8) | (value << 8));
}

int IsDark(LxBW8& pixel) { return pixel < 100 ? 1 : 0; }
int LowBits(LxBW8& pixel) { return pixel & 3; }
int IsDarkWord(LxBW16& pixel) { return pixel < 25000 ? -1 : 0; }
int LowBitsOfWord(LxBW16& pixel) { return pixel & 0x101; }
int IsReddish(LxC24& pixel) { return pixel.c2 > pixel.c0 ? 256 : 0; }
int LowBitsOfColour(LxC24& pixel) { return pixel.c0 & pixel.c1 & 5; }

class TurnColour : public LxColorLookup {
 public:
  void Transform(LxC24 colour, LxC24& result) override {
    result = {colour.c1, colour.c2, MirrorByte(colour.c0)};
  }
};

constexpr std::array<catalogue::ByteFunction, 2> kByteFunctions = {MirrorByte, SquareByte};
constexpr std::array<catalogue::WordFunction, 2> kWordFunctions = {MirrorWord, SwapWord};
constexpr std::array<catalogue::BytePredicate, 2> kBytePredicates = {IsDark, LowBits};
constexpr std::array<catalogue::WordPredicate, 2> kWordPredicates = {IsDarkWord, LowBitsOfWord};
constexpr std::array<catalogue::ColourPredicate, 2> kColourPredicates = {IsReddish,
                                                                         LowBitsOfColour};

// What a number that is a result holds before the call.
constexpr double kBefore = 77;

bool IsPattern(const Parameter& parameter) { return parameter.trials.front() != 0; }
bool IsRow(const Parameter& parameter) { return parameter.meaning == catalogue::Meaning::kRow; }

double DrawConstant(const Parameter& parameter, Random& random) {
  const Value maximum = FormatOf(parameter.pixel).maximum;
  const std::array<Value, 9> values = {static_cast<Value>(parameter.trials.front()),
                                       0,
                                       1,
                                       2,
                                       maximum / 2,
                                       maximum / 2 + 1,
                                       maximum - 1,
                                       maximum,
                                       9};
  const bool chance = random.Below(3) == 0;
  return static_cast<double>(chance ? random.Between(0, maximum) : random.Pick(values));
}

// A trial value, a named one, an end of the range, or anything between its ends.
double DrawNumber(const Parameter& parameter, Random& random) {
  if (parameter.meaning != catalogue::Meaning::kLevels) return DrawCoordinate(random, 24);
  const std::size_t style = random.Below(6);
  if (style == 0 && !parameter.choices.empty()) {
    return static_cast<double>(random.Pick(parameter.choices).value);
  }
  if (style < 3 || parameter.minimum == parameter.maximum) return random.Pick(parameter.trials);
  const double range = random.Real(parameter.minimum, parameter.maximum);
  const std::array<double, 4> values = {parameter.minimum, parameter.maximum, range, range};
  const double value = random.Pick(values);
  return parameter.kind == Kind::kInteger ? std::round(value) : double{static_cast<float>(value)};
}

std::uint8_t Byte(double value) { return static_cast<std::uint8_t>(value); }

template <class Number>
std::shared_ptr<std::vector<Number>> MakeTable(std::size_t count, Random& random) {
  auto table = std::make_shared<std::vector<Number>>(count);
  for (Number& entry : *table) entry = static_cast<Number>(random.Next());
  return table;
}

struct Writer {
  std::ostream& text;

  void operator()(double number) const { text << number; }
  void operator()(LxC24 colour) const {
    text << '(' << int{colour.c0} << ' ' << int{colour.c1} << ' ' << int{colour.c2} << ')';
  }
  void operator()(LxColor colour) const {
    text << '(' << colour.c0 << ' ' << colour.c1 << ' ' << colour.c2 << ')';
  }
  void operator()(std::nullptr_t /*unwanted*/) const { text << "null"; }
  void operator()(LxKernel* kernel) const {
    text << (kernel == nullptr ? "null" : KernelText(*kernel));
  }
  template <class Pointer>
  void operator()(Pointer* pointer) const {
    text << (pointer == nullptr ? "null" : "*");
  }
};

}  // namespace

Arguments::Arguments(const Operation& described)
    : values(described.parameters.size()), operation(&described), slots(values.size()) {
  for (std::size_t i = 0; i < values.size(); ++i) SetUsual(i);
  FitCounts();
}

Arguments::Arguments(const Operation& described, Random& random)
    : values(described.parameters.size()),
      operation(&described),
      slots(values.size()),
      drawn(true) {
  for (std::size_t i = 0; i < values.size(); ++i) Draw(i, random);
  const bool hasRegion = std::any_of(described.parameters.begin(), described.parameters.end(),
                                     [](const Parameter& each) { return each.IsRegion(); });
  if (!hasRegion) FitCounts();
}

void Arguments::Set(std::string_view parameter, double number) {
  values.at(operation->IndexOf(parameter)) = number;
}

void Arguments::SetNumber(std::size_t index, double number) {
  values[index] = slots[index].number = number;
}

void Arguments::SetChoice(int choice) {
  const auto& parameters = operation->parameters;
  const auto found = std::find_if(parameters.begin(), parameters.end(),
                                  [](const Parameter& each) { return each.kind == Kind::kChoice; });
  if (found == parameters.end()) return;
  values[static_cast<std::size_t>(found - parameters.begin())] = static_cast<double>(choice);
}

void Arguments::SetVector(std::size_t index, const Elements& content) {
  VectorObject made = MakeVector(operation->parameters[index].kind, content);
  slots[index].owner = std::move(made.owner);
  slots[index].content = std::make_shared<Elements>(content);
  values[index] = made.argument;
}

void Arguments::FitVector(std::size_t index, std::size_t count) {
  Elements fitting = *slots[index].content;
  const Kind kind = operation->parameters[index].kind;
  const auto length = static_cast<std::size_t>(fitting.groupLength);
  auto& elements = fitting.values;
  const std::size_t old = elements.size();
  elements.resize(count * (kind == Kind::kVector ? length : FieldsOf(kind)));
  // What there was, again and again.
  for (std::size_t i = old; i < elements.size() && old > 0; ++i) elements[i] = elements[i - old];
  SetVector(index, fitting);
}

void Arguments::FitColumns(int columns) {
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (!operation->parameters[i].perColumn || slots[i].content == nullptr) continue;
    FitVector(i, static_cast<std::size_t>(columns));
  }
}

void Arguments::FitRegion(int width, int height) {
  for (std::size_t i = 0; i < values.size() && drawn; ++i) {
    const catalogue::Meaning meaning = operation->parameters[i].meaning;
    if (meaning == catalogue::Meaning::kColumn) SetNumber(i, FitCoordinate(Number(i), width));
    if (meaning == catalogue::Meaning::kRow && std::holds_alternative<double>(values[i])) {
      SetNumber(i, FitCoordinate(Number(i), height));
    }
    if (slots[i].content == nullptr || !HasPoints(operation->parameters[i])) continue;
    Elements fitting = *slots[i].content;
    ForEachPoint(operation->parameters[i], fitting, [&](double& x, double& y) {
      x = FitCoordinate(x, width);
      y = FitCoordinate(y, height);
    });
    SetVector(i, fitting);
  }
  FitCounts();
}

void Arguments::FitCounts() {
  if (operation->count == nullptr) return;
  // A line between points far outside.
  constexpr std::size_t kMost = 100000;
  const std::size_t count = operation->count(values);
  for (std::size_t i = 0; i < values.size() && count <= kMost; ++i) {
    if (!operation->parameters[i].counted || slots[i].content == nullptr) continue;
    // These are one group, however many entries they have.
    const int kind = slots[i].content->kind;
    if (kind != LX_VECTOR_HISTOGRAM && kind != LX_VECTOR_TABLE) FitVector(i, count);
  }
}

void Arguments::SetKernel(std::size_t index, std::shared_ptr<LxKernel> kernel) {
  values[index] = kernel.get();
  slots[index].owner = std::move(kernel);
}

void Arguments::SetNull(std::size_t index) {
  slots[index] = {};
  values[index] = catalogue::NullOf(operation->parameters[index].kind);
}

void Arguments::Reset() {
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (!operation->parameters[i].IsWritten()) continue;
    if (slots[i].content != nullptr) {
      SetVector(i, Elements(*slots[i].content));
    } else if (std::holds_alternative<double>(values[i])) {
      values[i] = slots[i].number;
    }
  }
}

double Arguments::Number(std::string_view parameter) const {
  return Number(operation->IndexOf(parameter));
}

Value Arguments::Component(std::size_t index, int k) const {
  if (const auto* const colour = std::get_if<LxC24>(&values[index])) {
    return std::array<Value, 3>{colour->c0, colour->c1, colour->c2}[static_cast<std::size_t>(k)];
  }
  return static_cast<Value>(Number(index));
}

const Elements* Arguments::Content(std::size_t index) const { return slots[index].content.get(); }

double Arguments::NumberBefore(std::size_t index) const { return slots[index].number; }

std::string Arguments::Text() const {
  std::ostringstream text;
  text.precision(17);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const Parameter& parameter = operation->parameters[i];
    if (parameter.IsRegion() || parameter.IsReturned()) continue;
    text << ' ' << parameter.name << '=';
    if (parameter.enumeration.empty()) {
      std::visit(Writer{text}, values[i]);
    } else {
      text << catalogue::ChoiceName(parameter, Number(i));
    }
  }
  return text.str();
}

void Arguments::SetUsual(std::size_t index) {
  const Parameter& parameter = operation->parameters[index];
  const double value = parameter.trials.front();
  const auto real = static_cast<float>(value);
  Random random(parameter.name);
  switch (parameter.kind) {
    case Kind::kConstant:
      values[index] = slots[index].number = value;
      if (parameter.pixel == Pixel::kC24)
        values[index] = LxC24{Byte(value), Byte(value), Byte(value)};
      break;
    case Kind::kColour:
      values[index] = LxColor{real, real, real};
      break;
    case Kind::kKernel:
      SetKernel(index, IsRow(parameter)       ? MakeKernel(3, {1, 2, 1})
                       : IsPattern(parameter) ? PresetKernel(static_cast<KERNEL_TYPE>(value))
                                              : StandardKernel());
      break;
    case Kind::kChoice:
    case Kind::kInteger:
    case Kind::kReal:
      values[index] = slots[index].number = value;
      break;
    default:
      if (catalogue::IsVector(parameter.kind)) {
        SetVector(index, UsualElements(parameter));
      } else {
        SetTable(index, random);
      }
  }
}

void Arguments::Draw(std::size_t index, Random& random) {
  const Parameter& parameter = operation->parameters[index];
  const auto constant = [&] { return DrawConstant(parameter, random); };
  const auto real = [&] { return static_cast<float>(DrawNumber(parameter, random)); };
  switch (parameter.kind) {
    case Kind::kConstant:
      slots[index].number =
          parameter.role == catalogue::Role::kWritten ? kBefore : DrawConstant(parameter, random);
      values[index] = slots[index].number;
      if (parameter.pixel != Pixel::kC24) break;
      values[index] = LxC24{Byte(constant()), Byte(constant()), Byte(constant())};
      break;
    case Kind::kColour:
      values[index] = LxColor{real(), real(), real()};
      break;
    case Kind::kKernel:
      SetKernel(index, IsRow(parameter)       ? DrawRowKernel(random)
                       : IsPattern(parameter) ? DrawPattern(random)
                                              : DrawKernel(random));
      break;
    case Kind::kChoice:
      values[index] = static_cast<double>(random.Pick(parameter.choices).value);
      break;
    case Kind::kInteger:
    case Kind::kReal:
      slots[index].number =
          parameter.role == catalogue::Role::kWritten ? kBefore : DrawNumber(parameter, random);
      values[index] = slots[index].number;
      break;
    default:
      if (catalogue::IsVector(parameter.kind)) {
        SetVector(index, DrawElements(parameter, random));
      } else {
        SetTable(index, random);
      }
  }
  if (parameter.whenNull && !parameter.IsRegion() && random.Below(3) == 0) SetNull(index);
}

void Arguments::SetTable(std::size_t index, Random& random) {
  switch (operation->parameters[index].kind) {
    case Kind::kByteTable: {
      const auto table = MakeTable<unsigned char>(256, random);
      slots[index].owner = table;
      values[index] = table->data();
      break;
    }
    case Kind::kWordTable: {
      const auto table = MakeTable<unsigned short>(65536, random);
      slots[index].owner = table;
      values[index] = table->data();
      break;
    }
    case Kind::kColourLookup: {
      const auto lookup = std::make_shared<TurnColour>();
      slots[index].owner = lookup;
      values[index] = lookup.get();
      break;
    }
    case Kind::kByteFunction:
      values[index] = random.Pick(kByteFunctions);
      break;
    case Kind::kWordFunction:
      values[index] = random.Pick(kWordFunctions);
      break;
    case Kind::kBytePredicate:
      values[index] = random.Pick(kBytePredicates);
      break;
    case Kind::kWordPredicate:
      values[index] = random.Pick(kWordPredicates);
      break;
    case Kind::kColourPredicate:
      values[index] = random.Pick(kColourPredicates);
      break;
    default:
      SetNull(index);
  }
}

std::vector<int> ChoicesOf(const Operation& operation) {
  std::vector<int> choices;
  for (const Parameter& each : operation.parameters) {
    if (each.kind != Kind::kChoice) continue;
    for (const catalogue::Named& choice : each.choices) {
      choices.push_back(static_cast<int>(choice.value));
    }
    return choices;
  }
  return {-1};
}

std::string ChoiceText(const Operation& operation, int choice) {
  for (const Parameter& each : operation.parameters) {
    if (each.kind == Kind::kChoice) return std::string(" ").append(ChoiceName(each, choice));
  }
  return "";
}

}  // namespace lx::test
