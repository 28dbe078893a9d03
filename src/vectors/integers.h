// SPDX-License-Identifier: Apache-2.0
// Untyped vectors of integers: which they are, and their element types.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "foundation/frame.h"
#include "lxpic/base/vector.h"

namespace lx::vectors {

// The elements are integers of 8, 16 or 32 bits.
inline bool HasIntegers(const LxVector& vector) {
  const int size = vector.GetDataSize();
  const int type = vector.GetDataType();
  return Require(size == LX_DATA_SIZE_8 || size == LX_DATA_SIZE_16 || size == LX_DATA_SIZE_32,
                 LX_ERROR_UNSUPPORTED_DATA_SIZE) &&
         Require(type == LX_DATA_UNSIGNED || type == LX_DATA_SIGNED,
                 LX_ERROR_UNSUPPORTED_DATA_TYPE);
}

// The elements are integers of 8, 16 or 32 bits with this sign.
inline bool HasIntegers(const LxVector& vector, LX_DATA_TYPES type) {
  return HasIntegers(vector) &&
         Require(vector.GetDataType() == type, LX_ERROR_UNSUPPORTED_DATA_TYPE);
}

// Whether groups `first`..`last` are in use.
inline bool HoldsGroups(const LxVector& vector, int first, int last) {
  return first >= 0 && first <= last && last < vector.GetNbGroup();
}

// The first element of a group.
template <typename T>
T* GroupOf(const LxVector& vector, int group) {
  return static_cast<T*>(vector.GetDataPtr()) +
         static_cast<std::ptrdiff_t>(group) * vector.GetGroupLength();
}

// Calls `visit` with a zero of the element type, of a vector that has integers with this sign.
template <bool kSigned, class Visit>
void VisitElement(int dataSize, const Visit& visit) {
  switch (dataSize) {
    case LX_DATA_SIZE_8:
      return visit(std::conditional_t<kSigned, std::int8_t, std::uint8_t>{});
    case LX_DATA_SIZE_16:
      return visit(std::conditional_t<kSigned, std::int16_t, std::uint16_t>{});
    default:
      return visit(std::conditional_t<kSigned, std::int32_t, std::uint32_t>{});
  }
}

// The same for integers of either sign.
template <class Visit>
void VisitElement(const LxVector& vector, const Visit& visit) {
  if (vector.GetDataType() == LX_DATA_SIGNED) {
    VisitElement<true>(vector.GetDataSize(), visit);
  } else {
    VisitElement<false>(vector.GetDataSize(), visit);
  }
}

}  // namespace lx::vectors
