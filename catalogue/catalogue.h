// SPDX-License-Identifier: Apache-2.0
/// @file catalogue.h
/// One description of every exported operation, from which the tool, the generic tests, the
/// benchmarks and the bindings work.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "lxpic/lxpic.h"

namespace lx::catalogue {

/// Pixel types of regions and constants.
enum class Pixel {
  kNone,
  kBW8,
  kBW16,
  kBW32,
  kC24,
  kC15,
  kC16,
  kC24A,
  kComplex64,
  kBinary
};

/// What a parameter is; deduced from the function's own type.
enum class Kind {
  kRegion,        ///< LxROI<T>*
  kConstant,      ///< a pixel value
  kChoice,        ///< an enumeration
  kInteger,       ///< int or unsigned
  kReal,          ///< float or double
  kColour,        ///< LxColor
  kByteTable,     ///< unsigned char*, 256 entries
  kWordTable,     ///< unsigned short*, 65536 entries
  kByteVector,    ///< LxBW8Vector*
  kWordVector,    ///< LxBW16Vector*
  kVector,        ///< LxVector*
  kKernel,        ///< LxKernel*
  kByteFunction,  ///< unsigned char (*)(unsigned char)
  kWordFunction,  ///< unsigned short (*)(unsigned short)
};

using ByteFunction = unsigned char (*)(unsigned char);
using WordFunction = unsigned short (*)(unsigned short);

/// A value for a parameter: numbers, enumerations and grey constants as `double`, colours as LxC24
/// (or LxColor), everything else as its pointer.
using Argument =
    std::variant<LxGenericROI*, double, LxC24, LxColor, unsigned char*, unsigned short*,
                 LxBW8Vector*, LxBW16Vector*, LxVector*, LxKernel*, ByteFunction, WordFunction>;

/// One parameter of an operation.
struct Parameter {
  std::string name;
  Kind kind = Kind::kInteger;
  Pixel pixel = Pixel::kNone;  ///< of a region or constant
  bool written = false;        ///< a region or vector that the operation writes
  double standard = 0;         ///< what the tool, the tests and the benchmarks use unasked
  bool optional = false;       ///< the tool may leave it out: there is a standard value
  double minimum = 0;          ///< of a number
  double maximum = 0;
  std::vector<int> choices;  ///< the values of an enumeration that the form offers
};

/// One exported overload.
struct Operation {
  std::string function;           ///< "PicGainOffset"
  std::string name;               ///< "gain-offset"
  std::string signature;          ///< "PicGainOffset(LxROI<LxBW8>*, LxROI<LxBW8>*, float, float)"
  std::string trace;              ///< what it appends to the trace; "" when nothing
  std::string summary;            ///< one line
  bool inPlace = false;           ///< a written region may be one of the sources
  std::vector<LX_ERRORS> errors;  ///< codes besides those of regions in general
  std::vector<Parameter> parameters;
  std::function<void(const std::vector<Argument>&)> call;

  /// Index of the first written region; parameters.size() when there is none.
  std::size_t DestinationIndex() const;
  /// Indices of the regions that are only read.
  std::vector<std::size_t> SourceIndices() const;
};

/// Every exported operation, in the order of the headers.
const std::vector<Operation>& All();

/// The operation with this trace string and signature fragment; null when there is none. The
/// fragment tells operations with equal trace strings apart.
const Operation* Find(std::string_view trace, std::string_view signaturePart = {});

/// Kebab-case name of a function: "PicConvolSobelX" is "convol-sobel-x".
std::string KebabName(std::string_view function);

/// Name of the choice `value` of ARITH_LOGIC_OPERATIONS: "add", "half-difference".
std::string ChoiceName(int value);
/// The value of a choice's name, or -1.
int ChoiceValue(std::string_view name);

/// "bw8", "c24"; the name the tool uses.
std::string_view PixelName(Pixel pixel);
/// The code's text and number, as messages show it.
std::string ErrorName(LX_ERRORS code);

}  // namespace lx::catalogue
