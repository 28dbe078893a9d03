// SPDX-License-Identifier: Apache-2.0
// Words that tell the overloads of one name apart where their operands do not.
#pragma once

#include <string>
#include <vector>

#include "catalogue/catalogue.h"

namespace lx::tool {

/// The overloads of a name.
using Overloads = std::vector<const catalogue::Operation*>;
Overloads OverloadsOf(const std::string& name);

/// What may tell an overload from its sisters: the pixel type of what it writes, or of its
/// constants where that is no image, "real" for numbers with a fraction; the names of its results;
/// and "array", "vector", "untyped" or "function", how it takes or gives a table.
bool HasLabel(const catalogue::Operation& operation, const std::string& word);

/// The labels of the operation that some of its sisters lack.
std::vector<std::string> LabelsOf(const catalogue::Operation& operation);

/// Whether a word behind the name is a label: any pixel type, and what some overloads lack.
bool IsLabel(const std::string& word, const Overloads& overloads);

}  // namespace lx::tool
