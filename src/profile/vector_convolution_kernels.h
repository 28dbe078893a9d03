// SPDX-License-Identifier: Apache-2.0
// Groups of integers, filtered along their elements.
#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/path.h"

namespace lx::profile {

// Three coefficients, and what becomes of their weighted sum.
struct VectorFilter {
  double taps[3];
  double outside;  // the neighbour that the ends of a group do not have
  double offset;
  // The rectifier, as a multiple of the positive side and one of the negative side.
  double positive;
  double negative;
};

// Groups one after the other, and where they go.
template <typename T>
struct GroupsOf {
  const T* from;
  T* to;
  std::size_t count;
  std::size_t length;
};

void FilterGroups(const VectorFilter& filter, const GroupsOf<std::uint8_t>& groups, Path path);
void FilterGroups(const VectorFilter& filter, const GroupsOf<std::int8_t>& groups, Path path);
void FilterGroups(const VectorFilter& filter, const GroupsOf<std::uint16_t>& groups, Path path);
void FilterGroups(const VectorFilter& filter, const GroupsOf<std::int16_t>& groups, Path path);
void FilterGroups(const VectorFilter& filter, const GroupsOf<std::uint32_t>& groups, Path path);
void FilterGroups(const VectorFilter& filter, const GroupsOf<std::int32_t>& groups, Path path);

}  // namespace lx::profile
