// SPDX-License-Identifier: Apache-2.0
// Arguments of operations: from words of the command line, or from what other operations left.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "catalogue/catalogue.h"
#include "tools/lxpic/value/numbers.h"
#include "tools/lxpic/value/tables.h"

namespace lx::tool {

/// An argument and what keeps alive the object that it points to.
struct Value {
  catalogue::Argument argument;
  std::shared_ptr<void> owner;
  /// The content as numbers; empty for what is no result, as a kernel.
  std::function<Numbers()> read;
};

/// Reads `word` as a value of `parameter`, which is no region and not written. Throws Failure.
Value ReadValue(const catalogue::Parameter& parameter, const std::string& word,
                const ReadFileText& readText = ReadTableText);

/// A value that a step left, as a value of `parameter`: a number as if it had been written there,
/// a vector as it is, or as a table of the same entries. Throws Failure.
Value FitValue(const catalogue::Parameter& parameter, const Value& value);

/// The word for no object at all, where that means something.
inline constexpr const char* kNullWord = "none";

/// The value of a parameter that is left out, and may be.
Value LeftOutValue(const catalogue::Parameter& parameter);

/// A new object for a vector that the operation writes; a number for any other result.
Value MakeResult(const catalogue::Parameter& parameter);

/// A number or colour that an operation left.
Value ScalarValue(const catalogue::Argument& argument);

/// What the help says of values of this kind: "a number", "r,g,b or one number".
std::string ValueForms(const catalogue::Parameter& parameter);

}  // namespace lx::tool
