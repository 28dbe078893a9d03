// SPDX-License-Identifier: Apache-2.0
/// @file kinds.h
/// What parameters can be, and how their values are held. A C++ type is bound to its kind here and
/// nowhere else.
#pragma once

#include <cstddef>
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
using BytePredicate = int (*)(LxBW8&);
using WordPredicate = int (*)(LxBW16&);
using ColourPredicate = int (*)(LxC24&);

/// Kinds that are passed as pointers to something else than a region: X(kind, C++ type).
#define LX_POINTER_KINDS(X)                          \
  X(kByteTable, unsigned char*)  /* 256 entries */   \
  X(kWordTable, unsigned short*) /* 65536 entries */ \
  X(kByteFunction, ByteFunction)                     \
  X(kWordFunction, WordFunction)                     \
  X(kBytePredicate, BytePredicate)                   \
  X(kWordPredicate, WordPredicate)                   \
  X(kColourPredicate, ColourPredicate)               \
  X(kByteVector, LxBW8Vector*)                       \
  X(kWordVector, LxBW16Vector*)                      \
  X(kDoubleWordVector, LxBW32Vector*)                \
  X(kColourVector, LxC24Vector*)                     \
  X(kHistogramVector, LxBWHistogramVector*)          \
  X(kPathVector, LxPathVector*)                      \
  X(kBytePathVector, LxBW8PathVector*)               \
  X(kWordPathVector, LxBW16PathVector*)              \
  X(kColourPathVector, LxC24PathVector*)             \
  X(kPeaksVector, LxPeaksVector*)                    \
  X(kDrawTarget, HDC)                                \
  X(kVector, LxVector*)                              \
  X(kKernel, LxKernel*)                              \
  X(kPyramid, LxPyramid*)                            \
  X(kMovingAverage, LxMovingAverage*)                \
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
/// (or LxColor), everything else as its pointer. Null stands for the number of a result that nobody
/// wants.
using Argument = std::variant<LxGenericROI*, double, LxC24, LxColor,
                              std::nullptr_t
#define LX_ALTERNATIVE(kind, type) , type
                                  LX_POINTER_KINDS(LX_ALTERNATIVE)
#undef LX_ALTERNATIVE
                              >;

/// The vectors among the kinds: results that are compared, printed and drawn element by element.
constexpr bool IsVector(Kind kind) {
  switch (kind) {
    case Kind::kByteVector:
    case Kind::kWordVector:
    case Kind::kDoubleWordVector:
    case Kind::kColourVector:
    case Kind::kHistogramVector:
    case Kind::kPathVector:
    case Kind::kBytePathVector:
    case Kind::kWordPathVector:
    case Kind::kColourPathVector:
    case Kind::kPeaksVector:
    case Kind::kVector:
      return true;
    default:
      return false;
  }
}

/// Whether values of the kind are addresses, regions' among them.
bool IsPointer(Kind kind);
/// A null for a parameter of such a kind, or for a result that is a number behind a pointer.
Argument NullOf(Kind kind);

constexpr bool IsNumber(Kind kind) { return kind == Kind::kInteger || kind == Kind::kReal; }

}  // namespace lx::catalogue
