// SPDX-License-Identifier: Apache-2.0
// The numbers that chains left, a row for each file.
#pragma once

#include <string>
#include <vector>

#include "tools/lxpic/value/numbers.h"

namespace lx::tool {

enum class TableFormat {
  kText,  ///< short and aligned, for reading
  kCsv,   ///< everything; a vector takes a line for each element, with its index
  kJson   ///< everything, as a list with an object for each file
};

struct TableRow {
  std::string file;  ///< "" when the chain started without one
  std::vector<NamedNumbers> numbers;
};

/// A row for each element of a vector, under the names of its fields.
std::vector<TableRow> RowsOf(const std::string& file, const Numbers& records);

/// Nothing when the rows have no numbers.
std::string TableText(const std::vector<TableRow>& rows, TableFormat format);

}  // namespace lx::tool
