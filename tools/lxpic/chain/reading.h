// SPDX-License-Identifier: Apache-2.0
// The words behind an operation's name, read as the operands of one of its overloads.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "tools/lxpic/chain/overloads.h"
#include "tools/lxpic/common/failure.h"

namespace lx::tool {

class Reading {
 public:
  Reading(const catalogue::Operation& overload, std::span<const std::string> stepWords,
          const StepContext& stepContext);

  /// Throws Failure when the words do not fit.
  Call Run();
  /// How near the words came when Run() failed: the more of them fitted the nearer, and nearest
  /// where the next one can only be an image; not at all when the current image has another type.
  std::size_t Nearness() const;
  /// Whether any word fitted.
  bool AnyWordFits() const { return next > 0; }

 private:
  bool NamesCurrent() const;
  bool ImageFirst() const;
  bool Finished() const { return next == words.size(); }
  void CheckType(const ImageValue& image, const catalogue::Parameter& parameter,
                 const std::string& name) const;
  const std::string& TakeWord(const catalogue::Parameter& parameter);

  Value ReadParameter(std::size_t index);
  Value TakeSource(const catalogue::Parameter& parameter);
  Value TakeCurrent(const catalogue::Parameter& parameter);
  Value SourceFrom(const ImageValue& image, const catalogue::Parameter& parameter);
  Value ReadWord(const catalogue::Parameter& parameter, const std::string& word) const;
  Value TakeOperand(std::size_t index);
  Value TakeOption(const catalogue::Parameter& parameter);

  const catalogue::Operation& operation;
  std::span<const std::string> words;
  const StepContext& context;
  Call call;
  std::size_t next = 0;
  bool currentIsNamed = false;
  bool currentFits = true;
  bool sizeAgrees = false;  // the size is that of a source which must have the destination's
  std::optional<std::string> pairRest;  // the y of a word x,y whose x is read
  std::optional<Failure> unreadable;    // why a word was taken for no option
};

}  // namespace lx::tool
