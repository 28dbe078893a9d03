// SPDX-License-Identifier: Apache-2.0
/// @file catalogue.h
/// One description of every exported operation, from which the tool, the generic tests, the
/// benchmarks and the bindings work. A fact about an operation that one of them needs stands here.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "catalogue/kinds.h"
#include "lxpic/lxpic.h"

namespace lx::catalogue {

/// What an operation does with a parameter.
enum class Role {
  kRead,
  kWritten,  ///< a result: what was there before does not count
  kUpdated,  ///< read, and a result; a region of which only some pixels are written
  kReturned  ///< the return value, which stands behind the parameters
};

/// A value that has a name.
struct Named {
  std::int64_t value;
  std::string name;
};

/// How the size of a region follows from the others'.
enum class SizeRule {
  kEqual,    ///< all regions that do not say otherwise have one size
  kFree,     ///< any size
  kFollows,  ///< the operation gives its result a size, which Operation::follows knows
  kPart,     ///< that of a part of the others, which Operation::part knows
  kFixed     ///< Parameter::fixed, refused with the code that is named for the argument otherwise
};

struct Extent {
  int width;
  int height;
};

/// What the pixels of a region, a number or a vector stand for.
enum class Meaning {
  kLevels,
  kColumns,   ///< signed columns of the first source
  kRows,      ///< signed rows of it
  kPoints,    ///< a column in the low 16 bits, a row in the high ones
  kColumn,    ///< a column of the first region
  kRow,       ///< a row of it
  kSegment,   ///< an untyped vector of the pixels of a line: level, column and row of each
  kGroup,     ///< an untyped vector of integers whose groups are signals
  kSigned,    ///< the same of signed integers
  kUnsigned,  ///< of unsigned ones
  kEnergy     ///< an untyped vector of energies of discs
};

/// What leaving a parameter out means.
struct LeftOut {
  double value;            ///< what is passed then
  std::string words = {};  ///< "as half-x"; the value itself when empty
};

/// One parameter of an operation, or its return value.
struct Parameter {
  std::string name;
  Kind kind = Kind::kInteger;
  Pixel pixel = Pixel::kNone;  ///< of a region or constant
  Role role = Role::kRead;
  std::optional<std::string> whenNull;  ///< what a null means; none where it is refused
  std::optional<LeftOut> leftOut;       ///< none where it must be given
  std::vector<double> trials;           ///< what tests and benchmarks use, the most usual one first
  double minimum = 0;                   ///< of a number, usually
  double maximum = 0;
  double lowest = 0;  ///< what the type of a number holds
  double highest = 0;
  std::string enumeration;       ///< the enumeration whose names it takes; "" when none
  std::vector<Named> choices;    ///< the values of it that this form offers
  std::vector<unsigned> counts;  ///< the element counts that a vector may have; empty for any
  bool perColumn = false;        ///< a vector with one element for each column of the destination
  bool counted = false;          ///< a vector whose element count Operation::count knows
  SizeRule size = SizeRule::kEqual;
  Extent fixed{};
  Meaning meaning = Meaning::kLevels;

  bool IsRegion() const { return kind == Kind::kRegion; }
  bool IsWritten() const { return role != Role::kRead; }
  bool IsReturned() const { return role == Role::kReturned; }
};

/// Whether a written region may be one of the sources.
enum class InPlace {
  kNo,        ///< cannot: the types differ, or nothing is written
  kYes,       ///< works
  kRefused,   ///< LX_ERROR_DESTINATION_IS_SOURCE
  kSometimes  ///< works or is refused, as the arguments say
};

/// How far from a pixel of a result, in either direction, the pixels lie that it depends on.
struct Reach {
  enum class Form {
    kPixels,     ///< `across` and `down` pixels
    kParameter,  ///< as many pixels as the parameters of these indices say
    kKernel,     ///< half the sides of the kernel
    kUnbounded
  };
  Form form = Form::kPixels;
  unsigned across = 0;
  unsigned down = 0;
  unsigned times = 1;  ///< so often as far, where one step follows another
};

/// A refusal, and what is special about it.
struct Refusal {
  LX_ERRORS code = LX_OK;
  std::string leaves = {};  ///< what it leaves behind; "" when every output is untouched
  bool traced = true;       ///< whether the operation traces it
};

/// The values of one call: one for each parameter, and behind them the returned value.
using Arguments = std::vector<Argument>;

/// One exported overload, or a member of an object, whose first parameter is the object.
struct Operation {
  std::string family;     ///< "point"
  std::string function;   ///< "PicGainOffset"
  std::string name;       ///< "gain-offset"
  std::string signature;  ///< "PicGainOffset(LxROI<LxBW8>*, LxROI<LxBW8>*, float, float)"
  std::string summary;    ///< one line
  std::string trace;      ///< what it appends to the trace; "" when nothing
  /// Lists of names that operations inside it may trace before that, innermost first.
  std::vector<std::vector<std::string>> innerTraces;
  std::vector<Parameter> parameters;
  InPlace inPlace = InPlace::kNo;
  /// For InPlace::kSometimes.
  bool (*worksInPlace)(const Arguments&) = nullptr;
  Reach reach;
  LX_ERRORS unattached = LX_ERROR_ROI_NOT_ATTACHED;  ///< what a missing region is refused with
  /// The size that the operation gives to regions whose size follows; none is below 0.
  Extent (*follows)(const Arguments&) = nullptr;
  /// The size that a part must have of regions of the agreed one.
  Extent (*part)(const Arguments&, Extent agreed) = nullptr;
  /// How many elements, or groups of an untyped vector, vectors must have whose count follows.
  std::size_t (*count)(const Arguments&) = nullptr;
  bool powersOfTwo = false;       ///< the sides of its regions must be powers of two
  bool followsRuns = false;       ///< only the pixels of the source's run list count
  std::string pathsDiffer;        ///< how the plain path's result differs; "" when it does not
  bool hasKernel = true;          ///< the fast path dispatches on the instruction set
  std::vector<int> plainChoices;  ///< the choices for which it does not, where others do
  std::vector<Refusal> refusals;  ///< besides those of regions in general
  /// The codes of all refusals, those of regions in general among them, in the order of the checks.
  /// One that stands there several times comes of several parameters, in their order.
  std::vector<LX_ERRORS> checks;
  void (*call)(Arguments&) = nullptr;

  /// Whether one of its parameters has this rule.
  bool Has(SizeRule rule) const;
  /// Index of the first written region; parameters.size() when there is none.
  std::size_t DestinationIndex() const;
  /// Indices of the regions that are only read.
  std::vector<std::size_t> SourceIndices() const;
  /// Indices of the parameters and returned values that are results, regions apart.
  std::vector<std::size_t> ResultIndices() const;
  /// Index of the parameter of this name; parameters.size() when there is none.
  std::size_t IndexOf(std::string_view parameter) const;
  /// Whether this call may have a source as its destination.
  bool WorksInPlace(const Arguments& arguments) const;
  /// What is special about refusing with `code`; null when it does not refuse with that.
  const Refusal* FindRefusal(LX_ERRORS code) const;
  /// Whether it refuses with `code` at all.
  bool Refuses(LX_ERRORS code) const;
  /// Whether it appends its trace when it refuses with `code`.
  bool Traces(LX_ERRORS code) const;
};

/// A class with state. Its members are operations on the object.
struct Object {
  std::string name;
  std::string summary;
  std::vector<Operation> members;
};

/// Every exported operation, family by family.
const std::vector<Operation>& All();

/// The classes with state.
const std::vector<Object>& Objects();

/// The operation with this trace string and signature fragment; null when there is none. The
/// fragment tells operations with equal trace strings apart.
const Operation* Find(std::string_view trace, std::string_view signaturePart = {});

/// Kebab-case name of a function: "PicConvolSobelX" is "convol-sobel-x".
std::string KebabName(std::string_view function);

/// Name of the value among the choices; the value itself when it has none.
std::string ChoiceName(const Parameter& parameter, double value);
/// The value of a choice's name among `choices`.
std::optional<std::int64_t> ChoiceValue(const std::vector<Named>& choices, std::string_view name);

/// The code's text and number, as messages show it.
std::string ErrorName(LX_ERRORS code);

}  // namespace lx::catalogue
