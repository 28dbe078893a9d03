// SPDX-License-Identifier: Apache-2.0
// How a family's file describes its operations: tables of rows, one for each overload, in groups
// that share their errors.
#pragma once

#include <string_view>
#include <vector>

#include "catalogue/binding.h"

namespace lx::catalogue {

/// One overload: what its own type does not say. Texts are taken apart by Describe().
struct Row {
  std::string_view function;
  Binding binding{};
  /// What it appends to the trace.
  std::string_view trace = {};
  /// The names that inner operations may trace before that: "A < B | C" are two lists, innermost
  /// first.
  std::string_view innerTraces = {};
  /// One word for each parameter, and one for the returned value:
  ///
  ///     name             read, or a result where the type is a reference or points to a number
  ///     >name <>name     written; read and written
  ///     name*N           N parameters name1, name2, ...
  ///
  /// with, in any order and without blanks, behind it
  ///
  ///     ?'words'         may be null, which means that
  ///     =V  =V'words'    may be left out, which means V, in these words
  ///     ~V,V,...         values for trials, the most usual one first; of a pattern, which is a
  ///                      kernel for thinning, presets
  ///     :A..B            the usual range of a number
  ///     {1,4-6}          the values of its enumeration that the form offers
  ///     {NAME}           a number that also takes the names of enumeration NAME
  ///     #N,N             the element counts that a vector may have
  ///     #width           as many elements as the destination has columns
  ///     #count           as many elements as `count` knows
  ///     (free)           a region of any size
  ///     (follows)        a result whose size `follows` knows
  ///     (part)           a region whose size `part` knows from that of the others
  ///     (512x512)        a region of this size
  ///     (columns) (rows) (points)
  ///                      a region whose pixels are coordinates in the first source
  ///     (column) (row)   a number that is a coordinate in the first region
  ///     (segment)        an untyped vector of the pixels of a line
  ///     (group) (signed) (unsigned)
  ///                      an untyped vector of integers, of this sign, whose groups are signals
  ///     (energy)         an untyped vector of energies of discs
  std::string_view parameters = {};
  std::string_view summary = {};
  InPlace inPlace = InPlace::kNo;
  bool (*worksInPlace)(const Arguments&) = nullptr;
  /// "1" pixels, "half-x half-y", "twice half-x half-y", "kernel", "all".
  std::string_view reach = "0";
  std::string_view pathsDiffer = {};
  /// "all", or the choices that run without a kernel.
  std::string_view withoutKernel = {};
  bool powersOfTwo = false;  ///< sides of regions that are not are refused
  bool followsRuns = false;
  /// What a region that is not attached is refused with: regions are then not checked apart.
  LX_ERRORS unattached = LX_ERROR_ROI_NOT_ATTACHED;
  Extent (*follows)(const Arguments&) = nullptr;
  Extent (*part)(const Arguments&, Extent agreed) = nullptr;
  std::size_t (*count)(const Arguments&) = nullptr;
  std::vector<Refusal> refusals = {};
};

/// Overloads that refuse alike. Refusals stand in the order of the checks, and a row's own behind
/// the group's. Regions in general are checked first of all, unless their codes say where.
struct Group {
  std::vector<Refusal> refusals;
  std::vector<Row> rows;
};

/// The operations that the groups describe. Throws std::logic_error for a text that fits no
/// function.
std::vector<Operation> Describe(std::string_view family, const std::vector<Group>& groups);

/// LX_FORM(PicLut, void(LxROI<LxBW8>*, ...), .trace = "...", ...): the row of an overload.
#define LX_FORM(name, type, ...)                                                                   \
  Row {                                                                                            \
    .function = #name, .binding = Bound<static_cast<std::add_pointer_t<type>>(&(name))>::kBinding, \
    __VA_ARGS__                                                                                    \
  }

/// The same for a member: LX_MEMBER(LxKernel, SetGain, void (LxKernel::*)(float), ...).
#define LX_MEMBER(object, member, type, ...)                                    \
  Row {                                                                         \
    .function = #object "::" #member,                                           \
    .binding = Bound<static_cast<type>(&object::member)>::kBinding, __VA_ARGS__ \
  }

/// The families' tables.
std::vector<Operation> ColourOperations();
std::vector<Operation> ArithmeticOperations();
std::vector<Operation> PointOperations();
std::vector<Operation> ConvolutionOperations();
std::vector<Operation> HistogramOperations();
std::vector<Operation> MorphologyOperations();
std::vector<Operation> NonlinearOperations();
std::vector<Operation> ThresholdingOperations();
std::vector<Operation> ResamplingOperations();
std::vector<Operation> GeometryOperations();
std::vector<Operation> StatisticsOperations();
std::vector<Operation> MomentOperations();
std::vector<Operation> MeasureOperations();
std::vector<Operation> CorrectionOperations();
std::vector<Operation> SequenceOperations();
std::vector<Operation> ProfileOperations();
std::vector<Operation> ContourOperations();
std::vector<Operation> SegmentVectorOperations();
std::vector<Operation> FrequencyOperations();
std::vector<Operation> GradientImageOperations();
Object KernelObject();
Object PyramidObject();
Object MovingAverageObject();
std::vector<Object> VectorObjects();

}  // namespace lx::catalogue
