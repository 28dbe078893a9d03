// SPDX-License-Identifier: Apache-2.0
// Words of the command line as the arguments of operations.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "catalogue/catalogue.h"

namespace lx::tool {

/// An argument and what keeps alive the object that it points to.
struct Value {
  catalogue::Argument argument;
  std::shared_ptr<void> owner;
  /// The content as text, for a vector that the operation writes; empty otherwise.
  std::function<std::string()> result;
};

/// Reads `word` as a value of `parameter`, which is no region and not written. Throws Failure.
Value ReadValue(const catalogue::Parameter& parameter, const std::string& word);

/// The value of a parameter that is left out.
Value StandardValue(const catalogue::Parameter& parameter);

/// A new object for a vector that the operation writes.
Value MakeResult(const catalogue::Parameter& parameter);

/// What the help says of values of this kind: "a number", "r,g,b or one number".
std::string ValueForms(const catalogue::Parameter& parameter);

}  // namespace lx::tool
