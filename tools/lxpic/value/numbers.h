// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace lx::tool {

/// What a result of an operation holds: one element, or the elements of a vector.
struct Numbers {
  /// How the elements are drawn.
  enum class Drawing {
    kNone,
    kBars,
    kLine,
    kPath,       ///< the first two fields are columns and rows of an image
    kClosedPath  ///< the same, the last point joined to the first
  };

  bool isVector = false;
  Drawing drawing = Drawing::kNone;
  /// The names of an element's fields; one without a name for a plain number.
  std::vector<std::string> fields = {""};
  /// All fields of the first element, then those of the second, ...
  std::vector<double> values;

  std::size_t Count() const { return values.size() / fields.size(); }
  double At(std::size_t element, std::size_t field) const {
    return values[element * fields.size() + field];
  }
};

/// Numbers under the name of the result that they are.
struct NamedNumbers {
  std::string name;
  Numbers numbers;
};

}  // namespace lx::tool
