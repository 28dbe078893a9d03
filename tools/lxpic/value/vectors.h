// SPDX-License-Identifier: Apache-2.0
// Tables and vectors as arguments: made from entries, or empty for an operation to fill.
#pragma once

#include <vector>

#include "tools/lxpic/value/values.h"

namespace lx::tool {

/// A kind whose content is a list of whole numbers.
struct TableKind {
  catalogue::Kind kind;
  std::size_t size;  ///< how many entries a named table has
  unsigned maximum;  ///< of an entry
  Value (*make)(const std::vector<unsigned>& entries);
};
/// Null for a kind that is no table.
const TableKind* FindTableKind(catalogue::Kind kind);

/// An empty vector of this kind, whose content can be read as numbers. Without an owner for a kind
/// that no operation fills.
Value MakeEmptyVector(catalogue::Kind kind);

}  // namespace lx::tool
