// SPDX-License-Identifier: Apache-2.0
// Untyped vectors as histograms of 256 counts and as tables of 256 bytes.
#pragma once

#include <cstdint>

#include "foundation/frame.h"
#include "lxpic/base/vector.h"

namespace lx::histogram {

inline constexpr unsigned kLegacyEntries = 256;

inline bool HasLegacyEntries(const LxVector& vector) {
  const auto entries = std::int64_t{vector.GetNbGroup()} * vector.GetGroupLength();
  return entries >= std::int64_t{kLegacyEntries};
}

// Storage for at least 256 entries of the kind, laid out anew unless the vector has it already;
// null, with the error set, when there is none.
template <typename Entry>
Entry* EntriesToFill(LxVector& vector, LX_VECTOR_KINDS kind, int a, int b) {
  if (vector.IsSameVectType(kind) == 0 || !HasLegacyEntries(vector)) vector.SetType(kind, a, b);
  if (LxGetError() != LX_OK) return nullptr;
  auto* const entries = static_cast<Entry*>(vector.GetDataPtr());
  Require(entries != nullptr, LX_ERROR_VECTOR_NO_DATA);
  return entries;
}

inline std::uint32_t* CountsToFill(LxVector& vector) {
  return EntriesToFill<std::uint32_t>(vector, LX_VECTOR_HISTOGRAM, 0, 0);
}

inline std::uint8_t* TableToFill(LxVector& vector) {
  return EntriesToFill<std::uint8_t>(vector, LX_VECTOR_TABLE, 1, kLegacyEntries);
}

// The counts of a histogram; null, with the error set, when it is none. Another kind sets
// `wrongKind`.
inline const std::uint32_t* CountsToRead(const LxVector* vector, LX_ERRORS wrongKind) {
  const bool readable = Require(vector != nullptr, LX_ERROR_VECTOR_NO_DATA) &&
                        Require(vector->IsSameVectType(LX_VECTOR_HISTOGRAM) != 0, wrongKind) &&
                        Require(vector->GetDataPtr() != nullptr, LX_ERROR_VECTOR_NO_DATA) &&
                        Require(HasLegacyEntries(*vector), LX_ERROR_WRONG_VECTOR_SIZE);
  return readable ? static_cast<const std::uint32_t*>(vector->GetDataPtr()) : nullptr;
}

}  // namespace lx::histogram
