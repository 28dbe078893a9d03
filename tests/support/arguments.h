// SPDX-License-Identifier: Apache-2.0
// Values for the parameters of a catalogued operation.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "catalogue/catalogue.h"
#include "support/picture.h"
#include "support/random.h"

namespace lx::test {

using catalogue::Argument;
using catalogue::Kind;
using catalogue::Operation;
using catalogue::Parameter;

/// The arguments of one call, and the tables and vectors among them. Regions are left null for the
/// caller to put in.
class Arguments {
 public:
  /// Standard values.
  explicit Arguments(const Operation& operation);
  /// Each value drawn from the standard one, the ends of its range and random ones.
  Arguments(const Operation& operation, Random& random);

  void SetChoice(int choice);
  /// Replaces the vector of parameter `index` by one of these entries.
  void SetVector(std::size_t index, const std::vector<std::uint8_t>& entries);
  /// Replaces the kernel of parameter `index`.
  void SetKernel(std::size_t index, std::shared_ptr<LxKernel> kernel);

  double Number(std::size_t index) const { return std::get<double>(values[index]); }
  /// Component `k` of a constant; a grey constant has one.
  Value Component(std::size_t index, int k) const;
  /// One line for messages.
  std::string Text() const;

  std::vector<Argument> values;

 private:
  Argument Standard(const Parameter& parameter);
  Argument Draw(const Parameter& parameter, Random& random);
  Argument Table(Kind kind, Random& random);
  template <class Pointer>
  Pointer Keep(Pointer pointer) {
    owned.push_back(pointer);
    return pointer;
  }

  const Operation* operation;
  std::vector<std::shared_ptr<void>> owned;
};

/// The values of the operation's enumeration that it offers; {-1} when it has none.
std::vector<int> ChoicesOf(const Operation& operation);

}  // namespace lx::test
