// SPDX-License-Identifier: Apache-2.0
/// @file kinds.h
/// What parameters can be, and how their values are held. A C++ type is bound to its kind here and
/// nowhere else.
#pragma once

#include <cstdint>
#include <string_view>
#include <variant>

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

/// "bw8", "c24"; the name the tool uses.
std::string_view PixelName(Pixel pixel);

using ByteFunction = unsigned char (*)(unsigned char);
using WordFunction = unsigned short (*)(unsigned short);

/// Kinds that are passed as pointers to something else than a region: X(kind, C++ type).
#define LX_POINTER_KINDS(X)                          \
  X(kByteTable, unsigned char*)  /* 256 entries */   \
  X(kWordTable, unsigned short*) /* 65536 entries */ \
  X(kByteFunction, ByteFunction)                     \
  X(kWordFunction, WordFunction)                     \
  X(kByteVector, LxBW8Vector*)                       \
  X(kWordVector, LxBW16Vector*)                      \
  X(kHistogramVector, LxBWHistogramVector*)          \
  X(kPathVector, LxPathVector*)                      \
  X(kBytePathVector, LxBW8PathVector*)               \
  X(kWordPathVector, LxBW16PathVector*)              \
  X(kColourPathVector, LxC24PathVector*)             \
  X(kDrawTarget, HDC)                                \
  X(kVector, LxVector*)                              \
  X(kKernel, LxKernel*)                              \
  X(kColourLookup, LxColorLookup*)                   \
  X(kCoefficients, float*)

/// What a parameter is; deduced from the function's own type.
enum class Kind {
  kRegion,    ///< LxROI<T>*
  kConstant,  ///< a pixel value
  kChoice,    ///< an enumeration
  kInteger,   ///< int, unsigned, ...
  kReal,      ///< float or double
  kColour,    ///< LxColor
#define LX_KIND(kind, type) kind,
  LX_POINTER_KINDS(LX_KIND)
#undef LX_KIND
};

/// A value for a parameter: numbers, enumerations and grey constants as `double`, colours as LxC24
/// (or LxColor), everything else as its pointer.
using Argument = std::variant<LxGenericROI*, double, LxC24,
                              LxColor
#define LX_ALTERNATIVE(kind, type) , type
                                  LX_POINTER_KINDS(LX_ALTERNATIVE)
#undef LX_ALTERNATIVE
                              >;

/// The vectors among the kinds: results that are compared, printed and drawn element by element.
constexpr bool IsVector(Kind kind) {
  return kind == Kind::kByteVector || kind == Kind::kWordVector || kind == Kind::kHistogramVector ||
         kind == Kind::kVector;
}

/// Whether values of the kind are addresses, regions' among them.
bool IsPointer(Kind kind);
/// A null for a parameter of such a kind.
Argument NullOf(Kind kind);

constexpr bool IsNumber(Kind kind) { return kind == Kind::kInteger || kind == Kind::kReal; }

}  // namespace lx::catalogue
