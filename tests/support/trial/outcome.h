// SPDX-License-Identifier: Apache-2.0
// What a call comes to, as plain numbers.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "support/trial/picture.h"
#include "support/trial/vectors.h"

namespace lx::test {

/// A region, vector or number; nothing for tables, functions, kernels and constants, which no call
/// changes.
using Plain = std::variant<std::monostate, double, Elements, Picture, LxC24>;

struct Outcome {
  std::vector<Plain> values;  ///< by parameter, and the returned value behind them
  LX_ERRORS error = LX_OK;
  std::vector<std::string> trace;  ///< innermost first

  double& Number(std::size_t index) { return std::get<double>(values[index]); }
  /// A result that may be unwanted.
  void Offer(std::size_t index, double number) {
    if (auto* const wanted = std::get_if<double>(&values[index])) *wanted = number;
  }
  Elements& Vector(std::size_t index) { return std::get<Elements>(values[index]); }
  Picture& Image(std::size_t index) { return std::get<Picture>(values[index]); }
  const Picture& Image(std::size_t index) const { return std::get<Picture>(values[index]); }

  /// Ends in `code`. `inner` are the names that are traced before the operation's own.
  void Refuse(LX_ERRORS code, std::vector<std::string> inner = {}) {
    error = code;
    trace = std::move(inner);
  }
};

}  // namespace lx::test
