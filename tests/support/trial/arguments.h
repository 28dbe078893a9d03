// SPDX-License-Identifier: Apache-2.0
// Values for the parameters of a catalogued operation.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "catalogue/catalogue.h"
#include "common/random.h"
#include "support/trial/picture.h"
#include "support/trial/vectors.h"

namespace lx::test {

using catalogue::Argument;
using catalogue::Kind;
using catalogue::Operation;
using catalogue::Parameter;

/// The arguments of one call, and the tables, vectors and kernels among them. Regions are left null
/// for the caller to put in. References read the numbers that results held before the call here.
class Arguments {
 public:
  /// The most usual values.
  explicit Arguments(const Operation& operation);
  /// Each value drawn from the catalogue's trials, the ends of its range and random ones.
  Arguments(const Operation& operation, Random& random);

  /// Sets the number or choice of this name. Throws std::out_of_range when there is none.
  void Set(std::string_view parameter, double number);
  void SetNumber(std::size_t index, double number);
  void SetChoice(int choice);
  void SetVector(std::size_t index, const Elements& content);
  /// Gives vectors with one element for each column as many elements.
  void FitColumns(int columns);
  /// Moves drawn coordinates into the first region, most of them, and gives vectors the number of
  /// elements that follows.
  void FitRegion(int width, int height);
  void SetKernel(std::size_t index, std::shared_ptr<LxKernel> kernel);
  void SetNull(std::size_t index);
  /// Makes the vectors and numbers that a call may have written again what they were.
  void Reset();

  double Number(std::size_t index) const { return std::get<double>(values[index]); }
  double Number(std::string_view parameter) const;
  /// Component `k` of a constant; a grey constant has one.
  Value Component(std::size_t index, int k) const;
  /// What vector parameter `index` held before the call; null for a null vector.
  const Elements* Content(std::size_t index) const;
  /// What the number of parameter `index`, a result, was before the call.
  double NumberBefore(std::size_t index) const;
  /// One line for messages.
  std::string Text() const;

  std::vector<Argument> values;

 private:
  // What keeps a value alive, and what it was before the call.
  struct Slot {
    std::shared_ptr<void> owner;
    std::shared_ptr<const Elements> content;  ///< of a vector
    double number = 0;                        ///< of a number that is a result
  };

  void FitVector(std::size_t index, std::size_t count);
  void FitCounts();
  void SetUsual(std::size_t index);
  void Draw(std::size_t index, Random& random);
  void SetTable(std::size_t index, Random& random);

  const Operation* operation;
  std::vector<Slot> slots;
  bool drawn = false;
};

/// The values of the operation's enumeration that it offers; {-1} when it has none.
std::vector<int> ChoicesOf(const Operation& operation);
/// " add" for messages and names; "" for -1.
std::string ChoiceText(const Operation& operation, int choice);

}  // namespace lx::test
