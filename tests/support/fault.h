// SPDX-License-Identifier: Apache-2.0
// Single bad arguments: what each operation must refuse.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "support/trial.h"

namespace lx::test {

/// A change that makes a good call a bad one.
struct Fault {
  std::string name;
  std::size_t parameter;
  LX_ERRORS code;  ///< LX_OK: a call tells, and may find nothing wrong
  std::function<void(Arguments&)> spoil = [](Arguments&) {};
  std::function<void(Trial&)> misplace = [](Trial&) {};
  /// Compares regions with each other, so that a second such fault, or a region that is missing,
  /// may undo it.
  bool relates = false;
  bool isNull = false;  ///< a pointer that is null
};

/// Whether all regions must have one size.
bool SizesMustAgree(const Operation& operation);

/// Every fault that the catalogue lets expect of the operation.
std::vector<Fault> FaultsOf(const Operation& operation, int choice);

/// A call with these faults, made and refused.
class FaultyCall {
 public:
  FaultyCall(const Operation& operation, int choice, const std::vector<const Fault*>& faults);
  /// "" when it was refused with `code` alone, as the catalogue says.
  std::string Refusal(LX_ERRORS code) const { return trial.Refusal(code); }

 private:
  Trial trial;
};

}  // namespace lx::test
