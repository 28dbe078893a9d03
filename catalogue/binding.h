// SPDX-License-Identifier: Apache-2.0
// What a function's own type says: the kinds of its parameters, their passing, its signature.
#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <tuple>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include "catalogue/catalogue.h"
#include "catalogue/enumerations.h"

namespace lx::catalogue {

template <class T>
inline constexpr Pixel kPixelOf = Pixel::kNone;
template <>
inline constexpr Pixel kPixelOf<LxBW8> = Pixel::kBW8;
template <>
inline constexpr Pixel kPixelOf<LxBW16> = Pixel::kBW16;
template <>
inline constexpr Pixel kPixelOf<LxBW32> = Pixel::kBW32;
template <>
inline constexpr Pixel kPixelOf<LxC24> = Pixel::kC24;
template <>
inline constexpr Pixel kPixelOf<LxC15> = Pixel::kC15;
template <>
inline constexpr Pixel kPixelOf<LxC16> = Pixel::kC16;
template <>
inline constexpr Pixel kPixelOf<LxC24A> = Pixel::kC24A;
template <>
inline constexpr Pixel kPixelOf<LxComplex64> = Pixel::kComplex64;

template <class T>
inline constexpr bool kIsRegion = false;
template <class T>
inline constexpr bool kIsRegion<LxROI<T>*> = true;
template <class T>
inline constexpr bool kIsRegion<LxImage<T>*> = true;
template <>
inline constexpr bool kIsRegion<LxGenericROI*> = true;

template <class T>
inline constexpr Pixel kPixelOf<LxROI<T>*> = kPixelOf<T>;
template <class T>
inline constexpr Pixel kPixelOf<LxImage<T>*> = kPixelOf<T>;
template <>
inline constexpr Pixel kPixelOf<LxROI<int>*> = Pixel::kBinary;

// The kind of a type in LX_POINTER_KINDS; without a definition for any other.
template <class T>
struct PointerKind;
#define LX_KIND(kind, type)                    \
  template <>                                  \
  struct PointerKind<type> {                   \
    static constexpr Kind kValue = Kind::kind; \
  };
LX_POINTER_KINDS(LX_KIND)
#undef LX_KIND

template <class T>
constexpr Kind KindOf() {
  if constexpr (kIsRegion<T>) {
    return Kind::kRegion;
  } else if constexpr (kPixelOf<T> != Pixel::kNone) {
    return Kind::kConstant;
  } else if constexpr (std::is_enum_v<T>) {
    return Kind::kChoice;
  } else if constexpr (std::is_integral_v<T>) {
    return Kind::kInteger;
  } else if constexpr (std::is_floating_point_v<T>) {
    return Kind::kReal;
  } else if constexpr (std::is_same_v<T, LxColor>) {
    return Kind::kColour;
  } else {
    return PointerKind<T>::kValue;
  }
}

// A parameter that points to a number is where a result goes, unless it is null.
template <class T>
inline constexpr bool kIsResultPlace = std::is_same_v<T, float*> || std::is_same_v<T, unsigned*>;

template <class Plain>
Parameter MakeValue() {
  Parameter made;
  made.kind = KindOf<Plain>();
  made.pixel = kPixelOf<Plain>;
  if constexpr (std::is_arithmetic_v<Plain>) {
    made.lowest = static_cast<double>(std::numeric_limits<Plain>::lowest());
    made.highest = static_cast<double>(std::numeric_limits<Plain>::max());
  }
  if constexpr (std::is_enum_v<Plain>) made.enumeration = EnumerationOf<Plain>();
  return made;
}

template <class T>
Parameter MakeParameter() {
  constexpr bool kIsResult = std::is_reference_v<T> || kIsResultPlace<T>;
  using Plain =
      std::conditional_t<kIsResultPlace<T>, std::remove_pointer_t<T>, std::remove_reference_t<T>>;
  Parameter made = MakeValue<Plain>();
  // A reference is a result; the description tells when it is read as well.
  if (kIsResult) made.role = Role::kWritten;
  return made;
}

// What holds an argument while its function runs.
template <class T>
struct Held {
  using Type = T;
};

// Where a function asks for an image, other regions are passed as one that views their pixels.
template <class T>
class ImageArgument {
 public:
  explicit ImageArgument(LxGenericROI* region) : image(dynamic_cast<LxImage<T>*>(region)) {
    if (image != nullptr || region == nullptr) return;
    view.Attach(region->GetPixelPtr(0, 0), static_cast<int>(region->GetWidth()),
                static_cast<int>(region->GetHeight()), region->GetPitch());
    image = &view;
  }
  ImageArgument(const ImageArgument&) = delete;
  ImageArgument& operator=(const ImageArgument&) = delete;

  operator LxImage<T>*() const { return image; }

 private:
  LxImage<T> view;
  LxImage<T>* image;
};

template <class T>
struct Held<LxImage<T>*> {
  using Type = ImageArgument<T>;
};

// The number behind a pointer to a result; none behind a null.
template <class Number>
class ResultPlace {
 public:
  explicit ResultPlace(const double* before) : present(before != nullptr) {
    if (present) number = static_cast<Number>(*before);
  }
  operator Number*() { return present ? &number : nullptr; }
  void PutBack(Argument& argument) const {
    if (present) argument = static_cast<double>(number);
  }

 private:
  bool present;
  Number number{};
};

template <>
struct Held<float*> {
  using Type = ResultPlace<float>;
};
template <>
struct Held<unsigned*> {
  using Type = ResultPlace<unsigned>;
};

template <class T>
inline constexpr bool kIsImage = false;
template <class T>
inline constexpr bool kIsImage<LxImage<T>*> = true;

// The value of an argument as a C++ type, or as what holds it takes it.
template <class T>
auto Unpack(const Argument& argument) {
  if constexpr (kIsResultPlace<T>) {
    return std::get_if<double>(&argument);
  } else if constexpr (std::is_same_v<T, LxC15> || std::is_same_v<T, LxC16>) {
    return T{static_cast<std::uint16_t>(std::get<double>(argument))};
  } else if constexpr (KindOf<T>() == Kind::kConstant && !std::is_same_v<T, LxC24>) {
    return T(static_cast<decltype(T::value)>(std::get<double>(argument)));
  } else if constexpr (std::is_enum_v<T>) {
    return static_cast<T>(static_cast<std::int64_t>(std::get<double>(argument)));
  } else if constexpr (std::is_arithmetic_v<T>) {
    return static_cast<T>(std::get<double>(argument));
  } else if constexpr (kIsImage<T>) {
    return std::get<LxGenericROI*>(argument);
  } else if constexpr (kIsRegion<T>) {
    return static_cast<T>(std::get<LxGenericROI*>(argument));
  } else {
    return std::get<T>(argument);
  }
}

// And back.
template <class T>
Argument Pack(T value) {
  if constexpr (std::is_arithmetic_v<T> || std::is_enum_v<T>) {
    return static_cast<double>(value);
  } else if constexpr (KindOf<T>() == Kind::kConstant && !std::is_same_v<T, LxC24>) {
    return static_cast<double>(value.value);
  } else {
    return value;
  }
}

// Calls function(values...) with the arguments, and puts references and the returned value back.
template <class Result, class... Parameters, class Function, std::size_t... I>
void Invoke(const Function& function, Arguments& arguments, std::index_sequence<I...> /*indices*/) {
  std::tuple<typename Held<std::remove_reference_t<Parameters>>::Type...> values{
      Unpack<std::remove_reference_t<Parameters>>(arguments[I])...};
  if constexpr (std::is_void_v<Result>) {
    std::apply(function, values);
  } else {
    arguments[sizeof...(Parameters)] = Pack<Result>(std::apply(function, values));
  }
  [[maybe_unused]] const auto putBack = [&](auto index) {
    using Declared = std::tuple_element_t<index, std::tuple<Parameters...>>;
    if constexpr (kIsResultPlace<Declared>) std::get<index>(values).PutBack(arguments[index]);
    if constexpr (std::is_reference_v<Declared>) arguments[index] = Pack(std::get<index>(values));
  };
  (putBack(std::integral_constant<std::size_t, I>{}), ...);
}

/// "(LxROI<LxBW8>*, int)": the parameters of a function type as a symbol table shows them.
std::string ParameterList(const std::type_info& functionType);

/// What a row of the catalogue takes from the function itself.
struct Binding {
  std::vector<Parameter> (*parameters)();
  std::string (*parameterList)();
  void (*call)(Arguments&);
};

template <class Result, class... Parameters>
std::vector<Parameter> MakeParameters() {
  std::vector<Parameter> made = {MakeParameter<Parameters>()...};
  if constexpr (!std::is_void_v<Result>) {
    made.push_back(MakeValue<Result>());
    made.back().role = Role::kReturned;
  }
  return made;
}

template <auto kFunction>
struct Bound;

template <class Result, class... Parameters, Result (*kFunction)(Parameters...)>
struct Bound<kFunction> {
  static constexpr Binding kBinding = {&MakeParameters<Result, Parameters...>,
                                       []() { return ParameterList(typeid(void(Parameters...))); },
                                       [](Arguments& arguments) {
                                         Invoke<Result, Parameters...>(
                                             kFunction, arguments,
                                             std::index_sequence_for<Parameters...>{});
                                       }};
};

// A member's first parameter is its object.
template <auto kMember, class Result, class Class, class... Parameters>
void InvokeMember(Arguments& arguments) {
  const auto member = [](Class* object, Parameters&... values) -> Result {
    return (object->*kMember)(values...);
  };
  Invoke<Result, Class*, Parameters...>(member, arguments,
                                        std::index_sequence_for<Class*, Parameters...>{});
}

template <class Result, class Class, class... Parameters, Result (Class::*kMember)(Parameters...)>
struct Bound<kMember> {
  static constexpr Binding kBinding = {&MakeParameters<Result, Class*, Parameters...>,
                                       []() { return ParameterList(typeid(void(Parameters...))); },
                                       &InvokeMember<kMember, Result, Class, Parameters...>};
};

template <class Result, class Class, class... Parameters,
          Result (Class::*kMember)(Parameters...) const>
struct Bound<kMember> {
  static constexpr Binding kBinding = {
      &MakeParameters<Result, Class*, Parameters...>,
      []() { return ParameterList(typeid(void(Parameters...))) + " const"; },
      &InvokeMember<kMember, Result, Class, Parameters...>};
};

}  // namespace lx::catalogue
