// SPDX-License-Identifier: Apache-2.0
// The names of the enumerations' values. A name is made of the enumerator, so that the two cannot
// differ.
#pragma once

#include <string_view>
#include <vector>

#include "catalogue/catalogue.h"

namespace lx::catalogue {

/// The name of an enumeration as the tables of names know it.
template <class E>
constexpr const char* EnumerationOf() {
  static_assert(sizeof(E) == 0, "give this enumeration a name and a table");
  return "";
}
template <>
constexpr const char* EnumerationOf<ARITH_LOGIC_OPERATIONS>() {
  return "ARITH_LOGIC_OPERATIONS";
}
template <>
constexpr const char* EnumerationOf<CONNEXITY>() {
  return "CONNEXITY";
}
template <>
constexpr const char* EnumerationOf<CONTOUR_MODE>() {
  return "CONTOUR_MODE";
}
template <>
constexpr const char* EnumerationOf<CONTOUR_THRESHOLD>() {
  return "CONTOUR_THRESHOLD";
}
template <>
constexpr const char* EnumerationOf<TRANS_SCAN_EDGE>() {
  return "TRANS_SCAN_EDGE";
}
template <>
constexpr const char* EnumerationOf<KERNEL_TYPE>() {
  return "KERNEL_TYPE";
}
template <>
constexpr const char* EnumerationOf<KERNEL_ROTATION>() {
  return "KERNEL_ROTATION";
}
template <>
constexpr const char* EnumerationOf<LX_IMAGE_TYPES>() {
  return "LX_IMAGE_TYPES";
}
template <>
constexpr const char* EnumerationOf<PIC_HISTOGRAM_FEATURE>() {
  return "PIC_HISTOGRAM_FEATURE";
}
template <>
constexpr const char* EnumerationOf<PIC_REFERENCE_NOISE>() {
  return "PIC_REFERENCE_NOISE";
}
template <>
constexpr const char* EnumerationOf<PIC_THRESHOLD_MODES>() {
  return "PIC_THRESHOLD_MODES";
}

/// Every value of an enumeration, in the order of its declaration; none for an unknown name.
const std::vector<Named>& NamesOf(std::string_view enumeration);

}  // namespace lx::catalogue
