// SPDX-License-Identifier: Apache-2.0
// How a family's file of entries describes its operations.
#pragma once

#include <cxxabi.h>

#include <cstdlib>
#include <string>
#include <tuple>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include "catalogue/catalogue.h"

namespace lx::catalogue {

enum class InPlace {
  kNo,
  kYes
};

/// Fills in names, roles, standard values and ranges from text: blank-separated
/// `name[=standard][:minimum..maximum]` in the order of the parameters. `>name` is written by the
/// operation; `name{2-6,9}` lists the values of an enumeration that the form offers, the first
/// being the standard one.
void Describe(Operation& operation, std::string_view parameters);

template <class T>
struct PixelOf {
  static constexpr Pixel value = Pixel::kNone;
};
#define LX_PIXEL_OF(type, pixel)            \
  template <>                               \
  struct PixelOf<type> {                    \
    static constexpr Pixel value = (pixel); \
  }
LX_PIXEL_OF(LxBW8, Pixel::kBW8);
LX_PIXEL_OF(LxBW16, Pixel::kBW16);
LX_PIXEL_OF(LxBW32, Pixel::kBW32);
LX_PIXEL_OF(LxC24, Pixel::kC24);
LX_PIXEL_OF(LxC15, Pixel::kC15);
LX_PIXEL_OF(LxC16, Pixel::kC16);
LX_PIXEL_OF(LxC24A, Pixel::kC24A);
LX_PIXEL_OF(LxComplex64, Pixel::kComplex64);
#undef LX_PIXEL_OF

/// How one C++ parameter type is described and passed.
template <class T>
struct Binding {
  static Parameter Make() {
    Parameter made;
    if constexpr (std::is_enum_v<T>) {
      made.kind = Kind::kChoice;
    } else if constexpr (PixelOf<T>::value != Pixel::kNone) {
      made.kind = Kind::kConstant;
      made.pixel = PixelOf<T>::value;
    } else if constexpr (std::is_floating_point_v<T>) {
      made.kind = Kind::kReal;
    } else if constexpr (std::is_integral_v<T>) {
      made.kind = Kind::kInteger;
    } else if constexpr (std::is_same_v<T, LxColor>) {
      made.kind = Kind::kColour;
    } else if constexpr (std::is_same_v<T, unsigned char*>) {
      made.kind = Kind::kByteTable;
    } else if constexpr (std::is_same_v<T, unsigned short*>) {
      made.kind = Kind::kWordTable;
    } else if constexpr (std::is_same_v<T, LxBW8Vector*>) {
      made.kind = Kind::kByteVector;
    } else if constexpr (std::is_same_v<T, LxBW16Vector*>) {
      made.kind = Kind::kWordVector;
    } else if constexpr (std::is_same_v<T, LxVector*>) {
      made.kind = Kind::kVector;
    } else if constexpr (std::is_same_v<T, LxKernel*>) {
      made.kind = Kind::kKernel;
    } else if constexpr (std::is_same_v<T, ByteFunction>) {
      made.kind = Kind::kByteFunction;
    } else {
      static_assert(std::is_same_v<T, WordFunction>, "describe this parameter type here");
      made.kind = Kind::kWordFunction;
    }
    return made;
  }

  static T Pass(const Argument& argument) {
    if constexpr (std::is_same_v<T, LxC15> || std::is_same_v<T, LxC16>) {
      return T{static_cast<std::uint16_t>(std::get<double>(argument))};
    } else if constexpr (std::is_same_v<T, LxBW8>) {
      return T(static_cast<std::uint8_t>(std::get<double>(argument)));
    } else if constexpr (std::is_same_v<T, LxBW16>) {
      return T(static_cast<std::uint16_t>(std::get<double>(argument)));
    } else if constexpr (std::is_enum_v<T> || std::is_arithmetic_v<T>) {
      return static_cast<T>(std::get<double>(argument));
    } else {
      return std::get<T>(argument);
    }
  }
};

template <class T>
struct Binding<LxROI<T>*> {
  static Parameter Make() {
    Parameter made;
    made.kind = Kind::kRegion;
    made.pixel = std::is_same_v<T, int> ? Pixel::kBinary : PixelOf<T>::value;
    return made;
  }
  static LxROI<T>* Pass(const Argument& argument) {
    return static_cast<LxROI<T>*>(std::get<LxGenericROI*>(argument));
  }
};

template <class Result, class... Parameters, std::size_t... I>
void Invoke(Result (*function)(Parameters...), const std::vector<Argument>& arguments,
            std::index_sequence<I...> /*indices*/) {
  function(Binding<Parameters>::Pass(arguments[I])...);
}

/// "(LxROI<LxBW8>*, int)": the parameter list as a symbol table shows it.
template <class... Parameters>
std::string ParameterList() {
  char* text = abi::__cxa_demangle(typeid(void(Parameters...)).name(), nullptr, nullptr, nullptr);
  std::string list = text != nullptr ? text : "";
  std::free(text);
  const std::size_t open = list.find('(');
  return open == std::string::npos ? list : list.substr(open);
}

template <class Result, class... Parameters>
Operation Entry(const char* functionName, Result (*function)(Parameters...), const char* trace,
                InPlace inPlace, std::string_view parameters, const char* summary,
                std::vector<LX_ERRORS> errors = {}) {
  Operation made;
  made.function = functionName;
  made.name = KebabName(functionName);
  made.signature = functionName + ParameterList<Parameters...>();
  made.trace = trace;
  made.summary = summary;
  made.inPlace = inPlace == InPlace::kYes;
  made.errors = std::move(errors);
  made.parameters = {Binding<Parameters>::Make()...};
  Describe(made, parameters);
  made.call = [function](const std::vector<Argument>& arguments) {
    Invoke(function, arguments, std::index_sequence_for<Parameters...>{});
  };
  return made;
}

/// LX_ENTRY(PicLut, (LxROI<LxBW8>*, ...), trace, in place, parameters, summary[, {codes}]).
#define LX_ENTRY(function, types, ...) \
  Entry(#function, static_cast<void(*) types>(&(function)), __VA_ARGS__)

/// The families' entries.
std::vector<Operation> PointOperations();
std::vector<Operation> ConvolutionOperations();

}  // namespace lx::catalogue
