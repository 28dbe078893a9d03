// SPDX-License-Identifier: Apache-2.0
// Which overload of an operation a step of a chain means, and with which arguments.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "catalogue/catalogue.h"
#include "tools/lxpic/chain/labels.h"
#include "tools/lxpic/common/words.h"
#include "tools/lxpic/value/image_value.h"
#include "tools/lxpic/value/values.h"

namespace lx::tool {

/// Stands for the current image among the words of a step.
inline constexpr const char* kCurrentWord = "_";
/// The word before the image that the destination starts as.
inline constexpr const char* kOntoWord = "onto";

/// What the words of a step refer to.
struct StepContext {
  ImageValue current;  ///< none when the chain started without a file
  /// The image that a word names: a file, or "@NAME". Throws Failure.
  std::function<ImageValue(const std::string&)> findImage;
  /// The value that "@NAME" names. Throws Failure.
  std::function<Value(const std::string&)> findValue;
  /// Whether a word is the name of an operation or of another step.
  std::function<bool(const std::string&)> startsStep;
  /// Reads the file of a table.
  ReadFileText readText = ReadTableText;
};

/// What stands between the name of an operation and its operands, in any order: labels of the form
/// that is meant, the size of the destination, `onto` and the image that it starts as.
struct Modifiers {
  std::vector<std::string> labels;
  std::optional<Size> size;
  ImageValue onto;
};

/// An overload with what its words mean.
struct Call {
  const catalogue::Operation* operation = nullptr;
  Modifiers modifiers;
  /// One for each parameter; written regions have none yet.
  std::vector<Value> values;
  /// Size of the first image that the operation reads, or of the current one.
  std::optional<Size> size;
  std::size_t wordCount = 0;
  bool readsCurrent = false;
  bool imageFirst = false;

  /// Pixel type of the first written region; kNone when there is none.
  Pixel DestinationPixel() const;
};

/// Pixel type of the operation's first written region; kNone when there is none.
Pixel DestinationPixelOf(const catalogue::Operation& operation);

/// Whether the words of a step give the parameter's value.
bool IsOperand(const catalogue::Parameter& parameter);

/// Whether the parameter holds a result of the operation, its first written region apart.
bool IsResult(const catalogue::Operation& operation, std::size_t index);

/// Whether the catalogue has an operation of this name.
bool IsOperation(const std::string& name);
/// All names, each once, in the order of the catalogue.
std::vector<std::string> OperationNames();

/// Whether a parameter and the next one are the coordinates of a point, or another pair of x and y,
/// that may be written as one word.
bool StartsPair(const catalogue::Operation& operation, std::size_t index);

/// Finds the overload of `name` that has the labels and that the words behind them fit. The current
/// image is the first source unless `_` puts it elsewhere. Among overloads that fit, one that reads
/// the current image goes before one that does not, then one whose destination has the current
/// pixel type, then one whose image stands before its constant, then the one with the fewest
/// results, then the first. Throws Failure when none fits or the destination type is left open.
Call ChooseOverload(const std::string& name, std::span<const std::string> words,
                    const StepContext& context);

}  // namespace lx::tool
