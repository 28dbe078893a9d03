// SPDX-License-Identifier: Apache-2.0
#include "support/arguments.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>
#include <utility>

#include "support/kernels.h"

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

constexpr std::array<catalogue::ByteFunction, 2> kByteFunctions = {MirrorByte, SquareByte};
constexpr std::array<catalogue::WordFunction, 2> kWordFunctions = {MirrorWord, SwapWord};

double DrawConstant(const Parameter& parameter, Random& random) {
  const Value maximum = FormatOf(parameter.pixel).maximum;
  const std::array<Value, 9> values = {static_cast<Value>(parameter.standard),
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

double DrawNumber(const Parameter& parameter, Random& random) {
  const double range = random.Real(parameter.minimum, parameter.maximum);
  const std::array<double, 6> values = {
      parameter.standard, parameter.minimum, parameter.maximum, range, range, range};
  const double value = random.Pick(values);
  return parameter.kind == Kind::kInteger ? std::round(value) : value;
}

std::uint8_t Byte(double value) { return static_cast<std::uint8_t>(value); }

template <class Vector, class Element>
std::shared_ptr<Vector> MakeVector(std::size_t count, Random& random) {
  auto vector = std::make_shared<Vector>(static_cast<unsigned>(count));
  for (Element& element : *vector) element = static_cast<decltype(element.value)>(random.Next());
  return vector;
}

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
  void operator()(LxKernel* kernel) const { text << KernelText(*kernel); }
  template <class Pointer>
  void operator()(Pointer* /*pointer*/) const {
    text << '*';
  }
};

}  // namespace

Arguments::Arguments(const Operation& described) : operation(&described) {
  for (const Parameter& each : described.parameters) values.push_back(Standard(each));
}

Arguments::Arguments(const Operation& described, Random& random) : operation(&described) {
  for (const Parameter& each : described.parameters) values.push_back(Draw(each, random));
}

void Arguments::SetChoice(int choice) {
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (operation->parameters[i].kind == Kind::kChoice) values[i] = static_cast<double>(choice);
  }
}

void Arguments::SetVector(std::size_t index, const std::vector<std::uint8_t>& entries) {
  auto vector = std::make_shared<LxBW8Vector>(static_cast<unsigned>(entries.size()));
  std::copy(entries.begin(), entries.end(), vector->begin());
  owned.push_back(vector);
  values[index] = vector.get();
}

void Arguments::SetKernel(std::size_t index, std::shared_ptr<LxKernel> kernel) {
  values[index] = kernel.get();
  owned.push_back(std::move(kernel));
}

Value Arguments::Component(std::size_t index, int k) const {
  if (const auto* const colour = std::get_if<LxC24>(&values[index])) {
    return std::array<Value, 3>{colour->c0, colour->c1, colour->c2}[static_cast<std::size_t>(k)];
  }
  return static_cast<Value>(Number(index));
}

std::string Arguments::Text() const {
  std::ostringstream text;
  text.precision(17);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const Parameter& parameter = operation->parameters[i];
    if (parameter.kind == Kind::kRegion) continue;
    text << ' ' << parameter.name << '=';
    if (parameter.kind == Kind::kChoice) {
      text << catalogue::ChoiceName(static_cast<int>(Number(i)));
    } else {
      std::visit(Writer{text}, values[i]);
    }
  }
  return text.str();
}

Argument Arguments::Standard(const Parameter& parameter) {
  const double value = parameter.standard;
  const auto real = static_cast<float>(value);
  switch (parameter.kind) {
    case Kind::kConstant:
      if (parameter.pixel == Pixel::kC24) return LxC24{Byte(value), Byte(value), Byte(value)};
      return value;
    case Kind::kColour:
      return LxColor{real, real, real};
    case Kind::kKernel:
      return Keep(StandardKernel()).get();
    case Kind::kChoice:
    case Kind::kInteger:
    case Kind::kReal:
      return value;
    default: {
      Random random(parameter.name);
      return Table(parameter.kind, random);
    }
  }
}

Argument Arguments::Draw(const Parameter& parameter, Random& random) {
  const auto constant = [&] { return DrawConstant(parameter, random); };
  const auto real = [&] { return static_cast<float>(DrawNumber(parameter, random)); };
  switch (parameter.kind) {
    case Kind::kConstant:
      if (parameter.pixel != Pixel::kC24) return constant();
      return LxC24{Byte(constant()), Byte(constant()), Byte(constant())};
    case Kind::kColour:
      return LxColor{real(), real(), real()};
    case Kind::kKernel:
      return Keep(DrawKernel(random)).get();
    case Kind::kChoice:
      return parameter.standard;
    case Kind::kInteger:
      return DrawNumber(parameter, random);
    case Kind::kReal:
      return double{real()};
    default:
      return Table(parameter.kind, random);
  }
}

Argument Arguments::Table(Kind kind, Random& random) {
  switch (kind) {
    case Kind::kByteTable:
      return Keep(MakeTable<unsigned char>(256, random))->data();
    case Kind::kWordTable:
      return Keep(MakeTable<unsigned short>(65536, random))->data();
    case Kind::kByteVector:
      return Keep(MakeVector<LxBW8Vector, LxBW8>(256, random)).get();
    case Kind::kWordVector:
      return Keep(MakeVector<LxBW16Vector, LxBW16>(65536, random)).get();
    case Kind::kVector: {
      const auto vector = Keep(std::make_shared<LxVector>());
      vector->SetStructure(LX_DATA_SIZE_8, 64, 1, LX_DATA_UNSIGNED);
      return vector.get();
    }
    case Kind::kByteFunction:
      return random.Pick(kByteFunctions);
    case Kind::kWordFunction:
      return random.Pick(kWordFunctions);
    default:
      return static_cast<LxGenericROI*>(nullptr);
  }
}

std::vector<int> ChoicesOf(const Operation& operation) {
  for (const Parameter& each : operation.parameters) {
    if (each.kind == Kind::kChoice) return each.choices;
  }
  return {-1};
}

}  // namespace lx::test
